#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// Numbers as solvers write them, and the fields of their lines.
namespace host {

/// A whole number, with blanks around it.
std::optional<std::int64_t> ParseInteger(std::string_view text);

/// A real number as Fortran writes it: `1.5`, `1.5E+3`, `1.5D3`, `7.+4`.
std::optional<double> ParseReal(std::string_view text);

/// Whether a number is finite, also in the single precision that surfaces are kept in.
bool IsCoordinate(double value);

/// Takes a word off the line: what is in front of a blank or a tab. Empty at the end of the line.
std::string_view NextWord(std::string_view& line);

/// The fields of a line that commas part, without the blanks around them. A comma at the end opens no field.
class CommaFields {
public:
    explicit CommaFields(std::string_view line) : rest_(line) {}
    bool Next(std::string_view& field);

private:
    std::string_view rest_;
};

}  // namespace host
