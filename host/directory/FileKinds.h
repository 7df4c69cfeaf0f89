#pragma once

#include <CAETypes.h>

#include <filesystem>
#include <string_view>

namespace host {

enum class Solver {
    None,
    Abaqus,
    /// The two share one syntax; only some keywords belong to one of them.
    AbaqusOrCalculix,
    Ansys,
    Calculix,
    LsDyna,
    Nastran,
    OptiStruct,
    PamCrash,
    Permas,
    Radioss,
};
inline constexpr Solver kLastSolver = Solver::Radioss;

/// The name of the solver in the metadata; empty for Solver::None.
std::string_view SolverName(Solver solver);

/// What has to be read of a file to settle its kind.
enum class Look {
    /// Nothing: the name settles it.
    None,
    /// The name says that it is input for its solver; the text says whether a run starts from it.
    Input,
    /// The name says that it is a part of other input; the text says which files it includes.
    Part,
    /// Other kinds of files share the name; the text says whether it is input, and for which solver.
    PossibleInput,
};

/// What the name of a file says about it.
struct FileKind {
    /// The type, unless the text says otherwise.
    _tagFileType type = CAE_FILE_OTHER;
    /// The type if the content is binary.
    _tagFileType binaryType = CAE_FILE_OTHER;
    /// The solver, if only one solver writes or reads such files.
    Solver solver = Solver::None;
    Look look = Look::None;
};

/// The kind of a file by its extension, or by its whole name if solvers write it under a fixed name. Case
/// does not matter.
FileKind KindOfFileName(const std::filesystem::path& name);

}  // namespace host
