#include <gtest/gtest.h>

#include <string>

#include "Texts.h"

namespace {

/// The object {NAME: VALUE}.
JSONNode Member(const std::string& name, const std::string& value) {
    JSONNode object;
    object.push_back(JSONNode(Text(name), Text(value)));
    return object;
}

std::string TwoHexadecimalDigits(int byte) {
    const char* const digits = "0123456789ABCDEF";
    return {digits[byte / 16], digits[byte % 16]};
}

/// What a byte is written as by the table of escapes.
std::string EscapeOf(int byte) {
    switch (byte) {
        case '"':
            return "\\\"";
        case '\\':
            return "\\\\";
        case '/':
            return "\\/";
        case 0x08:
            return "\\b";
        case 0x09:
            return "\\t";
        case 0x0A:
            return "\\n";
        case 0x0C:
            return "\\f";
        case 0x0D:
            return "\\r";
        default:
            return byte < 0x20 || byte >= 0x7F ? "\\u00" + TwoHexadecimalDigits(byte)
                                               : std::string(1, static_cast<char>(byte));
    }
}

TEST(Write, IsCompact) {
    EXPECT_EQ(
        Write(Parse(" { \"a\" : [ 1 , true , null , \"x\" ] , \"b\" : { \"c\" : { } , \"d\" : [ ] } } ")),
        "{\"a\":[1,true,null,\"x\"],\"b\":{\"c\":{},\"d\":[]}}");
    EXPECT_EQ(Write(JSONNode(JSON_NODE)), "{}");
    EXPECT_EQ(Write(JSONNode(JSON_ARRAY)), "[]");
}

TEST(Write, LeavesTheNameOfTheRootAway) {
    JSONNode root = Parse("{\"a\":1}");
    root.set_name(Text("root"));
    EXPECT_EQ(Write(root), "{\"a\":1}");
}

TEST(Write, IsEmptyForANodeThatIsNoContainer) {
    for (const char* text : {"null", "\"text\"", "1.5", "true"}) {
        EXPECT_EQ(Write(Parse(text)), "");
        EXPECT_EQ(Plain(Parse(text).write_formatted()), "");
    }
}

TEST(Write, KeepsDuplicateMembersInOrder) {
    EXPECT_EQ(Write(Parse("{\"a\":1,\"b\":2,\"a\":3}")), "{\"a\":1,\"b\":2,\"a\":3}");
}

TEST(Write, DoesNotDependOnTheReservedSize) {
    const JSONNode node = Parse("{\"a\":[1,2,3],\"b\":\"text\"}");
    for (const std::size_t reserve : {0U, 1U, 1024U, 1000000U}) {
        EXPECT_EQ(Plain(node.write(reserve)), "{\"a\":[1,2,3],\"b\":\"text\"}");
    }
    EXPECT_GE(node.write(1000000).capacity(), 1000000U);
}

TEST(Write, EscapesTheCheckedExample) {
    const UnitsFor bytes(libjson::text_units::bytes);
    EXPECT_EQ(Write(Member("a/b", "x/y\"\\\t\n\r\b\f\v\x01\x7F\xE9z")),
              "{\"a\\/b\":\"x\\/y\\\"\\\\\\t\\n\\r\\b\\f\\u000B\\u0001\\u007F\\u00E9z\"}");
}

TEST(Write, EscapesEveryByteInNamesAndValuesAlike) {
    const UnitsFor bytes(libjson::text_units::bytes);
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        const std::string escaped = "\"" + EscapeOf(byte) + "\"";
        ASSERT_EQ(Write(Member(text, text)), "{" + escaped + ":" + escaped + "}") << byte;
    }
}

TEST(Write, EscapesEveryByteAtEveryPlace) {
    const UnitsFor bytes(libjson::text_units::bytes);
    for (int byte = 0; byte < 256; ++byte) {
        for (std::size_t length = 1; length < 40; ++length) {
            for (std::size_t place = 0; place < length; place += 3) {
                std::string text(length, 'x');
                text[place] = static_cast<char>(byte);
                const std::string escaped = "\"" + std::string(place, 'x') + EscapeOf(byte) +
                                            std::string(length - place - 1, 'x') + "\"";
                ASSERT_EQ(Write(Member(text, text)), "{" + escaped + ":" + escaped + "}")
                    << byte << ' ' << place;
            }
        }
    }
}

TEST(Write, PutsTogetherDocumentsOfAnyLength) {
    JSONNode array(JSON_ARRAY);
    std::string expected = "[";
    for (int index = 0; index < 5000; ++index) {
        const std::string text(static_cast<std::size_t>(index % 700), 'y');
        array.push_back(JSONNode(Text(""), Text(text + "\n")));
        expected += (index > 0 ? ",\"" : "\"") + text + "\\n\"";
    }
    EXPECT_TRUE(Write(array) == expected + "]");
}

TEST(Write, KeepsLongNumbers) {
    const std::string digits(5000, '7');
    EXPECT_EQ(Write(Parse("[" + digits + "]")), "[" + digits + "]");
}

TEST(WriteFormatted, PutsOneMemberOnALine) {
    EXPECT_EQ(Plain(Parse("{\"a\":[1,\"x/\"],\"b\":{\"c\":{},\"d\":[]},\"e\":null}").write_formatted()),
              "{\n"
              "\t\"a\" : [\n"
              "\t\t1,\n"
              "\t\t\"x\\/\"\n"
              "\t],\n"
              "\t\"b\" : {\n"
              "\t\t\"c\" : {},\n"
              "\t\t\"d\" : []\n"
              "\t},\n"
              "\t\"e\" : null\n"
              "}");
    EXPECT_EQ(Plain(JSONNode(JSON_NODE).write_formatted()), "{}");
    EXPECT_EQ(Plain(JSONNode(JSON_ARRAY).write_formatted()), "[]");
}

TEST(WriteFormatted, IndentsNoFurtherThanSixtyFourTabs) {
    const std::string text = std::string(70, '[') + "1" + std::string(70, ']');
    const std::string formatted = Plain(Parse(text).write_formatted());
    EXPECT_NE(formatted.find("\n" + std::string(64, '\t') + "1\n"), std::string::npos);
    EXPECT_EQ(formatted.find(std::string(65, '\t')), std::string::npos);
    EXPECT_EQ(Write(Parse(formatted)), text);
}

TEST(WriteFormatted, ReadsBackAsTheSameDocument) {
    const JSONNode node = Parse("{\"a\":[1,[2,{\"b\":\"\\u0000\"}]],\"c\":{\"d\":{\"e\":-0.5e-7}}}");
    EXPECT_EQ(libjson::parse(node.write_formatted()), node);
}

}  // namespace
