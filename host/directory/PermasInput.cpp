#include <algorithm>
#include <array>
#include <string>

#include "SolverSyntax.h"
#include "host/system/Text.h"

// Permas: a control file, and a model of blocks that begin with a dollar sign.

namespace host {

bool IsPermasLine(std::string_view line) {
    const std::string beginning = UpperBeginning(line, 16);
    return beginning.starts_with("$ENTER ") || beginning.starts_with("$STRUCTURE");
}

SolverInput ReadPermas(const SolverText& text) {
    // Only the control file has an extension that belongs to Permas alone.
    const bool isControlFile = text.expected == Solver::Permas;
    SolverInput input;
    input.solver = Solver::Permas;
    // The control file starts the run. Without one, the model itself is kept as the deck.
    input.role = InputRole::Deck;
    for (const std::string_view line : text.lines) {
        const std::string upper = ToUpperAscii(line);
        const std::size_t file = upper.find("FILE");
        const std::size_t equals = file == std::string::npos ? file : upper.find('=', file);
        if (isControlFile && upper.starts_with("READ") && equals != std::string::npos) {
            const std::string_view rest = Trim(line.substr(equals + 1));
            AddInclude(input, rest.substr(0, std::min(rest.find_first_of(" \t"), rest.size())));
        } else if (upper.starts_with("$INCLUDE") || upper.starts_with("&INCLUDE")) {
            AddInclude(input, line.substr(8));
        }
    }
    return input;
}

}  // namespace host
