#pragma once

#include <cstdint>
#include <unordered_map>

namespace host {

/// Which identifiers came already. Those that follow each other, as nearly all do, share a word.
class IdentifierSet {
public:
    IdentifierSet() = default;
    IdentifierSet(const IdentifierSet&) = delete;
    IdentifierSet& operator=(const IdentifierSet&) = delete;

    /// Returns whether it is new.
    bool Add(std::int64_t id) {
        const std::int64_t block = id / kBits;
        if (word_ == nullptr || block != block_) {
            block_ = block;
            word_ = &words_[block];
        }
        const std::uint64_t bit = std::uint64_t{1} << static_cast<unsigned>(id % kBits);
        const bool isNew = (*word_ & bit) == 0;
        *word_ |= bit;
        count_ += isNew ? 1 : 0;
        return isNew;
    }
    std::uint64_t Count() const { return count_; }

private:
    static constexpr std::int64_t kBits = 64;
    /// Its values stay where they are in memory.
    std::unordered_map<std::int64_t, std::uint64_t> words_;
    std::int64_t block_ = 0;
    std::uint64_t* word_ = nullptr;
    std::uint64_t count_ = 0;
};

}  // namespace host
