#include <gtest/gtest.h>

#include <climits>
#include <numeric>
#include <utility>
#include <vector>

#include "OuList.h"

namespace {

OuList ListOf(const std::vector<int>& identifiers, int blockSize = 3) {
    OuList list(blockSize);
    for (const int identifier : identifiers) {
        list.AddTail(identifier);
    }
    return list;
}

std::vector<int> Identifiers(const OuList& list) {
    std::vector<int> identifiers;
    for (OuListPosition* place = list.GetHeadPosition(); place != nullptr;) {
        identifiers.push_back(list.GetNextID(place));
    }
    return identifiers;
}

TEST(OuList, IsEmptyAtFirst) {
    const OuList list;
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetCount(), 0U);
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
}

TEST(OuList, WalksItsPointersFromHeadToTail) {
    int first = 1;
    int second = 2;
    OuList list(10);
    list.AddTail(&first);
    list.AddTail(&second);
    list.AddTail(nullptr);
    EXPECT_FALSE(list.IsEmpty());
    EXPECT_EQ(list.GetCount(), 3U);
    OuListPosition* place = list.GetHeadPosition();
    EXPECT_EQ(list.GetNext(place), &first);
    EXPECT_EQ(list.GetNext(place), &second);
    EXPECT_EQ(list.GetNext(place), nullptr);
    EXPECT_EQ(place, nullptr);
}

TEST(OuList, HoldsEveryIdentifier) {
    const std::vector<int> identifiers{1, 0, -1, INT_MAX, INT_MIN, 1};
    EXPECT_EQ(Identifiers(ListOf(identifiers)), identifiers);
}

TEST(OuList, GrowsOverManyBlocks) {
    std::vector<int> identifiers(1000);
    std::iota(identifiers.begin(), identifiers.end(), 1);
    for (const int blockSize : {INT_MIN, -1, 0, 1, 2, 10, 999, 1000, 1001}) {
        const OuList list = ListOf(identifiers, blockSize);
        EXPECT_EQ(Identifiers(list), identifiers) << blockSize;
        EXPECT_EQ(list.GetCount(), 1000U);
    }
}

TEST(OuList, KeepsPlacesWhileItGrows) {
    OuList list(2);
    list.AddTail(1);
    list.AddTail(2);
    OuListPosition* head = list.GetHeadPosition();
    OuListPosition* second = head;
    list.GetNextID(second);
    for (int identifier = 3; identifier <= 100; ++identifier) {
        list.AddTail(identifier);
    }
    EXPECT_EQ(list.GetHeadPosition(), head);
    for (int identifier = 2; identifier <= 100; ++identifier) {
        ASSERT_EQ(list.GetNextID(second), identifier);
    }
    EXPECT_EQ(second, nullptr);
}

TEST(OuList, IsFilledAgainAfterRemoveAll) {
    OuList list = ListOf({1, 2, 3, 4});
    list.RemoveAll();
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetCount(), 0U);
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    list.RemoveAll();
    list.AddTail(5);
    EXPECT_EQ(Identifiers(list), std::vector<int>{5});
}

TEST(OuList, CopiesItsSlots) {
    OuList list = ListOf({1, 2, 3, 4});
    OuList copy(list);
    list.AddTail(5);
    copy.AddTail(6);
    EXPECT_EQ(Identifiers(list), (std::vector<int>{1, 2, 3, 4, 5}));
    EXPECT_EQ(Identifiers(copy), (std::vector<int>{1, 2, 3, 4, 6}));
    EXPECT_EQ(copy.GetCount(), 5U);
    list = copy;
    EXPECT_EQ(Identifiers(list), Identifiers(copy));
    list = OuList();
    EXPECT_TRUE(list.IsEmpty());
}

TEST(OuList, IsAssignedToItself) {
    OuList list = ListOf({1, 2, 3, 4});
    list = std::as_const(list);
    EXPECT_EQ(Identifiers(list), (std::vector<int>{1, 2, 3, 4}));
    OuList& again = list;
    list = std::move(again);
    EXPECT_EQ(Identifiers(list), (std::vector<int>{1, 2, 3, 4}));
}

TEST(OuList, MovesItsSlotsAndKeepsPlaces) {
    OuList list = ListOf({1, 2, 3, 4});
    OuListPosition* place = list.GetHeadPosition();
    OuList moved(std::move(list));
    OuList target = ListOf({9});
    target = std::move(moved);
    EXPECT_EQ(target.GetHeadPosition(), place);
    EXPECT_EQ(Identifiers(target), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(target.GetCount(), 4U);
}

TEST(OuList, IsEmptyAndUsableOnceMovedFrom) {
    OuList list = ListOf({1, 2});
    const OuList moved(std::move(list));
    // NOLINTBEGIN(bugprone-use-after-move,clang-analyzer-cplusplus.Move): the state afterwards is tested.
    EXPECT_TRUE(list.IsEmpty());
    list.AddTail(7);
    // NOLINTEND(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    EXPECT_EQ(Identifiers(list), std::vector<int>{7});
    EXPECT_EQ(Identifiers(moved), (std::vector<int>{1, 2}));
}

TEST(OuList, ReadsAnIdentifierFromTheLowHalfOfASlot) {
    OuList list;
    list.AddTail(-5);
    OuListPosition* place = list.GetHeadPosition();
    EXPECT_EQ(static_cast<int>(reinterpret_cast<std::intptr_t>(list.GetNext(place))), -5);
}

}  // namespace
