#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace korvane::exchange {

/// The number of a text among distinct ones.
using TextId = std::uint32_t;

inline constexpr TextId kEmptyText = 0;

/// Texts, each kept once: equal texts have equal numbers.
class DistinctTexts {
public:
    DistinctTexts();
    DistinctTexts(const DistinctTexts&) = delete;
    DistinctTexts& operator=(const DistinctTexts&) = delete;

    TextId IdOf(std::string_view text);
    /// Valid as long as this object.
    std::string_view TextOf(TextId id) const { return texts_[id]; }
    std::size_t size() const { return texts_.size(); }

private:
    std::string_view Keep(std::string_view text);
    /// The slot that has the text or, if none has it, the free one that it would be put into.
    std::uint32_t& SlotOf(std::string_view text);
    void Grow();

    std::vector<std::string_view> texts_;
    /// A table with open addressing: the texts' numbers, 0 in a free slot.
    std::vector<std::uint32_t> slots_;
    std::vector<std::unique_ptr<char[]>> pages_;
    char* free_ = nullptr;
    std::size_t freeSize_ = 0;
};

}  // namespace korvane::exchange
