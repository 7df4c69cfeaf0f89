#include <algorithm>
#include <array>
#include <string>

#include "SolverSyntax.h"
#include "host/system/Text.h"

// Nastran and OptiStruct: executive control, case control, bulk data.

namespace host {
namespace {

constexpr std::array<std::string_view, 5> kControl = {"SOL", "CEND", "BEGIN", "SUBCASE", "ENDDATA"};
constexpr std::array<std::string_view, 30> kMesh = {
    "GRID",   "GRID*",  "CTETRA", "CHEXA", "CPENTA", "CPYRAM", "CPYRA",  "CQUAD4", "CQUAD8", "CQUADR",
    "CTRIA3", "CTRIA6", "CTRIAR", "CBAR",  "CBEAM",  "CROD",   "CONROD", "CBUSH",  "CELAS1", "CELAS2",
    "CONM2",  "CSHEAR", "CGAP",   "CWELD", "RBE2",   "RBE3",   "CORD2R", "PLOTEL", "SET1",   "ENDDATA",
};
constexpr std::array<std::string_view, 16> kModel = {
    "PSHELL", "PSOLID", "PBAR", "PBARL", "PBEAM", "PROD",   "PBUSH", "PCOMP",
    "MAT1",   "MAT2",   "MAT8", "SPC1",  "EIGRL", "PLOAD4", "EIGRA", "TLOAD1",
};
// Words that show nothing, unless the text is known to be Nastran.
constexpr std::array<std::string_view, 7> kPlainWords = {"SPC",   "FORCE",  "LOAD",   "GRAV",
                                                         "PARAM", "MOMENT", "TABLED1"};

constexpr std::size_t kLongestCard = 128;

/// The beginning of a card: up to eight characters.
std::string FirstField(std::string_view line) {
    return UpperBeginning(line, std::min(line.find_first_of(" \t,='*"), std::size_t{8}));
}

/// The file that the INCLUDE on the line names. The name may continue on the next lines up to its closing
/// quote; then `index` is set to the last of them.
std::string FileOfInclude(const Lines& lines, std::size_t& index) {
    constexpr std::size_t kKeywordSize = 7;
    std::string file(Trim(lines[index].substr(kKeywordSize)));
    const char quote = file.empty() ? '\0' : file.front();
    while ((quote == '\'' || quote == '"') && file.find(quote, 1) == std::string::npos &&
           index + 1 < lines.size()) {
        file += lines[++index];
    }
    return file;
}

bool HasElements(const Lines& lines) {
    return std::ranges::any_of(lines, [](std::string_view line) { return IsOneOf(FirstField(line), kMesh); });
}

}  // namespace

bool IsNastranLine(std::string_view line) {
    const std::string word = FirstField(line);
    const std::string beginning = UpperBeginning(line, kLongestCard);
    const std::string_view text = beginning;
    if (IsOneOf(word, kControl)) {
        return word != "BEGIN" || text.starts_with("BEGIN BULK") || text.starts_with("BEGIN,BULK");
    }
    // A word alone shows nothing: a card continues with numbers.
    return (IsOneOf(word, kMesh) || IsOneOf(word, kModel)) &&
           text.find_first_of("0123456789", word.size()) != std::string_view::npos;
}

SolverInput ReadNastran(const SolverText& text) {
    const Lines& lines = text.lines;
    SolverInput input;
    input.solver = Solver::Nastran;
    bool startsRun = false;
    bool hasGrid = false;
    bool hasModel = false;
    for (std::size_t index = 0; index < lines.size(); ++index) {
        const std::string_view line = lines[index];
        if (line.empty() || line[0] == '$' || line[0] == '+' || line[0] == '*') {
            continue;
        }
        const std::string word = FirstField(line);
        if (word == "INCLUDE") {
            AddInclude(input, FileOfInclude(lines, index));
        }
        startsRun = startsRun || word == "SOL" || word == "CEND" || word == "BEGIN" || word == "SUBCASE";
        hasGrid = hasGrid || word == "GRID";
        hasModel = hasModel || IsOneOf(word, kModel) || IsOneOf(word, kPlainWords);
    }
    const bool hasOther = hasModel || (!hasGrid && HasElements(lines));
    input.role = RoleOf(startsRun, hasGrid, hasOther);
    return input;
}

}  // namespace host
