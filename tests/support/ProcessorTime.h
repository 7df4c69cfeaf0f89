#pragma once

#include <algorithm>
#include <chrono>

/// What processors spent in a process, in all its threads. What the system does for it is not counted: memory
/// that is handed out for the first time takes the longer for each page the more it is (measured on a virtual
/// machine: 2 microseconds of 250 MB, 8 of 2.5 GB), whatever is done with it.
using ProcessorTime = std::chrono::milliseconds;

/// Of this process, without those that it started.
ProcessorTime ProcessorTimeSoFar();

#if !defined(_WIN32)
/// Of the processes that this one started and that have ended, all together. Windows can tell it of each, but
/// Wine gives the time of the process that asks.
ProcessorTime ProcessorTimeOfEndedPrograms();
#endif

/// The most that ten times as much work may take if its time is in proportion: twice that, for what caches
/// and other programs do to it, and on Windows five times that, for Wine's heap, which looks for a block in
/// lists of free ones. If it grew with the square, it would take a hundred times as long. Shorter times than
/// can be measured count as the shortest that can.
inline ProcessorTime MostForTenTimesAsMuch(ProcessorTime time) {
    constexpr ProcessorTime kShortest{20};
#if defined(_WIN32)
    constexpr int kTimes = 50;
#else
    constexpr int kTimes = 20;
#endif
    return kTimes * std::max(time, kShortest);
}
