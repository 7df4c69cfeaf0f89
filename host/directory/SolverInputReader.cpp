#include "SolverInputReader.h"

#include <algorithm>
#include <iterator>

#include "SolverSyntax.h"

namespace host {
namespace {

struct Syntax {
    Solver solver;
    bool (*isLine)(std::string_view line);
    SolverInput (*read)(const SolverText& text);
};

/// A line has the first of these syntaxes that it fits.
constexpr Syntax kSyntaxes[] = {
    {Solver::LsDyna, IsLsDynaLine, ReadLsDyna},    {Solver::AbaqusOrCalculix, IsAbaqusLine, ReadAbaqus},
    {Solver::Radioss, IsRadiossLine, ReadRadioss}, {Solver::Ansys, IsAnsysLine, ReadAnsys},
    {Solver::Permas, IsPermasLine, ReadPermas},    {Solver::PamCrash, IsPamCrashLine, ReadPamCrash},
    {Solver::Nastran, IsNastranLine, ReadNastran},
};

/// The solver whose syntax the lines have; None if they fit none.
Solver SyntaxOf(const Lines& lines) {
    for (const std::string_view line : lines) {
        const auto* const found = std::ranges::find_if(
            kSyntaxes, [&](const Syntax& syntax) { return !line.empty() && syntax.isLine(line); });
        if (found != std::end(kSyntaxes)) {
            return found->solver;
        }
    }
    return Solver::None;
}

/// The solver in the table for all solvers that share its syntax; None if nothing reads input of the solver.
constexpr Solver WithSyntaxOf(Solver solver) {
    // Without a default, so that the compiler asks for the syntax of a new solver.
    switch (solver) {
        case Solver::Abaqus:
        case Solver::AbaqusOrCalculix:
        case Solver::Calculix:
            return Solver::AbaqusOrCalculix;
        case Solver::Nastran:
        case Solver::OptiStruct:
            return Solver::Nastran;
        case Solver::None:
        case Solver::Ansys:
        case Solver::LsDyna:
        case Solver::PamCrash:
        case Solver::Permas:
        case Solver::Radioss:
            return solver;
    }
    return Solver::None;
}

constexpr bool IsEverySyntaxInTheTable() {
    for (int solver = static_cast<int>(Solver::None) + 1; solver <= static_cast<int>(kLastSolver); ++solver) {
        const Solver wanted = WithSyntaxOf(static_cast<Solver>(solver));
        if (wanted != Solver::None &&
            std::ranges::find(kSyntaxes, wanted, &Syntax::solver) == std::end(kSyntaxes)) {
            return false;
        }
    }
    return true;
}
static_assert(IsEverySyntaxInTheTable());

}  // namespace

SolverInput ReadSolverInput(Solver expected, std::string_view fileName, const FileSample& sample) {
    const SolverText text = {SplitLines(sample), fileName, expected};
    Solver solver = SyntaxOf(text.lines);
    // If the name is clear, only the one other syntax that shares the extension can overrule it.
    const bool isOtherSyntax = expected == Solver::AbaqusOrCalculix && solver == Solver::Ansys;
    if (expected != Solver::None && !isOtherSyntax) {
        solver = expected;
    }
    const auto* const syntax = std::ranges::find(kSyntaxes, WithSyntaxOf(solver), &Syntax::solver);
    SolverInput input = syntax != std::end(kSyntaxes) ? syntax->read(text) : SolverInput();
    if (expected == Solver::OptiStruct) {
        input.solver = expected;
    }
    return input;
}

bool IsPrintedResult(const FileSample& sample) {
    const std::string_view head = sample.head;
    const bool isCalculix = head.find(" and time ") != std::string_view::npos &&
                            (head.find(" for set ") != std::string_view::npos ||
                             head.find(" for all ") != std::string_view::npos);
    return isCalculix || head.find("S T E P       1") != std::string_view::npos ||
           head.find("E I G E N V A L U E") != std::string_view::npos;
}

}  // namespace host
