#pragma once

/// The program's exit statuses.
namespace host {

inline constexpr int kSuccess = 0;
/// The work failed, --strict does not allow what was left out, or `compare` found differences.
inline constexpr int kFailure = 1;
inline constexpr int kBadUsage = 2;

}  // namespace host
