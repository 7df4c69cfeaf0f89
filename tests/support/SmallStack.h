#pragma once

#include <functional>

/// Runs the body with at most 256 KiB of stack and returns when it is done; what the body throws is thrown
/// here. A walk that needs stack in proportion to the nesting of a tree does not come back from a deep one.
void OnSmallStack(const std::function<void()>& body);
