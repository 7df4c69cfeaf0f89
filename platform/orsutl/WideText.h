#pragma once

#include <cstddef>
#include <string_view>

namespace orsutl::detail {

constexpr bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// The wide character as a number that is never negative, whether wchar_t is signed or not.
constexpr char32_t CodePoint(wchar_t unit) {
    if constexpr (sizeof(wchar_t) == 2) {
        return static_cast<char16_t>(unit);
    } else {
        return static_cast<char32_t>(unit);
    }
}

/// A byte that is no text stands in wide texts as the low surrogate this far on.
inline constexpr char32_t kEscapeBase = 0xDC00;

/// The two halves of a code point beyond the basic plane as one.
constexpr char32_t JoinSurrogates(char32_t high, char32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

constexpr char32_t HighSurrogate(char32_t codePoint) {
    return 0xD800 + ((codePoint - 0x10000) >> 10);
}

constexpr char32_t LowSurrogate(char32_t codePoint) {
    return 0xDC00 + ((codePoint - 0x10000) & 0x3FF);
}

/// How many wide characters the code point takes: two where wchar_t has 16 bits and the code point is beyond
/// the basic plane, otherwise one.
constexpr std::size_t WideLength(char32_t codePoint) {
    return sizeof(wchar_t) == 2 && codePoint > 0xFFFF ? 2 : 1;
}

/// Writes the two halves of a code point beyond the basic plane and returns the place after them.
constexpr wchar_t* PutPair(char32_t codePoint, wchar_t* place) {
    *place++ = static_cast<wchar_t>(HighSurrogate(codePoint));
    *place++ = static_cast<wchar_t>(LowSurrogate(codePoint));
    return place;
}

/// Writes the code point's wide characters and returns the place after them.
constexpr wchar_t* PutWide(char32_t codePoint, wchar_t* place) {
    if (WideLength(codePoint) == 2) {
        return PutPair(codePoint, place);
    }
    *place++ = static_cast<wchar_t>(codePoint);
    return place;
}

/// The code point at an index below the text's length; moves the index past it. A pair of surrogates is one
/// code point, whatever the size of wchar_t; a lone one is a code point of its own.
inline char32_t NextCodePoint(std::wstring_view text, std::size_t& index) {
    const char32_t first = CodePoint(text[index++]);
    if (IsHighSurrogate(first) && index < text.size() && IsLowSurrogate(CodePoint(text[index]))) {
        return JoinSurrogates(first, CodePoint(text[index++]));
    }
    return first;
}

}  // namespace orsutl::detail
