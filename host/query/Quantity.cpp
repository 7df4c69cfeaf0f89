#include "Quantity.h"

#include <array>
#include <charconv>
#include <system_error>

#include "host/system/Text.h"

namespace host {
namespace {

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

bool IsLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           static_cast<unsigned char>(character) >= 0x80;
}

/// Whether a unit may begin so; `isApart` if a blank stands between it and the number. `2026-03-01` and `1/2`
/// are not numbers with units.
bool BeginsUnit(std::string_view text, bool isApart) {
    return IsLetter(text.front()) || text.front() == '%' ||
           (isApart && (text.starts_with("1/") || text.front() == '('));
}

/// The number at the beginning, and the place behind it; 0 if there is none.
std::size_t ReadNumber(std::string_view text, double& value) {
    const std::size_t begin = text.starts_with('+') ? 1 : 0;
    const std::size_t first = text.starts_with('-') ? 1 : begin;
    // Names of numbers, like "infinity", are texts.
    if (first >= text.size() || (!IsDigit(text[first]) && text[first] != '.')) {
        return 0;
    }
    const char* const start = text.data() + begin;
    const auto [rest, error] = std::from_chars(start, text.data() + text.size(), value);
    return error == std::errc() ? static_cast<std::size_t>(rest - text.data()) : 0;
}

}  // namespace

std::optional<Quantity> ParseQuantity(std::string_view text) {
    text = Trim(text);
    Quantity quantity;
    const std::size_t end = ReadNumber(text, quantity.value);
    if (end == 0) {
        return std::nullopt;
    }
    const std::string_view unit = Trim(text.substr(end));
    if (!unit.empty() && !BeginsUnit(unit, unit.data() != text.data() + end)) {
        return std::nullopt;
    }
    quantity.unit = unit;
    return quantity;
}

std::optional<Quantity> ParseValue(std::string_view value, std::string_view unit) {
    unit = Trim(unit);
    std::optional<Quantity> quantity = ParseQuantity(value);
    if (quantity && !unit.empty()) {
        if (!quantity->unit.empty() && quantity->unit != unit) {
            return std::nullopt;
        }
        quantity->unit = unit;
    }
    return quantity;
}

std::string FormatNumber(double value) {
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), result.ptr};
}

}  // namespace host
