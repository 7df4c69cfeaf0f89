#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <vector>

namespace korvane::exchange {

/// Which of the distinct numbers can stay where they are so that as few as possible have to be moved to bring
/// all into order: one of the longest increasing subsequences, by position. Adds to `steps` what it costs,
/// which grows as n log n.
inline std::vector<bool> FindLongestIncreasing(const std::vector<std::uint32_t>& numbers,
                                               std::size_t& steps) {
    steps += numbers.size();
    if (std::ranges::is_sorted(numbers)) {
        return std::vector<bool>(numbers.size(), true);
    }
    // By length, where the increasing subsequence of this length with the smallest end ends.
    std::vector<std::size_t> ends;
    std::vector<std::size_t> before(numbers.size());
    for (std::size_t index = 0; index < numbers.size(); ++index) {
        const auto found = std::ranges::lower_bound(
            ends, numbers[index],
            [&](auto left, auto right) {
                ++steps;
                return left < right;
            },
            [&](std::size_t end) { return numbers[end]; });
        before[index] = found == ends.begin() ? index : *std::prev(found);
        if (found == ends.end()) {
            ends.push_back(index);
        } else {
            *found = index;
        }
    }
    std::vector<bool> isIn(numbers.size(), false);
    std::size_t index = ends.back();
    for (std::size_t left = ends.size(); left > 0; --left) {
        isIn[index] = true;
        index = before[index];
    }
    return isIn;
}

}  // namespace korvane::exchange
