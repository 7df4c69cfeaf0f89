#pragma once

#include <string_view>

#include "SolverInput.h"
#include "SolverText.h"

/// The syntaxes of solver input. A syntax is one source file (AbaqusInput.cpp), two functions here, and one
/// line in the table of SolverInputReader.cpp.
namespace host {

/// A text to read as solver input.
struct SolverText {
    Lines lines;
    std::string_view fileName;
    /// The solver that the name of the file belongs to; None if it may be any.
    Solver expected = Solver::None;
};

/// Whether a line belongs to this syntax alone. The line must not be empty.
bool IsAbaqusLine(std::string_view line);
bool IsAnsysLine(std::string_view line);
bool IsLsDynaLine(std::string_view line);
bool IsNastranLine(std::string_view line);
bool IsPamCrashLine(std::string_view line);
bool IsPermasLine(std::string_view line);
bool IsRadiossLine(std::string_view line);

/// Reads a text that has this syntax.
SolverInput ReadAbaqus(const SolverText& text);
SolverInput ReadAnsys(const SolverText& text);
SolverInput ReadLsDyna(const SolverText& text);
SolverInput ReadNastran(const SolverText& text);
SolverInput ReadPamCrash(const SolverText& text);
SolverInput ReadPermas(const SolverText& text);
SolverInput ReadRadioss(const SolverText& text);

}  // namespace host
