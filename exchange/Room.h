#pragma once

#include <cstddef>
#include <new>

namespace korvane::exchange {

/// Throws std::bad_alloc if so many are as many as there are numbers for.
inline void ThrowIfFull(std::size_t count, std::size_t most) {
    if (count >= most) {
        throw std::bad_alloc();
    }
}

}  // namespace korvane::exchange
