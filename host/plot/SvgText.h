#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Texts and numbers in SVG.
namespace host {

/// The number with at most two digits after the point.
std::string SvgNumber(double value);

/// The UTF-8 text on one line, for an element or an attribute. What a terminal or XML cannot show is written
/// as an escape.
std::string SvgLine(std::string_view text);
/// The same for a text of several lines.
std::string SvgLines(std::string_view text);

/// The beginning of the text on one line, as many columns of a terminal wide, with an ellipsis if that is not
/// all. It is not for SVG yet.
std::string Shortened(std::string_view text, std::size_t columns);

/// `10` with the exponent raised.
std::string PowerText(int exponent);

}  // namespace host
