#include <gtest/gtest.h>

#include <string>

#include "../../../platform/orsutl/SystemCodePage.h"
#include "CodePageExamples.h"
#include "support/WideLiteral.h"

namespace {

using orsutl::detail::SystemCodePage;

std::wstring Widened(const SystemCodePage& codePage, std::string_view narrow) {
    std::wstring wide(codePage.WidenedLength(narrow), L'\0');
    codePage.Widen(narrow, wide.data());
    return wide;
}

std::string Narrowed(const SystemCodePage& codePage, std::wstring_view wide) {
    std::string narrow(codePage.NarrowedLength(wide), '\0');
    codePage.Narrow(wide, narrow.data());
    return narrow;
}

TEST(SystemCodePage, HoldsTheTextsOf932) {
    const SystemCodePage codePage(932);
    for (const CodePageExample& example : kCodePage932) {
        EXPECT_EQ(Widened(codePage, example.narrow), WideText(example.wide));
        EXPECT_EQ(Narrowed(codePage, WideText(example.wide)), example.narrow);
    }
    for (const auto& [read, written] : kCodePage932Doubles) {
        EXPECT_EQ(Widened(codePage, read.narrow), WideText(read.wide));
        EXPECT_EQ(Narrowed(codePage, WideText(read.wide)), written);
    }
}

TEST(SystemCodePage, PutsOneQuestionMarkForACharacterThatItLacks) {
    for (const unsigned int number : {1252U, 932U}) {
        EXPECT_EQ(Narrowed(SystemCodePage(number), L"a" + WideText(kLackingIn1252And932) + L"z"),
                  "a" + std::string(kLackingIn1252And932.size(), '?') + "z");
    }
}

TEST(SystemCodePage, KeepsNulCharacters) {
    const SystemCodePage codePage(1252);
    EXPECT_EQ(Narrowed(codePage, std::wstring_view(L"\u00FC\0b", 3)), std::string("\xFC\0b", 3));
    EXPECT_EQ(Widened(codePage, std::string_view("\xFC\0b", 3)), std::wstring(L"\u00FC\0b", 3));
    EXPECT_EQ(codePage.NarrowedLength({}), 0U);
    EXPECT_EQ(codePage.WidenedLength({}), 0U);
}

}  // namespace
