#pragma once

namespace korvane {

/// What operations of the suite's interface that return int return: 0 when they did what they say.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;

}  // namespace korvane
