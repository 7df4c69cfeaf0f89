#include "Comparison.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "Round.h"
#include "Show.h"

namespace {

using Lines = std::vector<std::string>;

/// Both from a little before the first difference on.
std::string ShowDifference(const Lines& first, const Lines& second) {
    constexpr std::ptrdiff_t kBefore = 12;
    constexpr std::ptrdiff_t kAfter = 12;
    const std::ptrdiff_t place = std::ranges::mismatch(first, second).in1 - first.begin();
    std::string text;
    const auto show = [&](const Lines& lines, std::ptrdiff_t from, std::ptrdiff_t to, const char* mark) {
        for (std::ptrdiff_t i = std::max<std::ptrdiff_t>(from, 0); i < to && i < std::ssize(lines); ++i) {
            text += mark + ShowBytes(lines[static_cast<std::size_t>(i)]) + "\n";
        }
    };
    show(first, place - kBefore, place, "    ");
    show(first, place, place + kAfter, "  1 ");
    show(second, place, place + kAfter, "  2 ");
    return text;
}

std::string Report(std::uint64_t seed, const Round& round, Reading& first, Reading& second) {
    const Round small = Shrink(round, first, second);
    return "The readings differ with the seed " + std::to_string(seed) +
           " (run: compare-readings --rounds 1 --seed " + std::to_string(seed) + "). Shrunk, it is\n" +
           Describe(small) + "and 1, the library, differs from 2, the second reading:\n" +
           ShowDifference(Run(small, first), Run(small, second));
}

/// Operations of the object model by their names; exceptions.
void NoteWhatHappened(const Lines& lines, std::set<std::string>& seen) {
    for (const std::string& line : lines) {
        if (line.starts_with("throws ")) {
            seen.insert(line);
        } else if (line.starts_with("CAE") || line.starts_with("createCAE") ||
                   line.starts_with("getMaster") || line.starts_with("overwrite") ||
                   line.starts_with("GetCAE")) {
            seen.insert(line.substr(0, line.find('(')));
        }
    }
}

}  // namespace

ComparisonResult Compare(Reading& first, Reading& second, const ComparisonOptions& options) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    ComparisonResult result;
    while (result.rounds < options.rounds &&
           std::chrono::duration<double>(Clock::now() - start).count() < options.seconds) {
        const std::uint64_t seed = options.seed + static_cast<std::uint64_t>(result.rounds);
        if (options.isVerbose) {
            std::printf("seed %llu\n", static_cast<unsigned long long>(seed));
            std::fflush(stdout);
        }
        const Round round = RandomRound(seed);
        const Lines lines = Run(round, first);
        ++result.rounds;
        NoteWhatHappened(lines, result.seen);
        if (lines != Run(round, second)) {
            result.difference = Report(seed, round, first, second);
            break;
        }
    }
    return result;
}
