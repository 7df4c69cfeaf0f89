#include <windows.h>

#include <cstdint>
#include <ratio>

#include "support/ProcessorTime.h"

ProcessorTime ProcessorTimeSoFar() {
    using HundredNanoseconds = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
    FILETIME ignored{};
    FILETIME time{};
    if (::GetProcessTimes(::GetCurrentProcess(), &ignored, &ignored, &ignored, &time) == 0) {
        return ProcessorTime::zero();
    }
    const std::int64_t ticks = static_cast<std::int64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    return std::chrono::duration_cast<ProcessorTime>(HundredNanoseconds(ticks));
}
