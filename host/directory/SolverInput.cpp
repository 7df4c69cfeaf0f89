#include "SolverInput.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>

#include "host/system/Text.h"

namespace host {
namespace {

using Lines = std::vector<std::string_view>;

Lines SplitLines(const FileSample& sample) {
    Lines lines;
    const auto split = [&](std::string_view text, bool isCutInFront) {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            if (!isCutInFront) {
                lines.push_back(Trim(text.substr(0, end)));
            }
            isCutInFront = false;
            text.remove_prefix(std::min(end + 1, text.size()));
        }
    };
    split(sample.head, false);
    split(sample.tail, true);
    return lines;
}

template <std::size_t Size>
bool IsOneOf(std::string_view word, const std::array<std::string_view, Size>& words) {
    return std::ranges::find(words, word) != words.end();
}

bool IsLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

/// The first word of a line, up to a blank, comma, slash behind the first character, or equals sign; upper
/// case.
std::string FirstWord(std::string_view line) {
    return ToUpperAscii(line.substr(0, std::min(line.find_first_of(" \t,=/*", 1), line.size())));
}

/// The text without the quotes around it and with the slashes of this host's paths.
std::string FileReference(std::string_view text) {
    text = Trim(text);
    if (text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front()) {
        text = text.substr(1, text.size() - 2);
    }
    std::string reference(Trim(text));
    std::ranges::replace(reference, '\\', '/');
    return reference;
}

void AddInclude(SolverInput& input, std::string_view text) {
    std::string reference = FileReference(text);
    if (!reference.empty()) {
        input.includes.push_back(std::move(reference));
    }
}

// -- Abaqus and CalculiX: keyword lines with one star, parameters behind commas
// ------------------------------------

/// The keyword in upper case with single blanks: "*End  Step" gives "END STEP".
std::string StarKeyword(std::string_view line) {
    std::string keyword;
    for (const char character : Trim(line.substr(1, std::min(line.find(','), line.size()) - 1))) {
        const bool isBlank = character == ' ' || character == '\t';
        if (!isBlank) {
            keyword += character;
        } else if (!keyword.empty() && keyword.back() != ' ') {
            keyword += ' ';
        }
    }
    return ToUpperAscii(keyword);
}

/// The value of a parameter on a keyword line: "input" of `*INCLUDE, INPUT=mesh.inp` is `mesh.inp`.
std::string_view StarParameter(std::string_view line, std::string_view name) {
    while (!line.empty()) {
        const std::size_t end = std::min(line.find(','), line.size());
        const std::string_view item = line.substr(0, end);
        const std::size_t equals = item.find('=');
        if (equals != std::string_view::npos && ToUpperAscii(Trim(item.substr(0, equals))) == name) {
            return item.substr(equals + 1);
        }
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return {};
}

SolverInput ReadAbaqus(const Lines& lines) {
    constexpr std::array<std::string_view, 19> kMeshKeywords = {
        "HEADING", "NODE",      "ELEMENT",     "NSET",   "ELSET",   "SURFACE",  "NGEN",
        "ELGEN",   "NFILL",     "NCOPY",       "ELCOPY", "SYSTEM",  "END PART", "PART",
        "NMAP",    "TRANSFORM", "ORIENTATION", "NORMAL", "INCLUDE",
    };
    // OUTPUT itself belongs to both; the requests below it do not.
    constexpr std::array<std::string_view, 6> kAbaqusOnly = {"INSTANCE", "ASSEMBLY",    "END ASSEMBLY",
                                                             "PREPRINT", "NODE OUTPUT", "ELEMENT OUTPUT"};
    constexpr std::array<std::string_view, 4> kCalculixOnly = {"NODE FILE", "EL FILE", "CONTACT FILE",
                                                               "FACE PRINT"};

    SolverInput input;
    input.solver = Solver::AbaqusOrCalculix;
    bool hasStep = false;
    bool hasMesh = false;
    bool hasOther = false;
    for (const std::string_view line : lines) {
        if (line.size() < 2 || line[0] != '*' || !IsLetter(line[1])) {
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
    // A deck may draw in everything, its steps included; what nobody draws in and draws in others starts a
    // run.
    if (hasStep || !input.includes.empty()) {
        input.role = InputRole::Deck;
    } else if (hasMesh && !hasOther) {
        input.role = InputRole::Mesh;
    } else if (hasOther) {
        input.role = InputRole::Include;
    }
    return input;
}

// -- LS-DYNA: keyword lines with one star, words joined by underscores
// ---------------------------------------------

SolverInput ReadLsDyna(const Lines& lines) {
    constexpr std::array<std::string_view, 7> kFrame = {"KEYWORD", "TITLE",     "END",       "COMMENT",
                                                        "NODE",    "PARAMETER", "KEYWORD_ID"};
    SolverInput input;
    input.solver = Solver::LsDyna;
    bool hasTermination = false;
    bool hasMesh = false;
    bool hasOther = false;
    std::string keyword;
    std::string reference;
    for (const std::string_view line : lines) {
        if (line.empty() || line[0] == '$') {
            continue;
        }
        if (line[0] != '*') {
            if (keyword == "INCLUDE" || keyword == "INCLUDE_TRANSFORM") {
                // A plus sign behind a blank continues a long name on the next line.
                const bool isContinued = line.ends_with(" +");
                reference += Trim(isContinued ? line.substr(0, line.size() - 2) : line);
                if (!isContinued) {
                    AddInclude(input, reference);
                    reference.clear();
                }
            }
            // Only the plain keyword takes a list of names.
            keyword = keyword == "INCLUDE" ? keyword : std::string();
            continue;
        }
        keyword = FirstWord(line.substr(1));
        reference.clear();
        hasTermination = hasTermination || keyword == "CONTROL_TERMINATION";
        const bool isElement = keyword.starts_with("ELEMENT_");
        hasMesh = hasMesh || isElement || keyword == "NODE";
        hasOther = hasOther || (!isElement && !keyword.starts_with("SET_") && !keyword.starts_with("PART") &&
                                !IsOneOf(std::string_view(keyword), kFrame));
    }
    if (hasTermination || !input.includes.empty()) {
        input.role = InputRole::Deck;
    } else if (hasMesh && !hasOther) {
        input.role = InputRole::Mesh;
    } else if (hasOther) {
        input.role = InputRole::Include;
    }
    return input;
}

// -- Nastran and OptiStruct: executive control, case control, bulk data
// --------------------------------------------

constexpr std::array<std::string_view, 5> kNastranControl = {"SOL", "CEND", "BEGIN", "SUBCASE", "ENDDATA"};
constexpr std::array<std::string_view, 30> kNastranMesh = {
    "GRID",   "GRID*",  "CTETRA", "CHEXA", "CPENTA", "CPYRAM", "CPYRA",  "CQUAD4", "CQUAD8", "CQUADR",
    "CTRIA3", "CTRIA6", "CTRIAR", "CBAR",  "CBEAM",  "CROD",   "CONROD", "CBUSH",  "CELAS1", "CELAS2",
    "CONM2",  "CSHEAR", "CGAP",   "CWELD", "RBE2",   "RBE3",   "CORD2R", "PLOTEL", "SET1",   "ENDDATA",
};
constexpr std::array<std::string_view, 16> kNastranModel = {
    "PSHELL", "PSOLID", "PBAR", "PBARL", "PBEAM", "PROD",   "PBUSH", "PCOMP",
    "MAT1",   "MAT2",   "MAT8", "SPC1",  "EIGRL", "PLOAD4", "EIGRA", "TLOAD1",
};
// Words that prove nothing outside of a text that is Nastran's already.
constexpr std::array<std::string_view, 7> kNastranPlainWords = {"SPC",   "FORCE",  "LOAD",   "GRAV",
                                                                "PARAM", "MOMENT", "TABLED1"};

std::string NastranWord(std::string_view line) {
    return ToUpperAscii(
        line.substr(0, std::min({line.find_first_of(" \t,='*"), line.size(), std::size_t{8}})));
}

SolverInput ReadNastran(const Lines& lines) {
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
        const std::string word = NastranWord(line);
        if (word == "INCLUDE") {
            // The name may be continued on the next lines up to its closing quote.
            std::string reference(Trim(line.substr(7)));
            const char quote = reference.empty() ? '\0' : reference.front();
            while ((quote == '\'' || quote == '"') && reference.find(quote, 1) == std::string::npos &&
                   index + 1 < lines.size()) {
                reference += lines[++index];
            }
            AddInclude(input, reference);
        }
        startsRun = startsRun || word == "SOL" || word == "CEND" || word == "BEGIN" || word == "SUBCASE";
        hasGrid = hasGrid || word == "GRID";
        hasModel = hasModel || IsOneOf(std::string_view(word), kNastranModel) ||
                   IsOneOf(std::string_view(word), kNastranPlainWords);
    }
    if (startsRun) {
        input.role = InputRole::Deck;
    } else if (hasModel) {
        input.role = InputRole::Include;
    } else if (hasGrid) {
        input.role = InputRole::Mesh;
    } else if (!lines.empty()) {
        const bool hasElements = std::ranges::any_of(lines, [](std::string_view line) {
            return !line.empty() && IsOneOf(std::string_view(NastranWord(line)), kNastranMesh);
        });
        input.role = hasElements ? InputRole::Include : InputRole::Unclear;
    }
    return input;
}

// -- Ansys: slash commands and commands with commas
// ----------------------------------------------------------------

SolverInput ReadAnsys(const Lines& lines) {
    SolverInput input;
    input.solver = Solver::Ansys;
    bool solves = false;
    bool hasMesh = false;
    for (const std::string_view line : lines) {
        const std::string upper = ToUpperAscii(line.substr(0, std::min<std::size_t>(line.size(), 512)));
        const std::string_view text = upper;
        const std::string_view command =
            text.substr(0, std::min(text.find_first_of(", \t!", 1), text.size()));
        solves = solves || command == "SOLVE" || command == "LSSOLVE";
        hasMesh = hasMesh || command == "NBLOCK" || command == "EBLOCK" || command == "N" || command == "EN";
        if (command == "/INPUT" || command == "/INP") {
            const std::string_view original = line.substr(0, upper.size());
            const std::size_t nameBegin = std::min(original.find(','), original.size() - 1) + 1;
            std::string_view name = original.substr(nameBegin);
            const std::size_t comma = name.find(',');
            std::string reference(Trim(name.substr(0, std::min(comma, name.size()))));
            if (comma != std::string_view::npos) {
                const std::string_view rest = name.substr(comma + 1);
                const std::string_view extension =
                    Trim(rest.substr(0, std::min(rest.find(','), rest.size())));
                reference += extension.empty() ? "" : "." + std::string(extension);
            }
            AddInclude(input, reference);
        }
    }
    input.role = solves ? InputRole::Deck : hasMesh ? InputRole::Mesh : InputRole::Include;
    return input;
}

// -- Radioss: slash blocks; starter and engine
// ---------------------------------------------------------------------

SolverInput ReadRadioss(const Lines& lines, std::string_view fileName) {
    SolverInput input;
    input.solver = Solver::Radioss;
    bool isStarter = false;
    bool isEngine = false;
    for (const std::string_view line : lines) {
        const std::string word = ToUpperAscii(line.substr(0, std::min<std::size_t>(line.size(), 16)));
        isStarter = isStarter || word.starts_with("#RADIOSS STARTER") || word.starts_with("/BEGIN");
        isEngine = isEngine || word.starts_with("#RADIOSS ENGINE") || word.starts_with("/RUN/");
        if (word.starts_with("#INCLUDE")) {
            AddInclude(input, line.substr(8));
        }
    }
    // The number in the name tells which run of the model a file belongs to: _0000 is the starter.
    const std::size_t underscore = fileName.rfind('_');
    const std::string_view number =
        underscore == std::string_view::npos
            ? std::string_view()
            : fileName.substr(underscore + 1, fileName.find('.', underscore) - underscore - 1);
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

// -- PAM-CRASH and Permas
// ------------------------------------------------------------------------------------------

SolverInput ReadPamCrash(const Lines& lines) {
    SolverInput input;
    input.solver = Solver::PamCrash;
    input.role = InputRole::Include;
    for (const std::string_view line : lines) {
        const std::string word = FirstWord(line);
        if (word == "INPUTVERSION" || word == "SOLVER") {
            input.role = InputRole::Deck;
        } else if (word == "INCLU" || word == "INCLUDE") {
            AddInclude(input, line.substr(std::min(line.find('/'), line.size() - 1) + 1));
        }
    }
    return input;
}

SolverInput ReadPermas(const Lines& lines, bool isUserControl) {
    SolverInput input;
    input.solver = Solver::Permas;
    // The control file starts the run; without one, the model itself is what the engineer keeps as the deck.
    input.role = InputRole::Deck;
    for (const std::string_view line : lines) {
        const std::string upper = ToUpperAscii(line);
        const std::size_t file = upper.find("FILE");
        const std::size_t equals = file == std::string::npos ? file : upper.find('=', file);
        if (isUserControl && upper.starts_with("READ") && equals != std::string::npos) {
            const std::string_view rest = Trim(line.substr(equals + 1));
            AddInclude(input, rest.substr(0, std::min(rest.find_first_of(" \t"), rest.size())));
        } else if (upper.starts_with("$INCLUDE") || upper.starts_with("&INCLUDE")) {
            AddInclude(input, line.substr(8));
        }
    }
    return input;
}

// -- Which syntax
// --------------------------------------------------------------------------------------------------

/// The solver whose syntax one line shows; None where it could belong to several or to none.
Solver SyntaxOfLine(std::string_view line) {
    constexpr std::array<std::string_view, 12> kStarKeywords = {
        "HEADING",  "NODE", "ELEMENT", "MATERIAL", "STEP", "INCLUDE",
        "BOUNDARY", "NSET", "ELSET",   "SURFACE",  "PART", "ELASTIC",
    };
    constexpr std::array<std::string_view, 8> kAnsysCommands = {"/PREP7", "/SOLU", "/BATCH", "/COM",
                                                                "/TITLE", "/NOPR", "/UNITS", "/FILNAME"};
    constexpr std::array<std::string_view, 5> kRadiossBlocks = {"/BEGIN", "/RUN/", "/NODE", "/ANIM/",
                                                                "/VERS/"};
    if (line.empty()) {
        return Solver::None;
    }
    const std::string upper = ToUpperAscii(line.substr(0, std::min<std::size_t>(line.size(), 128)));
    const std::string_view text = upper;
    if (line[0] == '*' && line.size() > 1 && IsLetter(line[1])) {
        const std::string word = FirstWord(line.substr(1));
        if (word == "KEYWORD" || word.find('_') != std::string::npos) {
            return Solver::LsDyna;
        }
        return IsOneOf(std::string_view(word), kStarKeywords) ? Solver::AbaqusOrCalculix : Solver::None;
    }
    if (text.starts_with("#RADIOSS")) {
        return Solver::Radioss;
    }
    if (line[0] == '/') {
        const std::string_view command = text.substr(0, std::min(text.find_first_of(", \t", 1), text.size()));
        if (IsOneOf(command, kAnsysCommands)) {
            return Solver::Ansys;
        }
        const bool isRadioss = std::ranges::any_of(
            kRadiossBlocks, [&](std::string_view block) { return command.starts_with(block); });
        return isRadioss ? Solver::Radioss : Solver::None;
    }
    if (text.starts_with("$ENTER ") || text.starts_with("$STRUCTURE")) {
        return Solver::Permas;
    }
    const std::string word = FirstWord(line);
    const bool isPamCard = word == "INPUTVERSION" || text.starts_with("SOLVER  ") ||
                           text.starts_with("INCLU /") || (text.size() > 8 && text.substr(5, 3) == " / ");
    if (isPamCard) {
        return Solver::PamCrash;
    }
    const std::string nastranWord = NastranWord(line);
    const bool isControl =
        IsOneOf(std::string_view(nastranWord), kNastranControl) &&
        (nastranWord != "BEGIN" || text.starts_with("BEGIN BULK") || text.starts_with("BEGIN,BULK"));
    const bool isBulk = IsOneOf(std::string_view(nastranWord), kNastranMesh) ||
                        IsOneOf(std::string_view(nastranWord), kNastranModel);
    // A word alone proves nothing: a card goes on with numbers.
    const bool hasFields = text.find_first_of("0123456789", nastranWord.size()) != std::string_view::npos;
    return isControl || (isBulk && hasFields) ? Solver::Nastran : Solver::None;
}

Solver SyntaxOf(const Lines& lines) {
    for (const std::string_view line : lines) {
        if (const Solver solver = SyntaxOfLine(line); solver != Solver::None) {
            return solver;
        }
    }
    return Solver::None;
}

}  // namespace

SolverInput ReadSolverInput(Solver expected, std::string_view fileName, const FileSample& sample) {
    const Lines lines = SplitLines(sample);
    const bool isUserControl = expected == Solver::Permas;
    Solver solver = SyntaxOf(lines);
    // Where the name is clear, only a text of the one syntax that shares it may say otherwise.
    const bool isOtherSyntax = expected == Solver::AbaqusOrCalculix && solver == Solver::Ansys;
    if (expected != Solver::None && !isOtherSyntax) {
        solver = expected;
    }
    SolverInput input;
    switch (solver) {
        case Solver::Abaqus:
        case Solver::Calculix:
        case Solver::AbaqusOrCalculix:
            input = ReadAbaqus(lines);
            break;
        case Solver::Ansys:
            input = ReadAnsys(lines);
            break;
        case Solver::LsDyna:
            input = ReadLsDyna(lines);
            break;
        case Solver::Nastran:
        case Solver::OptiStruct:
            input = ReadNastran(lines);
            break;
        case Solver::PamCrash:
            input = ReadPamCrash(lines);
            break;
        case Solver::Permas:
            input = ReadPermas(lines, isUserControl);
            break;
        case Solver::Radioss:
            input = ReadRadioss(lines, fileName);
            break;
        case Solver::None:
            break;
    }
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
