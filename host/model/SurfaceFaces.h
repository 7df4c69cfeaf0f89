#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "SolverModel.h"

/// The faces and edges of elements, each once.
namespace host {

/// A face, by the places of its points. Repeated corners, as elements that are folded up have them, are left
/// out; with fewer than three corners it is none.
struct Face {
    std::array<std::uint32_t, 4> corners{};
    std::size_t count = 0;
    /// How many elements have it.
    std::uint32_t uses = 0;
};

/// The corners of an element that make one of its faces, around it against the clock from the outside.
struct LocalFace {
    std::array<std::size_t, 4> corners;
    std::size_t count;
};

inline constexpr std::array<std::size_t, 4> kRound = {0, 1, 2, 3};

/// The faces of a solid; none for any other shape.
std::span<const LocalFace> FacesOf(ElementShape shape);

Face MakeFace(const std::array<std::uint32_t, 8>& corners, std::span<const std::size_t> local);

/// A table of so many things at most, each of which is found by its hash. Nothing in it moves or goes.
class PlaceTable {
public:
    explicit PlaceTable(std::size_t most) : slots_(std::bit_ceil(most * 2 + 1), kFree) {}

    /// The place of the thing that `isSame` knows; `next`, which the table then has, if it knows none.
    template <typename IsSame>
    std::uint32_t FindOrAdd(std::uint64_t hash, std::uint32_t next, const IsSame& isSame) {
        std::uint32_t& place = slots_[SlotOf(hash, isSame)];
        if (place == kFree) {
            place = next;
        }
        return place;
    }
    /// Whether there is a thing that `isSame` knows.
    template <typename IsSame>
    bool Has(std::uint64_t hash, const IsSame& isSame) const {
        return slots_[SlotOf(hash, isSame)] != kFree;
    }

private:
    static constexpr std::uint32_t kFree = 0xFFFFFFFF;

    template <typename IsSame>
    std::size_t SlotOf(std::uint64_t hash, const IsSame& isSame) const {
        // Neighbouring numbers must not be neighbours in the table.
        std::size_t slot = (hash * 0x9E3779B97F4A7C15U) >> 20U & (slots_.size() - 1);
        while (slots_[slot] != kFree && !isSame(slots_[slot])) {
            slot = (slot + 1) & (slots_.size() - 1);
        }
        return slot;
    }

    std::vector<std::uint32_t> slots_;
};

/// Faces by their corners, whatever way these go around.
class FaceTable {
public:
    explicit FaceTable(std::size_t most) : table_(most) {}

    void Add(const Face& face);
    /// Whether there is a face with these corners.
    bool Has(const Face& face) const;
    const std::vector<Face>& Faces() const { return faces_; }

private:
    using Key = std::array<std::uint32_t, 4>;

    static Key KeyOf(const Face& face);
    static std::uint64_t HashOf(const Key& key);

    PlaceTable table_;
    std::vector<Face> faces_;
    std::vector<Key> keys_;
};

/// Lines between two points, in either direction.
class EdgeTable {
public:
    explicit EdgeTable(std::size_t most) : table_(most) {}

    /// Returns whether it is new.
    bool Add(std::uint32_t begin, std::uint32_t end);

private:
    PlaceTable table_;
    std::vector<std::uint64_t> edges_;
};

}  // namespace host
