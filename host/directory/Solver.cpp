#include "Solver.h"

namespace host {

std::string_view SolverName(Solver solver) {
    switch (solver) {
        case Solver::None:
            return "";
        case Solver::Abaqus:
            return "Abaqus";
        case Solver::AbaqusOrCalculix:
            return "Abaqus/CalculiX";
        case Solver::Ansys:
            return "Ansys";
        case Solver::Calculix:
            return "CalculiX";
        case Solver::LsDyna:
            return "LS-DYNA";
        case Solver::Nastran:
            return "Nastran";
        case Solver::OptiStruct:
            return "OptiStruct";
        case Solver::PamCrash:
            return "PAM-CRASH";
        case Solver::Permas:
            return "Permas";
        case Solver::Radioss:
            return "Radioss";
    }
    return "";
}

}  // namespace host
