#include "LargeBlocks.h"

#include <cstdint>
#include <cstdlib>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace orsutl::detail {
namespace {

/// Asks for pages of two megabytes: most of the time that a large text takes goes into touching its pages for
/// the first time.
void* UseLargePages([[maybe_unused]] void* block, [[maybe_unused]] std::size_t bytes) noexcept {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    constexpr std::size_t kPage = 4096;
    const std::size_t before = (kPage - reinterpret_cast<std::uintptr_t>(block) % kPage) % kPage;
    const std::size_t whole = (bytes - before) / kPage * kPage;
    // Only a hint: where it is refused, the pages are small.
    static_cast<void>(::madvise(static_cast<char*>(block) + before, whole, MADV_HUGEPAGE));
#endif
    return block;
}

}  // namespace

// NOLINTBEGIN(cppcoreguidelines-owning-memory): these are what owners are made of.
void* AllocateLargeBlock(std::size_t bytes) {
    void* const block = std::malloc(bytes);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return UseLargePages(block, bytes);
}

void* ResizeLargeBlock(void* block, std::size_t bytes) {
    void* const resized = std::realloc(block, bytes);
    if (resized == nullptr) {
        throw std::bad_alloc();
    }
    return UseLargePages(resized, bytes);
}

void FreeLargeBlock(void* block) noexcept {
    std::free(block);
}
// NOLINTEND(cppcoreguidelines-owning-memory)

}  // namespace orsutl::detail
