#pragma once

#include <CAETypes.h>

#include <filesystem>
#include <string_view>

namespace host {

enum class Solver {
    None,
    Abaqus,
    /// The two share one syntax; only some keywords belong to one alone.
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

/// The solver's name as it stands in the metadata; empty for Solver::None.
std::string_view SolverName(Solver solver);

/// What must be read of a file before its kind is settled.
enum class Look {
    /// The name settles it.
    None,
    /// The name says that it is input for its solver; the text says whether a run starts from it.
    Input,
    /// The name says that it is a part of other input; the text is read for the files that it draws in.
    Part,
    /// The name is shared with other kinds of files; the text says whether it is input at all, and whose.
    PossibleInput,
};

/// What the name of a file says about it.
struct FileKind {
    /// The kind, as long as the text does not tell otherwise.
    _tagFileType type = CAE_FILE_OTHER;
    /// The kind when the content is binary.
    _tagFileType binaryType = CAE_FILE_OTHER;
    /// Whose file it is, where only one solver writes or reads such files.
    Solver solver = Solver::None;
    Look look = Look::None;
};

/// The kind of a file by its extension, or by its whole name for files that solvers write under fixed names.
/// Letter case does not matter.
FileKind KindOfFileName(const std::filesystem::path& name);

}  // namespace host
