#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// What a process took.
struct Usage {
    /// Processor time, of the program and of the system for it.
    double seconds = 0;
    double peakMiB = 0;
    /// Its output, unless that went to a file.
    std::string output;
};

/// Runs the program and waits for its end. Throws std::runtime_error if it cannot be run or fails.
Usage Run(const std::vector<std::string>& command);
/// The same, with the output in a file. Large outputs must go there: what this process has counts for those
/// that are forked from it.
Usage RunInto(const std::string& file, const std::vector<std::string>& command);

/// Does the work in a process of its own, so that this one stays small: what a process has taken at most
/// counts that of the one that it was forked from. What the work throws is said on the standard error, and
/// becomes a std::runtime_error.
void RunApart(const std::function<void()>& work);

/// The processor time that this process has taken until now.
double ProcessorSeconds();

}  // namespace bench
