#pragma once

#include <cstddef>

// Under AddressSanitizer free cells are out of bounds, as memory that was given back is; elsewhere nothing
// happens.

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LIBJSON_POISON 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define LIBJSON_POISON 1
#endif

#if defined(LIBJSON_POISON)
#include <sanitizer/asan_interface.h>
#endif

namespace libjson::detail {

inline void Poison([[maybe_unused]] const void* memory, [[maybe_unused]] std::size_t bytes) noexcept {
#if defined(LIBJSON_POISON)
    __asan_poison_memory_region(memory, bytes);
#endif
}

inline void Unpoison([[maybe_unused]] const void* memory, [[maybe_unused]] std::size_t bytes) noexcept {
#if defined(LIBJSON_POISON)
    __asan_unpoison_memory_region(memory, bytes);
#endif
}

}  // namespace libjson::detail
