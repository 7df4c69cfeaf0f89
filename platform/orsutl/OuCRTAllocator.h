#pragma once

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

/// An allocator for containers that takes its memory from malloc.
template <typename T = void>
class OuCRTAllocator {
public:
    using value_type = T;

    OuCRTAllocator() noexcept = default;
    template <typename Other>
    OuCRTAllocator(const OuCRTAllocator<Other>&) noexcept {}

    /// Memory for `count` values, which may be 0; never null. Throws std::bad_alloc when there is no memory.
    T* allocate(std::size_t count) {
        static_assert(alignof(T) <= alignof(std::max_align_t), "malloc aligns no further");
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) {
            throw std::bad_alloc();
        }
        // malloc may answer 0 bytes with null.
        // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): an allocator is what owners are made of.
        if (void* memory = std::malloc(count == 0 ? 1 : count * sizeof(T))) {
            return static_cast<T*>(memory);
        }
        throw std::bad_alloc();
    }
    void deallocate(T* memory, std::size_t) noexcept {
        std::free(memory);  // NOLINT(cppcoreguidelines-owning-memory)
    }

    template <typename Other>
    bool operator==(const OuCRTAllocator<Other>&) const noexcept {
        return true;
    }
};

/// The allocator as OuTemplateArray's argument names it; the array rebinds it to its element type.
template <>
class OuCRTAllocator<void> {
public:
    using value_type = void;
    template <typename Other>
    struct rebind {
        using other = OuCRTAllocator<Other>;
    };
};
