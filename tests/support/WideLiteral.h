#pragma once

#include <string>
#include <string_view>

/// Code points as a wide text: beyond the basic plane one wide character where wchar_t has 32 bits, two where
/// it has 16. Surrogates are kept as they are.
inline std::wstring WideText(std::u32string_view codePoints) {
    std::wstring wide;
    for (const char32_t codePoint : codePoints) {
        if (sizeof(wchar_t) == 2 && codePoint > 0xFFFF) {
            wide += static_cast<wchar_t>(0xD7C0 + (codePoint >> 10));
            wide += static_cast<wchar_t>(0xDC00 + (codePoint & 0x3FF));
        } else {
            wide += static_cast<wchar_t>(codePoint);
        }
    }
    return wide;
}
