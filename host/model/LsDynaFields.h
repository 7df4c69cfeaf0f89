#pragma once

#include <cstddef>
#include <string_view>

/// The fields of LS-DYNA's lines: between commas, or of fixed columns.
namespace host {

/// The columns of the fields: numbers, and coordinates.
struct LsDynaWidths {
    std::size_t number = 8;
    std::size_t coordinate = 16;
};

/// Takes a field off the line: up to the next comma, or so many columns.
std::string_view NextLsDynaField(std::string_view& rest, std::size_t width);

}  // namespace host
