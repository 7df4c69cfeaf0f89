#pragma once

#include <cstddef>
#include <cstdint>

namespace libjson::detail {

inline constexpr std::uint32_t kFirstHighSurrogate = 0xD800;
inline constexpr std::uint32_t kFirstLowSurrogate = 0xDC00;
inline constexpr std::uint32_t kPastSurrogates = 0xE000;
inline constexpr std::uint32_t kFirstSupplementary = 0x10000;

/// What a byte that belongs to no well-formed sequence is written as: this plus the byte.
inline constexpr std::uint32_t kStrayByteEscapes = 0xDC00;

constexpr bool IsHighSurrogate(std::uint32_t code) noexcept {
    return code >= kFirstHighSurrogate && code < kFirstLowSurrogate;
}
constexpr bool IsLowSurrogate(std::uint32_t code) noexcept {
    return code >= kFirstLowSurrogate && code < kPastSurrogates;
}

/// Whether that is the escape of a single byte.
constexpr bool IsStrayByteEscape(std::uint32_t code) noexcept {
    return code >= kStrayByteEscapes + 0x80 && code <= kStrayByteEscapes + 0xFF;
}

/// A sequence of UTF-8 and its code point.
struct Utf8Sequence {
    std::uint32_t code;
    std::size_t length;
};

/// The sequence at the start of the bytes, three-byte forms of surrogates included; the length is 0 where the
/// bytes do not start with one (overlong forms and code points beyond U+10FFFF do not count).
Utf8Sequence ReadUtf8(const char* bytes, const char* end) noexcept;

/// Writes the one to four bytes of a code point, surrogates in their three-byte form, and returns the place
/// after them.
char* WriteUtf8(std::uint32_t code, char* to) noexcept;

}  // namespace libjson::detail
