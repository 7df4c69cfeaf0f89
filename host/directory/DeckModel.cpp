#include "DeckModel.h"

#include "FileFormat.h"
#include "FileKinds.h"
#include "SolverInputReader.h"
#include "host/system/Text.h"

namespace host {

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

}  // namespace host
