#include "DeckModel.h"

#include <string>
#include <unordered_set>
#include <utility>

#include "FileFormat.h"
#include "FileKinds.h"
#include "SolverInputReader.h"
#include "host/model/ModelReader.h"
#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {
namespace {

using PathTexts = std::unordered_set<std::filesystem::path::string_type>;

PathTexts PathsOf(const DirectoryTree& tree) {
    PathTexts paths;
    for (const ScannedDirectory& directory : tree.directories) {
        for (const ScannedFile& file : directory.files) {
            paths.insert((directory.path / file.name).native());
        }
    }
    return paths;
}

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
    if (InspectTarget(file, entry) || entry.type != EntryType::File ||
        ReadSample(file, kInputHeadSize, kInputTailSize, sample) ||
        DetectFormat(sample.head) != CAE_FORMAT_ASCII) {
        return std::nullopt;
    }
    const OuString name = ToOuString(file.filename());
    const SolverInput input =
        ReadSolverInput(KindOfFileName(file.filename()).solver, name.GetAnsiBuffer(), sample);
    return input.role == InputRole::Unclear ? std::nullopt : ModelSyntaxOf(input.solver);
}

void ReadDeckModels(DirectoryTree& tree, ModelLimits limits, Console& console) {
    // A database that is open, or a file that the user left out, must not be opened because a deck names it.
    const PathTexts paths = PathsOf(tree);
    limits.root = tree.directories.front().path;
    limits.mayRead = [&](const std::filesystem::path& file) { return paths.contains(file.native()); };
    std::uint64_t count = 0;
    for (ScannedDirectory& directory : tree.directories) {
        for (ScannedFile& file : directory.files) {
            if (!HasModel(file)) {
                continue;
            }
            auto model = std::make_shared<SolverModel>();
            const std::filesystem::path whole = directory.path / file.name;
            if (const std::error_code error =
                    ReadModel(whole, *ModelSyntaxOf(file.solver), limits, nullptr, *model)) {
                model->gap = error.message();
            }
            file.model = std::move(model);
            console.ShowProgress("Reading models", ++count, 0);
        }
    }
    console.ClearProgress();
}

}  // namespace host
