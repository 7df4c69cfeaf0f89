#include "DistinctTexts.h"

#include <algorithm>
#include <functional>
#include <limits>

#include "Room.h"

namespace korvane::exchange {
namespace {

constexpr std::size_t kPageSize = std::size_t{64} << 10U;
constexpr std::size_t kFirstSlots = 256;

}  // namespace

DistinctTexts::DistinctTexts() : texts_(1), slots_(kFirstSlots) {}

TextId DistinctTexts::IdOf(std::string_view text) {
    if (text.empty()) {
        return kEmptyText;
    }
    if (const std::uint32_t known = SlotOf(text); known != 0) {
        return known;
    }
    ThrowIfFull(texts_.size(), std::size_t{std::numeric_limits<TextId>::max()} + 1);
    if (texts_.size() * 3 > slots_.size() * 2) {
        Grow();
    }
    texts_.push_back(Keep(text));
    const auto id = static_cast<TextId>(texts_.size() - 1);
    SlotOf(text) = id;
    return id;
}

std::string_view DistinctTexts::Keep(std::string_view text) {
    if (text.size() > freeSize_) {
        const std::size_t size = std::max(text.size(), kPageSize);
        pages_.push_back(std::make_unique_for_overwrite<char[]>(size));
        if (text.size() > kPageSize / 2) {
            // What is left of the page before is used further.
            std::ranges::copy(text, pages_.back().get());
            return {pages_.back().get(), text.size()};
        }
        free_ = pages_.back().get();
        freeSize_ = size;
    }
    std::ranges::copy(text, free_);
    const std::string_view kept(free_, text.size());
    free_ += text.size();
    freeSize_ -= text.size();
    return kept;
}

std::uint32_t& DistinctTexts::SlotOf(std::string_view text) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t index = std::hash<std::string_view>()(text) & mask;
    while (slots_[index] != 0 && texts_[slots_[index]] != text) {
        index = (index + 1) & mask;
    }
    return slots_[index];
}

void DistinctTexts::Grow() {
    slots_.assign(slots_.size() * 2, 0);
    for (std::size_t id = 1; id < texts_.size(); ++id) {
        SlotOf(texts_[id]) = static_cast<std::uint32_t>(id);
    }
}

}  // namespace korvane::exchange
