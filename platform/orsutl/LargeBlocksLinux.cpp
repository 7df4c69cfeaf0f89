#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

#include "LargeBlocks.h"

// Most of the time that a large text takes goes into touching its memory for the first time, so it is mapped
// in pages of two megabytes. Blocks begin at such a page and are moved to such a page: the system then moves
// whole pages and their tables stay as they are.

namespace orsutl::detail {
namespace {

/// A multiple of every size that Linux has for small pages.
constexpr std::size_t kPage = std::size_t{64} * 1024;
constexpr std::size_t kLargePage = std::size_t{2} * 1024 * 1024;

/// Stands at the start of the mapping, before what the caller gets.
struct alignas(alignof(std::max_align_t)) Head {
    std::size_t mapped;
};

/// What is mapped for a block: whole large pages, so that no end of a block that grows stays in small ones.
/// Throws std::bad_alloc where that is more than there are addresses.
std::size_t MappedFor(std::size_t bytes) {
    if (bytes > std::numeric_limits<std::size_t>::max() - sizeof(Head) - 2 * kLargePage) {
        throw std::bad_alloc();
    }
    const std::size_t needed = sizeof(Head) + bytes;
    const std::size_t page = needed < kLargePage ? kPage : kLargePage;
    return (needed + page - 1) / page * page;
}

/// Addresses from the start of a large page on; null where there are none. What the protection forbids counts
/// as no memory yet.
char* MapAligned(std::size_t bytes, int protection) noexcept {
    const std::size_t spare = kLargePage;
    void* const mapped = ::mmap(nullptr, bytes + spare, protection, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) {
        return nullptr;
    }
    char* const first = static_cast<char*>(mapped);
    const std::size_t before =
        (kLargePage - reinterpret_cast<std::uintptr_t>(first) % kLargePage) % kLargePage;
    if (before != 0) {
        ::munmap(first, before);
    }
    ::munmap(first + before + bytes, spare - before);
    return first + before;
}

/// Takes the mapping to a place where it has the new size; null where there is none.
void* Move(Head* head, std::size_t mapped) noexcept {
    void* moved = ::mremap(head, head->mapped, mapped, 0);
    if (moved != MAP_FAILED) {
        return moved;
    }
    if (char* const place = MapAligned(mapped, PROT_NONE)) {
        moved = ::mremap(head, head->mapped, mapped, MREMAP_MAYMOVE | MREMAP_FIXED, place);
        if (moved != MAP_FAILED) {
            return moved;
        }
        ::munmap(place, mapped);
    }
    // Where addresses are short, any will do.
    moved = ::mremap(head, head->mapped, mapped, MREMAP_MAYMOVE);
    return moved == MAP_FAILED ? nullptr : moved;
}

/// What the caller gets of a mapping.
void* BlockIn(void* mapping, std::size_t mapped) noexcept {
    const Head head{mapped};
    std::memcpy(mapping, &head, sizeof(head));
    return static_cast<char*>(mapping) + sizeof(head);
}

Head* HeadOf(void* block) noexcept {
    return static_cast<Head*>(block) - 1;
}

}  // namespace

void* AllocateLargeBlock(std::size_t bytes) {
    const std::size_t mapped = MappedFor(bytes);
    char* const place = MapAligned(mapped, PROT_READ | PROT_WRITE);
    if (place == nullptr) {
        throw std::bad_alloc();
    }
    // Only a hint, which goes with the mapping: where it is refused, the pages are small.
    static_cast<void>(::madvise(place, mapped, MADV_HUGEPAGE));
    return BlockIn(place, mapped);
}

void* ResizeLargeBlock(void* block, std::size_t bytes) {
    const std::size_t mapped = MappedFor(bytes);
    void* const moved = Move(HeadOf(block), mapped);
    if (moved == nullptr) {
        throw std::bad_alloc();
    }
    return BlockIn(moved, mapped);
}

void FreeLargeBlock(void* block) noexcept {
    Head* const head = HeadOf(block);
    ::munmap(head, head->mapped);
}

}  // namespace orsutl::detail
