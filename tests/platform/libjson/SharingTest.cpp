#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "Texts.h"

namespace {

/// The place of a child is the same in two nodes as long as they share their value.
bool Shared(const JSONNode& left, const JSONNode& right) {
    return left.begin() == right.begin();
}

JSONNode SharedSample() {
    return Parse("{\"a\":1,\"b\":[2,{\"c\":3}]}");
}
const char* const kSample = "{\"a\":1,\"b\":[2,{\"c\":3}]}";

TEST(Sharing, CopiesReferToTheSameValue) {
    const JSONNode node = SharedSample();
    const JSONNode copy = node;
    EXPECT_TRUE(Shared(node, copy));
    JSONNode assigned;
    assigned = copy;
    EXPECT_TRUE(Shared(node, assigned));
}

TEST(Sharing, ReadingCopiesNothing) {
    JSONNode node = SharedSample();
    const JSONNode copy = node;
    EXPECT_EQ(std::as_const(node).find("b"), std::as_const(node).begin() + 1);
    EXPECT_EQ(std::as_const(node).at(0).as_int(), 1);
    EXPECT_EQ(std::as_const(node)[Text("b")].size(), 2U);
    EXPECT_EQ(std::as_const(node).end() - std::as_const(node).begin(), 2);
    EXPECT_EQ(Write(std::as_const(node)), kSample);
    EXPECT_EQ(std::as_const(node), copy);
    EXPECT_TRUE(Shared(node, copy));
}

TEST(Sharing, ChangesOfOneHolderAreSeenByNoOther) {
    const JSONNode original = SharedSample();
    const auto change = [&original](auto operation) {
        JSONNode copy = original;
        operation(copy);
        EXPECT_EQ(Write(original), kSample);
        EXPECT_EQ(NameOf(original), "");
        return Write(copy);
    };
    EXPECT_EQ(change([](JSONNode& node) { node.set_name(Text("name")); }), kSample);
    EXPECT_EQ(change([](JSONNode& node) { node.push_back(JSONNode(Text("d"), 4)); }),
              "{\"a\":1,\"b\":[2,{\"c\":3}],\"d\":4}");
    EXPECT_EQ(change([](JSONNode& node) { node.pop_back(0); }), "{\"b\":[2,{\"c\":3}]}");
    EXPECT_EQ(change([](JSONNode& node) { node.pop_back(Text("b")); }), "{\"a\":1}");
    EXPECT_EQ(change([](JSONNode& node) { node.clear(); }), "{}");
    EXPECT_EQ(change([](JSONNode& node) { node.reserve(100); }), kSample);
    EXPECT_EQ(change([](JSONNode& node) { node.begin()->set_name(Text("x")); }),
              "{\"x\":1,\"b\":[2,{\"c\":3}]}");
    EXPECT_EQ(change([](JSONNode& node) { (node.end() - 1)->clear(); }), "{\"a\":1,\"b\":[]}");
    EXPECT_EQ(change([](JSONNode& node) { node.find("b")->pop_back(0); }), "{\"a\":1,\"b\":[{\"c\":3}]}");
    EXPECT_EQ(change([](JSONNode& node) { node.at(1).at(1).at(0) = JSONNode(Text("c"), "deep"); }),
              "{\"a\":1,\"b\":[2,{\"c\":\"deep\"}]}");
    EXPECT_EQ(change([](JSONNode& node) { node[1][1][Text("c")].set_name(Text("e")); }),
              "{\"a\":1,\"b\":[2,{\"e\":3}]}");
    EXPECT_EQ(change([](JSONNode& node) { node = JSONNode(JSON_ARRAY); }), "[]");
}

TEST(Sharing, MakingANodeUniqueSharesItsChildren) {
    const JSONNode original = SharedSample();
    JSONNode copy = original;
    copy.push_back(JSONNode(Text("d"), 4));
    EXPECT_FALSE(Shared(original, copy));
    EXPECT_TRUE(Shared(original[1], std::as_const(copy)[1]));
}

TEST(Sharing, ANodeWithOneHolderIsChangedInPlace) {
    JSONNode node = SharedSample();
    const JSONNode* const before = std::as_const(node).begin();
    node.set_name(Text("name"));
    EXPECT_EQ(node.begin(), before);
    node.at(1).push_back(JSONNode(Text(""), 5));
    EXPECT_EQ(std::as_const(node).begin(), before);
}

TEST(Sharing, AChildStaysWithItsOtherHolders) {
    JSONNode child = Parse("[1]");
    child.set_name(Text("child"));
    JSONNode parent;
    parent.push_back(child);
    EXPECT_TRUE(Shared(child, std::as_const(parent)[0]));
    child.push_back(JSONNode(Text(""), 2));
    EXPECT_EQ(Write(parent), "{\"child\":[1]}");
    parent[0].clear();
    EXPECT_EQ(Write(child), "[1,2]");
    const JSONNode taken = parent.pop_back(0);
    parent = JSONNode();
    EXPECT_EQ(NameOf(taken), "child");
}

TEST(Sharing, ANodeMayBeAppendedToItselfAndToItsOwnList) {
    JSONNode node = Parse("[1]");
    node.push_back(node);
    EXPECT_EQ(Write(node), "[1,[1]]");
    for (int round = 0; round < 100; ++round) {
        node.push_back(std::as_const(node)[1]);
    }
    EXPECT_EQ(node.size(), 102U);
    EXPECT_EQ(Write(std::as_const(node)[101]), "[1]");
}

TEST(Sharing, OneNodeMayHangInManyPlaces) {
    JSONNode level = Parse("[\"x\"]");
    for (int depth = 0; depth < 4; ++depth) {
        JSONNode above(JSON_ARRAY);
        for (int index = 0; index < 3; ++index) {
            above.push_back(level);
        }
        level = above;
    }
    EXPECT_EQ(level, level.duplicate());
    level[0][0][0][0][0] = JSONNode(Text(""), "changed");
    const std::string text = Write(level);
    EXPECT_EQ(text.find("changed"), text.rfind("changed"));
}

TEST(Duplicate, SharesNothing) {
    const JSONNode original = SharedSample();
    const JSONNode copy = original.duplicate();
    EXPECT_EQ(copy, original);
    EXPECT_FALSE(Shared(original, copy));
    EXPECT_FALSE(Shared(original[1], copy[1]));
    EXPECT_FALSE(Shared(original[1][1], copy[1][1]));
}

TEST(Duplicate, KeepsTypesNamesAndValues) {
    for (const char* text : {"null", "true", "-1.5e3", "\"text\"", "[]", "{}", "[[],{}]"}) {
        JSONNode node = Parse(text);
        node.set_name(Text(std::string(200, 'n')));
        EXPECT_EQ(node.duplicate(), node);
    }
    EXPECT_EQ(JSONNode().duplicate(), JSONNode());
    JSONNode outer;
    outer.push_back(JSONNode());
    EXPECT_EQ(Write(outer.duplicate()), "{\"\":{}}");
}

}  // namespace
