#include "Text.h"

#include <korvaneexchange/PrintableText.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

#include "exchange/Utf8.h"

namespace host {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Characters that a terminal shows two columns wide.
constexpr std::array kWide = {
    Range{0x1100, 0x115F},   Range{0x2E80, 0x303E},   Range{0x3041, 0x33FF},   Range{0x3400, 0x4DBF},
    Range{0x4E00, 0x9FFF},   Range{0xA000, 0xA4CF},   Range{0xAC00, 0xD7A3},   Range{0xF900, 0xFAFF},
    Range{0xFE30, 0xFE6F},   Range{0xFF00, 0xFF60},   Range{0xFFE0, 0xFFE6},   Range{0x1F300, 0x1F64F},
    Range{0x1F900, 0x1F9FF}, Range{0x20000, 0x2FFFD}, Range{0x30000, 0x3FFFD},
};

// Characters without a column of their own.
constexpr std::array kCombining = {
    Range{0x0300, 0x036F}, Range{0x0483, 0x0489}, Range{0x0591, 0x05BD}, Range{0x0610, 0x061A},
    Range{0x064B, 0x065F}, Range{0x1AB0, 0x1AFF}, Range{0x1DC0, 0x1DFF}, Range{0x20D0, 0x20FF},
    Range{0xFE00, 0xFE0F}, Range{0xFE20, 0xFE2F},
};

template <std::size_t Size>
bool IsIn(const std::array<Range, Size>& ranges, char32_t character) {
    return std::ranges::any_of(
        ranges, [&](const Range& range) { return range.first <= character && character <= range.last; });
}

}  // namespace

OuString ToOuString(const std::filesystem::path& path) {
#if defined(_WIN32)
    return OuString(path.c_str());
#else
    return OuString(path.c_str(), 0);
#endif
}

std::filesystem::path ToPath(const OuString& text) {
#if defined(_WIN32)
    return std::filesystem::path(text.GetBuffer());
#else
    return std::filesystem::path(text.GetAnsiBuffer());
#endif
}

std::filesystem::path PathFromUtf8(const std::string& text) {
#if defined(_WIN32)
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
#else
    return std::filesystem::path(text);
#endif
}

std::string Printable(std::string_view utf8) {
    return korvane::exchange::Printable(utf8);
}

std::string Printable(const OuString& text) {
    return Printable(std::string_view(text.GetAnsiBuffer()));
}

std::string Printable(const std::filesystem::path& path) {
    return Printable(ToOuString(path));
}

std::string Quoted(const std::filesystem::path& path) {
    return '\'' + Printable(path) + '\'';
}

std::string Quoted(std::string_view utf8) {
    return '\'' + Printable(utf8) + '\'';
}

std::string Quoted(const std::string& utf8) {
    return Quoted(std::string_view(utf8));
}

std::size_t DisplayWidth(std::string_view printable) {
    std::size_t width = 0;
    std::size_t length = 1;
    for (std::size_t place = 0; place < printable.size(); place += length) {
        char32_t character = 0;
        korvane::exchange::DecodeUtf8(printable, place, character, length);
        if (character < 0x300) {
            ++width;
        } else if (!IsIn(kCombining, character)) {
            width += IsIn(kWide, character) ? 2 : 1;
        }
    }
    return width;
}

std::string FormatSize(std::uint64_t bytes) {
    constexpr std::array kUnits = {"B", "kB", "MB", "GB", "TB", "PB", "EB"};
    auto value = static_cast<double>(bytes);
    std::size_t unit = 0;
    // 999.5 would be rounded to 1000.
    while (value >= 999.5 && unit + 1 < kUnits.size()) {
        value /= 1000;
        ++unit;
    }
    std::array<char, 32> buffer{};
    const int digits = unit > 0 && value < 9.95 ? 1 : 0;
    std::snprintf(buffer.data(), buffer.size(), "%.*f %s", digits, value, kUnits[unit]);
    return buffer.data();
}

std::string FormatCount(std::uint64_t count, std::string_view singular, std::string_view plural) {
    std::string text = std::to_string(count);
    text += ' ';
    text += count == 1 ? singular : plural;
    return text;
}

std::string FormatTime(std::int64_t secondsSince1970) {
    using namespace std::chrono;
    constexpr std::int64_t kFirst = sys_seconds(sys_days(year(0) / January / 1)).time_since_epoch().count();
    constexpr std::int64_t kLast =
        sys_seconds(sys_days(year(9999) / December / 31) + hours(24) - seconds(1)).time_since_epoch().count();
    const sys_seconds time{seconds(std::clamp(secondsSince1970, kFirst, kLast))};
    const sys_days day = floor<days>(time);
    const year_month_day date(day);
    const auto secondOfDay = static_cast<int>((time - day).count());
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), secondOfDay / 3600, secondOfDay / 60 % 60,
                  secondOfDay % 60);
    return buffer.data();
}

int CompareNames(const std::filesystem::path& left, const std::filesystem::path& right) {
#if defined(_WIN32)
    // Surrogates stand for the characters above U+FFFF, so they come after every other unit.
    const auto rank = [](wchar_t unit) -> unsigned {
        const auto value = static_cast<unsigned>(unit);
        return value < 0xD800 ? value : value < 0xE000 ? value + 0x2000 : value - 0x800;
    };
#else
    const auto rank = [](char unit) -> unsigned { return static_cast<unsigned char>(unit); };
#endif
    const auto& leftText = left.native();
    const auto& rightText = right.native();
    const std::size_t common = std::min(leftText.size(), rightText.size());
    for (std::size_t index = 0; index < common; ++index) {
        const unsigned leftRank = rank(leftText[index]);
        const unsigned rightRank = rank(rightText[index]);
        if (leftRank != rightRank) {
            return leftRank < rightRank ? -1 : 1;
        }
    }
    return leftText.size() == rightText.size() ? 0 : leftText.size() < rightText.size() ? -1 : 1;
}

std::string ToUpperAscii(std::string_view text) {
    std::string upper(text);
    for (char& character : upper) {
        if (character >= 'a' && character <= 'z') {
            character = static_cast<char>(character - 'a' + 'A');
        }
    }
    return upper;
}

std::string_view Trim(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n\v\f";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace host
