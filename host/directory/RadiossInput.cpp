#include <algorithm>
#include <array>
#include <string>

#include "SolverSyntax.h"
#include "host/system/Text.h"

// Radioss: slash blocks; starter and engine.

namespace host {
namespace {

constexpr std::size_t kLongestWord = 16;

/// The number in the name, which says which run of the model a file belongs to: "0001" in crash_0001.rad. The
/// starter has 0000.
std::string_view RunNumber(std::string_view fileName) {
    const std::size_t underscore = fileName.rfind('_');
    return underscore == std::string_view::npos
               ? std::string_view()
               : fileName.substr(underscore + 1, fileName.find('.', underscore) - underscore - 1);
}

}  // namespace

bool IsRadiossLine(std::string_view line) {
    constexpr std::array<std::string_view, 5> kBlocks = {"/BEGIN", "/RUN/", "/NODE", "/ANIM/", "/VERS/"};
    const std::string beginning = UpperBeginning(line, kLongestWord);
    const auto isBeginning = [&](std::string_view block) { return beginning.starts_with(block); };
    return isBeginning("#RADIOSS") || std::ranges::any_of(kBlocks, isBeginning);
}

SolverInput ReadRadioss(const SolverText& text) {
    SolverInput input;
    input.solver = Solver::Radioss;
    bool isStarter = false;
    bool isEngine = false;
    for (const std::string_view line : text.lines) {
        const std::string word = UpperBeginning(line, kLongestWord);
        isStarter = isStarter || word.starts_with("#RADIOSS STARTER") || word.starts_with("/BEGIN");
        isEngine = isEngine || word.starts_with("#RADIOSS ENGINE") || word.starts_with("/RUN/");
        if (word.starts_with("#INCLUDE")) {
            AddInclude(input, line.substr(8));
        }
    }
    const std::string_view number = RunNumber(text.fileName);
    const bool isNumbered =
        number.size() == 4 && number.find_first_not_of("0123456789") == std::string_view::npos;
    if (isStarter || (isNumbered && number == "0000")) {
        input.role = InputRole::Deck;
    } else if (isEngine || isNumbered) {
        input.role = InputRole::Continuation;
    } else {
        input.role = InputRole::Include;
    }
    return input;
}

}  // namespace host
