#pragma once

#include <cstddef>
#include <string_view>

#include "SolverInput.h"
#include "host/system/FileSystem.h"

namespace host {

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
