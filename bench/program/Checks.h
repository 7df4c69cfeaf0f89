#pragma once

#include <string>

namespace bench {

/// Throws std::runtime_error unless it holds.
void Expect(bool holds, const std::string& what);

/// Throws if two databases do not have the same rows.
void ExpectSameRows(const std::string& first, const std::string& second);

/// The whole file.
std::string ReadText(const std::string& file);

}  // namespace bench
