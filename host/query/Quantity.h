#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host {

/// A number with its unit, which may be empty.
struct Quantity {
    double value = 0;
    std::string unit;
};

/// The number and the unit of a text like `2`, `-1.5e3 kg`, `20 N/mm^2` or `5%`. Nothing for any other text,
/// such as a date. The decimal sign is a point, whatever the locale.
std::optional<Quantity> ParseQuantity(std::string_view text);

/// The number of a value with its unit beside it; where there is no unit, the value may have one behind its
/// number.
std::optional<Quantity> ParseValue(std::string_view value, std::string_view unit);

/// The number as a short text that reads back as the same number.
std::string FormatNumber(double value);

}  // namespace host
