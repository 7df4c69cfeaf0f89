#pragma once

#include <string_view>

namespace host {

enum class Solver {
    None,
    Abaqus,
    /// The two share one syntax; only some keywords belong to one of them.
    AbaqusOrCalculix,
    Ansys,
    Calculix,
    LsDyna,
    Nastran,
    OptiStruct,
    PamCrash,
    Permas,
    Radioss,
};
inline constexpr Solver kLastSolver = Solver::Radioss;

/// The name of the solver in the metadata; empty for Solver::None.
std::string_view SolverName(Solver solver);

}  // namespace host
