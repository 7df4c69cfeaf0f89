#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <string>

#include "OuString.h"

namespace {

template <typename... Arguments>
std::wstring Formatted(const wchar_t* format, Arguments... arguments) {
    OuString text(L"before");
    text.Format(format, arguments...);
    return {text.GetBuffer(), text.GetLength()};
}

TEST(OuStringFormat, PutsNumbers) {
    EXPECT_EQ(Formatted(L"%d.%d", 3, 12), L"3.12");
    EXPECT_EQ(Formatted(L"%i|%5d|%-5d|%05d|%+d|% d", 1, 2, 3, 4, 5, 6), L"1|    2|3    |00004|+5| 6");
    EXPECT_EQ(Formatted(L"%.3d|%8.3d|%x|%X|%#x|%o|%u", 7, 8, 255, 255, 255, 8, 9U),
              L"007|     008|ff|FF|0xff|10|9");
    EXPECT_EQ(Formatted(L"%d %d", INT_MAX, INT_MIN), L"2147483647 -2147483648");
}

TEST(OuStringFormat, PutsNumbersOfEveryLength) {
    EXPECT_EQ(Formatted(L"%hhd %hd %ld %lld", 257, 65537, -1L, LLONG_MIN), L"1 1 -1 -9223372036854775808");
    EXPECT_EQ(Formatted(L"%hhu %hu %lu %llx", 257U, 65537U, 1UL, ULLONG_MAX), L"1 1 1 ffffffffffffffff");
    EXPECT_EQ(Formatted(L"%jd %ju %zu %td %zd %tu", std::intmax_t{-1}, std::uintmax_t{1}, std::size_t{2},
                        std::ptrdiff_t{-3}, std::ptrdiff_t{-4}, std::size_t{5}),
              L"-1 1 2 -3 -4 5");
}

TEST(OuStringFormat, PutsFloatingNumbers) {
    EXPECT_EQ(Formatted(L"%f %.2f %g %8.3f|%-8.1f| %e", 1.5, 2.345678, 0.0001, 3.14159, 2.5, 12345.678),
              L"1.500000 2.35 0.0001    3.142|2.5     | 1.234568e+04");
    EXPECT_EQ(Formatted(L"%G %E %F %.1lf %Lf", 1e20, 1.0, 2.0, 3.0, 4.5L),
              L"1E+20 1.000000E+00 2.000000 3.0 4.500000");
    EXPECT_EQ(Formatted(L"%.0f", DBL_MAX).size(), 309U);
    EXPECT_EQ(Formatted(L"%a", 1.0).substr(0, 3), L"0x1");
}

TEST(OuStringFormat, TakesWidthAndPrecisionFromArguments) {
    EXPECT_EQ(Formatted(L"%*d|%-*d|%*d|", 4, 1, 4, 2, -4, 3), L"   1|2   |3   |");
    EXPECT_EQ(Formatted(L"%.*f|%.*f", 1, 1.25, -1, 1.5), L"1.2|1.500000");
    EXPECT_EQ(Formatted(L"%*.*s|", 5, 2, L"abc"), L"   ab|");
}

TEST(OuStringFormat, PutsPointers) {
    int value = 0;
    const std::wstring text = Formatted(L"%p", static_cast<void*>(&value));
    EXPECT_EQ(std::stoull(text, nullptr, 16), reinterpret_cast<std::uintptr_t>(&value));
}

TEST(OuStringFormat, TakesAWideTextForS) {
    EXPECT_EQ(Formatted(L"'%s' dll", L"KorvaneJson"), L"'KorvaneJson' dll");
    EXPECT_EQ(Formatted(L"%ls", L"\u65E5\u672C \u00FC"), L"\u65E5\u672C \u00FC");
    EXPECT_EQ(Formatted(L"%lS", L"wide"), L"wide");
    EXPECT_EQ(
        Formatted(L"%5s|%-5s|%.2s|%5.1s|%-5.1s|%.0s|%.s|", L"ab", L"cd", L"efg", L"hij", L"klm", L"n", L"o"),
        L"   ab|cd   |ef|    h|k    |||");
    EXPECT_EQ(Formatted(L"%s%s%d", L"a", L"", 1), L"a1");
}

TEST(OuStringFormat, TakesANarrowTextForCapitalSAndHs) {
    EXPECT_EQ(Formatted(L"%S %hs", "one", "two"), L"one two");
    EXPECT_EQ(Formatted(L"%S|%8hs|%-8S|", "\xC3\xBC", "\xE6\x97\xA5", "x"),
              L"\u00FC|       \u65E5|x       |");
    EXPECT_EQ(Formatted(L"%.2S", "abc"), L"ab");
}

TEST(OuStringFormat, ReadsACutTextNoFurtherThanItsPrecision) {
    const wchar_t wide[] = {L'a', L'b'};
    const char narrow[] = {'c', 'd'};
    EXPECT_EQ(Formatted(L"%.2s%.2S", static_cast<const wchar_t*>(wide), static_cast<const char*>(narrow)),
              L"abcd");
}

TEST(OuStringFormat, PutsCharacters) {
    EXPECT_EQ(Formatted(L"%c%c", L'a', L'\u65E5'), L"a\u65E5");
    EXPECT_EQ(Formatted(L"%lc%3c|%-3c|", L'b', L'c', L'd'), L"b  c|d  |");
    EXPECT_EQ(Formatted(L"%C%hc", 'e', 'f'), L"ef");
    EXPECT_EQ(Formatted(L"%lC", L'\u65E5'), L"\u65E5");
    EXPECT_EQ(Formatted(L"a%cb%Cc", 0, 0), std::wstring(L"a\0b\0c", 5));
}

TEST(OuStringFormat, PutsPercentSigns) {
    EXPECT_EQ(Formatted(L"100%%"), L"100%");
    EXPECT_EQ(Formatted(L"%%s%%%d%%", 5), L"%s%5%");
}

TEST(OuStringFormat, MakesTextsOfAnyLength) {
    const std::wstring part(100000, L'x');
    EXPECT_EQ(Formatted(L"<%s|%s>", part.c_str(), part.c_str()), L"<" + part + L"|" + part + L">");
    EXPECT_EQ(Formatted(L"%70000d", 1), std::wstring(69999, L' ') + L"1");
    EXPECT_EQ(Formatted(L"%.5000f", 0.0).size(), 5002U);
}

TEST(OuStringFormat, PutsTheWordNullForNullTexts) {
    EXPECT_EQ(Formatted(L"%s %S", static_cast<const wchar_t*>(nullptr), static_cast<const char*>(nullptr)),
              L"(null) (null)");
}

TEST(OuStringFormat, TakesItsOwnBufferAsAnArgument) {
    OuString text(L"self");
    text.Format(L"%s and %s %S", text.GetBuffer(), text.GetBuffer(), text.GetAnsiBuffer());
    EXPECT_STREQ(text.GetBuffer(), L"self and self self");
    text.Format(text.GetBuffer());
    EXPECT_STREQ(text.GetBuffer(), L"self and self self");
}

TEST(OuStringFormat, GivesTheEmptyTextForAWrongFormat) {
    EXPECT_EQ(Formatted(nullptr), L"");
    EXPECT_EQ(Formatted(L""), L"");
    int count = 5;
    EXPECT_EQ(Formatted(L"abc%n", &count), L"");
    EXPECT_EQ(count, 5);
    for (const wchar_t* format : {L"a%", L"%5", L"%-", L"%.", L"%l", L"%y", L"%5%", L"%1$d", L"%Ld", L"%hf",
                                  L"%99999999999d", L"%.99999999999d", L"%\u00FC"}) {
        EXPECT_EQ(Formatted(format, 1), L"") << format;
    }
}

TEST(OuStringFormat, LeavesCopiesAsTheyWere) {
    OuString text(L"before");
    const OuString copy(text);
    text.Format(L"%d", 1);
    EXPECT_STREQ(copy.GetBuffer(), L"before");
}

TEST(OuStringFormat, ConvertsTextsWhateverTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"C", "C.UTF-8"}) {
        std::setlocale(LC_ALL, locale);
        EXPECT_EQ(Formatted(L"%S %s", "\xC3\xBC \xFF", L"\u65E5"),
                  std::wstring(L"\u00FC ") + static_cast<wchar_t>(0xDCFF) + L" \u65E5")
            << locale;
    }
    std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
