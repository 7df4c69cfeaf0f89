#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "OuString.h"
#include "support/WideLiteral.h"

namespace {

std::wstring Upper(std::u32string_view codePoints) {
    const std::wstring wide = WideText(codePoints);
    OuString text(wide.data(), wide.size());
    text.MakeUpper();
    return {text.GetBuffer(), text.GetLength()};
}

int CompareNoCase(std::u32string_view left, std::u32string_view right) {
    const std::wstring wideLeft = WideText(left);
    const std::wstring wideRight = WideText(right);
    return OuString(wideLeft.data(), wideLeft.size())
        .CompareNoCase(OuString(wideRight.data(), wideRight.size()));
}

TEST(OuStringCase, MakesUpperCaseByTheSimpleMappings) {
    EXPECT_EQ(Upper(U"abcxyz @[`{ 019 ABC"), L"ABCXYZ @[`{ 019 ABC");
    EXPECT_EQ(Upper(U"\u00E0\u00F6\u00F7\u00F8\u00FE\u00FF\u00B5"),
              WideText(U"\u00C0\u00D6\u00F7\u00D8\u00DE\u0178\u039C"));
    EXPECT_EQ(Upper(U"\u0101\u0131\u017F\u01C5\u01C6\u01F2"), WideText(U"\u0100IS\u01C4\u01C4\u01F1"));
    EXPECT_EQ(Upper(U"\u03B1\u03C2\u03C3\u0430\u0451\u0561\u10D0"),
              WideText(U"\u0391\u03A3\u03A3\u0410\u0401\u0531\u1C90"));
    EXPECT_EQ(Upper(U"\u2170\u24D0\uA641\uA7C3\uAB70\uFF41"),
              WideText(U"\u2160\u24B6\uA640\uA7C2\u13A0\uFF21"));
}

TEST(OuStringCase, KeepsCharactersWhoseUpperCaseIsSeveral) {
    EXPECT_EQ(Upper(U"stra\u00DFe \u0149 \uFB01 \u0390 \u1E96 \u0587"),
              WideText(U"STRA\u00DFE \u0149 \uFB01 \u0390 \u1E96 \u0587"));
    // These have a single character as their simple mapping, though the full one has two.
    EXPECT_EQ(Upper(U"\u1F80\u1F91\u1FA7\u1FB3\u1FC3\u1FF3"),
              WideText(U"\u1F88\u1F99\u1FAF\u1FBC\u1FCC\u1FFC"));
}

TEST(OuStringCase, MapsCharactersBeyondTheBasicPlane) {
    EXPECT_EQ(Upper(U"a\U00010428\U0001044Fz"), WideText(U"A\U00010400\U00010427Z"));
    EXPECT_EQ(Upper(U"\U000104D8\U00010CC0\U000118C0\U00016E60\U0001E922"),
              WideText(U"\U000104B0\U00010C80\U000118A0\U00016E40\U0001E900"));
    EXPECT_EQ(Upper(U"\U0001F600\U00020000"), WideText(U"\U0001F600\U00020000"));
}

TEST(OuStringCase, KeepsLoneSurrogatesAndNulCharacters) {
    const std::wstring odd = {L'a', L'\0', static_cast<wchar_t>(0xDC80), L'b', static_cast<wchar_t>(0xD801),
                              L'c'};
    OuString text(odd.data(), odd.size());
    text.MakeUpper();
    const std::wstring expected = {
        L'A', L'\0', static_cast<wchar_t>(0xDC80), L'B', static_cast<wchar_t>(0xD801), L'C'};
    EXPECT_EQ(std::wstring(text.GetBuffer(), text.GetLength()), expected);
}

TEST(OuStringCase, KeepsPairsOfSurrogatesAsLongAsTheyAre) {
    const std::wstring pair = {static_cast<wchar_t>(0xD801), static_cast<wchar_t>(0xDC28)};
    OuString text(pair.data(), pair.size());
    text.MakeUpper();
    const std::wstring expected = {static_cast<wchar_t>(0xD801), static_cast<wchar_t>(0xDC00)};
    EXPECT_EQ(std::wstring(text.GetBuffer(), text.GetLength()), expected);
}

TEST(OuStringCase, MakesNewAnsiForms) {
    OuString text("caePart \xC3\xBC", 0);
    EXPECT_STREQ(text.GetAnsiBuffer(), "caePart \xC3\xBC");
    text.MakeUpper();
    EXPECT_STREQ(text.GetAnsiBuffer(), "CAEPART \xC3\x9C");
    OuString empty;
    empty.MakeUpper();
    EXPECT_TRUE(empty.IsEmpty());
}

TEST(OuStringCase, ComparesWithoutCase) {
    EXPECT_EQ(CompareNoCase(U"No", U"nO"), 0);
    EXPECT_EQ(OuString(L"No").CompareNoCase(L"NO"), 0);
    EXPECT_NE(CompareNoCase(U"No", U"None"), 0);
    EXPECT_LT(CompareNoCase(U"No", U"nob"), 0);
    EXPECT_GT(CompareNoCase(U"nob", U"NO"), 0);
    EXPECT_LT(CompareNoCase(U"a", U"B"), 0);
    EXPECT_GT(CompareNoCase(U"b", U"A"), 0);
    EXPECT_EQ(CompareNoCase(U"", U""), 0);
    EXPECT_LT(CompareNoCase(U"", U"a"), 0);
    // "_" is between the capitals and the small letters; folding goes to the small ones.
    EXPECT_LT(CompareNoCase(U"_", U"A"), 0);
}

TEST(OuStringCase, FoldsBySimpleFoldings) {
    EXPECT_EQ(CompareNoCase(U"\u00C4\u00D6\u00DC", U"\u00E4\u00F6\u00FC"), 0);
    EXPECT_EQ(CompareNoCase(U"\u03A3\u03C3\u03C2", U"\u03C2\u03C2\u03C3"), 0);
    EXPECT_EQ(CompareNoCase(U"\u017F\u212A\u00B5\u2126", U"sk\u03BC\u03C9"), 0);
    EXPECT_EQ(CompareNoCase(U"\u1E9E", U"\u00DF"), 0);
    EXPECT_NE(CompareNoCase(U"\u00DF", U"ss"), 0);
    EXPECT_EQ(CompareNoCase(U"\u1F88", U"\u1F80"), 0);
    EXPECT_EQ(CompareNoCase(U"\u13A0\uAB70", U"\uAB70\u13A0"), 0);
    EXPECT_EQ(CompareNoCase(U"\U00010400", U"\U00010428"), 0);
    // Neither the dotted nor the dotless i is an i.
    EXPECT_NE(CompareNoCase(U"\u0130", U"i"), 0);
    EXPECT_NE(CompareNoCase(U"\u0131", U"I"), 0);
}

TEST(OuStringCase, OrdersByCodePointWithoutCase) {
    EXPECT_LT(CompareNoCase(U"\uFF5E", U"\U00010000"), 0);
    EXPECT_GT(CompareNoCase(U"\U00010000", U"\uFF5E"), 0);
}

TEST(OuStringCase, AsksNoLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    // What the machine has of these is its own matter; none may change anything.
    for (const char* locale : {"C", "C.UTF-8", "tr_TR.UTF-8", "Turkish_Turkey.1254", "de_DE.ISO-8859-1"}) {
        std::setlocale(LC_ALL, locale);
        EXPECT_EQ(Upper(U"i\u00FC"), WideText(U"I\u00DC")) << locale;
        EXPECT_EQ(CompareNoCase(U"TITLE", U"title"), 0) << locale;
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(OuStringCase, MapsEveryAsciiCharacter) {
    for (wchar_t character = 1; character < 0x80; ++character) {
        const bool isSmall = character >= L'a' && character <= L'z';
        OuString text(&character, 1);
        text.MakeUpper();
        EXPECT_EQ(text.GetBuffer()[0], isSmall ? character - 0x20 : character);
        EXPECT_EQ(text.CompareNoCase(OuString(&character, 1)), 0);
    }
}

}  // namespace
