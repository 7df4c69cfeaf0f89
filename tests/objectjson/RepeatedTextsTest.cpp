#include <gtest/gtest.h>

#include <string>

#include "objectjson/RepeatedTexts.h"

namespace {

TEST(RepeatedTexts, TextThatIsRepeatedIsMadeOnce) {
    RepeatedTexts texts;
    const OuString first = texts.Of("Mass");
    const OuString second = texts.Of(std::string("Mass"));
    EXPECT_STREQ(first.GetBuffer(), L"Mass");
    EXPECT_EQ(first.GetBuffer(), second.GetBuffer());
}

TEST(RepeatedTexts, EveryTextIsWhatItsBytesSay) {
    RepeatedTexts texts;
    for (int round = 0; round < 3; ++round) {
        // More than there is room for, of every length, and alike at both ends and in the middle.
        for (int number = 0; number < 2000; ++number) {
            const std::string digits = std::to_string(number);
            for (const std::string& text :
                 {digits, "a" + digits, "begin " + digits + " middle " + digits + " end",
                  std::string(static_cast<std::size_t>(number % 70), 'x'), digits + "\xC3\xBC"}) {
                EXPECT_EQ(texts.Of(text).Compare(OuString(text.c_str(), 0)), 0) << text;
            }
        }
    }
}

TEST(RepeatedTexts, BytesThatAreNoTextAreKeptApart) {
    RepeatedTexts texts;
    for (int byte = 1; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        EXPECT_EQ(texts.Of(text).Compare(OuString(text.c_str(), 0)), 0) << byte;
    }
}

TEST(RepeatedTexts, ValueIsReadUpToItsFirstNul) {
    RepeatedTexts texts;
    const JSONNode value = libjson::parse(R"(["kg\u0000m"])").at(0);
    EXPECT_STREQ(texts.OfValue(value).GetBuffer(), L"kg");
    EXPECT_TRUE(texts.OfValue(JSONNode(JSON_NODE)).IsEmpty());
}

}  // namespace
