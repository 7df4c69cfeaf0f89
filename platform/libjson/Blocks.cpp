#include "Blocks.h"

#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <new>

#include "libjson.h"

namespace libjson::detail {
namespace {

struct MemoryFunctions {
    malloc_t allocate = std::malloc;
    realloc_t reallocate = std::realloc;
    free_t release = std::free;
};

/// Stored before every block: the functions that release it.
struct alignas(alignof(std::max_align_t)) BlockHeader {
    realloc_t reallocate;
    free_t release;
};

std::mutex functionsGuard;
MemoryFunctions functions;

MemoryFunctions CurrentFunctions() {
    const std::lock_guard lock(functionsGuard);
    return functions;
}

std::size_t WithHeader(std::size_t bytes) {
    if (bytes > SIZE_MAX - sizeof(BlockHeader)) {
        throw std::bad_alloc();
    }
    return bytes + sizeof(BlockHeader);
}

BlockHeader* HeaderOf(void* block) noexcept {
    return static_cast<BlockHeader*>(block) - 1;
}

}  // namespace

void* AllocateBlock(std::size_t bytes) {
    const MemoryFunctions current = CurrentFunctions();
    void* const memory = current.allocate(WithHeader(bytes));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return new (memory) BlockHeader{current.reallocate, current.release} + 1;
}

void* ResizeBlock(void* block, std::size_t bytes) {
    BlockHeader* const header = HeaderOf(block);
    void* const memory = header->reallocate(header, WithHeader(bytes));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return static_cast<BlockHeader*>(memory) + 1;
}

void FreeBlock(void* block) noexcept {
    BlockHeader* const header = HeaderOf(block);
    header->release(header);
}

}  // namespace libjson::detail

namespace libjson {

void register_memory_callbacks(malloc_t allocate, realloc_t reallocate, free_t release) noexcept {
    const std::lock_guard lock(detail::functionsGuard);
    detail::functions = {allocate != nullptr ? allocate : std::malloc,
                         reallocate != nullptr ? reallocate : std::realloc,
                         release != nullptr ? release : std::free};
}

}  // namespace libjson
