#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__) || defined(_M_X64)
#define LIBJSON_SSE2 1
#include <emmintrin.h>
#endif

// Characters of strings are looked at in blocks of 16: a mask has one bit per character, the lowest for the
// first one, set where the character is not plain. The forms with Portable do the same without SSE2.
// Measured: with those, reading takes 1.8 times as long and writing 1.6 times (1,111 objects,
// gcc 12).

namespace libjson::detail {

inline constexpr std::size_t kBlock = 16;

/// Rounds up to whole blocks. Names and memory of nodes end there.
constexpr std::size_t WholeBlocks(std::size_t length) noexcept {
    return (length + kBlock - 1) / kBlock * kBlock;
}

/// Where in its block a character lies, when blocks are counted from address 0.
inline std::size_t OffsetInBlock(const char* at) noexcept {
    return reinterpret_cast<std::uintptr_t>(at) % kBlock;
}

/// Whether a character of a string that is read needs attention: the quote, the backslash and what is not
/// allowed there.
constexpr bool EndsReadRun(unsigned char character) noexcept {
    return character < 0x20 || character == '"' || character == '\\';
}

/// Whether a character of a node's text is written as something other than itself.
constexpr bool EndsWriteRun(unsigned char character) noexcept {
    return character < 0x20 || character >= 0x7F || character == '"' || character == '\\' || character == '/';
}

template <bool (*EndsRun)(unsigned char) noexcept>
std::uint32_t MaskPortable(const char* block) noexcept {
    std::uint32_t mask = 0;
    for (std::uint32_t index = 0; index < kBlock; ++index) {
        mask |= std::uint32_t{EndsRun(static_cast<unsigned char>(block[index]))} << index;
    }
    return mask;
}

/// The characters in which two blocks differ.
inline std::uint32_t DifferenceMaskPortable(const char* block, const char* other) noexcept {
    std::uint32_t mask = 0;
    for (std::uint32_t index = 0; index < kBlock; ++index) {
        mask |= std::uint32_t{block[index] != other[index]} << index;
    }
    return mask;
}

#if defined(LIBJSON_SSE2)
inline __m128i LoadBlock(const char* block) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(block));
}

inline std::uint32_t DifferenceMask(const char* block, const char* other) noexcept {
    const __m128i same = _mm_cmpeq_epi8(LoadBlock(block), LoadBlock(other));
    return static_cast<std::uint32_t>(_mm_movemask_epi8(same)) ^ 0xFFFF;
}

inline std::uint32_t ReadMask(const char* block) noexcept {
    const __m128i characters = LoadBlock(block);
    const __m128i control = _mm_cmpeq_epi8(_mm_min_epu8(characters, _mm_set1_epi8(0x1F)), characters);
    const __m128i quote = _mm_cmpeq_epi8(characters, _mm_set1_epi8('"'));
    const __m128i backslash = _mm_cmpeq_epi8(characters, _mm_set1_epi8('\\'));
    const __m128i ends = _mm_or_si128(control, _mm_or_si128(quote, backslash));
    return static_cast<std::uint32_t>(_mm_movemask_epi8(ends));
}

inline std::uint32_t WriteMask(__m128i characters) noexcept {
    // Compared with a sign, the bytes from 0x80 up are below 0x20 too.
    const __m128i outside = _mm_or_si128(_mm_cmplt_epi8(characters, _mm_set1_epi8(0x20)),
                                         _mm_cmpeq_epi8(characters, _mm_set1_epi8(0x7F)));
    const __m128i quote = _mm_cmpeq_epi8(characters, _mm_set1_epi8('"'));
    const __m128i backslash = _mm_cmpeq_epi8(characters, _mm_set1_epi8('\\'));
    const __m128i slash = _mm_cmpeq_epi8(characters, _mm_set1_epi8('/'));
    const __m128i ends = _mm_or_si128(_mm_or_si128(outside, quote), _mm_or_si128(backslash, slash));
    return static_cast<std::uint32_t>(_mm_movemask_epi8(ends));
}

inline std::uint32_t WriteMask(const char* block) noexcept {
    return WriteMask(LoadBlock(block));
}
#else
inline std::uint32_t DifferenceMask(const char* block, const char* other) noexcept {
    return DifferenceMaskPortable(block, other);
}
inline std::uint32_t ReadMask(const char* block) noexcept {
    return MaskPortable<EndsReadRun>(block);
}
inline std::uint32_t WriteMask(const char* block) noexcept {
    return MaskPortable<EndsWriteRun>(block);
}
#endif

/// The mask of the first characters alone.
constexpr std::uint32_t FirstOf(std::uint32_t mask, std::size_t count) noexcept {
    return count >= kBlock ? mask : mask & ((std::uint32_t{1} << count) - 1);
}

}  // namespace libjson::detail
