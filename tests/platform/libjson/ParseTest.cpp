#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "Texts.h"
#include "parse_error.h"

namespace {

/// The message with which a text is refused; empty when it is accepted.
std::string Refusal(const std::string& text) {
    try {
        Parse(text);
    } catch (const std::invalid_argument& refusal) {
        return refusal.what();
    }
    return "";
}

/// The characters of a text that is one string.
std::string StringIn(const std::string& text) {
    const JSONNode node = Parse(text);
    EXPECT_EQ(node.type(), JSON_STRING);
    return ValueOf(node);
}

TEST(Parse, ThrowsThePlaceAndTheReason) {
    try {
        Parse("{\r\n\"\xC3\xBC\" 1}");
        ADD_FAILURE();
    } catch (const libjson::parse_error& error) {
        EXPECT_EQ(error.line(), 2U);
        EXPECT_EQ(error.column(), 6U);
        EXPECT_EQ(error.offset(), 8U);
        EXPECT_STREQ(error.reason(), "a colon is missing here, between a name and its value");
        EXPECT_EQ(error.what(), std::string("line 2, column 6: ") + error.reason());
    }
}

TEST(Parse, AcceptsAnyValueAsTheRoot) {
    EXPECT_EQ(Parse("null").type(), JSON_NULL);
    EXPECT_EQ(Parse("true").type(), JSON_BOOL);
    EXPECT_EQ(Parse("false").type(), JSON_BOOL);
    EXPECT_EQ(Parse("12").type(), JSON_NUMBER);
    EXPECT_EQ(Parse("\"x\"").type(), JSON_STRING);
    EXPECT_EQ(Parse("[]").type(), JSON_ARRAY);
    EXPECT_EQ(Parse("{}").type(), JSON_NODE);
    EXPECT_EQ(NameOf(Parse("{\"a\":1}")), "");
}

TEST(Parse, SkipsBlanksBetweenTokensOnly) {
    EXPECT_EQ(
        Write(Parse(" \t\r\n[ \t\r\n1 \t\r\n, \t\r\n{ \t\r\n\" a \" \t\r\n: \t\r\n2 \t\r\n} \t\r\n] \t\r\n")),
        "[1,{\" a \":2}]");
}

TEST(Parse, NamesMembersAndLeavesElementsUnnamed) {
    const JSONNode node = Parse("{\"a\":[1,[2]],\"\":{}}");
    EXPECT_EQ(NameOf(node[0]), "a");
    EXPECT_EQ(NameOf(node[0][0]), "");
    EXPECT_EQ(NameOf(node[0][1]), "");
    EXPECT_EQ(NameOf(node[1]), "");
}

TEST(Parse, KeepsTheDigitsOfEveryNumber) {
    for (const std::string text : {"0", "-0", "1", "-1", "0.0", "-0.50", "1.50e2", "1E5", "1e+05", "1e-0",
                                   "10", "1e400", "-1E-9999", "123456789012345678901234567890.10"}) {
        const JSONNode node = Parse(text);
        EXPECT_EQ(node.type(), JSON_NUMBER) << text;
        EXPECT_EQ(ValueOf(node), text);
        EXPECT_EQ(Write(Parse("[" + text + "]")), "[" + text + "]");
    }
    const std::string digits(400, '3');
    EXPECT_EQ(ValueOf(Parse(digits)), digits);
}

TEST(Parse, ResolvesEveryEscape) {
    EXPECT_EQ(StringIn(R"("\"\\\/\b\f\n\r\t")"), "\"\\/\b\f\n\r\t");
    EXPECT_EQ(StringIn(R"("a\u0041\u005A\u005ab")"), "aAZZb");
    EXPECT_EQ(StringIn(R"("\u0000")"), std::string(1, '\0'));
    EXPECT_EQ(StringIn(R"("0123456789abcdef\n0123456789abcdef")"), "0123456789abcdef\n0123456789abcdef");
}

TEST(Parse, TakesPlainCharactersAsTheyAre) {
    for (int byte = 0x20; byte < 256; ++byte) {
        if (byte == '"' || byte == '\\') {
            continue;
        }
        const std::string text(1, static_cast<char>(byte));
        EXPECT_EQ(StringIn("\"" + text + "\""), text);
        EXPECT_EQ(StringIn("\"0123456789abcdef" + text + "\""), "0123456789abcdef" + text);
    }
}

TEST(Parse, FindsTheEndOfStringsOfEveryLength) {
    for (std::size_t length = 0; length < 100; ++length) {
        const std::string text(length, 's');
        for (std::size_t blanks = 0; blanks < 20; ++blanks) {
            ASSERT_EQ(StringIn("\"" + text + "\"" + std::string(blanks, ' ')), text);
        }
        ASSERT_EQ(StringIn("\"" + text + "\\t\""), text + "\t");
        ASSERT_EQ(StringIn("\"\\t" + text + "\""), "\t" + text);
    }
}

TEST(Parse, KeepsDuplicateMembersInOrder) {
    const JSONNode node = Parse("{\"a\":1,\"b\":2,\"a\":3}");
    ASSERT_EQ(node.size(), 3U);
    EXPECT_EQ(node[0].as_int(), 1);
    EXPECT_EQ(node[2].as_int(), 3);
    EXPECT_EQ(NameOf(node[2]), "a");
}

TEST(Parse, SaysWhereAndWhyItRefuses) {
    const char* const noValue = "a value is missing here";
    const char* const inObject = "the text ends inside an object";
    const char* const inArray = "the text ends inside an array";
    const char* const inString = "the text ends inside a string";
    const char* const after = "nothing may follow the value of a document";
    const char* const word = "this word is not a value: only true, false and null are";
    const char* const digit = "a number needs a digit here";
    const char* const zero = "a number must not begin with a zero that another digit follows";
    const char* const fraction = "a number needs a digit after its decimal point";
    const char* const exponent = "a number needs a digit in its exponent";
    const char* const comma = "a comma or a closing bracket is missing here";
    const char* const memberComma = "a comma or a closing brace is missing here";
    const char* const memberName = "the name of a member is missing here, in double quotes";
    const char* const colon = "a colon is missing here, between a name and its value";
    const char* const control = "a control character must be escaped in a string";
    const char* const escape = "a backslash must be followed by one of \" \\ / b f n r t u";
    const char* const digits = "\\u must be followed by four hexadecimal digits";
    const char* const empty = "the text is empty: a document is one value";
    const char* const mark = "a document must not begin with a byte order mark";
    const auto at = [](int line, int column, const char* reason) {
        return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + reason;
    };
    const struct {
        std::string text;
        std::string refusal;
    } rows[] = {
        {"", at(1, 1, empty)},
        {" \n ", at(2, 2, empty)},
        {"\xEF\xBB\xBF{}", at(1, 1, mark)},
        {"[", at(1, 2, inArray)},
        {"[1", at(1, 3, inArray)},
        {"[1,", at(1, 4, inArray)},
        {"[1,]", at(1, 4, noValue)},
        {"[,1]", at(1, 2, noValue)},
        {"[1 2]", at(1, 4, comma)},
        {"[1}", at(1, 3, comma)},
        {"]", at(1, 1, noValue)},
        {"[]]", at(1, 3, after)},
        {"{", at(1, 2, inObject)},
        {"{\"a\"", at(1, 5, inObject)},
        {"{\"a\":", at(1, 6, inObject)},
        {"{\"a\":1", at(1, 7, inObject)},
        {"{\"a\":1,", at(1, 8, inObject)},
        {"{\"a\":1,}", at(1, 8, memberName)},
        {"{,}", at(1, 2, memberName)},
        {"{a:1}", at(1, 2, memberName)},
        {"{'a':1}", at(1, 2, memberName)},
        {"{1:1}", at(1, 2, memberName)},
        {"{\"a\" 1}", at(1, 6, colon)},
        {"{\"a\"}", at(1, 5, colon)},
        {"{\"a\":}", at(1, 6, noValue)},
        {"{\"a\":1 \"b\":2}", at(1, 8, memberComma)},
        {"{\"a\":1]", at(1, 7, memberComma)},
        {"}", at(1, 1, noValue)},
        {"{}{}", at(1, 3, after)},
        {"1 2", at(1, 3, after)},
        {"nullx", at(1, 5, after)},
        {"nul", at(1, 1, word)},
        {"[tru]", at(1, 2, word)},
        {"True", at(1, 1, noValue)},
        {"falsE", at(1, 1, word)},
        {"NaN", at(1, 1, noValue)},
        {"+1", at(1, 1, noValue)},
        {".5", at(1, 1, noValue)},
        {"-", at(1, 2, digit)},
        {"-x", at(1, 2, digit)},
        {"01", at(1, 2, zero)},
        {"-00", at(1, 3, zero)},
        {"1.", at(1, 3, fraction)},
        {"1.e5", at(1, 3, fraction)},
        {"1e", at(1, 3, exponent)},
        {"1E+", at(1, 4, exponent)},
        {"1e5.5", at(1, 4, after)},
        {"0x10", at(1, 2, after)},
        {"\"", at(1, 2, inString)},
        {"\"abc", at(1, 5, inString)},
        {"\"abc\\", at(1, 6, inString)},
        {"\"abc\\u", at(1, 7, inString)},
        {"\"abc\\u00", at(1, 9, inString)},
        {"\"abc\\uD83D\\u", at(1, 13, inString)},
        {"\"a\nb\"", at(1, 3, control)},
        {"\"a\tb\"", at(1, 3, control)},
        {"\"0123456789abcdef\x1F\"", at(1, 18, control)},
        {"\"a\\xb\"", at(1, 3, escape)},
        {"\"a\\'\"", at(1, 3, escape)},
        {"\"a\\u12G4\"", at(1, 3, digits)},
        {"\"a\\uD83D\\u12\"", at(1, 9, digits)},
        {"// comment", at(1, 1, noValue)},
        {"[1]// comment", at(1, 4, after)},
        {"{\n  \"a\": 1,\n  \"b\": @\n}", at(3, 8, noValue)},
        {"[1,\r\n2,\r3,\n\n x]", at(5, 2, noValue)},
        {"[\xE9\xE9]", at(1, 2, noValue)},
        {std::string("1\0", 2), at(1, 2, after)},
        {std::string("\0", 1), at(1, 1, noValue)},
        {std::string("[1,\0]", 5), at(1, 4, noValue)},
        {std::string("\"a\0\"", 4), at(1, 3, control)},
        {std::string("{\0}", 3), at(1, 2, memberName)},
        {std::string("\"\\\0\"", 4), at(1, 2, escape)},
        {std::string("\"\\u00\0\0\"", 8), at(1, 2, digits)},
        {"[1\f]", at(1, 3, comma)},
        {"[1\xC2\xA0]", at(1, 3, comma)},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Refusal(row.text), row.refusal) << row.text;
        EXPECT_FALSE(libjson::is_valid(Text(row.text))) << row.text;
    }
}

TEST(Parse, RefusesEveryControlCharacterInAString) {
    for (int byte = 0; byte < 0x20; ++byte) {
        const std::string text = std::string("\"") + static_cast<char>(byte) + "\"";
        EXPECT_EQ(Refusal(text), "line 1, column 2: a control character must be escaped in a string") << byte;
    }
}

TEST(Parse, RefusesEveryBeginningOfADocument) {
    const std::string text = R"({"a":[1.5e+3,true,"x\n\u00e9",{"b":null}],"c":false})";
    ASSERT_TRUE(libjson::is_valid(Text(text)));
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_FALSE(libjson::is_valid(Text(text.substr(0, length)))) << length;
        EXPECT_NE(Refusal(text.substr(0, length)), "") << length;
    }
}

TEST(IsValid, AgreesWithParse) {
    for (const char* text : {"null", " [1] ", "{\"a\":{}}", "-0.5e-5", "\"\\uD800\"", "1e400"}) {
        EXPECT_TRUE(libjson::is_valid(Text(text))) << text;
    }
}

TEST(Preparse, ChangesNothing) {
    JSONNode node = Parse("{\"a\":[1,{\"b\":2}]}");
    node.preparse();
    EXPECT_EQ(Write(node), "{\"a\":[1,{\"b\":2}]}");
}

}  // namespace
