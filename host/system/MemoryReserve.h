#pragma once

#include <cstddef>
#include <new>

namespace host {

/// What those functions need at most, which are called after EnsureMemory.
inline constexpr std::size_t kMemoryReserve = std::size_t{1} << 20U;

/// Throws std::bad_alloc if there is hardly any memory left. To be called before functions of other libraries
/// that do not withstand that: the C library's name service ends the program, and its locales seem not to be
/// there; UDUNITS ends the program, or does not know its units.
inline void EnsureMemory() {
    ::operator delete(::operator new(kMemoryReserve));
}

}  // namespace host
