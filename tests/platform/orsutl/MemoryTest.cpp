#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>

#include "OuList.h"
#include "OuString.h"

namespace {

std::size_t allocations = 0;
bool denied = false;

/// How often the body allocates.
template <typename Body>
std::size_t AllocationsOf(Body body) {
    const std::size_t before = allocations;
    body();
    return allocations - before;
}

/// Whether the body throws std::bad_alloc when there is no memory at all.
template <typename Body>
bool ThrowsWithoutMemory(Body body) {
    denied = true;
    try {
        body();
    } catch (const std::bad_alloc&) {
        denied = false;
        return true;
    }
    denied = false;
    return false;
}

}  // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (!denied) {
        if (void* memory = std::malloc(size == 0 ? 1 : size)) {
            return memory;
        }
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

TEST(OuStringMemory, TakesNoneForTheEmptyText) {
    EXPECT_EQ(AllocationsOf([] {
                  const OuString none;
                  const OuString wide(L"");
                  OuString narrow("", 0);
                  narrow = none;
                  narrow.MakeUpper();
                  EXPECT_STREQ(narrow.GetAnsiBuffer(), "");
              }),
              0U);
}

TEST(OuStringMemory, TakesNoneForCopiesMovesAndComparisons) {
    const OuString text(L"text \u00FC");
    EXPECT_EQ(AllocationsOf([&text] {
                  OuString copy(text);
                  OuString moved(std::move(copy));
                  copy = moved;
                  EXPECT_EQ(copy.Compare(L"text"), 1);
                  EXPECT_EQ(copy.CompareNoCase(L"TEXT \u00DC"), 0);
                  EXPECT_EQ(copy.ToInt(3), 3);
              }),
              0U);
}

TEST(OuStringMemory, TakesOneBlockForATextInAsciiAndItsAnsiForm) {
    EXPECT_EQ(AllocationsOf([] { EXPECT_STREQ(OuString("narrow", 0).GetAnsiBuffer(), "narrow"); }), 1U);
    EXPECT_EQ(AllocationsOf([] { EXPECT_STREQ(OuString(L"wide").GetAnsiBuffer(), "wide"); }), 1U);
}

TEST(OuStringMemory, TakesOneBlockForANarrowTextInUtf8AndItsAnsiForm) {
    EXPECT_EQ(
        AllocationsOf([] { EXPECT_STREQ(OuString("\xC3\xBC \xFF", 0).GetAnsiBuffer(), "\xC3\xBC \xFF"); }),
        1U);
}

TEST(OuStringMemory, TakesOneBlockMoreForAnotherAnsiForm) {
    EXPECT_EQ(AllocationsOf([] {
                  const OuString text(L"\u00FC");
                  const OuString copy(text);
                  EXPECT_STREQ(copy.GetAnsiBuffer(), "\xC3\xBC");
                  EXPECT_STREQ(text.GetAnsiBuffer(), "\xC3\xBC");
              }),
              2U);
}

TEST(OuStringMemory, GrowsInFewSteps) {
    EXPECT_LT(AllocationsOf([] {
                  OuString text;
                  for (int i = 0; i < 10000; ++i) {
                      text.Append(L"x", 1);
                  }
                  EXPECT_EQ(text.GetLength(), 10000U);
              }),
              40U);
}

/// A text of several megabytes, made piece by piece as documents are.
OuString LargeText(std::size_t pieces) {
    const std::wstring piece(16'384, L'p');
    OuString text;
    for (std::size_t i = 0; i < pieces; ++i) {
        text.Append(piece.data(), piece.size());
    }
    return text;
}

TEST(OuStringMemory, OfLargeTextsGrowsWithThem) {
    const std::size_t pieces = 200;
    OuString text;
    EXPECT_LT(AllocationsOf([&] { text = LargeText(pieces); }), 20U);
    ASSERT_EQ(text.GetLength(), pieces * 16'384);
    EXPECT_EQ(std::wstring(text.GetBuffer()), std::wstring(pieces * 16'384, L'p'));
    EXPECT_EQ(std::string(text.GetAnsiBuffer()), std::string(pieces * 16'384, 'p'));
    // The ANSI form of the shorter text is not taken for that of the longer one.
    text.Append(L"end", 0);
    EXPECT_EQ(std::string(text.GetAnsiBuffer()), std::string(pieces * 16'384, 'p') + "end");
}

TEST(OuStringMemory, OfLargeTextsIsNotShared) {
    OuString text = LargeText(100);
    const OuString copy(text);
    text.Append(L"more", 0);
    EXPECT_EQ(copy.GetLength(), 100U * 16'384);
    EXPECT_EQ(text.GetLength(), 100U * 16'384 + 4);
    // A piece of its own, which moves while it is appended.
    OuString twice = LargeText(100);
    twice.Append(twice.GetBuffer() + 5, 0);
    EXPECT_EQ(std::wstring(twice.GetBuffer()), std::wstring(200U * 16'384 - 5, L'p'));
}

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
// The sanitizer ends the program where a system without memory returns null.
#define ENDS_WITHOUT_MEMORY
#endif
#endif

TEST(OuStringMemory, ThrowsForLargeTextsThatNoMemoryHolds) {
    OuString text = LargeText(100);
    const wchar_t* const characters = text.GetBuffer();
    const wchar_t character = L'x';
    // The first length is too large for any text, the second one for the system.
    EXPECT_THROW(text.Append(&character, static_cast<std::size_t>(-1) / 8), std::bad_alloc);
#if !defined(ENDS_WITHOUT_MEMORY)
    EXPECT_THROW(text.Append(&character, static_cast<std::size_t>(-1) / 64), std::bad_alloc);
#endif
    EXPECT_EQ(text.GetBuffer(), characters);
    EXPECT_EQ(text.GetLength(), 100U * 16'384);
}

TEST(OuStringMemory, LeavesTheTextAsItWasWhenThereIsNone) {
    OuString text(L"kept \u00FC");
    const OuString copy(text);
    OuString other(L"other");
    EXPECT_TRUE(ThrowsWithoutMemory([&] { const OuString wide(L"wide"); }));
    EXPECT_TRUE(ThrowsWithoutMemory([&] { const OuString narrow("narrow", 0); }));
    EXPECT_TRUE(ThrowsWithoutMemory([&] { text = L"wide"; }));
    EXPECT_TRUE(ThrowsWithoutMemory([&] { text = "narrow"; }));
    EXPECT_TRUE(ThrowsWithoutMemory([&] { text.Append(L"more", 0); }));
    EXPECT_TRUE(ThrowsWithoutMemory([&] { text.MakeUpper(); }));
    EXPECT_TRUE(ThrowsWithoutMemory([&] { text.Format(L"%d", 1); }));
    EXPECT_TRUE(ThrowsWithoutMemory([&] { text.GetAnsiBuffer(); }));
    EXPECT_TRUE(ThrowsWithoutMemory([&] { text.Split(L" ", text, other); }));
    EXPECT_STREQ(text.GetBuffer(), L"kept \u00FC");
    EXPECT_STREQ(copy.GetBuffer(), L"kept \u00FC");
    EXPECT_STREQ(other.GetBuffer(), L"other");
    EXPECT_STREQ(text.GetAnsiBuffer(), "kept \xC3\xBC");
}

TEST(OuStringMemory, ThrowsForLengthsThatNoMemoryHolds) {
    const wchar_t character = L'x';
    OuString text(L"kept");
    EXPECT_THROW(text.Append(&character, static_cast<std::size_t>(-1) / 2), std::bad_alloc);
    EXPECT_STREQ(text.GetBuffer(), L"kept");
}

TEST(OuListMemory, IsTakenBlockByBlock) {
    OuList list(10);
    EXPECT_EQ(AllocationsOf([&list] {
                  for (int identifier = 1; identifier <= 30; ++identifier) {
                      list.AddTail(identifier);
                  }
              }),
              3U);
}

TEST(OuListMemory, LeavesTheListAsItWasWhenThereIsNone) {
    OuList list(2);
    list.AddTail(1);
    list.AddTail(2);
    EXPECT_TRUE(ThrowsWithoutMemory([&list] { list.AddTail(3); }));
    EXPECT_TRUE(ThrowsWithoutMemory([&list] { OuList(list).AddTail(5); }));
    EXPECT_EQ(list.GetCount(), 2U);
    list.AddTail(4);
    OuListPosition* place = list.GetHeadPosition();
    EXPECT_EQ(list.GetNextID(place), 1);
    EXPECT_EQ(list.GetNextID(place), 2);
    EXPECT_EQ(list.GetNextID(place), 4);
    EXPECT_EQ(place, nullptr);
}

}  // namespace
