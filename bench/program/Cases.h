#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Inputs.h"

namespace bench {

/// A command with its floor. Both start from the same files, which `prepare` puts in place.
struct Case {
    std::string what;
    std::function<void()> prepare;
    std::vector<std::string> command;
    /// Where the standard output of the command goes; empty if it has little.
    std::string output;
    std::vector<std::string> floor;
    /// Compares the results; throws if they differ.
    std::function<void()> check;
};

/// The commands that write or compare project files, databases and documents. Throws std::runtime_error.
std::vector<Case> MakeCases(const Programs& programs, const Inputs& inputs);

/// Those that show what a project file has.
std::vector<Case> MakeOutputCases(const Programs& programs, const Inputs& inputs);

/// Directories with so many objects are made at most: each of their files takes a block of the disk.
inline constexpr int kMostObjectsOfDirectory = 100'000;

/// `update` of a directory with so many objects in which nothing has changed.
Case MakeUpdateCase(const Programs& programs, const Inputs& inputs, int objects);

}  // namespace bench
