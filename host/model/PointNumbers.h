#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "SolverModel.h"

namespace host {

/// Numbers points from 1 on. Points with the same coordinates have the same number.
class PointNumbers {
public:
    /// `isNew` says whether no point with these coordinates came before.
    std::int64_t NumberOf(const Position& point, bool& isNew);

private:
    std::size_t SlotOf(const Position& point) const;
    void Grow();

    std::vector<Position> points_;
    /// The number of a point near the place that its coordinates lead to; 0 where there is none. Half of the
    /// places are free at least.
    std::vector<std::uint64_t> slots_ = std::vector<std::uint64_t>(64);
};

}  // namespace host
