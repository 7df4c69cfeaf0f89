#pragma once

/// The program's exit statuses.
namespace host {

inline constexpr int kSuccess = 0;
/// The work could not be done, or --strict does not let it count, or `compare` found differences.
inline constexpr int kFailure = 1;
inline constexpr int kBadUsage = 2;

}  // namespace host
