#pragma once

#include <cstddef>
#include <string_view>

#include "SolverInput.h"
#include "host/system/FileSystem.h"

namespace host {

/// How much of a file ReadSolverInput needs. What starts a run is at one end of a deck (the steps of Abaqus
/// at its end, the executive control of Nastran at its beginning), however large the mesh between is.
inline constexpr std::size_t kInputHeadSize = std::size_t{256} * 1024;
inline constexpr std::size_t kInputTailSize = std::size_t{64} * 1024;

/// Reads the beginning and the end of a text as solver input. `expected` is the solver that the name of the
/// file belongs to, None if it may be any; the text decides. `fileName` tells the starter of Radioss from the
/// engine.
SolverInput ReadSolverInput(Solver expected, std::string_view fileName, const FileSample& sample);

/// Whether a text is a printed result without a syntax of its own (the `.dat` of Abaqus and CalculiX).
bool IsPrintedResult(const FileSample& sample);

}  // namespace host
