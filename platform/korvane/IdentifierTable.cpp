#include "IdentifierTable.h"

#include <algorithm>
#include <limits>

namespace korvane {
namespace {

/// The array may have this many times as many places as there are objects, and so many more.
constexpr std::size_t kPlacesPerObject = 4;
constexpr std::size_t kSparePlaces = 64;

}  // namespace

CAEObject* IdentifierTable::Find(int id) const noexcept {
    if (id <= 0) {
        return nullptr;
    }
    const auto place = static_cast<std::size_t>(id);
    if (place < near_.size() && near_[place] != nullptr) {
        return near_[place];
    }
    // An identifier may lie far out when it comes and near later, as the array grows.
    if (far_.empty()) {
        return nullptr;
    }
    const auto found = far_.find(id);
    return found != far_.end() ? found->second : nullptr;
}

bool IdentifierTable::Insert(int id, CAEObject& object) {
    if (id <= 0 || Find(id) != nullptr) {
        return false;
    }
    const auto place = static_cast<std::size_t>(id);
    if (place >= near_.size() && place < kPlacesPerObject * count_ + kSparePlaces) {
        near_.resize(std::max(place + 1, near_.size() * 2));
    }
    if (place >= near_.size()) {
        far_.emplace(id, &object);
    }
    try {
        if (id >= next_) {
            taken_.insert(id);
        }
    } catch (...) {
        far_.erase(id);
        throw;
    }
    if (place < near_.size()) {
        near_[place] = &object;
    }
    ++count_;
    return true;
}

void IdentifierTable::Erase(int id) noexcept {
    const auto place = static_cast<std::size_t>(id);
    if (place < near_.size() && near_[place] != nullptr) {
        near_[place] = nullptr;
    } else {
        far_.erase(id);
    }
    --count_;
}

int IdentifierTable::TakeNext() noexcept {
    constexpr int kLast = std::numeric_limits<int>::max();
    while (next_ < kLast && taken_.erase(next_) != 0) {
        ++next_;
    }
    // The last number of an int is never given out: the sequence could not step past it.
    return next_ < kLast ? next_++ : 0;
}

void IdentifierTable::SkipBefore(int next) noexcept {
    next_ = std::max(next_, next);
    std::erase_if(taken_, [&](int id) { return id < next_; });
}

}  // namespace korvane
