#pragma once

#include <string>
#include <vector>

namespace bench {

/// What several runs of one thing took.
struct Samples {
    std::vector<double> seconds;
    double peakMiB = 0;

    double Median() const;
    /// The largest distance from the median, as a share of it.
    double Spread() const;
};

struct Measurement {
    std::string what;
    int objects = 0;
    Samples command;
    Samples floor;
};

/// A table for people: medians, spreads, peak memory, the ratio of command and floor, and the time per object
/// beside that of the same command on the fewest objects.
std::string TableOf(const std::vector<Measurement>& measurements);
/// What every run took, as JSON.
std::string JsonOf(const std::vector<Measurement>& measurements);

}  // namespace bench
