#include "TomlLines.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "host/system/Text.h"

namespace host {
namespace {

/// A part of a text.
struct LineRange {
    std::size_t begin = 0;
    std::size_t size = 0;
};

bool IsDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

/// Takes the digits of a number with the sign and the points between them.
std::string_view TakeNumber(std::string_view& text) {
    std::size_t end = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    while (end < text.size() && (IsDigit(text[end]) || (text[end] == '.' && end > 0))) {
        ++end;
    }
    const std::string_view number = text.substr(0, end);
    text.remove_prefix(end);
    return std::ranges::any_of(number, IsDigit) ? number : std::string_view();
}

std::string HintForNumber(std::string_view number, std::string_view rest) {
    if (rest.size() > 1 && rest[0] == ',' && IsDigit(rest[1])) {
        return "; the decimal sign is a point";
    }
    // A date and a hexadecimal number begin like numbers, too.
    const std::string_view unit = Trim(rest);
    const bool isUnit = !unit.empty() && unit.find_first_of("+-.:_0123456789") != 0 &&
                        unit.find_first_of("#\"',[]{}") == std::string_view::npos &&
                        (number != "0" || unit.size() < rest.size());
    return isUnit ? "; write { value = " + std::string(number) + ", unit = \"" + std::string(unit) + "\" }"
                  : "";
}

/// The line with this number, the first of which is 1, without its end.
LineRange RangeOfLine(std::string_view text, std::size_t number) {
    std::size_t begin = 0;
    for (std::size_t line = 1; line < number && begin < text.size(); ++line) {
        begin = std::min(text.find('\n', begin), text.size() - 1) + 1;
    }
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    return {begin, end - begin};
}

/// Whether what follows the line means the same without it: it neither begins a table nor a text of several
/// lines.
bool StandsAlone(std::string_view line) {
    const std::string_view text = Trim(line);
    return !text.empty() && text.front() != '[' && text.find("\"\"\"") == std::string_view::npos &&
           text.find("'''") == std::string_view::npos;
}

/// What the writer of the line may have meant, as the end of a sentence; empty if that is not known.
std::string HintFor(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
        return "; an entry is NAME = VALUE";
    }
    const std::string_view name = Trim(line.substr(0, equals));
    if (name.find_first_of(" \t") != std::string_view::npos &&
        name.find_first_of("\"'") == std::string_view::npos) {
        return "; a name with blanks stands in quotes";
    }
    std::string_view value = Trim(line.substr(equals + 1));
    if (const std::string_view number = TakeNumber(value); !number.empty()) {
        return HintForNumber(number, value);
    }
    return !value.empty() && value.find_first_of("\"'[]{}") == std::string_view::npos
               ? "; a text stands in quotes"
               : "";
}

/// More lines that are not TOML are a file that is none.
constexpr std::size_t kMostBadLines = 10;

bool IsToml(std::string_view text) {
    try {
        static_cast<void>(toml::parse(text));
        return true;
    } catch (const toml::parse_error&) {
        return false;
    }
}

/// Makes a line blank that is not TOML, and says so; the numbers of the other lines stay. Returns false if
/// the text without it may mean something else than was meant.
bool LeaveOutLine(const toml::parse_error& error, std::string& text,
                  std::vector<DescriptionProblem>& problems) {
    const LineRange range = RangeOfLine(text, error.source().begin.line);
    const std::string_view line = std::string_view(text).substr(range.begin, range.size);
    // A value that began on an earlier line would end in the middle.
    if (problems.size() == kMostBadLines || !StandsAlone(line) ||
        !IsToml(std::string_view(text).substr(0, range.begin))) {
        return false;
    }
    problems.push_back({PlaceOf(error.source().begin), "the line is left out, because it is not TOML: " +
                                                           std::string(error.description()) + HintFor(line)});
    std::fill_n(text.begin() + static_cast<std::ptrdiff_t>(range.begin), range.size, ' ');
    return true;
}

}  // namespace

TextPlace PlaceOf(const toml::source_position& position) {
    return {position.line, position.column};
}

toml::table ParseLines(std::string text, std::vector<DescriptionProblem>& problems) {
    while (true) {
        try {
            return toml::parse(text);
        } catch (const toml::parse_error& error) {
            if (!LeaveOutLine(error, text, problems)) {
                throw;
            }
        }
    }
}

}  // namespace host
