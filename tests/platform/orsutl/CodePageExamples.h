#pragma once

#include <string>
#include <string_view>

/// A narrow text and its code points.
struct CodePageExample {
    std::string_view narrow;
    std::u32string_view wide;
};

/// The characters of bytes 80 to 9F in code page 1252; the five without one are control characters.
constexpr std::u32string_view kWindows1252From80To9F =
    U"\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\x8D\u017D\x8F"
    U"\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\x9D\u017E\u0178";

/// Texts in code page 932 that come back as the same bytes.
constexpr CodePageExample kCodePage932[] = {
    {"plain ~ \\ text", U"plain ~ \\ text"},
    {"\x93\xFA\x96\x7B", U"\u65E5\u672C"},
    // The second byte is a backslash by itself.
    {"\x95\x5C\x83\x5C.txt", U"\u8868\u30BD.txt"},
    {"\xB1\xDD", U"\uFF71\uFF9D"},
    {"\x81\x60\x81\x61\x81\x7C\x81\x91\x81\xCA", U"\uFF5E\u2225\uFF0D\uFFE0\uFFE2"},
    {"\x87\x40\x87\x8A", U"\u2460\u3231"},
    {"\xFB\xFC\xFA\xB1", U"\u9AD9\uFA11"},
    {"a\x88\x9Fz", U"a\u4E9Cz"},
    {"\xF0\x40", U"\uE000"},
};

/// Characters that code page 932 holds twice: other bytes come back.
constexpr struct {
    CodePageExample read;
    std::string_view written;
} kCodePage932Doubles[] = {
    {{"\x87\x90", U"\u2252"}, "\x81\xE0"},
    {{"\xEE\xE0", U"\u9AD9"}, "\xFB\xFC"},
    {{"\xFA\x54", U"\uFFE2"}, "\x81\xCA"},
    {{"\xFA\x4A", U"\u2160"}, "\x87\x54"},
};

/// Characters that neither code page 1252 nor 932 has, some of which the system would replace with best-fit
/// substitutes.
constexpr std::u32string_view kLackingIn1252And932 = U"\u1E00\u0905\u0E01\U0001F600\U0002000B";
