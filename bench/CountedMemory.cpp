// Stands in front of the C library's memory functions and counts. The libraries' calls come here too: a
// program's own functions are found before those of the libraries.

#include "CountedMemory.h"

#include <atomic>
#include <cstddef>

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's names are reserved.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

namespace {

std::atomic<long> allocations = 0;

}  // namespace

long CountOfAllocations() noexcept {
    return allocations.load(std::memory_order_relaxed);
}

extern "C" {

__attribute__((visibility("default"))) void* malloc(std::size_t size) {
    allocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_malloc(size);
}

__attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t size) {
    allocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_calloc(count, size);
}

__attribute__((visibility("default"))) void* realloc(void* block, std::size_t size) {
    allocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_realloc(block, size);
}

__attribute__((visibility("default"))) void free(void* block) {
    __libc_free(block);
}
}
