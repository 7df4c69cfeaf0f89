#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "CodePageExamples.h"
#include "OuString.h"
#include "support/WideLiteral.h"

namespace {

class OuStringCodePage : public testing::Test {
protected:
    void TearDown() override { EXPECT_TRUE(OuSetAnsiCodePage("UTF-8")); }

    static std::wstring Widened(std::string_view narrow) {
        const OuString text(std::string(narrow).c_str(), 0);
        return {text.GetBuffer(), text.GetLength()};
    }

    static std::string Narrowed(const std::wstring& wide) {
        return OuString(wide.data(), wide.size()).GetAnsiBuffer();
    }

    static std::string Byte(int value) { return {static_cast<char>(static_cast<unsigned char>(value))}; }
};

TEST_F(OuStringCodePage, IsUtf8UnlessSet) {
    EXPECT_EQ(Narrowed(L"\u00FC"), "\xC3\xBC");
}

TEST_F(OuStringCodePage, IsSetByItsName) {
    EXPECT_TRUE(OuSetAnsiCodePage("CP1252"));
    EXPECT_EQ(Narrowed(L"\u00FC"), "\xFC");
    EXPECT_TRUE(OuSetAnsiCodePage("iso-8859-2"));
    EXPECT_EQ(Narrowed(L"\u0159"), "\xF8");
    EXPECT_TRUE(OuSetAnsiCodePage("CP1252"));
    EXPECT_EQ(Narrowed(L"\u00FC"), "\xFC");
}

TEST_F(OuStringCodePage, StaysAsItIsForANameThatThereIsNot) {
    EXPECT_TRUE(OuSetAnsiCodePage("CP1252"));
    EXPECT_FALSE(OuSetAnsiCodePage("CP99999"));
    EXPECT_FALSE(OuSetAnsiCodePage(""));
    EXPECT_FALSE(OuSetAnsiCodePage(nullptr));
    EXPECT_FALSE(OuSetAnsiCodePage("CP1252//TRANSLIT"));
    EXPECT_EQ(Narrowed(L"\u00FC"), "\xFC");
}

TEST_F(OuStringCodePage, IsNoneOfLongerOrForeignKinds) {
    for (const char* name :
         {"UTF-16", "UTF-32LE", "UTF-7", "GB18030", "EUC-JP", "ISO-2022-JP", "EBCDIC-US"}) {
        EXPECT_FALSE(OuSetAnsiCodePage(name)) << name;
    }
}

TEST_F(OuStringCodePage, HoldsEveryByteOf1252AsWindowsDoes) {
    ASSERT_TRUE(OuSetAnsiCodePage("CP1252"));
    for (int value = 1; value < 256; ++value) {
        const bool special = value >= 0x80 && value <= 0x9F;
        const auto expected =
            special ? static_cast<wchar_t>(kWindows1252From80To9F[static_cast<std::size_t>(value - 0x80)])
                    : static_cast<wchar_t>(value);
        EXPECT_EQ(Widened(Byte(value)), std::wstring(1, expected)) << value;
        EXPECT_EQ(Narrowed(std::wstring(1, expected)), Byte(value)) << value;
    }
}

TEST_F(OuStringCodePage, PutsOneQuestionMarkForACharacterThatItLacks) {
    for (const char* name : {"CP1252", "CP932"}) {
        ASSERT_TRUE(OuSetAnsiCodePage(name));
        EXPECT_EQ(Narrowed(L"a" + WideText(kLackingIn1252And932) + L"z"),
                  "a" + std::string(kLackingIn1252And932.size(), '?') + "z");
    }
    ASSERT_TRUE(OuSetAnsiCodePage("CP1252"));
    EXPECT_EQ(Narrowed(L"\u0100\u65E5"), "??");
    const std::wstring surrogates = {
        static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00), L'-', static_cast<wchar_t>(0xD83D), L'-',
        static_cast<wchar_t>(0xDC81)};
    EXPECT_EQ(Narrowed(surrogates), "?-?-?");
}

TEST_F(OuStringCodePage, HoldsTheTextsOf932) {
    ASSERT_TRUE(OuSetAnsiCodePage("CP932"));
    for (const CodePageExample& example : kCodePage932) {
        EXPECT_EQ(Widened(example.narrow), WideText(example.wide));
        EXPECT_EQ(Narrowed(WideText(example.wide)), example.narrow);
    }
    for (const auto& [read, written] : kCodePage932Doubles) {
        EXPECT_EQ(Widened(read.narrow), WideText(read.wide));
        EXPECT_EQ(Narrowed(WideText(read.wide)), written);
    }
}

TEST_F(OuStringCodePage, LosesNothingToALeadByteWithoutItsTrail) {
    ASSERT_TRUE(OuSetAnsiCodePage("CP932"));
    const auto escape = [](int byte) { return std::wstring(1, static_cast<wchar_t>(0xDC00 + byte)); };
    EXPECT_EQ(Widened("before\x81"), L"before" + escape(0x81));
    EXPECT_EQ(Widened("\x81 after"), escape(0x81) + L" after");
    EXPECT_EQ(Narrowed(Widened("\x81 \x93\xFA\x81")), "\x81 \x93\xFA\x81");
}

TEST_F(OuStringCodePage, KeepsBytesWithoutAMeaning) {
    for (const char* name : {"CP874", "CP936", "CP949", "CP950", "CP1250", "CP1251", "CP1252", "CP1253",
                             "CP1254", "CP1255", "CP1256", "CP1257", "CP1258"}) {
        ASSERT_TRUE(OuSetAnsiCodePage(name)) << name;
        for (int value = 1; value < 256; ++value) {
            const std::string bytes = "a" + Byte(value) + " z";
            const std::wstring wide = Widened(bytes);
            EXPECT_EQ(wide.size(), 4U) << name << ' ' << value;
            EXPECT_EQ(wide.substr(0, 1) + wide.substr(2), L"a z") << name << ' ' << value;
            EXPECT_EQ(Narrowed(wide), bytes) << name << ' ' << value;
        }
    }
}

TEST_F(OuStringCodePage, JoinsNoCharacters) {
    ASSERT_TRUE(OuSetAnsiCodePage("CP1258"));
    EXPECT_EQ(Widened("a\xCC"), L"a\u0300");
    EXPECT_EQ(Narrowed(L"a\u0300"), "a\xCC");
}

TEST_F(OuStringCodePage, LeavesKeptFormsAlone) {
    const OuString text(L"\u00FC");
    EXPECT_STREQ(text.GetAnsiBuffer(), "\xC3\xBC");
    ASSERT_TRUE(OuSetAnsiCodePage("CP1252"));
    EXPECT_STREQ(text.GetAnsiBuffer(), "\xC3\xBC");
    EXPECT_STREQ(OuString(text.GetBuffer()).GetAnsiBuffer(), "\xFC");
}

TEST_F(OuStringCodePage, ServesTheFormatToo) {
    ASSERT_TRUE(OuSetAnsiCodePage("CP1252"));
    OuString text;
    text.Format(L"%S", "\x80");
    EXPECT_STREQ(text.GetBuffer(), L"\u20AC");
}

}  // namespace
