#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

/// Where OuTemplateArray takes its memory from: malloc and free of the C runtime.
class OuCRTAllocator {
public:
    /// Memory for that many bytes, which may be 0, aligned for every fundamental type; never null. Throws
    /// std::bad_alloc when there is no memory.
    static void* Allocate(std::size_t bytes) {
        // malloc may answer 0 bytes with null.
        // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): an allocator is what owners are made of.
        if (void* const memory = std::malloc(bytes == 0 ? 1 : bytes)) {
            return memory;
        }
        throw std::bad_alloc();
    }
    /// Frees what Allocate returned.
    static void Free(void* memory) noexcept {
        std::free(memory);  // NOLINT(cppcoreguidelines-owning-memory)
    }
};
