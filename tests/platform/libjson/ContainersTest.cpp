#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

#include "Texts.h"

namespace {

JSONNode Sample() {
    return Parse("{\"a\":1,\"b\":\"two\",\"a\":[3],\"\":4}");
}

TEST(Container, AppendsWithoutLookingForEqualNames) {
    JSONNode object;
    object.push_back(JSONNode(Text("a"), 1));
    object.push_back(JSONNode(Text("a"), 2));
    EXPECT_EQ(object.size(), 2U);
    EXPECT_FALSE(object.empty());
    EXPECT_EQ(Write(object), "{\"a\":1,\"a\":2}");
}

TEST(Container, GrowsToAnySize) {
    JSONNode array(JSON_ARRAY);
    std::string expected = "[";
    for (int index = 0; index < 3000; ++index) {
        array.push_back(JSONNode(Text(""), index));
        expected += (index > 0 ? "," : "") + std::to_string(index);
        ASSERT_EQ(array.size(), static_cast<json_index_t>(index + 1));
        ASSERT_EQ(array[static_cast<json_index_t>(index)].as_int(), index);
    }
    EXPECT_EQ(Write(array), expected + "]");
}

TEST(Container, KeepsItsChildrenWhenRoomIsReserved) {
    JSONNode array = Parse("[1,2,3]");
    const JSONNode before = array;
    for (const json_index_t capacity : {0U, 2U, 10U, 200U, 5000U, 100U}) {
        array.reserve(capacity);
        EXPECT_EQ(array, before);
    }
    array.push_back(JSONNode(Text(""), 4));
    EXPECT_EQ(Write(array), "[1,2,3,4]");
    EXPECT_EQ(Write(before), "[1,2,3]");
    JSONNode text(Text("name"), "value");
    text.reserve(10);
    EXPECT_EQ(ValueOf(text), "value");
}

TEST(Container, IgnoresAppendingToAPlainValue) {
    for (const char* text : {"null", "\"text\"", "1", "true"}) {
        JSONNode node = Parse(text);
        const std::string before = ValueOf(node);
        node.push_back(JSONNode(Text("a"), 1));
        EXPECT_EQ(ValueOf(node), before);
        EXPECT_EQ(node.size(), 0U);
        EXPECT_TRUE(node.empty());
        EXPECT_EQ(node.begin(), node.end());
        EXPECT_EQ(node.find("a"), node.end());
    }
}

TEST(Container, KeepsNamesOfElementsWithoutWritingThem) {
    JSONNode array(JSON_ARRAY);
    array.push_back(JSONNode(Text("name"), 1));
    EXPECT_EQ(NameOf(array[0]), "name");
    EXPECT_EQ(Write(array), "[1]");
    EXPECT_EQ(array.find("name"), array.begin());
}

TEST(Container, FindsTheFirstMemberOfExactlyThatName) {
    JSONNode object = Sample();
    EXPECT_EQ(object.find("a"), object.begin());
    EXPECT_EQ(object.find(Text("b")), object.begin() + 1);
    EXPECT_EQ(object.find(""), object.begin() + 3);
    EXPECT_EQ(object.find("A"), object.end());
    EXPECT_EQ(object.find("ab"), object.end());
    EXPECT_EQ(object.find(Text(std::string("a\0", 2))), object.end());
    EXPECT_EQ(std::as_const(object).find("a"), std::as_const(object).begin());
    EXPECT_EQ(std::as_const(object).find(Text("b")), std::as_const(object).begin() + 1);
    EXPECT_EQ(std::as_const(object).find("c"), std::as_const(object).end());
    EXPECT_EQ(std::as_const(object).find(Text("c")), std::as_const(object).end());
}

TEST(Container, FindsNothingWhereThereIsNothing) {
    JSONNode empty;
    EXPECT_EQ(empty.find("a"), empty.end());
    const JSONNode constant;
    EXPECT_EQ(constant.find("a"), constant.end());
    const JSONNode text(Text("a"), "a");
    EXPECT_EQ(text.find("a"), text.end());
}

TEST(Container, RemovesByNameAndReturnsTheFirst) {
    JSONNode object = Sample();
    const JSONNode removed = object.pop_back(Text("a"));
    EXPECT_EQ(removed.as_int(), 1);
    EXPECT_EQ(NameOf(removed), "a");
    EXPECT_EQ(Write(object), "{\"b\":\"two\",\"a\":[3],\"\":4}");
    EXPECT_EQ(Write(object.pop_back(Text("a"))), "[3]");
    EXPECT_THROW(object.pop_back(Text("a")), std::out_of_range);
    EXPECT_EQ(Write(object), "{\"b\":\"two\",\"\":4}");
}

TEST(Container, RemovesByPosition) {
    JSONNode array = Parse("[0,1,2]");
    EXPECT_EQ(array.pop_back(1).as_int(), 1);
    EXPECT_EQ(Write(array), "[0,2]");
    EXPECT_EQ(array.pop_back(1).as_int(), 2);
    EXPECT_EQ(array.pop_back(0).as_int(), 0);
    EXPECT_EQ(Write(array), "[]");
    EXPECT_THROW(array.pop_back(0), std::out_of_range);
    array.push_back(JSONNode(Text(""), 7));
    EXPECT_EQ(Write(array), "[7]");
}

TEST(Container, FailsToRemoveFromAPlainValue) {
    JSONNode text(Text("a"), "a");
    EXPECT_THROW(text.pop_back(0), std::out_of_range);
    EXPECT_THROW(text.pop_back(Text("a")), std::out_of_range);
}

TEST(Container, ReachesChildrenByPositionAndName) {
    JSONNode object = Sample();
    EXPECT_EQ(std::as_const(object).at(1).as_string(), Text("two"));
    EXPECT_EQ(std::as_const(object)[1].as_string(), Text("two"));
    EXPECT_EQ(std::as_const(object).at(Text("b")).as_string(), Text("two"));
    EXPECT_EQ(std::as_const(object)[Text("b")].as_string(), Text("two"));
    object.at(0) = JSONNode(Text("first"), 10);
    object[1].set_name(Text("second"));
    object.at(Text("a")).push_back(JSONNode(Text(""), 4));
    object[Text("")] = JSONNode(Text(""), true);
    EXPECT_EQ(Write(object), "{\"first\":10,\"second\":\"two\",\"a\":[3,4],\"\":true}");
}

TEST(Container, ThrowsForChildrenThatAreNotThere) {
    JSONNode object = Sample();
    EXPECT_THROW(object.at(4), std::out_of_range);
    EXPECT_THROW(std::as_const(object).at(4), std::out_of_range);
    EXPECT_THROW(object[4], std::out_of_range);
    EXPECT_THROW(std::as_const(object)[4], std::out_of_range);
    EXPECT_THROW(object.at(Text("x")), std::out_of_range);
    EXPECT_THROW(std::as_const(object).at(Text("x")), std::out_of_range);
    EXPECT_THROW(object[Text("x")], std::out_of_range);
    EXPECT_THROW(std::as_const(object)[Text("x")], std::out_of_range);
    JSONNode text(Text("x"), "x");
    EXPECT_THROW(text.at(0), std::out_of_range);
    EXPECT_THROW(text.at(Text("x")), std::out_of_range);
}

TEST(Container, WalksItsChildrenInOrder) {
    JSONNode object = Sample();
    std::string names;
    for (const JSONNode& child : std::as_const(object)) {
        names += NameOf(child) + ";";
    }
    EXPECT_EQ(names, "a;b;a;;");
    for (JSONNode& child : object) {
        child.set_name(Text(NameOf(child) + "!"));
    }
    EXPECT_EQ(Write(object), "{\"a!\":1,\"b!\":\"two\",\"a!\":[3],\"!\":4}");
}

TEST(Container, ClearsItsChildrenAndKeepsTypeAndName) {
    JSONNode array = Parse("[1,[2]]");
    array.set_name(Text("list"));
    const JSONNode before = array;
    array.clear();
    EXPECT_EQ(array.type(), JSON_ARRAY);
    EXPECT_EQ(NameOf(array), "list");
    EXPECT_TRUE(array.empty());
    EXPECT_EQ(Write(before), "[1,[2]]");
    array.push_back(JSONNode(Text(""), 5));
    EXPECT_EQ(Write(array), "[5]");
    JSONNode text(Text("name"), "value");
    text.clear();
    EXPECT_EQ(ValueOf(text), "value");
    JSONNode empty;
    empty.clear();
    EXPECT_EQ(empty, JSONNode());
}

TEST(AsArray, SharesAnArrayWithItsName) {
    JSONNode array = Parse("[1,2]");
    array.set_name(Text("list"));
    array.push_back(JSONNode(Text("named"), 3));
    const JSONNode result = array.as_array();
    EXPECT_EQ(result, array);
    EXPECT_EQ(std::as_const(result).begin(), std::as_const(array).begin());
}

TEST(AsArray, MakesUnnamedElementsOfMembersAndKeepsTheNameOfTheObject) {
    JSONNode object = Parse("{\"a\":1,\"b\":{\"c\":[2]},\"\":null}");
    object.set_name(Text("object"));
    const JSONNode array = object.as_array();
    EXPECT_EQ(array.type(), JSON_ARRAY);
    EXPECT_EQ(NameOf(array), "object");
    EXPECT_EQ(Write(array), "[1,{\"c\":[2]},null]");
    for (const JSONNode& element : array) {
        EXPECT_EQ(NameOf(element), "");
    }
    EXPECT_EQ(NameOf(array[1][0]), "c");
    EXPECT_EQ(Write(object), "{\"a\":1,\"b\":{\"c\":[2]},\"\":null}");
}

TEST(AsArray, TakesEmptyObjectsAmongTheMembers) {
    JSONNode object;
    object.push_back(JSONNode());
    EXPECT_EQ(Write(object.as_array()), "[{}]");
    EXPECT_EQ(Write(JSONNode().as_array()), "[]");
}

TEST(AsArray, IsEmptyAndUnnamedForPlainValues) {
    for (const char* text : {"null", "\"text\"", "1", "true"}) {
        JSONNode node = Parse(text);
        node.set_name(Text("name"));
        EXPECT_EQ(node.as_array(), JSONNode(JSON_ARRAY));
    }
}

TEST(AsNode, SharesAnObjectWithItsName) {
    JSONNode object = Sample();
    object.set_name(Text("object"));
    const JSONNode result = object.as_node();
    EXPECT_EQ(result, object);
    EXPECT_EQ(std::as_const(result).begin(), std::as_const(object).begin());
}

TEST(AsNode, MakesMembersOfElementsWithTheNamesTheyHave) {
    JSONNode array = Parse("[1,[2]]");
    array.push_back(JSONNode(Text("named"), 3));
    array.set_name(Text("list"));
    const JSONNode object = array.as_node();
    EXPECT_EQ(object.type(), JSON_NODE);
    EXPECT_EQ(NameOf(object), "list");
    EXPECT_EQ(Write(object), "{\"\":1,\"\":[2],\"named\":3}");
    EXPECT_EQ(array.type(), JSON_ARRAY);
}

TEST(AsNode, IsEmptyAndUnnamedForPlainValues) {
    for (const char* text : {"null", "\"text\"", "1", "true"}) {
        JSONNode node = Parse(text);
        node.set_name(Text("name"));
        EXPECT_EQ(node.as_node(), JSONNode());
    }
}

}  // namespace
