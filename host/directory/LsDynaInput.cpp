#include <algorithm>
#include <array>
#include <string>

#include "SolverSyntax.h"
#include "host/system/Text.h"

// LS-DYNA: keyword lines with one star, words joined by underscores.

namespace host {
namespace {

/// Keywords that meshes and other parts of decks both have.
constexpr std::array<std::string_view, 7> kFrame = {"KEYWORD", "TITLE",     "END",       "COMMENT",
                                                    "NODE",    "PARAMETER", "KEYWORD_ID"};

/// The lines below a keyword that names files.
class IncludeLines {
public:
    explicit IncludeLines(SolverInput& input) : input_(input) {}

    void Begin(const std::string& keyword) {
        takesNames_ = keyword == "INCLUDE";
        takesName_ = takesNames_ || keyword == "INCLUDE_TRANSFORM";
        name_.clear();
    }

    void ReadLine(std::string_view line) {
        if (takesName_) {
            // A plus sign after a blank continues a long name on the next line.
            const bool isContinued = line.ends_with(" +");
            name_ += Trim(isContinued ? line.substr(0, line.size() - 2) : line);
            if (!isContinued) {
                AddInclude(input_, name_);
                name_.clear();
            }
        }
        // Only the plain keyword has a list of names.
        takesName_ = takesNames_;
    }

private:
    SolverInput& input_;
    bool takesName_ = false;
    bool takesNames_ = false;
    std::string name_;
};

}  // namespace

bool IsLsDynaLine(std::string_view line) {
    if (line.size() < 2 || line[0] != '*' || !IsLetter(line[1])) {
        return false;
    }
    const std::string word = FirstWord(line.substr(1));
    return word == "KEYWORD" || word.find('_') != std::string::npos;
}

SolverInput ReadLsDyna(const SolverText& text) {
    SolverInput input;
    input.solver = Solver::LsDyna;
    bool hasTermination = false;
    bool hasMesh = false;
    bool hasOther = false;
    IncludeLines includes(input);
    for (const std::string_view line : text.lines) {
        if (line.empty() || line[0] == '$') {
            continue;
        }
        if (line[0] != '*') {
            includes.ReadLine(line);
            continue;
        }
        const std::string keyword = FirstWord(line.substr(1));
        includes.Begin(keyword);
        hasTermination = hasTermination || keyword == "CONTROL_TERMINATION";
        const bool isElement = keyword.starts_with("ELEMENT_");
        hasMesh = hasMesh || isElement || keyword == "NODE";
        hasOther = hasOther || (!isElement && !keyword.starts_with("SET_") && !keyword.starts_with("PART") &&
                                !IsOneOf(keyword, kFrame));
    }
    input.role = RoleOf(hasTermination || !input.includes.empty(), hasMesh, hasOther);
    return input;
}

}  // namespace host
