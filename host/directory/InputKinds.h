#pragma once

#include <cstddef>
#include <vector>

#include "DirectoryTree.h"
#include "SolverInput.h"

/// What the files of a directory tree that may be input of a solver are, seen together.
namespace host {

/// A file that may be input of a solver, and where it stands in the tree.
struct InputCandidate {
    std::size_t directory;
    std::size_t file;
    FileKind kind;
    SolverInput input;
};

/// Settles the types and the solvers of these files in the tree: what another one draws in is no deck, an
/// engine file of Radioss beside its starter is none either.
void SettleInput(const std::vector<InputCandidate>& candidates, DirectoryTree& tree);

/// Settles the solver of decks that both Abaqus and CalculiX read: they belong to the one whose other files
/// lie beside them.
void SettleUndecidedSolvers(DirectoryTree& tree);

}  // namespace host
