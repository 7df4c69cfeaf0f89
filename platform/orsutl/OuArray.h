#pragma once

#include <cstddef>
#include <vector>

/// An array of pointer-wide slots that hold integers in their low 32 bits; the high halves have no meaning.
class OuArray {
public:
    /// An array of `initialSize` null slots; none below 1.
    explicit OuArray(int initialSize = 0)
        : slots_(initialSize > 0 ? static_cast<std::size_t>(initialSize) : 0) {}

    /// Appends a slot. Memory exhaustion throws std::bad_alloc and leaves the array as it was.
    void Add(void* slot) { slots_.push_back(slot); }
    int GetSize() const noexcept { return static_cast<int>(slots_.size()); }
    /// The slot at an index from 0 up to the size.
    void* GetAt(int index) const noexcept { return slots_[static_cast<std::size_t>(index)]; }
    void RemoveAll() noexcept { slots_.clear(); }

private:
    std::vector<void*> slots_;
};
