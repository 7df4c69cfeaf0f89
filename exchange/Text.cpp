// The suite's headers first: the public header includes OuString's only under its usual name.
// clang-format off
#include "objectjson/ObjectModel.h"
#include <korvaneexchange/Text.h>
// clang-format on

#include <cstddef>
#include <cwchar>
#include <type_traits>

#include "Utf8.h"

namespace korvane::exchange {
namespace {

/// A byte that is no text is this surrogate plus the byte, as in the object model's own texts.
constexpr char32_t kByteEscapes = 0xDC00;

/// Takes the code point at the place, or the escape of the one byte there.
char32_t TakeUtf8(std::string_view text, std::size_t& at) {
    char32_t character = 0;
    std::size_t length = 1;
    const bool isText = DecodeUtf8(text, at, character, length);
    at += length;
    return isText ? character : kByteEscapes + character;
}

void PutWide(char32_t codePoint, std::wstring& wide) {
#if WCHAR_MAX == 0xFFFF
    if (codePoint > 0xFFFF) {
        wide += static_cast<wchar_t>(0xD800 + ((codePoint - 0x10000) >> 10U));
        codePoint = 0xDC00 + ((codePoint - 0x10000) & 0x3FFU);
    }
#endif
    wide += static_cast<wchar_t>(codePoint);
}

/// The wide character as a number that is not negative, whatever the sign of wchar_t.
constexpr char32_t UnitAt(std::wstring_view text, std::size_t at) {
    return static_cast<std::make_unsigned_t<wchar_t>>(text[at]);
}

/// Takes the code point at the place; a lone surrogate is one of its own.
char32_t TakeWide(std::wstring_view text, std::size_t& at) {
    const char32_t unit = UnitAt(text, at++);
    if (unit < 0xD800 || unit > 0xDBFF || at == text.size()) {
        return unit;
    }
    const char32_t low = UnitAt(text, at);
    if (low < 0xDC00 || low > 0xDFFF) {
        return unit;
    }
    ++at;
    return 0x10000 + ((unit - 0xD800) << 10U) + (low - 0xDC00);
}

void PutByte(char32_t byte, std::string& utf8) {
    utf8 += static_cast<char>(static_cast<unsigned char>(byte));
}

void PutContinuation(char32_t codePoint, unsigned shift, std::string& utf8) {
    PutByte(0x80 | ((codePoint >> shift) & 0x3FU), utf8);
}

void PutUtf8(char32_t codePoint, std::string& utf8) {
    if (codePoint < 0x80) {
        PutByte(codePoint, utf8);
    } else if (codePoint >= kByteEscapes + 0x80 && codePoint <= kByteEscapes + 0xFF) {
        PutByte(codePoint - kByteEscapes, utf8);
    } else if (codePoint < 0x800) {
        PutByte(0xC0 | (codePoint >> 6U), utf8);
        PutContinuation(codePoint, 0, utf8);
    } else if (codePoint < 0x10000) {
        PutByte(0xE0 | (codePoint >> 12U), utf8);
        PutContinuation(codePoint, 6, utf8);
        PutContinuation(codePoint, 0, utf8);
    } else if (codePoint <= 0x10FFFF) {
        PutByte(0xF0 | (codePoint >> 18U), utf8);
        PutContinuation(codePoint, 12, utf8);
        PutContinuation(codePoint, 6, utf8);
        PutContinuation(codePoint, 0, utf8);
    } else {
        // Only wide characters of 32 bits can be beyond Unicode.
        PutByte(U'?', utf8);
    }
}

}  // namespace

std::string ToUtf8(const OuString& text) {
    const std::wstring_view wide(CharactersOf(text), LengthOf(text));
    std::string utf8;
    utf8.reserve(wide.size());
    for (std::size_t at = 0; at < wide.size();) {
        PutUtf8(TakeWide(wide, at), utf8);
    }
    return utf8;
}

OuString FromUtf8(std::string_view text) {
    const std::string_view whole = text.substr(0, text.find('\0'));
    std::wstring wide;
    wide.reserve(whole.size());
    for (std::size_t at = 0; at < whole.size();) {
        PutWide(TakeUtf8(whole, at), wide);
    }
    return OuString(wide.c_str());
}

}  // namespace korvane::exchange
