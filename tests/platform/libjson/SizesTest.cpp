#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Texts.h"

// Short texts, long ones and rare names are kept in different ways: whatever the length, nodes are the same.

namespace {

/// More names than are kept once for all, so that some of them are counted.
constexpr int kManyNames = 40000;

std::vector<std::string> NamesOfAllKinds() {
    return {"",
            "n",
            "name",
            std::string(16, 'n'),
            std::string(64, 'n'),
            std::string(65, 'n'),
            std::string(2000, 'n'),
            "a/b",
            "\"quoted\""};
}

std::string TextOfLength(std::size_t length) {
    std::string text;
    for (std::size_t index = 0; index < length; ++index) {
        text += static_cast<char>('a' + index % 26);
    }
    return text;
}

JSONNode Renamed(JSONNode node, const std::string& name) {
    node.set_name(Text(name));
    return node;
}

/// What can be done with a node, done with one of that name and value.
void ExpectWhole(const std::string& name, const std::string& value) {
    SCOPED_TRACE(name + ": " + value);
    const JSONNode node(Text(name), Text(value));
    EXPECT_EQ(NameOf(node), name);
    EXPECT_EQ(ValueOf(node), value);
    EXPECT_EQ(node.type(), JSON_STRING);
    EXPECT_EQ(node.size(), 0U);
    EXPECT_EQ(node.begin(), node.end());
    EXPECT_EQ(node.duplicate(), node);
    EXPECT_EQ(node, JSONNode(Text(name), Text(value)));
    EXPECT_NE(node, JSONNode(Text(name + "x"), Text(value)));
    EXPECT_NE(node, JSONNode(Text(name), Text(value + "x")));
    JSONNode object;
    object.push_back(node);
    EXPECT_EQ(Parse(Write(object)), object);
    const JSONNode array = object.as_array();
    EXPECT_EQ(NameOf(array[0]), "");
    EXPECT_EQ(ValueOf(array[0]), value);
    EXPECT_EQ(NameOf(object[0]), name);
    for (const std::string& other : NamesOfAllKinds()) {
        const JSONNode renamed = Renamed(node, other);
        EXPECT_EQ(NameOf(renamed), other);
        EXPECT_EQ(ValueOf(renamed), value);
        EXPECT_EQ(Renamed(renamed, name), node);
    }
}

TEST(Sizes, OfTextsDoNotShow) {
    for (const std::string& name : NamesOfAllKinds()) {
        for (const int length :
             {0, 1, 3, 4, 5, 6, 7, 8, 9, 16, 17, 32, 33, 100, 247, 248, 249, 1024, 1025, 5000}) {
            ExpectWhole(name, TextOfLength(static_cast<std::size_t>(length)));
        }
        ExpectWhole(name, std::string("\0a\0b", 4));
        ExpectWhole(name, std::string("\0a\0b\0c\0d", 8));
    }
}

TEST(Sizes, OfWordsAndNumbersDoNotShow) {
    for (const std::string& name : NamesOfAllKinds()) {
        for (const char* const text : {"null", "true", "false", "7", "12345", "123456", "-1.5e300"}) {
            const JSONNode node = Renamed(Parse(text), name);
            EXPECT_EQ(NameOf(node), name);
            EXPECT_EQ(ValueOf(node), text);
            EXPECT_EQ(node.type(), Parse(text).type());
            EXPECT_EQ(node.duplicate(), node);
            JSONNode array(JSON_ARRAY);
            array.push_back(node);
            EXPECT_EQ(Write(array), "[" + std::string(text) + "]");
        }
    }
}

TEST(Sizes, OfContainersDoNotShow) {
    for (const std::string& name : NamesOfAllKinds()) {
        for (const char type : {JSON_ARRAY, JSON_NODE}) {
            JSONNode node = Renamed(JSONNode(type), name);
            for (int count = 0; count < 300; ++count) {
                ASSERT_EQ(NameOf(node), name);
                ASSERT_EQ(node.size(), static_cast<json_index_t>(count));
                const JSONNode copy = node;
                node.push_back(JSONNode(Text("number"), count));
                ASSERT_EQ(copy.size(), static_cast<json_index_t>(count));
                ASSERT_EQ(std::as_const(node)[static_cast<json_index_t>(count)].as_int(), count);
            }
            const JSONNode full = node;
            EXPECT_EQ(full.duplicate(), full);
            JSONNode alone = full.duplicate();
            const JSONNode* const children = std::as_const(alone).begin();
            for (const std::string& other : NamesOfAllKinds()) {
                EXPECT_EQ(Renamed(Renamed(full, other), name), full);
                alone.set_name(Text(other));
                EXPECT_EQ(NameOf(alone), other);
                EXPECT_EQ(std::as_const(alone).begin(), children);
            }
            while (!node.empty()) {
                node.pop_back(0);
            }
            EXPECT_EQ(node, Renamed(JSONNode(type), name));
            node = full;
            node.clear();
            EXPECT_EQ(node, Renamed(JSONNode(type), name));
            EXPECT_EQ(NameOf(full.as_array()), name);
            EXPECT_EQ(full.as_array().size(), 300U);
            EXPECT_EQ(NameOf(full.as_node()), name);
        }
    }
}

TEST(Sizes, OfTheTableOfNamesDoNotShow) {
    JSONNode object;
    for (int number = 0; number < kManyNames; ++number) {
        const std::string name = "one of many names " + std::to_string(number);
        object.push_back(JSONNode(Text(name), number));
        object.push_back(Renamed(JSONNode(JSON_ARRAY), name));
    }
    for (int number = 0; number < kManyNames; ++number) {
        const std::string name = "one of many names " + std::to_string(number);
        const auto at = static_cast<json_index_t>(2 * number);
        ASSERT_EQ(NameOf(std::as_const(object)[at]), name);
        ASSERT_EQ(NameOf(std::as_const(object)[at + 1]), name);
        ASSERT_EQ(std::as_const(object)[at].as_int(), number);
    }
    EXPECT_EQ(object.duplicate(), object);
    EXPECT_EQ(Parse(Write(object)), object);
}

TEST(Sizes, OfTextsDoNotHideWhatIsEscaped) {
    for (const std::size_t length : {1U, 5U, 6U, 8U, 9U, 24U, 25U, 100U, 248U, 300U}) {
        for (std::size_t at = 0; at < length; ++at) {
            std::string value = TextOfLength(length);
            value[at] = '/';
            JSONNode object;
            object.push_back(JSONNode(Text("name"), Text(value)));
            object.push_back(JSONNode(Text("next"), Text("end")));
            const std::string escaped = value.substr(0, at) + "\\/" + value.substr(at + 1);
            ASSERT_EQ(Write(object), "{\"name\":\"" + escaped + "\",\"next\":\"end\"}");
        }
    }
}

/// Objects after the first may have their members in another order, or other members.
TEST(MemberNames, MayDifferFromTheObjectBefore) {
    const std::string objects[] = {
        R"({"id":"1","name":"a","type":"T","list":{"x":{"value":"1"},"y":{"value":"2"}},"end":null})",
        R"({"id":"1","name":"a","type":"T","list":{"x":{"value":"1"},"y":{"value":"2"}},"end":null})",
        R"({"id":"1","type":"T","name":"a","list":{"y":{"valueless":"1"},"x":{"val":"2"}},"endless":null})",
        R"({"id":"1","nam":"a","name ":"a","name":{"name":"a","x":[{"id":{}},{"id":[]},{}]},"":1,"e":2})",
        R"({"id":"1","na\"me":"a","na\"me":"b","na\/me":"c","na\/me":"d","na\u0001me":"e","na\u0001me":"f"})"};
    std::string all = "[";
    for (int round = 0; round < 3; ++round) {
        for (const std::string& object : objects) {
            all += object + ",";
        }
    }
    // The last names are near the end of the text.
    all += R"({"id":"1","name":"a"},{"id":"1","name":1},{"id":0}])";
    EXPECT_EQ(Write(Parse(all)), all);
    EXPECT_EQ(NameOf(Parse(R"([{"a\"b":1},{"a\"b":1}])")[1][0]), "a\"b");
}

TEST(MemberNames, ThatAreCutOffAreFaults) {
    const std::string text = R"([{"identifier":"1"},{"identifier":"1"}])";
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_THROW(Parse(text.substr(0, length)), std::invalid_argument) << length;
    }
    EXPECT_THROW(Parse(R"([{"identifier":"1"},{"identifier" "1" , "a" : "some more text"}])"),
                 std::invalid_argument);
}

}  // namespace
