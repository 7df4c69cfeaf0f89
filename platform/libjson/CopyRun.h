#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "PlainRun.h"

namespace libjson::detail {

#if defined(LIBJSON_SSE2)
template <typename Word>
std::uint64_t LoadWord(const char* from) noexcept {
    Word word;
    std::memcpy(&word, from, sizeof(word));
    return word;
}

/// The characters of a text shorter than a block, with NULs behind them. None but these are read: both ends
/// are loaded as words, which may overlap.
inline __m128i LoadShort(const char* from, std::size_t length) noexcept {
    if (length >= sizeof(std::uint64_t)) {
        const std::size_t missing = kBlock - length;
        const std::uint64_t last = LoadWord<std::uint64_t>(from + length - sizeof(std::uint64_t));
        // In two steps, for a word has no shift by its whole width.
        const std::uint64_t high = last >> (8 * (missing - 1)) >> 8;
        return _mm_set_epi64x(static_cast<std::int64_t>(high),
                              static_cast<std::int64_t>(LoadWord<std::uint64_t>(from)));
    }
    std::uint64_t low = 0;
    if (length >= sizeof(std::uint32_t)) {
        const std::size_t rest = length - sizeof(std::uint32_t);
        low = LoadWord<std::uint32_t>(from) | LoadWord<std::uint32_t>(from + rest) << (8 * rest);
    } else if (length != 0) {
        const std::size_t middle = length / 2;
        const std::size_t last = length - 1;
        low = LoadWord<std::uint8_t>(from) | LoadWord<std::uint8_t>(from + middle) << (8 * middle) |
              LoadWord<std::uint8_t>(from + last) << (8 * last);
    }
    return _mm_set_epi64x(0, static_cast<std::int64_t>(low));
}

/// Copies characters, at most a block, to where there is room for a whole one, and returns their mask as
/// WriteMask does.
inline std::uint32_t CopyRun(char* to, const char* from, std::size_t length) noexcept {
    const __m128i characters = length == kBlock ? LoadBlock(from) : LoadShort(from, length);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), characters);
    return FirstOf(WriteMask(characters), length);
}
#else
inline std::uint32_t CopyRun(char* to, const char* from, std::size_t length) noexcept {
    if (length == kBlock) {
        std::memcpy(to, from, kBlock);
    } else {
        std::memcpy(to, from, length);
    }
    return FirstOf(WriteMask(to), length);
}
#endif

}  // namespace libjson::detail
