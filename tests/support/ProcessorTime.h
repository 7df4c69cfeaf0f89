#pragma once

#include <algorithm>
#include <chrono>

/// What processors spent in a process, in all its threads. What the system does for it is not counted: memory
/// that is handed out for the first time takes the longer for each page the more it is (measured on a virtual
/// machine: 2 microseconds of 250 MB, 8 of 2.5 GB), whatever is done with it.
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
