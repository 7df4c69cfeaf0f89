#include <gtest/gtest.h>

#include <limits>

#include "host/system/Text.h"

namespace host {
namespace {

TEST(HostText, PrintsTextOnOneLine) {
    EXPECT_EQ(Printable(std::string_view("a\nb\tc\rd\x1B[31m\x7F")), "a\\nb\\tc\\rd\\x1B[31m\\x7F");
}

TEST(HostText, PrintsCharactersBeyondAsciiAsTheyAre) {
    EXPECT_EQ(Printable(std::string_view("K\xC3\xBChlk\xC3\xB6rper \xE4\xB8\xAD \xF0\x9F\x94\xA7")),
              "K\xC3\xBChlk\xC3\xB6rper \xE4\xB8\xAD \xF0\x9F\x94\xA7");
}

TEST(HostText, PrintsBytesThatAreNoUtf8AsEscapes) {
    EXPECT_EQ(Printable(std::string_view("a\xE9z")), "a\\xE9z");
    EXPECT_EQ(Printable(std::string_view("\xC0\x80")), "\\xC0\\x80");
    EXPECT_EQ(Printable(std::string_view("\xED\xA0\x80")), "\\xED\\xA0\\x80");
    EXPECT_EQ(Printable(std::string_view("\xE4\xB8")), "\\xE4\\xB8");
    EXPECT_EQ(Printable(std::string_view("\xF4\x90\x80\x80")), "\\xF4\\x90\\x80\\x80");
}

TEST(HostText, PrintsWhatTurnsTheDirectionOfWritingAsEscapes) {
    // NOLINTNEXTLINE(misc-misleading-bidirectional): what is tested.
    EXPECT_EQ(Printable(std::string_view("a\xE2\x80\xAEgpj.exe")), "a\\u202Egpj.exe");
    EXPECT_EQ(Printable(std::string_view("a\xD8\x9Cz")), "a\\u061Cz");
    EXPECT_EQ(Printable(std::string_view("a\xC2\x9B"
                                         "b")),
              "a\\u009Bb");
}

TEST(HostText, QuotesPathsAndNamesForMessages) {
    EXPECT_EQ(Quoted(std::string("a\nb")), "'a\\nb'");
    EXPECT_EQ(Quoted(std::string_view("")), "''");
    EXPECT_EQ(Quoted(PathFromUtf8("K\xC3\xBChler.inp")), "'K\xC3\xBChler.inp'");
    const std::string longName(1000, 'x');
    EXPECT_EQ(Quoted(longName), "'" + longName + "'");
}

TEST(HostText, CutsBetweenCharacters) {
    EXPECT_EQ(CutUtf8("abc", 3), "abc");
    EXPECT_EQ(CutUtf8("abc", 2), "ab");
    EXPECT_EQ(CutUtf8("abc", 0), "");
    EXPECT_EQ(CutUtf8("a\xC3\xBC", 2), "a");
    EXPECT_EQ(CutUtf8("a\xC3\xBC", 3), "a\xC3\xBC");
    EXPECT_EQ(CutUtf8("a\xF0\x9F\x94\xA7z", 4), "a");
    EXPECT_EQ(CutUtf8("a\xF0\x9F\x94\xA7z", 5), "a\xF0\x9F\x94\xA7");
}

TEST(HostText, CountsColumnsOfATerminal) {
    EXPECT_EQ(DisplayWidth("abc"), 3U);
    EXPECT_EQ(DisplayWidth("\xC3\xBC\xE2\x94\x9C"), 2U);
    EXPECT_EQ(DisplayWidth("\xE4\xB8\xAD\xE6\x96\x87"), 4U);
    EXPECT_EQ(DisplayWidth("u\xCC\x88"), 1U);
}

TEST(HostText, FormatsSizesInDecimalUnits) {
    EXPECT_EQ(FormatSize(0), "0 B");
    EXPECT_EQ(FormatSize(999), "999 B");
    EXPECT_EQ(FormatSize(1000), "1.0 kB");
    EXPECT_EQ(FormatSize(9940), "9.9 kB");
    EXPECT_EQ(FormatSize(9960), "10 kB");
    EXPECT_EQ(FormatSize(999499), "999 kB");
    EXPECT_EQ(FormatSize(999500), "1.0 MB");
    EXPECT_EQ(FormatSize(std::numeric_limits<std::uint64_t>::max()), "18 EB");
}

TEST(HostText, CountsInTheNounsNumber) {
    EXPECT_EQ(FormatCount(0, "study", "studies"), "0 studies");
    EXPECT_EQ(FormatCount(1, "study", "studies"), "1 study");
    EXPECT_EQ(FormatCount(2, "study", "studies"), "2 studies");
}

TEST(HostText, FormatsTimesInUtc) {
    EXPECT_EQ(FormatTime(0), "1970-01-01T00:00:00Z");
    EXPECT_EQ(FormatTime(1772357400), "2026-03-01T09:30:00Z");
    EXPECT_EQ(FormatTime(951782399), "2000-02-28T23:59:59Z");
    EXPECT_EQ(FormatTime(-1), "1969-12-31T23:59:59Z");
}

TEST(HostText, KeepsTimesWithinFourDigitYears) {
    EXPECT_EQ(FormatTime(std::numeric_limits<std::int64_t>::max()), "9999-12-31T23:59:59Z");
    EXPECT_EQ(FormatTime(std::numeric_limits<std::int64_t>::min()), "0000-01-01T00:00:00Z");
}

TEST(HostText, OrdersNamesByCodePoints) {
    EXPECT_LT(CompareNames("B", "a"), 0);
    EXPECT_LT(CompareNames("a", "ab"), 0);
    EXPECT_EQ(CompareNames("ab", "ab"), 0);
    EXPECT_GT(CompareNames(PathFromUtf8("\xC3\xA4"), "z"), 0);
    // U+FF01 stands before U+1F527, though its UTF-16 unit is greater than a surrogate.
    EXPECT_LT(CompareNames(PathFromUtf8("\xEF\xBC\x81"), PathFromUtf8("\xF0\x9F\x94\xA7")), 0);
}

TEST(HostText, TurnsNamesIntoTextsOfTheObjectModelAndBack) {
    for (const char* const name :
         {"mesh.inp", "K\xC3\xBChlk\xC3\xB6rper", "\xE4\xB8\xAD", "\xF0\x9F\x94\xA7"}) {
        const std::filesystem::path path = PathFromUtf8(name);
        EXPECT_EQ(ToPath(ToOuString(path)), path) << name;
        EXPECT_STREQ(ToOuString(path).GetAnsiBuffer(), name);
    }
}

#if !defined(_WIN32)
TEST(HostText, KeepsNamesThatAreNoUtf8) {
    const std::filesystem::path path("m\xE9sh\xFF.inp");
    EXPECT_EQ(ToPath(ToOuString(path)), path);
    EXPECT_EQ(Printable(path), "m\\xE9sh\\xFF.inp");
}
#endif

TEST(HostText, TrimsBlanksAtBothEnds) {
    EXPECT_EQ(Trim(" \t a b\r\n"), "a b");
    EXPECT_EQ(Trim(" \t\r\n"), "");
}

}  // namespace
}  // namespace host
