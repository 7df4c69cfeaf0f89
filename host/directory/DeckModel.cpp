#include "DeckModel.h"

#include <string>
#include <utility>

#include "FileFormat.h"
#include "FileKinds.h"
#include "SolverInputReader.h"
#include "host/model/ModelReader.h"
#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {
namespace {

bool HasModel(const ScannedFile& file) {
    return file.type == CAE_FILE_DECK && !file.isRemembered && ModelSyntaxOf(file.solver).has_value();
}

}  // namespace

std::optional<ModelSyntax> ModelSyntaxOf(Solver solver) {
    switch (solver) {
        case Solver::Abaqus:
        case Solver::AbaqusOrCalculix:
        case Solver::Calculix:
            return ModelSyntax::Abaqus;
        case Solver::LsDyna:
            return ModelSyntax::LsDyna;
        case Solver::Nastran:
        case Solver::OptiStruct:
            return ModelSyntax::Nastran;
        case Solver::None:
        case Solver::Ansys:
        case Solver::PamCrash:
        case Solver::Permas:
        case Solver::Radioss:
            return std::nullopt;
    }
    return std::nullopt;
}

std::optional<ModelSyntax> ModelSyntaxOf(const std::filesystem::path& file) {
    Entry entry;
    FileSample sample;
    std::error_code error = InspectTarget(file, entry);
    if (!error && entry.type == EntryType::File) {
        error = ReadSample(file, kInputHeadSize, kInputTailSize, sample);
    }
    ThrowIfOutOfMemory(error);
    if (error || entry.type != EntryType::File || DetectFormat(sample.head) != CAE_FORMAT_ASCII) {
        return std::nullopt;
    }
    const OuString name = ToOuString(file.filename());
    const SolverInput input =
        ReadSolverInput(KindOfFileName(file.filename()).solver, name.GetAnsiBuffer(), sample);
    return input.role == InputRole::Unclear ? std::nullopt : ModelSyntaxOf(input.solver);
}

void ReadDeckModels(DirectoryTree& tree, const std::optional<std::filesystem::path>& leftOut,
                    Console& console) {
    ModelLimits limits;
    limits.root = tree.directories.front().path;
    // It is a database that is open: closing it would end the locks that this program holds on it.
    limits.mayRead = [&](const std::filesystem::path& file) {
        std::error_code error;
        const bool isLeftOut = leftOut && std::filesystem::equivalent(file, *leftOut, error);
        ThrowIfOutOfMemory(error);
        return !isLeftOut;
    };
    std::uint64_t count = 0;
    for (ScannedDirectory& directory : tree.directories) {
        for (ScannedFile& file : directory.files) {
            if (!HasModel(file)) {
                continue;
            }
            auto model = std::make_shared<SolverModel>();
            const std::filesystem::path whole = directory.path / file.name;
            const std::error_code error =
                ReadModel(whole, *ModelSyntaxOf(file.solver), limits, nullptr, *model);
            ThrowIfOutOfMemory(error);
            if (error) {
                model->gap = error.message();
            }
            file.model = std::move(model);
            console.ShowProgress("Reading models", ++count, 0);
        }
    }
    console.ClearProgress();
}

}  // namespace host
