#include "parse_error.h"

#include <string>

namespace libjson {

parse_error::parse_error(std::size_t line, std::size_t column, std::size_t offset, const char* reason)
    : std::invalid_argument("line " + std::to_string(line) + ", column " + std::to_string(column) + ": " +
                            reason),
      line_(line),
      column_(column),
      offset_(offset),
      reason_(reason) {}

parse_error::parse_error(const parse_error& other) noexcept = default;

parse_error& parse_error::operator=(const parse_error& other) noexcept = default;

parse_error::~parse_error() = default;

}  // namespace libjson
