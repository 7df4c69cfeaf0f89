#pragma once

#include <atomic>
#include <csignal>
#include <string_view>

/// Failures of the system in the process that runs the tests: this program has its own versions of the C
/// library's functions for memory and files, which fail when they are told to.
namespace exhaustion {

enum class Outcome {
    /// The operation fails: there is no memory, no room, no permission.
    Fails,
    /// Half of the bytes are written, and no error is reported.
    WritesHalf,
    /// The process is killed before the operation.
    Killed,
    /// The process gets SIGTERM before the operation.
    Terminated,
    /// Another process removes what it takes for left behind before the operation.
    CleanedUp,
};

/// What fails, and when. Operations are counted from 1; nothing fails with 0.
struct Plan {
    long first = 0;
    /// Every operation from the first on fails, or only that one.
    bool forGood = false;
    Outcome outcome = Outcome::Fails;
    /// Whether the file system has files without names.
    bool hasUnnamedFiles = true;
    /// Whether it has links, and renames a file without replacing another.
    bool hasLinks = true;
    bool renamesExclusively = true;
    /// File operations count in directories of this name only.
    std::string_view folder = "out";
    /// Whether no file in them gets another name, whatever else fails.
    bool refusesNames = false;
};

/// The operations so far. They lie in memory that child processes share.
struct Counts {
    std::atomic<long> allocations;
    std::atomic<long> fileCalls;
    /// The error number of the last failure of a file operation.
    std::atomic<int> reason;
    /// Whether a file could not be removed.
    std::atomic<bool> isRemovalRefused;
};
Counts& SharedCounts();

/// Starts to count, and to fail by the plan.
void PlanAllocations(const Plan& plan);
void PlanFileCalls(const Plan& plan);

}  // namespace exhaustion
