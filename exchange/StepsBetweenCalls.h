#pragma once

#include <cstddef>

namespace korvane::exchange {

/// Calls of the caller's function for progress are this far apart: often enough for a bar that moves, and
/// seldom enough to take no time.
inline constexpr std::size_t kStepsBetweenCalls = 256;

}  // namespace korvane::exchange
