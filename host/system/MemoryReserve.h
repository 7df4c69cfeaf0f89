#pragma once

#include <cstddef>
#include <new>

namespace host {

/// Throws std::bad_alloc if there is hardly any memory left. To be called before functions of the C library
/// that do not withstand that: its name service ends the program, and its locales seem not to be there.
inline void EnsureMemory() {
    constexpr std::size_t kReserve = std::size_t{1} << 20U;
    ::operator delete(::operator new(kReserve));
}

}  // namespace host
