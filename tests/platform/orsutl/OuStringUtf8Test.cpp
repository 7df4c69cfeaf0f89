#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "OuString.h"
#include "support/Utf8Texts.h"
#include "support/WideLiteral.h"

namespace {

std::wstring Widened(const std::string& narrow) {
    const OuString text(narrow.c_str(), 0);
    return {text.GetBuffer(), text.GetLength()};
}

std::string Narrowed(const std::wstring& wide) {
    return OuString(wide.data(), wide.size()).GetAnsiBuffer();
}

/// Through the wide characters alone: a text that was made of narrow ones may still hold those.
std::string ThereAndBack(const std::string& narrow) {
    return Narrowed(Widened(narrow));
}

TEST(OuStringUtf8, IsTheCodePage) {
    EXPECT_TRUE(OuSetAnsiCodePage("UTF-8"));
    EXPECT_TRUE(OuSetAnsiCodePage("utf8"));
    EXPECT_TRUE(OuSetAnsiCodePage("CP65001"));
    EXPECT_FALSE(OuSetAnsiCodePage("no such code page"));
    EXPECT_FALSE(OuSetAnsiCodePage(""));
    EXPECT_FALSE(OuSetAnsiCodePage(nullptr));
    EXPECT_EQ(Narrowed(L"\u00FC"), "\xC3\xBC");
}

TEST(OuStringUtf8, HoldsEveryCharacterOfUnicode) {
    std::string narrow;
    std::u32string codePoints;
    for (char32_t codePoint = 1; codePoint <= 0x10FFFF; ++codePoint) {
        if (codePoint < 0xD800 || codePoint > 0xDFFF) {
            narrow += Encoded(codePoint);
            codePoints += codePoint;
        }
    }
    const std::wstring wide = WideText(codePoints);
    EXPECT_TRUE(Widened(narrow) == wide);
    EXPECT_TRUE(Narrowed(wide) == narrow);
}

TEST(OuStringUtf8, EscapesBytesThatAreNoText) {
    const std::vector<std::string> sequences = {
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
        EXPECT_EQ(Widened(sequence), Escaped(sequence)) << testing::PrintToString(sequence);
        EXPECT_EQ(Widened("a" + sequence + "z"), L"a" + Escaped(sequence) + L"z")
            << testing::PrintToString(sequence);
    }
}

TEST(OuStringUtf8, GoesOnBehindABrokenSequence) {
    EXPECT_EQ(Widened("\xE6\x97\xC3\xBC"), Escaped("\xE6\x97") + L"\u00FC");
    EXPECT_EQ(Widened("\xF0\x9F\x98"
                      "A"),
              Escaped("\xF0\x9F\x98") + L"A");
    EXPECT_EQ(Widened("\xFF\xE6\x97\xA5"), Escaped("\xFF") + L"\u65E5");
}

TEST(OuStringUtf8, KeepsEveryByteOfShortSequences) {
    for (int first = 1; first < 256; ++first) {
        ASSERT_EQ(ThereAndBack(Bytes({first})), Bytes({first}));
        for (int second = 1; second < 256; ++second) {
            const std::string bytes = Bytes({first, second});
            ASSERT_EQ(ThereAndBack(bytes), bytes) << testing::PrintToString(bytes);
        }
    }
}

TEST(OuStringUtf8, KeepsEveryByteOfSequencesAtTheLimits) {
    const std::vector<int> limits = {0x01, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xC1, 0xC2, 0xDF,
                                     0xE0, 0xE1, 0xEC, 0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xFF};
    for (const int first : limits) {
        for (const int second : limits) {
            for (const int third : limits) {
                const std::string three = Bytes({first, second, third});
                ASSERT_EQ(ThereAndBack(three), three) << testing::PrintToString(three);
                for (const int fourth : limits) {
                    const std::string four = three + Bytes({fourth});
                    ASSERT_EQ(ThereAndBack(four), four) << testing::PrintToString(four);
                }
            }
        }
    }
}

TEST(OuStringUtf8, KeepsEveryByteOfLongerTexts) {
    std::mt19937 random(20260301);
    const std::vector<std::string> pieces = {
        "a",    "/",    "\xC3\xBC", "\xE6\x97\xA5", "\xF0\x9F\x98\x80", "\xED\xA0\xBD", "\xED\xB8\x80",
        "\x80", "\xBF", "\xC3",     "\xE6\x97",     "\xF0\x9F",         "\xFF"};
    for (int round = 0; round < 20000; ++round) {
        std::string bytes;
        for (auto length = random() % 24; length > 0; --length) {
            if (random() % 2 == 0) {
                bytes += pieces[random() % pieces.size()];
            } else {
                bytes += Bytes({static_cast<int>(1 + random() % 255)});
            }
        }
        ASSERT_EQ(ThereAndBack(bytes), bytes) << testing::PrintToString(bytes);
        ASSERT_EQ(OuString(bytes.c_str(), 0).GetAnsiBuffer(), bytes);
    }
}

TEST(OuStringUtf8, NarrowsLoneSurrogates) {
    for (int unit = 0xD800; unit <= 0xDFFF; ++unit) {
        const bool isByte = unit >= 0xDC80 && unit <= 0xDCFF;
        const std::string expected = isByte
                                         ? Bytes({unit - 0xDC00})
                                         : Bytes({0xED, 0x80 | ((unit >> 6) & 0x3F), 0x80 | (unit & 0x3F)});
        ASSERT_EQ(Narrowed(std::wstring(1, static_cast<wchar_t>(unit))), expected) << unit;
    }
}

TEST(OuStringUtf8, NarrowsAPairOfSurrogatesAsOneCharacter) {
    const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(Narrowed(pair), "\xF0\x9F\x98\x80");
    const std::wstring reversed = {static_cast<wchar_t>(0xDE00), static_cast<wchar_t>(0xD83D)};
    EXPECT_EQ(Narrowed(reversed), "\xED\xB8\x80\xED\xA0\xBD");
}

TEST(OuStringUtf8, NarrowsWhatIsNoCharacterAsAQuestionMark) {
    if constexpr (sizeof(wchar_t) == 4) {
        const std::wstring beyond = {L'a', static_cast<wchar_t>(0x110000), static_cast<wchar_t>(-1), L'z'};
        EXPECT_EQ(Narrowed(beyond), "a??z");
    } else {
        EXPECT_EQ(Narrowed(L"\uFFFF"), "\xEF\xBF\xBF");
    }
}

TEST(OuStringUtf8, WidensTheNarrowTextOnlyUpToItsNul) {
    EXPECT_EQ(OuString("\xC3\xBC\0\xC3\xBC", 0).GetLength(), 1U);
}

TEST(OuStringUtf8, FindsTheOneByteBeyondAsciiWhereverItStands) {
    for (std::size_t length = 1; length < 40; ++length) {
        for (std::size_t place = 0; place < length; ++place) {
            std::string bytes(length, 'a');
            bytes[place] = '\xFF';
            std::wstring expected(length, L'a');
            expected[place] = static_cast<wchar_t>(0xDCFF);
            ASSERT_EQ(Widened(bytes), expected) << length << ' ' << place;
        }
    }
}

}  // namespace
