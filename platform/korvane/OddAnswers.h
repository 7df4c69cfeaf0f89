#pragma once

namespace korvane {

/// Whether there are odd answers for calls of this thread.
bool HasOddAnswers() noexcept;

}  // namespace korvane
