#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>

#include "Comparison.h"
#include "PlainReading.h"

/// Compares the library with the second reading for so long. The seeds are the same every time; the
/// environment may say otherwise, KORVANEJSON_COMPARISON_SECONDS and KORVANEJSON_COMPARISON_SEED.
inline void ExpectNoDifference(double seconds) {
    std::uint64_t seed = 1;
    if (const char* const set = std::getenv("KORVANEJSON_COMPARISON_SEED")) {
        seed = std::strtoull(set, nullptr, 10);
    }
    if (const char* const set = std::getenv("KORVANEJSON_COMPARISON_SECONDS")) {
        seconds = std::strtod(set, nullptr);
    }
    const std::unique_ptr<Reading> library = MakeLibraryReading();
    PlainReading plain;
    const ComparisonResult result = Compare(*library, plain, {.seed = seed, .seconds = seconds});
    std::cout << result.rounds << " rounds from the seed " << seed << "\n";
    EXPECT_EQ(result.difference, "");
    // Fewer would mean that something is amiss with the rounds: thousands are usual.
    EXPECT_GE(result.rounds, static_cast<long>(5 * seconds));
}
