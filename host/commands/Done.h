#pragma once

#include <new>
#include <string_view>

#include "ExitStatus.h"
#include "host/system/Console.h"

/// The end of a command that has made its change.
namespace host {

inline constexpr std::string_view kDoneWithoutReport =
    "the work was done and its result is complete, but there is not enough memory to report about it";

/// Runs what a command does after its change is complete: it says what was done. If there is not enough
/// memory for that, the change stands, which `otherwise` says, and the status is kNotReported. A dry run
/// makes no change.
template <typename Report>
int ReportDone(bool isDryRun, Console& console, const Report& report,
               std::string_view otherwise = kDoneWithoutReport) {
    if (isDryRun) {
        return report();
    }
    try {
        return report();
    } catch (const std::bad_alloc&) {
        console.Say(otherwise);
        return kNotReported;
    }
}

}  // namespace host
