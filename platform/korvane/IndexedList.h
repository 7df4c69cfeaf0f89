#pragma once

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace korvane {

/// Entries in the order in which they came, each with a key of its own: `Entry::*KeyOf`, compared by
/// `Order::Compare`, which answers as strcmp does. `Order::AreSame` says cheaply of some equal keys that they
/// are equal. A key is looked for one by one while the entries are few, through an index when they are many.
/// An entry stays where it is until the next one comes.
template <typename Entry, auto KeyOf, typename Order>
class IndexedList {
public:
    using Key = std::remove_cvref_t<decltype(Entry().*KeyOf)>;

    IndexedList() = default;
    IndexedList(const IndexedList& other) : entries_(other.entries_) {}
    IndexedList& operator=(const IndexedList&) = delete;

    /// Null when there is no entry with the key.
    const Entry* Find(const Key& key) const {
        const std::size_t position = PositionOf(key);
        return position < entries_.size() ? &entries_[position] : nullptr;
    }

    /// The entry with the key, which it has to keep; made at the end, empty but for its key, when there is
    /// none.
    Entry& FindOrAdd(const Key& key) {
        const std::size_t position = PositionOf(key);
        if (position == entries_.size()) {
            Add(key);
        }
        return entries_[position];
    }

    const std::vector<Entry>& Entries() const noexcept { return entries_; }

private:
    struct ComesBefore {
        bool operator()(const Key& left, const Key& right) const noexcept {
            return Order::Compare(left, right) < 0;
        }
    };
    using Index = std::map<Key, std::size_t, ComesBefore>;

    static constexpr std::size_t kMostEntriesWithoutIndex = 16;

    /// The number of entries where there is none with the key.
    std::size_t PositionOf(const Key& key) const {
        if (entries_.size() <= kMostEntriesWithoutIndex) {
            const auto isSame = [&](const Entry& entry) { return Order::AreSame(entry.*KeyOf, key); };
            const auto isEqual = [&](const Entry& entry) { return Order::Compare(entry.*KeyOf, key) == 0; };
            auto found = std::find_if(entries_.begin(), entries_.end(), isSame);
            if (found == entries_.end()) {
                found = std::find_if(entries_.begin(), entries_.end(), isEqual);
            }
            return static_cast<std::size_t>(found - entries_.begin());
        }
        if (!index_) {
            MakeIndex();
        }
        const auto found = index_->find(key);
        return found != index_->end() ? found->second : entries_.size();
    }

    void MakeIndex() const {
        auto index = std::make_unique<Index>();
        for (std::size_t position = 0; position < entries_.size(); ++position) {
            index->emplace(entries_[position].*KeyOf, position);
        }
        index_ = std::move(index);
    }

    void Add(const Key& key) {
        Entry entry{};
        entry.*KeyOf = key;
        entries_.push_back(std::move(entry));
        if (!index_) {
            return;
        }
        try {
            index_->emplace(key, entries_.size() - 1);
        } catch (...) {
            entries_.pop_back();
            throw;
        }
    }

    std::vector<Entry> entries_;
    /// Made by the first look-up among many entries, a copy's own as well.
    mutable std::unique_ptr<Index> index_;
};

}  // namespace korvane
