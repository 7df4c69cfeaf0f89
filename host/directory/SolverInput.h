#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "FileKinds.h"
#include "host/system/FileSystem.h"

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

/// How much of a file ReadSolverInput wants to see: what starts a run stands at one end of a deck (the steps
/// of Abaqus at the end, the executive control of Nastran at the beginning), whatever mesh lies between.
inline constexpr std::size_t kInputHeadSize = std::size_t{256} * 1024;
inline constexpr std::size_t kInputTailSize = std::size_t{64} * 1024;

/// Reads the beginning and the end of a text as solver input. `expected` is the solver that the file's name
/// speaks of, None where any is possible; the text has the last word. `fileName` tells the starter from the
/// engine of Radioss.
SolverInput ReadSolverInput(Solver expected, std::string_view fileName, const FileSample& sample);

/// Whether a text is what a solver prints into a result file with no syntax of its own (the `.dat` of Abaqus
/// and CalculiX).
bool IsPrintedResult(const FileSample& sample);

}  // namespace host
