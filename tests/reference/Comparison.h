#pragma once

#include <cstdint>
#include <limits>
#include <set>
#include <string>

#include "Reading.h"

struct ComparisonOptions {
    /// Round n of a comparison is round 0 of the comparison whose seed is greater by n.
    std::uint64_t seed = 1;
    /// It ends with whichever of the two comes first.
    long rounds = std::numeric_limits<long>::max();
    double seconds = std::numeric_limits<double>::infinity();
    /// Names every round on standard output before it begins.
    bool isVerbose = false;
};

struct ComparisonResult {
    long rounds = 0;
    /// The operations of the object model that were asked, and what else happened.
    std::set<std::string> seen;
    /// The first difference: the round, shrunk, and both results. Empty if there is none.
    std::string difference;
};

/// Does random rounds through both readings until they differ.
ComparisonResult Compare(Reading& first, Reading& second, const ComparisonOptions& options);
