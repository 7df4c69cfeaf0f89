#pragma once

#include <string>
#include <vector>

#include "Solver.h"

namespace host {

/// What a file is to a solver.
enum class InputRole {
    /// The text has nothing that a solver known here reads.
    Unclear,
    /// A run starts from it.
    Deck,
    /// It continues a run whose deck is another file in the same folder (the engine file of Radioss).
    Continuation,
    /// A part of a deck.
    Include,
    /// A part of a deck with nothing but nodes, elements and sets of them.
    Mesh,
};

struct SolverInput {
    InputRole role = InputRole::Unclear;
    Solver solver = Solver::None;
    /// The files that the text includes, as it names them, in its order.
    std::vector<std::string> includes;
};

}  // namespace host
