#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "Texts.h"

namespace {

TEST(JSONNode, IsOnePointerWide) {
    EXPECT_EQ(sizeof(JSONNode), sizeof(void*));
}

TEST(JSONNode, IsAnUnnamedEmptyObjectByDefault) {
    const JSONNode node;
    EXPECT_EQ(node.type(), JSON_NODE);
    EXPECT_EQ(NameOf(node), "");
    EXPECT_EQ(node.size(), 0U);
    EXPECT_TRUE(node.empty());
    EXPECT_EQ(node.begin(), node.end());
    EXPECT_EQ(Write(node), "{}");
}

TEST(JSONNode, StartsEveryTypeWithItsEmptyValue) {
    struct Row {
        char type;
        const char* text;
        const char* written;
    };
    const Row rows[] = {{JSON_NULL, "null", "null"},   {JSON_STRING, "", "\"\""}, {JSON_NUMBER, "0", "0"},
                        {JSON_BOOL, "false", "false"}, {JSON_ARRAY, "", "[]"},    {JSON_NODE, "", "{}"}};
    for (const Row& row : rows) {
        const JSONNode node(row.type);
        EXPECT_EQ(node.type(), row.type);
        EXPECT_EQ(ValueOf(node), row.text);
        JSONNode array(JSON_ARRAY);
        array.push_back(node);
        EXPECT_EQ(Write(array), std::string("[") + row.written + "]");
    }
}

TEST(JSONNode, TakesAnUnknownTypeForNull) {
    EXPECT_EQ(JSONNode('\x7F').type(), JSON_NULL);
}

TEST(JSONNode, KeepsNamesAndStrings) {
    const JSONNode fromCharacters(Text("name"), "value");
    EXPECT_EQ(fromCharacters.type(), JSON_STRING);
    EXPECT_EQ(NameOf(fromCharacters), "name");
    EXPECT_EQ(ValueOf(fromCharacters), "value");
    const JSONNode fromText(Text("name"), Text("value"));
    EXPECT_EQ(fromText, fromCharacters);
}

TEST(JSONNode, TakesANullPointerForTheEmptyText) {
    const char* const none = nullptr;
    const JSONNode node(Text("name"), none);
    EXPECT_EQ(node.type(), JSON_STRING);
    EXPECT_EQ(ValueOf(node), "");
}

TEST(JSONNode, KeepsNulCharactersInNamesAndStrings) {
    const std::string name("na\0me", 5);
    const std::string value("\0va\0lue\0", 8);
    const JSONNode node(Text(name), Text(value));
    EXPECT_EQ(NameOf(node), name);
    EXPECT_EQ(ValueOf(node), value);
    JSONNode object;
    object.push_back(node);
    EXPECT_EQ(Write(object), "{\"na\\u0000me\":\"\\u0000va\\u0000lue\\u0000\"}");
    EXPECT_EQ(Parse(Write(object)), object);
}

TEST(JSONNode, KeepsTextsOfEveryLength) {
    for (std::size_t length = 0; length < 3000; length += length < 1100 ? 1 : 97) {
        std::string text(length, 'x');
        for (std::size_t index = 0; index < length; ++index) {
            text[index] = static_cast<char>('!' + (index * 7 + length) % 90);
        }
        const JSONNode node(Text(text), Text(text));
        ASSERT_EQ(NameOf(node), text);
        ASSERT_EQ(ValueOf(node), text);
        JSONNode object;
        object.push_back(node);
        const JSONNode read = Parse(Write(object));
        ASSERT_EQ(read, object) << length;
        ASSERT_EQ(ValueOf(read[0]), text);
    }
}

TEST(JSONNode, KeepsValuesOfTenMegabytes) {
    std::string text(std::size_t{10} * 1024 * 1024, 'v');
    text[1234567] = '\0';
    text.back() = '"';
    JSONNode object;
    object.push_back(JSONNode(Text(text), Text(text)));
    const JSONNode read = Parse(Write(object));
    EXPECT_TRUE(NameOf(read[0]) == text);
    EXPECT_TRUE(ValueOf(read[0]) == text);
}

TEST(JSONNode, SpellsIntegersInDecimal) {
    const json_string name = Text("n");
    EXPECT_EQ(ValueOf(JSONNode(name, 0)), "0");
    EXPECT_EQ(ValueOf(JSONNode(name, static_cast<char>(65))), "65");
    EXPECT_EQ(ValueOf(JSONNode(name, static_cast<signed char>(-128))), "-128");
    EXPECT_EQ(ValueOf(JSONNode(name, static_cast<unsigned char>(255))), "255");
    EXPECT_EQ(ValueOf(JSONNode(name, static_cast<short>(-32768))), "-32768");
    EXPECT_EQ(ValueOf(JSONNode(name, static_cast<unsigned short>(65535))), "65535");
    EXPECT_EQ(ValueOf(JSONNode(name, -2147483647)), "-2147483647");
    EXPECT_EQ(ValueOf(JSONNode(name, 4294967295U)), "4294967295");
    EXPECT_EQ(ValueOf(JSONNode(name, -7L)), "-7");
    EXPECT_EQ(ValueOf(JSONNode(name, 7UL)), "7");
    EXPECT_EQ(ValueOf(JSONNode(name, std::numeric_limits<long long>::min())), "-9223372036854775808");
    EXPECT_EQ(ValueOf(JSONNode(name, std::numeric_limits<unsigned long long>::max())),
              "18446744073709551615");
    EXPECT_EQ(JSONNode(name, 7).type(), JSON_NUMBER);
}

TEST(JSONNode, SpellsFloatingValuesSoThatTheyReadBack) {
    const json_string name = Text("n");
    EXPECT_EQ(ValueOf(JSONNode(name, 0.1)), "0.1");
    EXPECT_EQ(ValueOf(JSONNode(name, 0.1F)), "0.1");
    EXPECT_EQ(ValueOf(JSONNode(name, 1.5L)), "1.5");
    EXPECT_EQ(ValueOf(JSONNode(name, -0.0)), "-0");
    for (const double value : {1.0 / 3, 5e-324, 1.7976931348623157e308, 1e21, 123456789.125, -2.5e-10}) {
        const JSONNode node(name, value);
        EXPECT_EQ(node.as_float(), value);
        EXPECT_EQ(Parse("[" + ValueOf(node) + "]")[0].as_float(), value);
    }
}

TEST(JSONNode, MakesNullOfWhatIsNoFiniteNumber) {
    const json_string name = Text("n");
    for (const double value :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        const JSONNode node(name, value);
        EXPECT_EQ(node.type(), JSON_NULL);
        EXPECT_EQ(NameOf(node), "n");
    }
}

TEST(JSONNode, SpellsBooleans) {
    EXPECT_EQ(ValueOf(JSONNode(Text("b"), true)), "true");
    EXPECT_EQ(ValueOf(JSONNode(Text("b"), false)), "false");
    EXPECT_EQ(JSONNode(Text("b"), true).type(), JSON_BOOL);
}

TEST(JSONNode, GivesTheTextOfValuesThatWereRead) {
    const JSONNode array = Parse("[1.50e2, -0, true, false, null, \"a\\u0000b\", {\"x\":1}, [2]]");
    const std::string expected[] = {"1.50e2", "-0", "true", "false", "null", std::string("a\0b", 3), "", ""};
    for (json_index_t index = 0; index < array.size(); ++index) {
        EXPECT_EQ(ValueOf(array[index]), expected[index]) << index;
    }
}

TEST(JSONNode, ReadsIntegersFromEveryType) {
    struct Row {
        const char* text;
        json_int_t integer;
    };
    const Row rows[] = {{"42", 42},
                        {"-42", -42},
                        {"-0", 0},
                        {"2.99", 2},
                        {"-2.99", -2},
                        {"9007199254740993.5", 9007199254740993},
                        {"1.50e2", 150},
                        {"1e-3", 0},
                        {"9223372036854775807", INT64_MAX},
                        {"9223372036854775808", INT64_MAX},
                        {"-9223372036854775808", INT64_MIN},
                        {"-9223372036854775809", INT64_MIN},
                        {"99999999999999999999999999.5", INT64_MAX},
                        {"9.3e18", INT64_MAX},
                        {"-9.3e18", INT64_MIN},
                        {"1e400", INT64_MAX},
                        {"-1e400", INT64_MIN},
                        {"1e-400", 0},
                        {"\"17\"", 17},
                        {"\"-1.5e1\"", -15},
                        {"\" 17\"", 0},
                        {"\"17 \"", 0},
                        {"\"017\"", 0},
                        {"\"seventeen\"", 0},
                        {"\"\"", 0},
                        {"true", 1},
                        {"false", 0},
                        {"null", 0},
                        {"[17]", 0},
                        {"{\"a\":17}", 0}};
    for (const Row& row : rows) {
        EXPECT_EQ(Parse(row.text).as_int(), row.integer) << row.text;
    }
}

TEST(JSONNode, ReadsDoublesFromEveryType) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    struct Row {
        const char* text;
        double value;
    };
    const Row rows[] = {{"42", 42.0},
                        {"-2.5", -2.5},
                        {"0.1", 0.1},
                        {"1e400", kInfinity},
                        {"-1e400", -kInfinity},
                        {"1E+400", kInfinity},
                        {"1e99999999999999999999", kInfinity},
                        {"-1e99999999999999999999", -kInfinity},
                        {"1e-400", 0.0},
                        {"1e-99999999999999999999", 0.0},
                        {"0e99999999999999999999", 0.0},
                        {"0.00000000001e330", kInfinity},
                        {"100000000000e-340", 0.0},
                        {"\"2.5\"", 2.5},
                        {"\"none\"", 0.0},
                        {"true", 1.0},
                        {"false", 0.0},
                        {"null", 0.0},
                        {"[1]", 0.0},
                        {"{}", 0.0}};
    for (const Row& row : rows) {
        EXPECT_EQ(Parse(row.text).as_float(), row.value) << row.text;
    }
    EXPECT_TRUE(std::signbit(Parse("-0").as_float()));
    EXPECT_EQ(Parse(std::string(400, '9')).as_float(), kInfinity);
    EXPECT_EQ(Parse("0." + std::string(400, '0') + "1").as_float(), 0.0);
}

TEST(JSONNode, ReadsBooleansFromEveryType) {
    for (const char* text : {"true", "1", "-0.5", "1e-400", "\"true\"", "\"2\""}) {
        EXPECT_TRUE(Parse(text).as_bool()) << text;
    }
    for (const char* text : {"false", "0", "-0.00e5", "\"false\"", "\"0\"", "\"yes\"", "\"\"", "null",
                             "[true]", "{\"a\":true}"}) {
        EXPECT_FALSE(Parse(text).as_bool()) << text;
    }
}

TEST(JSONNode, TakesNewNames) {
    JSONNode node(Text("old"), "value");
    node.set_name(Text("new"));
    EXPECT_EQ(NameOf(node), "new");
    EXPECT_EQ(ValueOf(node), "value");
    node.set_name(Text(""));
    EXPECT_EQ(NameOf(node), "");
    const std::string longName(500, 'n');
    node.set_name(Text(longName));
    EXPECT_EQ(NameOf(node), longName);
    JSONNode empty;
    empty.set_name(Text("object"));
    EXPECT_EQ(NameOf(empty), "object");
    EXPECT_EQ(empty.type(), JSON_NODE);
}

TEST(JSONNode, KeepsMoreDifferentNamesThanAreShared) {
    JSONNode object;
    for (int index = 0; index < 40000; ++index) {
        object.push_back(JSONNode(Text("name " + std::to_string(index)), index));
    }
    for (json_index_t index = 0; index < object.size(); index += 1111) {
        ASSERT_EQ(NameOf(object[index]), "name " + std::to_string(index));
        const JSONNode* const found = std::as_const(object).find(Text("name " + std::to_string(index)));
        ASSERT_EQ(found->as_int(), static_cast<json_int_t>(index));
    }
    EXPECT_EQ(Parse(Write(object)), object);
}

TEST(JSONNode, Swaps) {
    JSONNode first(Text("first"), 1);
    JSONNode second(Text("second"), 2);
    first.swap(second);
    EXPECT_EQ(NameOf(first), "second");
    EXPECT_EQ(NameOf(second), "first");
}

TEST(JSONNode, LeavesAnEmptyObjectBehindWhenItIsMoved) {
    std::vector<JSONNode> nodes = {JSONNode(Text("name"), 1), JSONNode(Text("other"), 2)};
    const JSONNode moved(std::move(nodes[0]));
    EXPECT_EQ(moved, JSONNode(Text("name"), 1));
    EXPECT_EQ(nodes[0], JSONNode());
    nodes[0] = std::move(nodes[1]);
    EXPECT_EQ(nodes[0], JSONNode(Text("other"), 2));
    EXPECT_EQ(nodes[1], JSONNode());
}

TEST(JSONNode, MayBeAssignedToItself) {
    JSONNode node(Text("name"), 1);
    JSONNode& self = node;
    node = self;
    EXPECT_EQ(node, JSONNode(Text("name"), 1));
    node = std::move(self);
    EXPECT_EQ(node, JSONNode(Text("name"), 1));
}

TEST(JSONNode, ComparesTypeNameAndValue) {
    EXPECT_EQ(Parse("{\"a\":[1,\"x\",null,true,{}]}"),
              Parse(" { \"a\" : [ 1 , \"\\u0078\" , null , true , { } ] } "));
    EXPECT_EQ(JSONNode(), JSONNode(JSON_NODE));
    EXPECT_NE(JSONNode(), JSONNode(JSON_ARRAY));
    EXPECT_NE(JSONNode(Text("a"), 1), JSONNode(Text("b"), 1));
    EXPECT_NE(JSONNode(Text("a"), 1), JSONNode(Text("a"), 2));
    EXPECT_NE(JSONNode(Text("a"), 1), JSONNode(Text("a"), "1"));
    EXPECT_NE(Parse("[1]"), Parse("[1.0]"));
    EXPECT_NE(Parse("[1,2]"), Parse("[2,1]"));
    EXPECT_NE(Parse("[1,2]"), Parse("[1]"));
    EXPECT_NE(Parse("{\"a\":{\"b\":{\"c\":1}}}"), Parse("{\"a\":{\"b\":{\"c\":2}}}"));
    EXPECT_NE(Parse("{\"a\":{\"b\":{\"c\":1}}}"), Parse("{\"a\":{\"b\":{\"d\":1}}}"));
    EXPECT_FALSE(Parse("[1]") != Parse("[1]"));
}

}  // namespace
