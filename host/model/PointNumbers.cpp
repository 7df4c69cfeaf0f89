#include "PointNumbers.h"

#include <bit>
#include <utility>

namespace host {

/// The place of the point, or the free place that it can have.
std::size_t PointNumbers::SlotOf(const Position& point) const {
    constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;
    std::uint64_t hash = 0;
    for (const double coordinate : point) {
        hash = (hash ^ std::bit_cast<std::uint64_t>(coordinate)) * kMix;
        hash ^= hash >> 32U;
    }
    std::size_t slot = hash & (slots_.size() - 1);
    while (slots_[slot] != 0 && points_[slots_[slot] - 1] != point) {
        slot = (slot + 1) & (slots_.size() - 1);
    }
    return slot;
}

void PointNumbers::Grow() {
    slots_.assign(slots_.size() * 2, 0);
    for (std::size_t index = 0; index < points_.size(); ++index) {
        slots_[SlotOf(points_[index])] = index + 1;
    }
}

std::int64_t PointNumbers::NumberOf(const Position& given, bool& isNew) {
    // Zero with a sign is the same coordinate.
    const Position point = {given[0] + 0.0, given[1] + 0.0, given[2] + 0.0};
    std::size_t slot = SlotOf(point);
    isNew = slots_[slot] == 0;
    if (isNew) {
        if ((points_.size() + 1) * 2 > slots_.size()) {
            Grow();
            slot = SlotOf(point);
        }
        points_.push_back(point);
        slots_[slot] = points_.size();
    }
    return static_cast<std::int64_t>(slots_[slot]);
}

}  // namespace host
