#pragma once

/// The program's exit statuses.
namespace host {

inline constexpr int kSuccess = 0;
/// The work failed, or --strict does not allow what was left out.
inline constexpr int kFailure = 1;
inline constexpr int kBadUsage = 2;
/// `compare` found differences.
inline constexpr int kDifferent = 1;
/// `compare` could not do its work. Other programs that compare have this status too.
inline constexpr int kTrouble = 2;
/// The work was done and what it changes is complete, but the report about it, or the answer of `store`,
/// could not be written.
inline constexpr int kNotReported = 3;

}  // namespace host
