#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>

#include "Comparison.h"
#include "PlainReading.h"
#include "support/LongRun.h"

/// Compares the library with the second reading for so long; a long run of the tests (KORVANEJSON_LONG in the
/// environment) compares 100,000 rounds instead, however long they take. The seeds are the same every time;
/// the environment may say otherwise: KORVANEJSON_COMPARISON_ROUNDS, KORVANEJSON_COMPARISON_SECONDS and
/// KORVANEJSON_COMPARISON_SEED.
inline void ExpectNoDifference(double seconds) {
    ComparisonOptions options;
    if (const char* const set = std::getenv("KORVANEJSON_COMPARISON_SEED")) {
        options.seed = std::strtoull(set, nullptr, 10);
    }
    // Fewer rounds would mean that something is amiss with them: thousands are usual.
    long expectedRounds = 0;
    if (const char* const rounds = std::getenv("KORVANEJSON_COMPARISON_ROUNDS")) {
        options.rounds = std::strtol(rounds, nullptr, 10);
        expectedRounds = options.rounds;
    } else if (const char* const limit = std::getenv("KORVANEJSON_COMPARISON_SECONDS")) {
        options.seconds = std::strtod(limit, nullptr);
        expectedRounds = static_cast<long>(5 * options.seconds);
    } else if (IsLongRun()) {
        options.rounds = 100000;
        expectedRounds = options.rounds;
    } else {
        options.seconds = seconds;
        expectedRounds = static_cast<long>(5 * seconds);
    }
    const std::unique_ptr<Reading> library = MakeLibraryReading();
    PlainReading plain;
    const ComparisonResult result = Compare(*library, plain, options);
    std::cout << result.rounds << " rounds from the seed " << options.seed << "\n";
    EXPECT_EQ(result.difference, "");
    EXPECT_GE(result.rounds, expectedRounds);
}
