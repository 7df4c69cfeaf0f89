#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "FaultyFiles.h"
#include "host/HostSupport.h"
#include "host/commands/CommandLine.h"
#include "support/LongRun.h"
#include "support/TemporaryDirectory.h"

/// Running commands within the process of the test, where their files can fail.
namespace failures {

/// What the program did.
struct Outcome {
    int status = 0;
    std::string said;
};

/// Runs a command as main does.
inline Outcome RunHere(const std::vector<std::string>& arguments) {
    host::KeptConsole kept;
    Outcome outcome;
    try {
        outcome.status = host::RunCommandLine(arguments, kept.console);
    } catch (const std::exception& error) {
        outcome.status = host::FailureStatus(arguments.front());
        kept.said += std::string("exception: ") + error.what();
    }
    outcome.said = kept.said;
    return outcome;
}

/// The moments at which something is tried, of so many: all of them in a long run, otherwise the first, the
/// last and some in between. The last one is never reached.
inline std::vector<std::uint64_t> Moments(std::uint64_t count) {
    constexpr std::uint64_t kEnds = kIsSample ? 1 : 4;
    constexpr std::uint64_t kBetween = kIsSanitized ? 1 : kIsSample ? 3 : 6;
    std::vector<std::uint64_t> moments;
    for (std::uint64_t moment = 1; moment <= count + 1; ++moment) {
        if (IsLongRun() || moment <= kEnds || moment + kEnds > count ||
            moment % (count / kBetween + 1) == 0) {
            moments.push_back(moment);
        }
    }
    return moments;
}

inline std::string NameOfFault(const FaultKind& kind, Manner manner, std::uint64_t number) {
    return std::string(kind.name) + " " + std::to_string(number) +
           (manner == Manner::Once      ? " once"
            : manner == Manner::ForGood ? " for good"
                                        : " and everything after it");
}

}  // namespace failures
