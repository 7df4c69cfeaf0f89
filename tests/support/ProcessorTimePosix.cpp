#include <sys/resource.h>

#include "support/ProcessorTime.h"

namespace {

ProcessorTime TimeOf(int whose) {
    rusage usage{};
    ::getrusage(whose, &usage);
    return std::chrono::duration_cast<ProcessorTime>(std::chrono::seconds(usage.ru_utime.tv_sec) +
                                                     std::chrono::microseconds(usage.ru_utime.tv_usec));
}

}  // namespace

ProcessorTime ProcessorTimeSoFar() {
    return TimeOf(RUSAGE_SELF);
}

ProcessorTime ProcessorTimeOfEndedPrograms() {
    return TimeOf(RUSAGE_CHILDREN);
}
