#include <OuString.h>
#include <gtest/gtest.h>
#include <korvaneexchange/Text.h>
#include <windows.h>

#include <string>

using korvane::exchange::FromUtf8;
using korvane::exchange::ToUtf8;

TEST(ExchangeTextUnderAWesternCodePage, IsTheSame) {
    ASSERT_EQ(GetACP(), 1252U) << "this test is for a Western system, without a manifest that says UTF-8";
    const OuString text(L"Tr\u00E4ger \u65E5\u672C \U0001F697");
    const std::string utf8 = "Tr\xC3\xA4ger \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x9A\x97";
    EXPECT_STREQ(text.GetAnsiBuffer(), "Tr\xE4ger ?? ?");
    EXPECT_EQ(ToUtf8(text), utf8);
    EXPECT_EQ(FromUtf8(utf8), text);
    EXPECT_EQ(ToUtf8(FromUtf8("\xFC\x80z")), "\xFC\x80z");
}
