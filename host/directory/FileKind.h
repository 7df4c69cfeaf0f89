#pragma once

#include <CAETypes.h>

#include "Solver.h"

namespace host {

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

}  // namespace host
