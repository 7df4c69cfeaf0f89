#pragma once

#include <cstddef>
#include <vector>

#include "DirectoryTree.h"
#include "SolverInput.h"

/// Settles what files that may be solver input are, when all of them are known.
namespace host {

/// A file that may be solver input, and its place in the tree.
struct InputCandidate {
    std::size_t directory;
    std::size_t file;
    FileKind kind;
    SolverInput input;
};

/// Settles the types and the solvers of these files in the tree. A file that another one includes is not a
/// deck, and neither is an engine file of Radioss whose starter is in the same directory.
void SettleInput(const std::vector<InputCandidate>& candidates, DirectoryTree& tree);

/// Settles the solver of decks that both Abaqus and CalculiX read: it is the one that the other files of the
/// directory belong to.
void SettleUndecidedSolvers(DirectoryTree& tree);

}  // namespace host
