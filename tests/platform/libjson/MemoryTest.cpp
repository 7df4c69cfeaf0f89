#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>

#include "Texts.h"

namespace {

constexpr std::size_t kLongText = 5000;

/// Allocation functions that count what is in use, know their own blocks, and fail on demand.
template <int kMark>
struct Counted {
    struct alignas(alignof(std::max_align_t)) Header {
        std::size_t bytes;
        int mark;
    };

    static void* Allocate(std::size_t bytes) {
        if (!MayAllocate()) {
            return nullptr;
        }
        auto* const header = static_cast<Header*>(std::malloc(sizeof(Header) + bytes));
        *header = {bytes, kMark};
        ++blocks;
        ++calls;
        return header + 1;
    }

    static void* Reallocate(void* block, std::size_t bytes) {
        Header* const header = static_cast<Header*>(block) - 1;
        foreign += header->mark != kMark ? 1 : 0;
        if (!MayAllocate()) {
            return nullptr;
        }
        auto* const moved = static_cast<Header*>(std::realloc(header, sizeof(Header) + bytes));
        moved->bytes = bytes;
        ++calls;
        return moved + 1;
    }

    static void Free(void* block) {
        Header* const header = static_cast<Header*>(block) - 1;
        foreign += header->mark != kMark ? 1 : 0;
        header->mark = 0;
        --blocks;
        std::free(header);
    }

    static bool MayAllocate() {
        if (allowed > 0) {
            --allowed;
            return true;
        }
        return allowed < 0;
    }

    static void Register(int allowedFromNow = -1) {
        allowed = allowedFromNow;
        libjson::register_memory_callbacks(Allocate, Reallocate, Free);
    }

    static inline std::atomic<int> blocks = 0;
    static inline std::atomic<int> calls = 0;
    static inline std::atomic<int> foreign = 0;
    /// How many more allocations succeed; all of them when it is negative.
    static inline std::atomic<int> allowed = -1;
};

using First = Counted<1111>;
using Second = Counted<2222>;

/// Numbers that are too long to need no memory.
constexpr long long kFirstLongNumber = 1'000'000'000'000;

JSONNode LongMember(char letter) {
    return JSONNode(Text("long"), Text(std::string(kLongText, letter)));
}

class Memory : public testing::Test {
protected:
    /// Nodes, lists and names of the sizes that the tests use lie in memory from the C library: what a test
    /// counts is what it asks for.
    Memory() {
        JSONNode array(JSON_ARRAY);
        for (int index = 0; index < 300; ++index) {
            array.push_back(LongMember('w'));
        }
        EXPECT_EQ(array.duplicate(), array);
    }

    ~Memory() override {
        First::allowed = -1;
        Second::allowed = -1;
        libjson::register_memory_callbacks(nullptr, nullptr, nullptr);
    }
};

TEST_F(Memory, OfLongTextsComesFromTheRegisteredFunctionsAndGoesBack) {
    First::Register();
    const int before = First::blocks;
    {
        const JSONNode node = LongMember('x');
        EXPECT_EQ(First::blocks, before + 1);
        const JSONNode shared = node;
        EXPECT_EQ(First::blocks, before + 1);
        const JSONNode copy = node.duplicate();
        EXPECT_EQ(First::blocks, before + 2);
    }
    EXPECT_EQ(First::blocks, before);
}

TEST_F(Memory, OfManyChildrenComesFromTheRegisteredFunctionsAndGoesBack) {
    const JSONNode child(Text(""), 1);
    First::Register();
    const int before = First::blocks;
    {
        JSONNode array(JSON_ARRAY);
        array.reserve(1000);
        EXPECT_EQ(First::blocks, before + 1);
        const int calls = First::calls;
        for (int index = 0; index < 1000; ++index) {
            array.push_back(child);
        }
        EXPECT_EQ(First::calls, calls);
        array.push_back(child);
        EXPECT_EQ(First::calls, calls + 1);
        EXPECT_EQ(First::blocks, before + 1);
    }
    EXPECT_EQ(First::blocks, before);
}

TEST_F(Memory, GoesBackToTheFunctionsItCameFrom) {
    First::Register();
    const int firstBefore = First::blocks;
    const int secondBefore = Second::blocks;
    JSONNode text = LongMember('x');
    JSONNode array(JSON_ARRAY);
    array.reserve(500);
    Second::Register();
    EXPECT_EQ(First::blocks, firstBefore + 2);
    array.reserve(5000);
    EXPECT_EQ(First::blocks, firstBefore + 2);
    EXPECT_EQ(Second::blocks, secondBefore);
    text = JSONNode();
    array = JSONNode();
    EXPECT_EQ(First::blocks, firstBefore);
    EXPECT_EQ(First::foreign + Second::foreign, 0);
}

TEST_F(Memory, ComesFromTheCLibraryWhereNoFunctionIsGiven) {
    First::Register();
    libjson::register_memory_callbacks(nullptr, nullptr, nullptr);
    const int calls = First::calls;
    const JSONNode node = LongMember('x');
    EXPECT_EQ(First::calls, calls);
    EXPECT_EQ(ValueOf(node).size(), kLongText);
}

TEST_F(Memory, OfNodesGoesBackBlockByBlock) {
    First::Register();
    const int before = First::blocks;
    int whileBuilt = 0;
    std::thread([&whileBuilt] {
        JSONNode array(JSON_ARRAY);
        for (int index = 0; index < 1000000; ++index) {
            array.push_back(JSONNode(Text("name"), kFirstLongNumber + index));
        }
        whileBuilt = First::blocks;
    }).join();
    EXPECT_GE(whileBuilt - before, 20);
    // One empty block may be kept.
    EXPECT_LE(First::blocks, before + 1);
    EXPECT_EQ(First::foreign, 0);
}

TEST_F(Memory, IsUsedAgain) {
    const std::string text = "[" + std::string(R"({"a":"some text","b":[1,2,3],"c":{"d":null}},)") + "4]";
    First::Register();
    for (int round = 0; round < 100; ++round) {
        Parse(text);
    }
    const int calls = First::calls;
    for (int round = 0; round < 20000; ++round) {
        JSONNode node = Parse(text);
        const JSONNode shared = node;
        node[0].push_back(JSONNode(
            Text("name that is much too long to be held in the table of names for all time"), "value"));
        ASSERT_NE(node.duplicate(), shared);
    }
    EXPECT_EQ(First::calls, calls);
}

TEST_F(Memory, RunsOutWithBadAllocAndLeavesTheNodeAsItWas) {
    JSONNode object = Parse("{\"a\":[1,2]}");
    const std::string before = Write(object);
    First::Register(0);
    const int blocks = First::blocks;
    EXPECT_THROW(LongMember('x'), std::bad_alloc);
    EXPECT_THROW(object.set_name(Text(std::string(kLongText, 'n'))), std::bad_alloc);
    EXPECT_THROW(object.reserve(100000), std::bad_alloc);
    EXPECT_THROW(Parse("[\"" + std::string(kLongText, 'x') + "\"]"), std::bad_alloc);
    EXPECT_EQ(First::blocks, blocks);
    EXPECT_TRUE(Write(object) == before);
    EXPECT_TRUE(NameOf(object).empty());
}

TEST_F(Memory, RunsOutWhileAListGrowsWithoutLosingIt) {
    JSONNode array(JSON_ARRAY);
    const JSONNode child(Text(""), 7);
    First::Register(0);
    json_index_t count = 0;
    EXPECT_THROW(
        {
            for (; count < 100000; ++count) {
                array.push_back(child);
            }
        },
        std::bad_alloc);
    EXPECT_EQ(array.size(), count);
    EXPECT_GE(count, 100U);
    First::Register(1);
    array.push_back(child);
    EXPECT_EQ(array.size(), count + 1);
    EXPECT_THROW(
        {
            for (; array.size() < 100000;) {
                array.push_back(child);
            }
        },
        std::bad_alloc);
    for (const JSONNode& element : std::as_const(array)) {
        ASSERT_EQ(element.as_int(), 7);
    }
}

TEST_F(Memory, RunsOutOfNodesWithoutLosingAny) {
    First::Register(2);
    const int before = First::blocks;
    std::thread([] {
        JSONNode array(JSON_ARRAY);
        array.reserve(1000000);
        bool ranOut = false;
        for (int index = 0; index < 1000000 && !ranOut; ++index) {
            try {
                array.push_back(JSONNode(Text("name"), kFirstLongNumber + index));
            } catch (const std::bad_alloc&) {
                ranOut = true;
                EXPECT_EQ(array.size(), static_cast<json_index_t>(index));
            }
        }
        EXPECT_TRUE(ranOut);
        for (json_index_t index = 0; index < array.size(); ++index) {
            ASSERT_EQ(std::as_const(array)[index].as_int(), kFirstLongNumber + index);
        }
        // A node given back makes room for another.
        array.pop_back(0);
        array.push_back(JSONNode(Text("name"), kFirstLongNumber));
    }).join();
    EXPECT_LE(First::blocks, before + 1);
}

TEST_F(Memory, RunsOutAtAnyPointWithoutLeaking) {
    std::string text = "{\"first\":[";
    for (int index = 0; index < 300; ++index) {
        text += std::to_string(index) + ",";
    }
    text += "{\"" + std::string(kLongText, 'n') + "\":\"" + std::string(kLongText, 'v') +
            "\"}],\"second\":\"" + std::string(kLongText, 'w') + "\"}";
    const JSONNode expected = Parse(text);
    First::Register();
    const int blocks = First::blocks;
    bool succeeded = false;
    int failures = 0;
    for (int allowed = 0; !succeeded; ++allowed) {
        First::allowed = allowed;
        try {
            const JSONNode node = Parse(text);
            JSONNode copy = node.duplicate();
            copy.push_back(LongMember('z'));
            copy.at(0).push_back(LongMember('y'));
            copy.at(0).at(300).at(0).set_name(Text(std::string(kLongText, 'm')));
            copy = copy.as_array();
            EXPECT_EQ(node, expected);
            succeeded = true;
        } catch (const std::bad_alloc&) {
            ++failures;
        }
        First::allowed = -1;
        ASSERT_LE(First::blocks - blocks, 1) << allowed;
    }
    EXPECT_GE(failures, 10);
    EXPECT_EQ(First::foreign, 0);
}

}  // namespace
