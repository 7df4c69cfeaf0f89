#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

#include "Texts.h"
#include "support/SmallStack.h"

namespace {

constexpr int kDepth = 100000;
constexpr int kGreatDepth = 1000000;

std::string Repeat(const std::string& piece, int count) {
    std::string text;
    text.reserve(piece.size() * static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        text += piece;
    }
    return text;
}

std::string DeepArray(int depth) {
    return Repeat("[", depth) + Repeat("]", depth);
}

/// Objects and arrays in turn, with siblings before and after at every level.
std::string DeepMixture(int depth) {
    return Repeat("{\"before\":1,\"a\":[true,", depth) + "\"innermost\"" +
           Repeat(",false],\"behind\":[2]}", depth);
}

std::string Document(int depth, bool mixed) {
    return mixed ? DeepMixture(depth / 2) : DeepArray(depth);
}

class Deep : public testing::TestWithParam<std::pair<int, bool>> {
protected:
    std::string text_ = Document(GetParam().first, GetParam().second);
};

TEST_P(Deep, ReadsAndWrites) {
    OnSmallStack([this] { EXPECT_TRUE(Write(Parse(text_)) == text_); });
}

TEST_P(Deep, IsValid) {
    OnSmallStack([this] {
        EXPECT_TRUE(libjson::is_valid(Text(text_)));
        EXPECT_FALSE(libjson::is_valid(Text(text_ + "]")));
    });
}

TEST_P(Deep, IsReleasedWhenTheTextIsRefused) {
    OnSmallStack([this] {
        EXPECT_THROW(Parse(text_.substr(0, text_.size() - 1)), std::invalid_argument);
        EXPECT_THROW(Parse(text_.substr(0, text_.size() / 2)), std::invalid_argument);
    });
}

TEST_P(Deep, ComparesAndDuplicates) {
    OnSmallStack([this] {
        const JSONNode node = Parse(text_);
        JSONNode copy = node.duplicate();
        EXPECT_TRUE(copy == node);
        EXPECT_TRUE(copy == Parse(text_));
        copy.push_back(JSONNode(Text("last"), 1));
        EXPECT_TRUE(copy != node);
    });
}

TEST_P(Deep, ClearsPreparsesAndConverts) {
    OnSmallStack([this] {
        JSONNode node = Parse(text_);
        node.preparse();
        EXPECT_TRUE(Write(node.as_array().as_node().as_array()) == Write(node.as_array()));
        node.clear();
        EXPECT_TRUE(node.empty());
    });
}

TEST_P(Deep, WritesFormatted) {
    if (GetParam().first > kDepth) {
        // One document of the lower depth is enough: the lines have the same length from level 64 on.
        text_ = Document(kDepth, GetParam().second);
    }
    OnSmallStack([this] {
        const JSONNode node = Parse(text_);
        EXPECT_TRUE(libjson::parse(node.write_formatted()) == node);
    });
}

INSTANTIATE_TEST_SUITE_P(, Deep,
                         testing::Values(std::pair(kDepth, false), std::pair(kDepth, true),
                                         std::pair(kGreatDepth, false), std::pair(kGreatDepth, true)),
                         [](const testing::TestParamInfo<std::pair<int, bool>>& parameter) {
                             return (parameter.param.second ? "Mixture" : "Array") +
                                    std::to_string(parameter.param.first);
                         });

TEST(DeepTree, IsBuiltChangedAndReleased) {
    OnSmallStack([] {
        JSONNode tree(Text("leaf"), "innermost");
        for (int depth = 0; depth < kGreatDepth; ++depth) {
            JSONNode above(depth % 2 == 0 ? JSON_NODE : JSON_ARRAY);
            above.set_name(Text("level"));
            above.push_back(tree);
            tree = above;
        }
        const JSONNode other = tree;
        tree[0][0][0].push_back(JSONNode(Text("new"), 1));
        EXPECT_EQ(other[0][0][0].size(), 1U);
        EXPECT_EQ(std::as_const(tree)[0][0][0].size(), 2U);
    });
}

TEST(DeepTree, IsWalkedDownThroughChangingChildren) {
    OnSmallStack([] {
        JSONNode tree = Parse(DeepArray(kDepth));
        const JSONNode before = tree;
        JSONNode* at = &tree;
        while (!std::as_const(*at).empty()) {
            at = &at->at(0);
        }
        at->push_back(JSONNode(Text(""), 1));
        EXPECT_EQ(Write(before), DeepArray(kDepth));
        EXPECT_EQ(Write(tree), Repeat("[", kDepth) + "1" + Repeat("]", kDepth));
    });
}

}  // namespace
