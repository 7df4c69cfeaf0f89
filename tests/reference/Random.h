#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

/// Numbers that look random and are the same for a seed on every platform. So must be the order in which they
/// are drawn: never two of them among the arguments of one call.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t Next() {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31U);
    }

    /// From 0 to below the limit; 0 if the limit is 0.
    int Below(std::size_t limit) { return limit == 0 ? 0 : static_cast<int>(Next() % limit); }
    int Between(int least, int greatest) {
        return least + Below(static_cast<std::size_t>(greatest - least) + 1);
    }
    bool OneIn(int count) { return Below(static_cast<std::size_t>(count)) == 0; }

    template <typename Values>
    const auto& Pick(const Values& values) {
        return values[static_cast<std::size_t>(Below(std::size(values)))];
    }

private:
    std::uint64_t state_;
};
