// Reads any text as .korvaneignore files and asks about any paths. What the rules say is compared with a
// second reading of the same text, which tries everything that a star may stand for. NUL bytes part the
// input: the file of the root, the file of the directory of the first path, patterns of the command line, and
// paths.

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Expect.h"
#include "host/directory/IgnoreRules.h"
#include "host/directory/Selection.h"

namespace {

using Verdict = host::IgnoreRules::Verdict;

/// The second reading fills a table of pattern and path.
constexpr std::size_t kLongest = 200;
constexpr std::size_t kMostRules = 20;
constexpr std::size_t kMostPaths = 8;

std::vector<std::string_view> Split(std::string_view text, char separator, std::size_t most) {
    std::vector<std::string_view> parts;
    while (parts.size() < most) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            break;
        }
        text.remove_prefix(end + 1);
    }
    return parts;
}

/// Goes through pattern and path at once, byte by byte.
class SecondReading {
public:
    SecondReading(std::string_view pattern, std::string_view path)
        : pattern_(pattern), path_(path), known_((pattern.size() + 1) * (path.size() + 1), kUnknown) {}

    bool Fits() { return IsClosed() && FitsFrom(0, 0); }

private:
    static constexpr char kUnknown = 2;
    struct Set {
        std::size_t end;
        bool hasByte;
    };

    bool IsClosed() const {
        std::size_t place = 0;
        while (place < pattern_.size()) {
            if (pattern_[place] == '[') {
                const std::optional<Set> set = ReadSet(place, 'x');
                if (!set) {
                    return false;
                }
                place = set->end;
            } else {
                place += pattern_[place] == '\\' ? 2 : 1;
            }
        }
        return place == pattern_.size();
    }

    static std::optional<bool> HasClass(std::string_view name, int byte) {
        struct Class {
            std::string_view name;
            int (*has)(int byte);
        };
        static constexpr Class kClasses[] = {
            {"alnum", &std::isalnum}, {"alpha", &std::isalpha}, {"blank", &std::isblank},
            {"cntrl", &std::iscntrl}, {"digit", &std::isdigit}, {"graph", &std::isgraph},
            {"lower", &std::islower}, {"print", &std::isprint}, {"punct", &std::ispunct},
            {"space", &std::isspace}, {"upper", &std::isupper}, {"xdigit", &std::isxdigit},
        };
        for (const Class& known : kClasses) {
            if (name == known.name) {
                return known.has(byte) != 0;
            }
        }
        return std::nullopt;
    }

    /// Where the set that begins at the place ends, and whether it has the byte; nothing if it is not closed.
    std::optional<Set> ReadSet(std::size_t place, unsigned char byte) const {
        const auto at = [&](std::size_t index) -> int {
            return index < pattern_.size() ? static_cast<unsigned char>(pattern_[index]) : -1;
        };
        ++place;
        const bool isNegative = at(place) == '!' || at(place) == '^';
        place += isNegative ? 1 : 0;
        const std::size_t first = place;
        bool has = false;
        while (place == first || at(place) != ']') {
            const std::size_t end = at(place) == '[' && at(place + 1) == ':' ? pattern_.find(']', place + 2)
                                                                             : std::string_view::npos;
            if (at(place) == '[' && at(place + 1) == ':' && end == std::string_view::npos) {
                return std::nullopt;
            }
            if (end != std::string_view::npos && end > place + 2 && at(end - 1) == ':') {
                const std::optional<bool> inClass =
                    HasClass(pattern_.substr(place + 2, end - place - 3), byte);
                if (!inClass) {
                    return std::nullopt;
                }
                has = has || *inClass;
                place = end + 1;
                continue;
            }
            const std::size_t from = place + (at(place) == '\\' ? 1 : 0);
            std::size_t to = from;
            if (at(from + 1) == '-' && at(from + 2) != ']' && at(from + 2) >= 0) {
                to = from + 2 + (at(from + 2) == '\\' ? 1 : 0);
            }
            if (at(from) < 0 || at(to) < 0) {
                return std::nullopt;
            }
            has = has || (at(from) <= byte && byte <= at(to));
            place = to + 1;
        }
        return Set{place + 1, has != isNegative};
    }

    bool FitsFrom(std::size_t place, std::size_t from) {
        const std::size_t index = place * (path_.size() + 1) + from;
        if (known_[index] == kUnknown) {
            const bool fits = Find(place, from);
            known_[index] = fits ? 1 : 0;
        }
        return known_[index] == 1;
    }

    bool Find(std::size_t place, std::size_t from) {
        if (place == pattern_.size()) {
            return from == path_.size();
        }
        const char sign = pattern_[place];
        const bool isInName = from < path_.size() && path_[from] != '/';
        const bool isAtStart = place == 0 || pattern_[place - 1] == '/';
        if (isAtStart && pattern_.substr(place) == "**") {
            return true;
        }
        if (isAtStart && pattern_.substr(place).starts_with("**/")) {
            const std::size_t slash = path_.find('/', from);
            return FitsFrom(place + 3, from) ||
                   (slash != std::string_view::npos && FitsFrom(place, slash + 1));
        }
        if (sign == '*') {
            return FitsFrom(place + 1, from) || (isInName && FitsFrom(place, from + 1));
        }
        if (sign == '?') {
            return isInName && FitsFrom(place + 1, from + 1);
        }
        if (sign == '[') {
            if (!isInName) {
                return false;
            }
            const std::optional<Set> set = ReadSet(place, static_cast<unsigned char>(path_[from]));
            return set->hasByte && FitsFrom(set->end, from + 1);
        }
        const std::size_t literal = place + (sign == '\\' ? 1 : 0);
        return from < path_.size() && pattern_[literal] == path_[from] && FitsFrom(literal + 1, from + 1);
    }

    std::string_view pattern_;
    std::string_view path_;
    std::vector<char> known_;
};

Verdict AboutRule(std::string_view line, std::string_view path, bool isDirectory) {
    const Verdict verdict = line.starts_with('!') ? Verdict::TakenIn : Verdict::LeftOut;
    line = line.substr(line.starts_with('!') ? 1 : 0);
    const bool isForDirectories = line.ends_with('/');
    line = line.substr(0, line.size() - (isForDirectories ? 1 : 0));
    if (line.empty() || (isForDirectories && !isDirectory)) {
        return Verdict::None;
    }
    const bool isForNames = line.find('/') == std::string_view::npos;
    line = line.substr(line.starts_with('/') ? 1 : 0);
    const std::string_view asked = isForNames ? path.substr(path.find_last_of('/') + 1) : path;
    return SecondReading(line, asked).Fits() ? verdict : Verdict::None;
}

/// The line as a rule has it; empty for a comment.
std::string_view RuleOf(std::string_view line) {
    line = line.substr(0, line.size() - (line.ends_with('\r') ? 1 : 0));
    if (line.starts_with('#')) {
        return {};
    }
    while (line.ends_with(' ')) {
        // A blank stays behind an odd number of backslashes: the last is not one of a pair.
        const std::size_t end = line.find_last_not_of('\\', line.size() - 2);
        const std::size_t backslashes = line.size() < 2 ? 0 : line.size() - 2 - end;
        if (backslashes % 2 == 1) {
            break;
        }
        line.remove_suffix(1);
    }
    return line;
}

Verdict AboutLines(std::string_view text, std::string_view path, bool isDirectory) {
    Verdict verdict = Verdict::None;
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    for (const std::string_view line : Split(text, '\n', std::string_view::npos)) {
        const Verdict about = AboutRule(RuleOf(line), path, isDirectory);
        verdict = about == Verdict::None ? verdict : about;
    }
    return verdict;
}

struct Input {
    std::string_view root;
    std::string_view inner;
    std::vector<std::string_view> patterns;
    std::vector<std::string_view> paths;
    /// The directory of the first path, which has the file `inner`; empty for the root, which has `root`.
    std::string_view directory;
};

bool IsShort(std::string_view text) {
    const std::vector<std::string_view> lines = Split(text, '\n', std::string_view::npos);
    return lines.size() <= kMostRules &&
           std::ranges::all_of(lines, [](std::string_view line) { return line.size() <= kLongest; });
}

Input ReadInput(std::string_view bytes) {
    std::vector<std::string_view> parts = Split(bytes, '\0', 4);
    parts.resize(4);
    Input input{parts[0], parts[1], Split(parts[2], '\n', kMostRules), {}, {}};
    for (const std::string_view path : Split(parts[3], '\n', kMostPaths)) {
        // No directory has names without characters.
        const bool hasNames = !path.empty() && !path.starts_with('/') && !path.ends_with('/') &&
                              path.find("//") == std::string_view::npos;
        if (hasNames && path.size() <= kLongest) {
            input.paths.push_back(path);
        }
    }
    if (!input.paths.empty() && input.paths.front().find('/') != std::string_view::npos) {
        input.directory = input.paths.front().substr(0, input.paths.front().rfind('/'));
    }
    return input;
}

bool IsLeftOut(const Input& input, std::string_view path, bool isDirectory) {
    Verdict verdict = Verdict::None;
    for (const std::string_view pattern : input.patterns) {
        const Verdict about = AboutRule(pattern, path, isDirectory);
        verdict = about == Verdict::None ? verdict : about;
    }
    const std::string below = std::string(input.directory) + "/";
    if (verdict == Verdict::None && !input.directory.empty() && path.starts_with(below)) {
        verdict = AboutLines(input.inner, path.substr(below.size()), isDirectory);
    }
    if (verdict == Verdict::None) {
        verdict = AboutLines(input.root, path, isDirectory);
    }
    return verdict == Verdict::LeftOut;
}

void ExpectSecondReading(const Input& input) {
    host::IgnoreRules rules;
    rules.AddLines(input.root);
    host::Exclusion exclusion({input.patterns.begin(), input.patterns.end()});
    exclusion.AddFile("", input.root);
    if (!input.directory.empty()) {
        exclusion.AddFile(std::string(input.directory), input.inner);
    }
    for (const std::string_view path : input.paths) {
        bool isInLeftOut = false;
        for (std::size_t end = path.find('/'); end != std::string_view::npos; end = path.find('/', end + 1)) {
            isInLeftOut = isInLeftOut || IsLeftOut(input, path.substr(0, end), true);
        }
        for (const bool isDirectory : {true, false}) {
            Expect(rules.About(path, isDirectory) == AboutLines(input.root, path, isDirectory),
                   "rules are read alike twice");
            Expect(exclusion.LeavesOut(path, isDirectory) == IsLeftOut(input, path, isDirectory),
                   "the nearest file that says anything decides, behind the command line");
        }
        Expect(exclusion.LeavesOutFile(path) == (isInLeftOut || IsLeftOut(input, path, false)),
               "a file is left out with its directory");
    }
}

/// Repeats pattern and path until a reading that tried everything would not come to an end: the fuzzer ends
/// what takes longer than a hundred seconds.
void ExpectEnd(const Input& input) {
    constexpr std::size_t kRepeated = 400;
    const std::string_view line = input.root.substr(0, input.root.find('\n'));
    if (input.paths.empty() || line.empty()) {
        return;
    }
    for (const std::string separator : {"", "/"}) {
        std::string pattern;
        while (pattern.size() < kRepeated) {
            pattern.append(line).append(separator);
        }
        std::string path;
        while (path.size() < kRepeated) {
            path.append(input.paths.front()).append(separator);
        }
        host::IgnoreRules rules;
        rules.AddRule(pattern + "x");
        Expect(rules.About(path + "y", false) == Verdict::None, "what does not end alike does not fit");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Input input = ReadInput({reinterpret_cast<const char*>(data), size});
    if (!IsShort(input.root) || !IsShort(input.inner)) {
        // Long texts are only read.
        host::IgnoreRules rules;
        rules.AddLines(input.root);
        return 0;
    }
    ExpectSecondReading(input);
    ExpectEnd(input);
    return 0;
}
