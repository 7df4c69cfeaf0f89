#include <algorithm>
#include <array>
#include <string>

#include "SolverSyntax.h"
#include "host/system/Text.h"

// PAM-CRASH: cards in columns.

namespace host {

bool IsPamCrashLine(std::string_view line) {
    if (line[0] == '*' || line[0] == '/') {
        return false;
    }
    const std::string beginning = UpperBeginning(line, 16);
    const std::string_view text = beginning;
    return FirstWord(line) == "INPUTVERSION" || text.starts_with("SOLVER  ") || text.starts_with("INCLU /") ||
           (text.size() > 8 && text.substr(5, 3) == " / ");
}

SolverInput ReadPamCrash(const SolverText& text) {
    SolverInput input;
    input.solver = Solver::PamCrash;
    input.role = InputRole::Include;
    for (const std::string_view line : text.lines) {
        const std::string word = FirstWord(line);
        if (word == "INPUTVERSION" || word == "SOLVER") {
            input.role = InputRole::Deck;
        } else if (word == "INCLU" || word == "INCLUDE") {
            AddInclude(input, line.substr(std::min(line.find('/'), line.size() - 1) + 1));
        }
    }
    return input;
}

}  // namespace host
