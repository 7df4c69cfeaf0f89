#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "CodePageExamples.h"
#include "OuString.h"
#include "support/WideLiteral.h"

namespace {

class OuStringSystemCodePage : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(GetACP(), 1252U)
            << "these tests are for a Western system, without a manifest that says UTF-8";
    }

    static std::wstring Widened(const std::string& narrow) {
        const OuString text(narrow.c_str(), 0);
        return {text.GetBuffer(), text.GetLength()};
    }

    static std::string Narrowed(const std::wstring& wide) {
        return OuString(wide.data(), wide.size()).GetAnsiBuffer();
    }
};

TEST_F(OuStringSystemCodePage, IsTheOnlyOneThatCanBeSet) {
    EXPECT_TRUE(OuSetAnsiCodePage("CP1252"));
    EXPECT_TRUE(OuSetAnsiCodePage("windows-1252"));
    EXPECT_FALSE(OuSetAnsiCodePage("UTF-8"));
    EXPECT_FALSE(OuSetAnsiCodePage("CP932"));
    EXPECT_FALSE(OuSetAnsiCodePage(""));
    EXPECT_FALSE(OuSetAnsiCodePage(nullptr));
}

TEST_F(OuStringSystemCodePage, HoldsEveryByte) {
    for (int value = 1; value < 256; ++value) {
        const bool special = value >= 0x80 && value <= 0x9F;
        const auto expected =
            special ? static_cast<wchar_t>(kWindows1252From80To9F[static_cast<std::size_t>(value - 0x80)])
                    : static_cast<wchar_t>(value);
        const std::string byte(1, static_cast<char>(static_cast<unsigned char>(value)));
        EXPECT_EQ(Widened(byte), std::wstring(1, expected)) << value;
        EXPECT_EQ(Narrowed(std::wstring(1, expected)), byte) << value;
    }
}

TEST_F(OuStringSystemCodePage, PutsOneQuestionMarkForACharacterThatItLacks) {
    EXPECT_EQ(Narrowed(L"a" + WideText(kLackingIn1252And932) + L"z"),
              "a" + std::string(kLackingIn1252And932.size(), '?') + "z");
    // No best-fit substitutes: neither A for A with macron nor a plain quotation mark for the double prime.
    EXPECT_EQ(Narrowed(L"\u0100\u2033\u65E5"), "???");
    EXPECT_EQ(Narrowed(L"\xD83D-\xDC81"), "?-?");
}

TEST_F(OuStringSystemCodePage, ServesTheFormatToo) {
    OuString text;
    text.Format(L"%S", "\x80");
    EXPECT_STREQ(text.GetBuffer(), L"\u20AC");
}

}  // namespace
