#pragma once

#include <algorithm>
#include <chrono>

/// What processors spent on a process, in all its threads and in the system for it.
using ProcessorTime = std::chrono::milliseconds;

/// Of this process, without those that it started. It comes with the library of Process.h.
ProcessorTime ProcessorTimeSoFar();

/// The most that ten times as much work may take if its time is in proportion: twice that, for what caches
/// and other programs do to it. If it grew with the square, it would take a hundred times as long. Shorter
/// times than can be measured count as the shortest that can.
inline ProcessorTime MostForTenTimesAsMuch(ProcessorTime time) {
    constexpr ProcessorTime kShortest{20};
    return 20 * std::max(time, kShortest);
}
