#include "LargeBlocks.h"

#include <cstdlib>
#include <new>

// NOLINTBEGIN(cppcoreguidelines-owning-memory): these are what owners are made of.
namespace orsutl::detail {

void* AllocateLargeBlock(std::size_t bytes) {
    if (void* const block = std::malloc(bytes)) {
        return block;
    }
    throw std::bad_alloc();
}

void* ResizeLargeBlock(void* block, std::size_t bytes) {
    if (void* const resized = std::realloc(block, bytes)) {
        return resized;
    }
    throw std::bad_alloc();
}

void FreeLargeBlock(void* block) noexcept {
    std::free(block);
}

}  // namespace orsutl::detail
// NOLINTEND(cppcoreguidelines-owning-memory)
