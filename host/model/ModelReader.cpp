#include "ModelReader.h"

#include "ModelSyntaxes.h"

namespace host {

std::error_code ReadModel(const std::filesystem::path& file, ModelSyntax syntax, const ModelLimits& limits,
                          SolverModelSink* sink, SolverModel& model) {
    InputLines lines(limits);
    if (const std::error_code error = lines.Open(file)) {
        return error;
    }
    ModelRecorder recorder(sink);
    switch (syntax) {
        case ModelSyntax::Abaqus:
            ReadAbaqusModel(lines, recorder);
            break;
        case ModelSyntax::Nastran:
            ReadNastranModel(lines, recorder);
            break;
        case ModelSyntax::LsDyna:
            ReadLsDynaModel(lines, recorder);
            break;
    }
    model = recorder.Finish();
    if (!lines.StopReason().empty()) {
        // A part of the file says nothing for certain.
        model = SolverModel();
        model.gap = lines.StopReason();
    }
    return {};
}

}  // namespace host
