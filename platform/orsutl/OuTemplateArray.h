#pragma once

#include <cstddef>
#include <limits>
#include <new>
#include <type_traits>
#include <vector>

#include "OuCRTAllocator.h"

namespace orsutl::detail {

/// What the standard containers need of an allocator, made of one like OuCRTAllocator.
template <typename T, typename Allocator>
class ElementAllocator {
    static_assert(alignof(T) <= alignof(std::max_align_t), "the allocator aligns no further");

public:
    using value_type = T;

    ElementAllocator() noexcept = default;
    template <typename Other>
    ElementAllocator(const ElementAllocator<Other, Allocator>&) noexcept {}

    T* allocate(std::size_t count) {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) {
            throw std::bad_alloc();
        }
        return static_cast<T*>(Allocator::Allocate(count * sizeof(T)));
    }
    void deallocate(T* memory, std::size_t) noexcept { Allocator::Free(memory); }

    template <typename Other>
    bool operator==(const ElementAllocator<Other, Allocator>&) const noexcept {
        return true;
    }
};

}  // namespace orsutl::detail

/// An array of values, in the order in which they were added, in memory that the allocator gives.
template <typename T, typename Allocator = OuCRTAllocator>
class OuTemplateArray {
    static_assert(!std::is_same_v<T, bool>, "std::vector<bool> has no values to refer to");

public:
    /// Appends a copy of the value, which may be one of the array's own. What the copying throws,
    /// std::bad_alloc for one, passes through and leaves the array as it was.
    void Add(const T& value) { values_.push_back(value); }
    /// Takes the memory for that many values more at once. Throws as Add does.
    void ReserveMore(std::size_t count) { values_.reserve(values_.size() + count); }
    int GetSize() const noexcept { return static_cast<int>(values_.size()); }
    /// The value at an index from 0 up to the size.
    const T& operator[](int index) const noexcept { return values_[static_cast<std::size_t>(index)]; }
    T& operator[](int index) noexcept { return values_[static_cast<std::size_t>(index)]; }
    void RemoveAll() noexcept { values_.clear(); }

private:
    std::vector<T, orsutl::detail::ElementAllocator<T, Allocator>> values_;
};
