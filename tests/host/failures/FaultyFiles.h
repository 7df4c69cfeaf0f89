#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// SQLite's files, which fail where a test wants it. They stand between SQLite and the system's own files, by
/// SQLite's public interface for that (its VFS), so the code under test does not know of them.
namespace failures {

enum class Operation { Open, Read, Write, Sync, Truncate, Size, Lock, Unlock, Delete, Access };

/// How an operation fails.
struct FaultKind {
    const char* name;
    /// The operations that are counted.
    std::vector<Operation> operations;
    /// What SQLite is told.
    int code;
    /// What is done of the operation before.
    enum class Done { Nothing, Half, All } done = Done::Nothing;
};

/// Which of the counted operations fail.
enum class Manner {
    /// The n-th.
    Once,
    /// The n-th and all later ones of the kind.
    ForGood,
    /// From the n-th on, everything, whatever the kind.
    Gone,
    /// The process ends at the n-th.
    Stop
};

/// All kinds of faults.
const std::vector<FaultKind>& FaultKinds();

/// The exit status of a process that Manner::Stop ends.
inline constexpr int kStopped = 77;

/// Makes these files SQLite's own. `isCacheSmall` lets SQLite keep few pages in memory, so that it writes
/// into the database long before a commit.
void UseFaultyFiles(bool isCacheSmall);

/// From now on, operations are counted from 1 and fail from the n-th on.
void Arm(const FaultKind& kind, Manner manner, std::uint64_t number);
/// Nothing fails any more. Returns how many operations of the kind there were.
std::uint64_t Disarm();

}  // namespace failures
