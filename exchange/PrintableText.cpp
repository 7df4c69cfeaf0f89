#include <korvaneexchange/PrintableText.h>

#include <algorithm>
#include <array>
#include <cstdio>

#include "Utf8.h"

namespace korvane::exchange {
namespace {

constexpr std::size_t kLongestExcerpt = 80;

struct Range {
    char32_t first;
    char32_t last;
};

// Characters that change the direction of the text or begin a line.
constexpr std::array kSteering = {
    Range{0x061C, 0x061C}, Range{0x200B, 0x200F}, Range{0x2028, 0x202E},
    Range{0x2060, 0x206F}, Range{0xFEFF, 0xFEFF},
};

bool IsSteering(char32_t character) {
    return std::ranges::any_of(
        kSteering, [&](const Range& range) { return range.first <= character && character <= range.last; });
}

void AppendEscape(std::string& text, const char* format, unsigned value) {
    std::array<char, 16> buffer{};
    std::snprintf(buffer.data(), buffer.size(), format, value);
    text += buffer.data();
}

}  // namespace

std::string Printable(std::string_view utf8) {
    std::string printable;
    printable.reserve(utf8.size());
    std::size_t length = 1;
    for (std::size_t place = 0; place < utf8.size(); place += length) {
        char32_t character = 0;
        if (!DecodeUtf8(utf8, place, character, length)) {
            AppendEscape(printable, "\\x%02X", static_cast<unsigned char>(utf8[place]));
        } else if (character == '\n') {
            printable += "\\n";
        } else if (character == '\t') {
            printable += "\\t";
        } else if (character == '\r') {
            printable += "\\r";
        } else if (character < 0x20 || character == 0x7F) {
            AppendEscape(printable, "\\x%02X", static_cast<unsigned>(character));
        } else if ((character >= 0x80 && character < 0xA0) || IsSteering(character)) {
            AppendEscape(printable, "\\u%04X", static_cast<unsigned>(character));
        } else {
            printable += utf8.substr(place, length);
        }
    }
    return printable;
}

std::string_view CutUtf8(std::string_view utf8, std::size_t most) {
    if (utf8.size() <= most) {
        return utf8;
    }
    std::size_t end = most;
    while (end > 0 && (static_cast<unsigned char>(utf8[end]) & 0xC0U) == 0x80) {
        --end;
    }
    return utf8.substr(0, end);
}

std::string Excerpt(std::string_view utf8) {
    const std::string printable = Printable(utf8.substr(0, 4 * kLongestExcerpt));
    const std::string_view beginning = CutUtf8(printable, kLongestExcerpt);
    std::string excerpt = "'";
    excerpt += beginning;
    excerpt += beginning.size() < printable.size() ? "...'" : "'";
    return excerpt;
}

}  // namespace korvane::exchange
