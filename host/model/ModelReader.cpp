#include "ModelReader.h"

#include "ModelSyntaxes.h"
#include "host/system/FileSystem.h"

namespace host {
namespace {

/// A part of the file says nothing for certain.
void SayWhyItStopped(const std::string& reason, SolverModel& model) {
    model = SolverModel();
    model.gap = reason;
}

std::error_code ReadLines(const std::filesystem::path& file, const ModelLimits& limits,
                          void (*read)(InputLines&, ModelRecorder&), SolverModelSink* sink,
                          SolverModel& model) {
    InputLines lines(limits);
    if (const std::error_code error = lines.Open(file)) {
        return error;
    }
    ModelRecorder recorder(sink);
    read(lines, recorder);
    model = recorder.Finish();
    if (!lines.StopReason().empty()) {
        SayWhyItStopped(lines.StopReason(), model);
    }
    return {};
}

/// Files that include no others, and may have bytes.
std::error_code ReadMesh(const std::filesystem::path& file, const ModelLimits& limits,
                         void (*read)(ModelFile&, ModelRecorder&), SolverModelSink* sink,
                         SolverModel& model) {
    const ModelDeadline deadline(limits);
    ModelFile mesh(deadline, ModelFile::Content::Any);
    std::error_code error;
    const std::filesystem::path resolved = ResolvePath(file, error);
    if (!error) {
        error = mesh.Open(resolved);
    }
    if (error) {
        return error;
    }
    ModelRecorder recorder(sink);
    read(mesh, recorder);
    model = recorder.Finish();
    if (!mesh.StopReason().empty()) {
        SayWhyItStopped(mesh.Place() + ": " + mesh.StopReason(), model);
    }
    return {};
}

}  // namespace

std::error_code ReadModel(const std::filesystem::path& file, ModelSyntax syntax, const ModelLimits& limits,
                          SolverModelSink* sink, SolverModel& model) {
    switch (syntax) {
        case ModelSyntax::Abaqus:
            return ReadLines(file, limits, ReadAbaqusModel, sink, model);
        case ModelSyntax::Nastran:
            return ReadLines(file, limits, ReadNastranModel, sink, model);
        case ModelSyntax::LsDyna:
            return ReadLines(file, limits, ReadLsDynaModel, sink, model);
        case ModelSyntax::Stl:
            return ReadMesh(file, limits, ReadStlModel, sink, model);
        case ModelSyntax::Gmsh:
            return ReadMesh(file, limits, ReadGmshModel, sink, model);
    }
    return std::make_error_code(std::errc::not_supported);
}

}  // namespace host
