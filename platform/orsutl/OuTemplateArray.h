#pragma once

#include <cstddef>
#include <type_traits>
#include <vector>

#include "OuCRTAllocator.h"

/// An array of values, in the order in which they were added.
template <typename T, typename Allocator = OuCRTAllocator<>>
class OuTemplateArray {
    static_assert(!std::is_same_v<T, bool>, "std::vector<bool> has no values to refer to");

public:
    /// Appends a copy of the value, which may be one of the array's own. What the copying throws,
    /// std::bad_alloc for one, passes through and leaves the array as it was.
    void Add(const T& value) { values_.push_back(value); }
    int GetSize() const noexcept { return static_cast<int>(values_.size()); }
    /// The value at an index from 0 up to the size.
    const T& operator[](int index) const noexcept { return values_[static_cast<std::size_t>(index)]; }
    T& operator[](int index) noexcept { return values_[static_cast<std::size_t>(index)]; }
    void RemoveAll() noexcept { values_.clear(); }

private:
    using ElementAllocator = typename Allocator::template rebind<T>::other;
    std::vector<T, ElementAllocator> values_;
};
