#include <OuString.h>
#include <gtest/gtest.h>
#include <korvaneexchange/Text.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "support/Utf8Texts.h"
#include "support/WideLiteral.h"

using korvane::exchange::FromUtf8;
using korvane::exchange::ToUtf8;

namespace {

std::wstring WideOf(const OuString& text) {
    return {text.GetBuffer(), text.GetLength()};
}

std::string Utf8Of(const std::wstring& wide) {
    return ToUtf8(OuString(wide.data(), wide.size()));
}

}  // namespace

TEST(ExchangeText, IsEmptyThereAndBack) {
    EXPECT_EQ(ToUtf8(OuString()), "");
    EXPECT_TRUE(FromUtf8("").IsEmpty());
    EXPECT_TRUE(FromUtf8(std::string_view()).IsEmpty());
}

TEST(ExchangeText, HasEveryCharacterOfUnicode) {
    std::string utf8;
    std::u32string codePoints;
    for (char32_t codePoint = 1; codePoint <= 0x10FFFF; ++codePoint) {
        if (codePoint < 0xD800 || codePoint > 0xDFFF) {
            utf8 += Encoded(codePoint);
            codePoints += codePoint;
        }
    }
    const std::wstring wide = WideText(codePoints);
    EXPECT_TRUE(Utf8Of(wide) == utf8);
    EXPECT_TRUE(WideOf(FromUtf8(utf8)) == wide);
}

TEST(ExchangeText, KeepsNulCharactersOfATextAndEndsAtThoseOfUtf8) {
    EXPECT_EQ(Utf8Of(std::wstring(L"a\0\u00FC\0", 4)), std::string("a\0\xC3\xBC\0", 5));
    EXPECT_EQ(Utf8Of(std::wstring(L"\0", 1)), std::string("\0", 1));
    EXPECT_EQ(WideOf(FromUtf8(std::string_view("a\0b", 3))), L"a");
    EXPECT_EQ(WideOf(FromUtf8(std::string_view("\0b", 2))), L"");
}

TEST(ExchangeText, EndsWhereTheViewEnds) {
    const std::string_view umlaut = "\xC3\xBC";
    EXPECT_EQ(WideOf(FromUtf8(umlaut.substr(0, 1))), Escaped("\xC3"));
    EXPECT_EQ(WideOf(FromUtf8(std::string_view("ab").substr(0, 1))), L"a");
}

TEST(ExchangeText, EscapesEachByteThatIsNoUtf8) {
    const std::string sequences[] = {
        // Continuation bytes alone, bytes that never occur, lead bytes alone.
        Bytes({0x80}), Bytes({0xBF}), Bytes({0xC0}), Bytes({0xC1}), Bytes({0xF5}), Bytes({0xFE}),
        Bytes({0xFF}), Bytes({0xC2}), Bytes({0xE0}), Bytes({0xF0}),
        // Cut short.
        Bytes({0xE6, 0x97}), Bytes({0xF0, 0x9F}), Bytes({0xF0, 0x9F, 0x98}),
        // Longer than necessary.
        Bytes({0xC0, 0xAF}), Bytes({0xE0, 0x80, 0xAF}), Bytes({0xE0, 0x9F, 0xBF}),
        Bytes({0xF0, 0x80, 0x80, 0xAF}), Bytes({0xF0, 0x8F, 0xBF, 0xBF}),
        // Surrogates, single and as a pair.
        Bytes({0xED, 0xA0, 0x80}), Bytes({0xED, 0xBF, 0xBF}), Bytes({0xED, 0xA0, 0xBD, 0xED, 0xB8, 0x80}),
        // Beyond Unicode.
        Bytes({0xF4, 0x90, 0x80, 0x80}), Bytes({0xF8, 0x88, 0x80, 0x80, 0x80})};
    for (const std::string& sequence : sequences) {
        EXPECT_EQ(WideOf(FromUtf8(sequence)), Escaped(sequence)) << testing::PrintToString(sequence);
        EXPECT_EQ(WideOf(FromUtf8("a" + sequence + "z")), L"a" + Escaped(sequence) + L"z")
            << testing::PrintToString(sequence);
        EXPECT_EQ(ToUtf8(FromUtf8(sequence)), sequence) << testing::PrintToString(sequence);
    }
    EXPECT_EQ(WideOf(FromUtf8("\xE6\x97\xC3\xBC")), Escaped("\xE6\x97") + L"\u00FC");
}

TEST(ExchangeText, KeepsEveryByteOfShortSequences) {
    for (int first = 1; first < 256; ++first) {
        ASSERT_EQ(ToUtf8(FromUtf8(Bytes({first}))), Bytes({first}));
        for (int second = 1; second < 256; ++second) {
            const std::string bytes = Bytes({first, second});
            ASSERT_EQ(ToUtf8(FromUtf8(bytes)), bytes) << testing::PrintToString(bytes);
        }
    }
}

TEST(ExchangeText, WritesOtherLoneSurrogatesInThreeBytes) {
    EXPECT_EQ(Utf8Of(WideText(U"\x41") + static_cast<wchar_t>(0xD83D)), "A\xED\xA0\xBD");
    EXPECT_EQ(Utf8Of(std::wstring{static_cast<wchar_t>(0xD83D), L'z'}), "\xED\xA0\xBDz");
    EXPECT_EQ(Utf8Of(std::wstring{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xE000)}),
              "\xED\xA0\xBD\xEE\x80\x80");
    EXPECT_EQ(Utf8Of(std::wstring{static_cast<wchar_t>(0xDC7F)}), "\xED\xB1\xBF");
    EXPECT_EQ(Utf8Of(std::wstring{static_cast<wchar_t>(0xDD00)}), "\xED\xB4\x80");
    EXPECT_EQ(Utf8Of(std::wstring{static_cast<wchar_t>(0xDC80)}), "\x80");
    EXPECT_EQ(Utf8Of(std::wstring{static_cast<wchar_t>(0xDCFF)}), "\xFF");
    // A pair is one character, also where a wide character has room for both halves.
    EXPECT_EQ(Utf8Of(std::wstring{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE97)}),
              "\xF0\x9F\x9A\x97");
    EXPECT_EQ(Utf8Of(std::wstring{static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0xDC00)}),
              "\xF0\x90\x80\x80");
    EXPECT_EQ(Utf8Of(std::wstring{static_cast<wchar_t>(0xDBFF), static_cast<wchar_t>(0xDFFF)}),
              "\xF4\x8F\xBF\xBF");
}

TEST(ExchangeText, HasAQuestionMarkForWhatIsBeyondUnicode) {
    if constexpr (sizeof(wchar_t) == 4) {
        EXPECT_EQ(Utf8Of(std::wstring{static_cast<wchar_t>(0x110000), L'z'}), "?z");
        EXPECT_EQ(Utf8Of(std::wstring{static_cast<wchar_t>(0xFFFFFFFF)}), "?");
    }
}

#if !defined(_WIN32)
TEST(ExchangeText, IsTheSameUnderEveryAnsiCodePage) {
    const std::wstring wide = L"Tr\u00E4ger \u65E5\u672C \u0E01";
    const std::string utf8 = "Tr\xC3\xA4ger \xE6\x97\xA5\xE6\x9C\xAC \xE0\xB8\x81";
    for (const char* const codePage : {"CP1252", "CP932", "ISO-8859-2"}) {
        ASSERT_TRUE(OuSetAnsiCodePage(codePage));
        const OuString text(wide.c_str());
        EXPECT_STRNE(text.GetAnsiBuffer(), utf8.c_str());
        EXPECT_EQ(ToUtf8(text), utf8);
        EXPECT_EQ(WideOf(FromUtf8(utf8)), wide);
        EXPECT_EQ(ToUtf8(FromUtf8("\xFC\x80z")), "\xFC\x80z");
    }
    ASSERT_TRUE(OuSetAnsiCodePage("UTF-8"));
}
#endif
