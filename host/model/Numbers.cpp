#include "Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "host/system/Text.h"

namespace host {
namespace {

/// The longest number that anybody writes.
constexpr std::size_t kLongest = 64;

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

template <typename Number>
std::optional<Number> Parse(const char* begin, const char* end) {
    Number number{};
    const auto [rest, error] = std::from_chars(begin, end, number);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

}  // namespace

std::optional<std::int64_t> ParseInteger(std::string_view text) {
    text = Trim(text);
    if (text.size() > 1 && text[0] == '+' && IsDigit(text[1])) {
        text.remove_prefix(1);
    }
    return Parse<std::int64_t>(text.data(), text.data() + text.size());
}

std::optional<double> ParseReal(std::string_view text) {
    text = Trim(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        text = text.starts_with('-') || text.starts_with('+') ? std::string_view() : text;
    }
    if (text.empty() || text.size() > kLongest) {
        return std::nullopt;
    }
    std::array<char, kLongest + 1> plain{};
    std::size_t size = 0;
    for (const char character : text) {
        const bool isMark = character == 'd' || character == 'D' || character == 'e' || character == 'E';
        const bool isSign = character == '+' || character == '-';
        const bool isBareExponent = isSign && size > 0 && plain[size - 1] != 'e';
        if (isBareExponent) {
            plain[size++] = 'e';
        }
        // from_chars reads no plus, and words like "nan" are no numbers of a solver.
        if (isMark) {
            plain[size++] = 'e';
        } else if (character == '.' || character == '-' || IsDigit(character)) {
            plain[size++] = character;
        } else if (character != '+') {
            return std::nullopt;
        }
        if (size >= kLongest) {
            return std::nullopt;
        }
    }
    return Parse<double>(plain.data(), plain.data() + size);
}

bool IsCoordinate(double value) {
    return std::abs(value) <= std::numeric_limits<float>::max();
}

std::string_view NextWord(std::string_view& line) {
    constexpr std::string_view kBlanks = " \t\r";
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(kBlanks));
    line.remove_prefix(word.size());
    return word;
}

bool CommaFields::Next(std::string_view& field) {
    if (rest_.empty()) {
        return false;
    }
    const std::size_t end = std::min(rest_.find(','), rest_.size());
    field = Trim(rest_.substr(0, end));
    const bool isLast = end == rest_.size();
    rest_.remove_prefix(isLast ? end : end + 1);
    return !isLast || !field.empty();
}

}  // namespace host
