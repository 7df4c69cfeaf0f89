#include "SvgText.h"

#include <algorithm>
#include <array>

#include "PlotScale.h"
#include "host/system/Text.h"

namespace host {
namespace {

/// The printable text for an element or an attribute.
std::string Escaped(std::string_view text) {
    std::string escaped;
    for (std::size_t place = 0; place < text.size(); ++place) {
        // The only printable characters that XML cannot carry are U+FFFE and U+FFFF.
        if (text.substr(place).starts_with("\uFFFE") || text.substr(place).starts_with("\uFFFF")) {
            escaped += text.substr(place).starts_with("\uFFFE") ? "\\uFFFE" : "\\uFFFF";
            place += std::string_view("\uFFFE").size() - 1;
            continue;
        }
        switch (text[place]) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += text[place];
        }
    }
    return escaped;
}

}  // namespace

std::string SvgNumber(double value) {
    std::string text = FormatFixed(value, 2);
    text.erase(text.find_last_not_of('0') + 1);
    return text.ends_with('.') ? text.substr(0, text.size() - 1) : text;
}

std::string SvgLine(std::string_view text) {
    return Escaped(Printable(text));
}

std::string SvgLines(std::string_view text) {
    std::string lines;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines += (lines.empty() ? "" : "\n") + SvgLine(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

std::string Shortened(std::string_view text, std::size_t columns) {
    std::string printable = Printable(text);
    if (DisplayWidth(printable) <= columns) {
        return printable;
    }
    std::size_t size = printable.size();
    std::string_view cut = printable;
    while (DisplayWidth(cut) + 1 > columns) {
        cut = CutUtf8(printable, --size);
    }
    return std::string(cut) + "\u2026";
}

std::string PowerText(int exponent) {
    constexpr std::array<const char*, 10> kDigits = {"\u2070", "\u00B9", "\u00B2", "\u00B3", "\u2074",
                                                     "\u2075", "\u2076", "\u2077", "\u2078", "\u2079"};
    std::string text = "10";
    for (const char digit : std::to_string(exponent)) {
        text += digit == '-' ? "\u207B" : kDigits.at(static_cast<std::size_t>(digit - '0'));
    }
    return text;
}

}  // namespace host
