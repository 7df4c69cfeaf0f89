#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "FaultyFiles.h"
#include "host/HostSupport.h"
#include "host/commands/CommandLine.h"
#include "support/LongRun.h"
#include "support/ProgramCommands.h"
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
    constexpr std::uint64_t kEnds = kIsSample ? 1 : 2;
    constexpr std::uint64_t kBetween = kIsSample ? 1 : 4;
    std::vector<std::uint64_t> moments;
    for (std::uint64_t moment = 1; moment <= count + 1; ++moment) {
        if (IsLongRun() || moment <= kEnds || moment + kEnds > count ||
            moment % (count / kBetween + 1) == 0) {
            moments.push_back(moment);
        }
    }
    return moments;
}

/// How, and which of its operations, a command finds failing.
struct Failing {
    Manner manner;
    std::uint64_t number;
};

inline std::vector<Failing> Failings(std::uint64_t count, bool isBrief) {
    // No multiple of the number of moments, so that the few are of different moments.
    constexpr std::size_t kOneOf = 7;
    std::vector<Failing> failings;
    std::size_t index = 0;
    for (const Manner manner : {Manner::Once, Manner::ForGood, Manner::Gone}) {
        for (const std::uint64_t number : Moments(count)) {
            if (!isBrief || index % kOneOf == 0) {
                failings.push_back({manner, number});
            }
            ++index;
        }
    }
    return failings;
}

inline std::string NameOfFault(const FaultKind& kind, Manner manner, std::uint64_t number) {
    return std::string(kind.name) + " " + std::to_string(number) +
           (manner == Manner::Once      ? " once"
            : manner == Manner::ForGood ? " for good"
                                        : " and everything after it");
}

}  // namespace failures
