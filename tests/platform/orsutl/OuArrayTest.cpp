#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "OuArray.h"
#include "OuCRTAllocator.h"
#include "OuString.h"
#include "OuTemplateArray.h"

namespace {

void* Slot(int number) {
    // The slots are made for it.
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(number));
}

int Number(void* slot) {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(slot));
}

TEST(OuArray, HoldsItsSlotsInOrder) {
    OuArray array(0);
    EXPECT_EQ(array.GetSize(), 0);
    for (int number = -50; number < 50; ++number) {
        array.Add(Slot(number));
    }
    ASSERT_EQ(array.GetSize(), 100);
    for (int index = 0; index < 100; ++index) {
        EXPECT_EQ(Number(array.GetAt(index)), index - 50);
    }
}

TEST(OuArray, BeginsWithNullSlots) {
    const OuArray array(3);
    ASSERT_EQ(array.GetSize(), 3);
    EXPECT_EQ(array.GetAt(0), nullptr);
    EXPECT_EQ(array.GetAt(2), nullptr);
    EXPECT_EQ(OuArray(-1).GetSize(), 0);
    EXPECT_EQ(OuArray().GetSize(), 0);
}

TEST(OuArray, IsFilledAgainAfterRemoveAll) {
    OuArray array(2);
    array.RemoveAll();
    EXPECT_EQ(array.GetSize(), 0);
    array.Add(Slot(5));
    EXPECT_EQ(Number(array.GetAt(0)), 5);
}

TEST(OuArray, CopiesAndMovesItsSlots) {
    OuArray array;
    array.Add(Slot(1));
    OuArray copy(array);
    copy.Add(Slot(2));
    EXPECT_EQ(array.GetSize(), 1);
    EXPECT_EQ(copy.GetSize(), 2);
    copy = std::as_const(copy);
    EXPECT_EQ(Number(copy.GetAt(1)), 2);
    array = std::move(copy);
    ASSERT_EQ(array.GetSize(), 2);
    EXPECT_EQ(Number(array.GetAt(0)), 1);
}

using Texts = OuTemplateArray<OuString, OuCRTAllocator>;

TEST(OuTemplateArray, HoldsItsValuesInOrder) {
    Texts texts;
    EXPECT_EQ(texts.GetSize(), 0);
    texts.Add(L"first");
    texts.Add(L"second");
    ASSERT_EQ(texts.GetSize(), 2);
    EXPECT_STREQ(std::as_const(texts)[0].GetBuffer(), L"first");
    EXPECT_STREQ(std::as_const(texts)[1].GetBuffer(), L"second");
    texts[0] = L"changed";
    EXPECT_STREQ(std::as_const(texts)[0].GetBuffer(), L"changed");
}

TEST(OuTemplateArray, StaysWhereItIsWhileItHasRoom) {
    OuTemplateArray<OuString, OuCRTAllocator> texts;
    texts.Add(L"first");
    texts.ReserveMore(100);
    EXPECT_EQ(texts.GetSize(), 1);
    const OuString* const first = &texts[0];
    for (int added = 0; added < 100; ++added) {
        texts.Add(L"more");
    }
    EXPECT_EQ(&texts[0], first);
    EXPECT_TRUE(texts[0] == L"first");
}

TEST(OuTemplateArray, AddsAValueOfItsOwn) {
    Texts texts;
    texts.Add(L"again");
    for (int i = 0; i < 100; ++i) {
        texts.Add(texts[0]);
    }
    EXPECT_STREQ(texts[100].GetBuffer(), L"again");
}

TEST(OuTemplateArray, CopiesMovesAndForgetsItsValues) {
    Texts texts;
    texts.Add(L"one");
    Texts copy(texts);
    copy[0] = L"other";
    EXPECT_STREQ(texts[0].GetBuffer(), L"one");
    copy = std::as_const(copy);
    EXPECT_STREQ(copy[0].GetBuffer(), L"other");
    texts = std::move(copy);
    ASSERT_EQ(texts.GetSize(), 1);
    EXPECT_STREQ(texts[0].GetBuffer(), L"other");
    texts.RemoveAll();
    EXPECT_EQ(texts.GetSize(), 0);
}

TEST(OuTemplateArray, ComesWithAnAllocatorOfItsOwn) {
    OuTemplateArray<int> numbers;
    numbers.Add(3);
    EXPECT_EQ(numbers[0], 3);
}

/// A value that refuses to be copied when it is told to.
struct Stubborn {
    explicit Stubborn(bool refusesCopies) : refuses(refusesCopies) {}
    Stubborn(const Stubborn& other) : refuses(other.refuses) {
        if (refuses) {
            throw std::runtime_error("no copies");
        }
    }
    Stubborn& operator=(const Stubborn&) = default;

    bool refuses;
};

TEST(OuTemplateArray, StaysAsItWasWhenAValueCannotBeCopied) {
    OuTemplateArray<Stubborn> values;
    values.Add(Stubborn(false));
    EXPECT_THROW(values.Add(Stubborn(true)), std::runtime_error);
    ASSERT_EQ(values.GetSize(), 1);
    EXPECT_FALSE(values[0].refuses);
}

/// Gives out what OuCRTAllocator gives, and counts it.
struct CountingAllocator {
    static inline int blocks = 0;
    static inline std::size_t lastBytes = 0;
    static void* Allocate(std::size_t bytes) {
        ++blocks;
        lastBytes = bytes;
        return OuCRTAllocator::Allocate(bytes);
    }
    static void Free(void* memory) {
        --blocks;
        OuCRTAllocator::Free(memory);
    }
};

TEST(OuTemplateArray, TakesItsMemoryFromItsAllocatorAndGivesItBack) {
    {
        OuTemplateArray<OuString, CountingAllocator> texts;
        EXPECT_EQ(CountingAllocator::blocks, 0);
        texts.Add(L"text");
        EXPECT_EQ(CountingAllocator::blocks, 1);
        EXPECT_EQ(CountingAllocator::lastBytes, sizeof(OuString));
        const OuTemplateArray<OuString, CountingAllocator> copy(texts);
        EXPECT_EQ(CountingAllocator::blocks, 2);
    }
    EXPECT_EQ(CountingAllocator::blocks, 0);
}

TEST(OuCRTAllocator, GivesMemoryForAnySizeThatThereIs) {
    for (const std::size_t bytes : {0U, 1U, 100000U}) {
        void* const memory = OuCRTAllocator::Allocate(bytes);
        ASSERT_NE(memory, nullptr);
        std::memset(memory, 0x5A, bytes);
        OuCRTAllocator::Free(memory);
    }
}

TEST(OuTemplateArray, HoldsNoMoreValuesThanHaveSizes) {
    constexpr std::size_t kEverything = std::numeric_limits<std::size_t>::max();
    orsutl::detail::ElementAllocator<std::uint64_t, CountingAllocator> allocator;
    EXPECT_THROW(allocator.allocate(kEverything), std::bad_alloc);
    // The number of bytes wraps around to 8; nothing is allocated.
    EXPECT_THROW(allocator.allocate(kEverything / 8 + 2), std::bad_alloc);
    EXPECT_EQ(CountingAllocator::blocks, 0);
}

}  // namespace
