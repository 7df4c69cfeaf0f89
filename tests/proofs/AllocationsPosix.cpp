#include <cstdlib>
#include <new>

#include "Allocations.h"

using allocations::GateOf;
using allocations::Source;

void allocations::CountOperatorNew() {}

void* operator new(std::size_t size) {
    if (GateOf(Source::kNew).Admit()) {
        if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
            return memory;
        }
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    if (memory != nullptr) {
        GateOf(Source::kNew).Return();
        std::free(memory);
    }
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
