#pragma once

#include <cstddef>
#include <stdexcept>

#include "libjson.h"

namespace libjson {

/// What libjson::parse throws for a text that is not JSON: `what` says all of it, "line 2, column 7: " and
/// the reason.
class LIBJSON_API parse_error : public std::invalid_argument {
public:
    /// The reason must live as long as the error and its copies.
    parse_error(std::size_t line, std::size_t column, std::size_t offset, const char* reason);
    parse_error(const parse_error& other) noexcept;
    parse_error& operator=(const parse_error& other) noexcept;
    ~parse_error() override;

    /// Counted from 1; a column is a byte, and a line ends with a line feed, a carriage return, or both.
    std::size_t line() const noexcept { return line_; }
    std::size_t column() const noexcept { return column_; }
    /// How many bytes there are before the place.
    std::size_t offset() const noexcept { return offset_; }
    /// What is wrong there.
    const char* reason() const noexcept { return reason_; }

private:
    std::size_t line_;
    std::size_t column_;
    std::size_t offset_;
    const char* reason_;
};

}  // namespace libjson
