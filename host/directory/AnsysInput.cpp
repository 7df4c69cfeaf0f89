#include <algorithm>
#include <array>
#include <string>

#include "SolverSyntax.h"
#include "host/system/Text.h"

// Ansys: slash commands and commands with commas.

namespace host {
namespace {

/// The text up to the next comma. It is removed from the text, together with the comma.
std::string_view TakeField(std::string_view& text) {
    const std::size_t end = std::min(text.find(','), text.size());
    const std::string_view field = Trim(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return field;
}

/// The file that a command like `/INPUT,mesh,dat` reads: a name and an extension.
std::string FileOfInputCommand(std::string_view line) {
    TakeField(line);
    std::string file(TakeField(line));
    const std::string_view extension = TakeField(line);
    return extension.empty() ? file : file + "." + std::string(extension);
}

}  // namespace

bool IsAnsysLine(std::string_view line) {
    constexpr std::array<std::string_view, 8> kCommands = {"/PREP7", "/SOLU", "/BATCH", "/COM",
                                                           "/TITLE", "/NOPR", "/UNITS", "/FILNAME"};
    if (line[0] != '/') {
        return false;
    }
    const std::string command = UpperBeginning(line, line.find_first_of(", \t", 1));
    return IsOneOf(command, kCommands);
}

SolverInput ReadAnsys(const SolverText& text) {
    SolverInput input;
    input.solver = Solver::Ansys;
    bool solves = false;
    bool hasMesh = false;
    for (const std::string_view line : text.lines) {
        const std::string command = UpperBeginning(line, line.find_first_of(", \t!", 1));
        solves = solves || command == "SOLVE" || command == "LSSOLVE";
        hasMesh = hasMesh || command == "NBLOCK" || command == "EBLOCK" || command == "N" || command == "EN";
        if (command == "/INPUT" || command == "/INP") {
            AddInclude(input, FileOfInputCommand(line));
        }
    }
    input.role = solves ? InputRole::Deck : hasMesh ? InputRole::Mesh : InputRole::Include;
    return input;
}

}  // namespace host
