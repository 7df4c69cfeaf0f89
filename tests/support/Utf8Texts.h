#pragma once

#include <initializer_list>
#include <string>

/// UTF-8 written down by its definition.

inline std::string Bytes(std::initializer_list<int> values) {
    std::string bytes;
    for (const int value : values) {
        bytes += static_cast<char>(static_cast<unsigned char>(value));
    }
    return bytes;
}

/// The wide form of bytes that are not text: one lone surrogate each.
inline std::wstring Escaped(const std::string& bytes) {
    std::wstring wide;
    for (const char byte : bytes) {
        wide += static_cast<wchar_t>(0xDC00 + static_cast<unsigned char>(byte));
    }
    return wide;
}

/// The UTF-8 of a code point that has one.
inline std::string Encoded(char32_t codePoint) {
    const auto bits = [codePoint](unsigned shift, unsigned count) {
        return static_cast<int>((codePoint >> shift) & ((1U << count) - 1));
    };
    if (codePoint < 0x80) {
        return Bytes({bits(0, 7)});
    }
    if (codePoint < 0x800) {
        return Bytes({0xC0 + bits(6, 5), 0x80 + bits(0, 6)});
    }
    if (codePoint < 0x10000) {
        return Bytes({0xE0 + bits(12, 4), 0x80 + bits(6, 6), 0x80 + bits(0, 6)});
    }
    return Bytes({0xF0 + bits(18, 3), 0x80 + bits(12, 6), 0x80 + bits(6, 6), 0x80 + bits(0, 6)});
}
