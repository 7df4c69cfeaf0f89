#include "CountedMemory.h"

#include <libjson.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

std::size_t inUse = 0;
std::size_t most = 0;

/// Stored before every block.
struct alignas(alignof(std::max_align_t)) Header {
    std::size_t bytes;
};

void* Give(void* memory, std::size_t bytes) {
    if (memory == nullptr) {
        return nullptr;
    }
    inUse += bytes;
    most = std::max(most, inUse);
    return ::new (memory) Header{bytes} + 1;
}

Header* Take(void* block) {
    Header* const header = static_cast<Header*>(block) - 1;
    inUse -= header->bytes;
    return header;
}

void* Allocate(std::size_t bytes) {
    return Give(std::malloc(sizeof(Header) + bytes), bytes);
}

void* Reallocate(void* block, std::size_t bytes) {
    return Give(std::realloc(Take(block), sizeof(Header) + bytes), bytes);
}

void Free(void* block) {
    if (block != nullptr) {
        std::free(Take(block));
    }
}

}  // namespace

void* operator new(std::size_t size) {
    if (void* const memory = Allocate(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    Free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    Free(memory);
}

CountedMemory::CountedMemory() : before_(inUse) {
    most = inUse;
}

std::size_t CountedMemory::InUse() const {
    return inUse - before_;
}

std::size_t CountedMemory::Most() const {
    return most - before_;
}

NodesInCountedMemory::NodesInCountedMemory() {
    libjson::register_memory_callbacks(Allocate, Reallocate, Free);
}

NodesInCountedMemory::~NodesInCountedMemory() {
    libjson::register_memory_callbacks(nullptr, nullptr, nullptr);
}
