#pragma once

#include <string>
#include <vector>

#include "FileKinds.h"

namespace host {

/// What a file is to a solver.
enum class InputRole {
    /// The text does not tell: it holds nothing that is input of a solver known here.
    Unclear,
    /// A run starts from it.
    Deck,
    /// It continues a run whose deck is another file of the same folder (the engine file of Radioss).
    Continuation,
    /// A part of a deck.
    Include,
    /// A part of a deck that holds nothing but nodes, elements and groups of them.
    Mesh,
};

struct SolverInput {
    InputRole role = InputRole::Unclear;
    Solver solver = Solver::None;
    /// The other files that the text draws in, as it names them, in its order.
    std::vector<std::string> includes;
};

}  // namespace host
