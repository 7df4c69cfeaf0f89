#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>
#include <type_traits>
#include <utility>

#include "OuString.h"

namespace {

std::wstring Text(const OuString& text) {
    return {text.GetBuffer(), text.GetLength()};
}

TEST(OuString, IsACopyUntilOneOfThemIsChanged) {
    const OuString text(L"text");
    OuString copy(text);
    EXPECT_TRUE(copy.IsCopyOf(text));
    EXPECT_FALSE(OuString(L"text").IsCopyOf(text));
    EXPECT_TRUE(OuString().IsCopyOf(OuString(L"")));
    copy.Append(L"s", 0);
    EXPECT_FALSE(copy.IsCopyOf(text));
    EXPECT_TRUE(text == L"text");
}

TEST(OuString, IsOnePointer) {
    EXPECT_EQ(sizeof(OuString), sizeof(void*));
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<OuString>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<OuString>);
}

TEST(OuString, IsEmptyByDefault) {
    const OuString text;
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(text.GetLength(), 0U);
    EXPECT_STREQ(text.GetBuffer(), L"");
    EXPECT_STREQ(text.GetAnsiBuffer(), "");
}

TEST(OuString, TakesAWideTextUpToItsNul) {
    const OuString text(L"wide\0more");
    EXPECT_EQ(Text(text), L"wide");
    EXPECT_FALSE(text.IsEmpty());
    EXPECT_STREQ(text.GetAnsiBuffer(), "wide");
}

TEST(OuString, TakesALengthWithNulCharactersIncluded) {
    const OuString text(L"a\0b", 3);
    EXPECT_EQ(Text(text), std::wstring(L"a\0b", 3));
    EXPECT_EQ(std::string(text.GetAnsiBuffer(), 4), std::string("a\0b\0", 4));
    EXPECT_STREQ(OuString(L"abc", 2).GetBuffer(), L"ab");
    EXPECT_TRUE(OuString(L"abc", 0).IsEmpty());
}

TEST(OuString, TakesANarrowTextUpToItsNul) {
    const OuString text("narrow\0more", 0);
    EXPECT_EQ(Text(text), L"narrow");
    EXPECT_STREQ(text.GetAnsiBuffer(), "narrow");
    EXPECT_TRUE(OuString("", 0).IsEmpty());
}

TEST(OuString, TakesALengthOfANarrowTextWithNulCharactersIncluded) {
    const OuString text = OuString::FromAnsi("a\0b", 3);
    EXPECT_EQ(Text(text), std::wstring(L"a\0b", 3));
    EXPECT_EQ(std::string(text.GetAnsiBuffer(), 4), std::string("a\0b\0", 4));
    EXPECT_EQ(Text(OuString::FromAnsi("abc", 2)), L"ab");
    EXPECT_STREQ(OuString::FromAnsi("abc", 2).GetAnsiBuffer(), "ab");
    EXPECT_TRUE(OuString::FromAnsi("abc", 0).IsEmpty());
    EXPECT_TRUE(OuString::FromAnsi(nullptr, 0).IsEmpty());
}

TEST(OuString, TakesANullPointerAsTheEmptyText) {
    EXPECT_TRUE(OuString(static_cast<const wchar_t*>(nullptr)).IsEmpty());
    EXPECT_TRUE(OuString(static_cast<const wchar_t*>(nullptr), 5).IsEmpty());
    EXPECT_TRUE(OuString(static_cast<const char*>(nullptr), 0).IsEmpty());
    OuString text(L"text");
    text = static_cast<const wchar_t*>(nullptr);
    EXPECT_TRUE(text.IsEmpty());
    text = L"text";
    text = static_cast<const char*>(nullptr);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(OuString, SharesItsBufferWithCopies) {
    const OuString text(L"shared \u00FC");
    // Copies are what is tested.
    const OuString copy(text);
    OuString assigned;
    assigned = copy;
    EXPECT_EQ(copy.GetBuffer(), text.GetBuffer());
    EXPECT_EQ(assigned.GetBuffer(), text.GetBuffer());
    EXPECT_EQ(copy.GetAnsiBuffer(), text.GetAnsiBuffer());
}

TEST(OuString, KeepsItsAnsiForm) {
    const OuString text(L"kept \u00FC");
    const char* ansi = text.GetAnsiBuffer();
    EXPECT_EQ(text.GetAnsiBuffer(), ansi);
    EXPECT_STREQ(ansi, "kept \xC3\xBC");
}

TEST(OuString, KeepsCopiesAsTheyWereWhenItChanges) {
    OuString text(L"one");
    const OuString copy(text);
    text.Append(L" two", 0);
    EXPECT_EQ(Text(copy), L"one");
    EXPECT_EQ(Text(text), L"one two");
    const OuString second(text);
    text.MakeUpper();
    EXPECT_EQ(Text(second), L"one two");
    const OuString third(text);
    text = L"else";
    EXPECT_EQ(Text(third), L"ONE TWO");
}

TEST(OuString, SurvivesTheOriginalOfACopy) {
    OuString copy;
    {
        const OuString text(L"original");
        copy = text;
    }
    EXPECT_EQ(Text(copy), L"original");
}

TEST(OuString, IsAssignedToItself) {
    OuString text(L"self");
    text = std::as_const(text);
    EXPECT_EQ(Text(text), L"self");
    OuString& again = text;
    text = std::move(again);
    EXPECT_EQ(Text(text), L"self");
    text = text.GetBuffer() + 2;
    EXPECT_EQ(Text(text), L"lf");
    text = text.GetAnsiBuffer() + 1;
    EXPECT_EQ(Text(text), L"f");
}

TEST(OuString, MovesItsBuffer) {
    OuString text(L"moved");
    const wchar_t* buffer = text.GetBuffer();
    OuString target(std::move(text));
    EXPECT_EQ(target.GetBuffer(), buffer);
    OuString assigned(L"before");
    assigned = std::move(target);
    EXPECT_EQ(assigned.GetBuffer(), buffer);
    EXPECT_EQ(Text(assigned), L"moved");
}

TEST(OuString, IsAssignedWideAndNarrowTexts) {
    OuString text;
    text = L"wide";
    EXPECT_EQ(Text(text), L"wide");
    text = "narrow";
    EXPECT_EQ(Text(text), L"narrow");
}

TEST(OuString, AppendsTheWholeTextForLengthZero) {
    OuString text(L"directory/");
    text.Append(L"name", 0);
    EXPECT_EQ(Text(text), L"directory/name");
    EXPECT_STREQ(text.GetAnsiBuffer(), "directory/name");
}

TEST(OuString, AppendsAsManyCharactersAsAskedFor) {
    OuString text(L"a");
    text.Append(L"bcd", 2);
    EXPECT_EQ(Text(text), L"abc");
    text.Append(L"\0x", 2);
    EXPECT_EQ(Text(text), std::wstring(L"abc\0x", 5));
}

TEST(OuString, AppendsToTheEmptyTextAndAppendsNothing) {
    OuString text;
    text.Append(L"first", 0);
    EXPECT_EQ(Text(text), L"first");
    text.Append(L"", 0);
    text.Append(nullptr, 0);
    text.Append(nullptr, 4);
    EXPECT_EQ(Text(text), L"first");
}

TEST(OuString, AppendsItsOwnBuffer) {
    OuString text(L"abc");
    for (int i = 0; i < 6; ++i) {
        text.Append(text.GetBuffer(), 0);
    }
    std::wstring expected;
    for (int i = 0; i < 64; ++i) {
        expected += L"abc";
    }
    EXPECT_EQ(Text(text), expected);
    text.Append(text.GetBuffer() + 190, 0);
    EXPECT_EQ(Text(text), expected + L"bc");
    text.Append(text.GetBuffer() + 1, 3);
    EXPECT_EQ(Text(text), expected + L"bcbca");
}

TEST(OuString, KeepsTheAnsiFormRightWhileItGrows) {
    OuString text;
    std::string expected;
    for (int i = 0; i < 200; ++i) {
        text.Append(i % 50 == 49 ? L"\u00E9" : L"ab", 0);
        expected += i % 50 == 49 ? "\xC3\xA9" : "ab";
        ASSERT_EQ(text.GetAnsiBuffer(), expected) << i;
    }
    OuString withoutAsking(L"x");
    withoutAsking.Append(L"\u00E9", 0);
    withoutAsking.Append(L"y", 0);
    EXPECT_STREQ(withoutAsking.GetAnsiBuffer(), "x\xC3\xA9y");
}

TEST(OuString, ComparesUnitByUnit) {
    const OuString text(L"beta");
    EXPECT_EQ(text.Compare(L"beta"), 0);
    EXPECT_EQ(text.Compare(OuString("beta", 0)), 0);
    EXPECT_GT(text.Compare(L"alpha"), 0);
    EXPECT_LT(text.Compare(L"gamma"), 0);
    EXPECT_GT(text.Compare(L"bet"), 0);
    EXPECT_LT(text.Compare(L"beta1"), 0);
    EXPECT_GT(text.Compare(L"Beta"), 0);
    EXPECT_LT(OuString(L"\u00E9").Compare(L"\uFF00"), 0);
    EXPECT_GT(OuString(L"\uFFFF").Compare(L"a"), 0);
}

TEST(OuString, ComparesCharactersBehindANul) {
    const OuString one(L"a\0b", 3);
    const OuString two(L"a\0c", 3);
    EXPECT_LT(one.Compare(two), 0);
    EXPECT_GT(one.Compare(L"a"), 0);
    EXPECT_FALSE(one == two);
}

TEST(OuString, ComparesWithANullPointerAsWithTheEmptyText) {
    const wchar_t* none = nullptr;
    EXPECT_EQ(OuString().Compare(none), 0);
    EXPECT_GT(OuString(L"a").Compare(none), 0);
    EXPECT_EQ(OuString().CompareNoCase(none), 0);
    EXPECT_TRUE(OuString() == none);
    EXPECT_FALSE(OuString(L"a") == none);
}

TEST(OuString, HasOperatorsOfComparison) {
    EXPECT_TRUE(OuString(L"a") == OuString(L"a"));
    EXPECT_FALSE(OuString(L"a") == OuString(L"A"));
    EXPECT_TRUE(OuString(L"a") != OuString(L"b"));
    EXPECT_TRUE(OuString(L"Description") == L"Description");
    EXPECT_FALSE(OuString(L"Description") == L"description");
    EXPECT_TRUE(OuString(L"a") < OuString(L"b"));
    EXPECT_FALSE(OuString(L"b") < OuString(L"a"));
    EXPECT_FALSE(OuString(L"a") < OuString(L"a"));
    const std::map<OuString, int> ordered{{L"b", 2}, {L"a", 1}};
    EXPECT_EQ(ordered.begin()->second, 1);
}

TEST(OuString, SplitsAtTheFirstSeparator) {
    OuString before(L"old");
    OuString after(L"old");
    EXPECT_TRUE(OuString(L"1.2.3").Split(L".", before, after));
    EXPECT_EQ(Text(before), L"1");
    EXPECT_EQ(Text(after), L"2.3");
    EXPECT_TRUE(OuString(L"a::b:c").Split(L"::", before, after));
    EXPECT_EQ(Text(before), L"a");
    EXPECT_EQ(Text(after), L"b:c");
}

TEST(OuString, SplitsAtTheEnds) {
    OuString before(L"old");
    OuString after(L"old");
    EXPECT_TRUE(OuString(L".5").Split(L".", before, after));
    EXPECT_TRUE(before.IsEmpty());
    EXPECT_EQ(Text(after), L"5");
    EXPECT_TRUE(OuString(L"5.").Split(L".", before, after));
    EXPECT_EQ(Text(before), L"5");
    EXPECT_TRUE(after.IsEmpty());
}

TEST(OuString, GivesTheWholeTextBeforeWhereNoSeparatorStands) {
    OuString before(L"old");
    OuString after(L"old");
    EXPECT_FALSE(OuString(L"12").Split(L".", before, after));
    EXPECT_EQ(Text(before), L"12");
    EXPECT_TRUE(after.IsEmpty());
    EXPECT_FALSE(OuString().Split(L".", before, after));
    EXPECT_TRUE(before.IsEmpty());
}

TEST(OuString, NeverFindsAnEmptySeparator) {
    for (const wchar_t* separator : {L"", static_cast<const wchar_t*>(nullptr)}) {
        OuString before;
        OuString after(L"old");
        EXPECT_FALSE(OuString(L"12").Split(separator, before, after));
        EXPECT_EQ(Text(before), L"12");
        EXPECT_TRUE(after.IsEmpty());
    }
}

TEST(OuString, SplitsIntoItself) {
    OuString text(L"1.2");
    OuString other;
    EXPECT_TRUE(text.Split(L".", text, other));
    EXPECT_EQ(Text(text), L"1");
    EXPECT_EQ(Text(other), L"2");
    text = L"1.2";
    EXPECT_TRUE(text.Split(L".", other, text));
    EXPECT_EQ(Text(other), L"1");
    EXPECT_EQ(Text(text), L"2");
    EXPECT_FALSE(text.Split(L".", other, text));
    EXPECT_EQ(Text(other), L"2");
    EXPECT_TRUE(text.IsEmpty());
}

TEST(OuString, ReadsTheNumberThatItBeginsWith) {
    EXPECT_EQ(OuString(L"42").ToInt(-1), 42);
    EXPECT_EQ(OuString(L" \t\r\n\v\f-7 apples").ToInt(-1), -7);
    EXPECT_EQ(OuString(L"+8.5").ToInt(-1), 8);
    EXPECT_EQ(OuString(L"007").ToInt(-1), 7);
    EXPECT_EQ(OuString(L"-0").ToInt(-1), 0);
}

TEST(OuString, AnswersOtherwiseWhereNoDigitsStand) {
    for (const wchar_t* text :
         {L"", L"x1", L"-", L"+", L"- 1", L"--1", L"+-1", L".5", L"\u0663", L"\u00A01"}) {
        EXPECT_EQ(OuString(text).ToInt(99), 99) << text;
    }
}

TEST(OuString, ReadsTheNearestLimitInsteadOfOverflow) {
    EXPECT_EQ(OuString(L"2147483647").ToInt(0), INT_MAX);
    EXPECT_EQ(OuString(L"2147483648").ToInt(0), INT_MAX);
    EXPECT_EQ(OuString(L"-2147483648").ToInt(0), INT_MIN);
    EXPECT_EQ(OuString(L"-2147483649").ToInt(0), INT_MIN);
    EXPECT_EQ(OuString(L"99999999999999999999999999").ToInt(0), INT_MAX);
    EXPECT_EQ(OuString(L"-99999999999999999999999999").ToInt(0), INT_MIN);
}

}  // namespace
