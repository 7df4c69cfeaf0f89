#pragma once

#include <string_view>

#include "SolverInput.h"
#include "SolverText.h"

/// The syntaxes of solver input. Each has a source file of its own (AbaqusInput.cpp), two functions here, and
/// a line in the table of SolverInputReader.cpp.
namespace host {

/// A text that is read as solver input.
struct SolverText {
    Lines lines;
    std::string_view fileName;
    /// The solver that the file's name speaks of, None where any is possible.
    Solver expected = Solver::None;
};

/// Whether a line can only be input of the solver; it is not empty.
bool IsAbaqusLine(std::string_view line);
bool IsAnsysLine(std::string_view line);
bool IsLsDynaLine(std::string_view line);
bool IsNastranLine(std::string_view line);
bool IsPamCrashLine(std::string_view line);
bool IsPermasLine(std::string_view line);
bool IsRadiossLine(std::string_view line);

/// Reads the text as input of the solver, which it is.
SolverInput ReadAbaqus(const SolverText& text);
SolverInput ReadAnsys(const SolverText& text);
SolverInput ReadLsDyna(const SolverText& text);
SolverInput ReadNastran(const SolverText& text);
SolverInput ReadPamCrash(const SolverText& text);
SolverInput ReadPermas(const SolverText& text);
SolverInput ReadRadioss(const SolverText& text);

}  // namespace host
