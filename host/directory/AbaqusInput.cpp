#include <algorithm>
#include <array>
#include <string>

#include "SolverSyntax.h"
#include "host/model/StarKeywords.h"

// Abaqus and CalculiX: keyword lines with one star, parameters behind commas.

namespace host {
namespace {

constexpr std::array<std::string_view, 19> kMeshKeywords = {
    "HEADING", "NODE",      "ELEMENT",     "NSET",   "ELSET",   "SURFACE",  "NGEN",
    "ELGEN",   "NFILL",     "NCOPY",       "ELCOPY", "SYSTEM",  "END PART", "PART",
    "NMAP",    "TRANSFORM", "ORIENTATION", "NORMAL", "INCLUDE",
};
// Both solvers have OUTPUT; these requests below it belong to one of them.
constexpr std::array<std::string_view, 6> kAbaqusOnly = {"INSTANCE", "ASSEMBLY",    "END ASSEMBLY",
                                                         "PREPRINT", "NODE OUTPUT", "ELEMENT OUTPUT"};
constexpr std::array<std::string_view, 4> kCalculixOnly = {"NODE FILE", "EL FILE", "CONTACT FILE",
                                                           "FACE PRINT"};

}  // namespace

bool IsAbaqusLine(std::string_view line) {
    constexpr std::array<std::string_view, 12> kKeywords = {
        "HEADING",  "NODE", "ELEMENT", "MATERIAL", "STEP", "INCLUDE",
        "BOUNDARY", "NSET", "ELSET",   "SURFACE",  "PART", "ELASTIC",
    };
    return IsStarKeyword(line) && IsOneOf(FirstWord(line.substr(1)), kKeywords);
}

SolverInput ReadAbaqus(const SolverText& text) {
    SolverInput input;
    input.solver = Solver::AbaqusOrCalculix;
    bool hasStep = false;
    bool hasMesh = false;
    bool hasOther = false;
    for (const std::string_view line : text.lines) {
        if (!IsStarKeyword(line)) {
            continue;
        }
        const std::string keyword = StarKeyword(line);
        hasStep = hasStep || keyword == "STEP" || keyword == "END STEP";
        hasMesh = hasMesh || keyword == "NODE" || keyword == "ELEMENT";
        hasOther = hasOther || !IsOneOf(keyword, kMeshKeywords);
        if (keyword == "INCLUDE") {
            AddInclude(input, StarParameter(line, "INPUT"));
        }
        if (IsOneOf(keyword, kAbaqusOnly)) {
            input.solver = Solver::Abaqus;
        } else if (input.solver != Solver::Abaqus && IsOneOf(keyword, kCalculixOnly)) {
            input.solver = Solver::Calculix;
        }
    }
    // A deck may include everything, its steps too: a file that includes others and is not included itself
    // starts a run.
    input.role = RoleOf(hasStep || !input.includes.empty(), hasMesh, hasOther);
    return input;
}

}  // namespace host
