#include <gtest/gtest.h>
#include <libjson.h>

#include <random>
#include <stdexcept>

#include "host/server/MembersText.h"
#include "support/TextUnits.h"

namespace host {
namespace {

std::string Written(const std::string& text) {
    const json_string written = libjson::parse(json_string(text.data(), text.size())).write();
    return {written.data(), written.size()};
}

/// Reads a text, and says whether it had to be written again.
std::string Read(MembersText& members, const std::string& text, MembersLayout& layout) {
    const std::string_view read = members.Read(text, layout);
    return (read.data() == text.data() ? "as it is: " : "again: ") + std::string(read);
}

std::string Read(const std::string& text) {
    MembersText members;
    MembersLayout layout;
    return Read(members, text, layout);
}

constexpr const char* kWritten[] = {
    "{}",
    R"({"a":1})",
    R"({"a":-0,"b":1.50e2,"c":1E+2,"d":0.0e-0,"e":12345678901234567890})",
    R"({"a":true,"b":false,"c":null,"d":[],"e":{},"f":[{}],"g":{"h":[[],{"i":[1]}]}})",
    R"({"":"","a long name with blanks":"a long text, which is more than eight characters"})",
    R"({"a":"\"\\\/\b\f\n\r\t\u000B\u0000\u001F\u007F"})",
    R"({"a\"\/":"1234567\""})",
    R"({"a":"\u0080\u00E4\u00FF"})",
};

constexpr const char* kWrittenAsUtf8[] = {
    R"({"a":"\u0100\u4E2D\uFFFF\uD7FF\uE000"})",
    R"({"a":"\uD83D\uDE00\uDBFF\uDFFF"})",
};

constexpr const char* kWrittenOtherwise[] = {
    R"({ "a":1})",
    R"({"a" :1})",
    R"({"a": 1})",
    R"({"a":1 })",
    R"({"a":1} )",
    R"( {"a":1})",
    R"({"a":[1, 2]})",
    "{\"a\":\n1}",
    "{ }",
    R"({"a":[ ]})",
    R"({"a":"/"})",
    R"({"a":"1234567/"})",
    R"({"a":"12345678/"})",
    R"({"a":"\u0041"})",
    R"({"a":"\u002F"})",
    R"({"a":"\u0008\u0009\u000A\u000C\u000D"})",
    R"({"a":"\u000b"})",
    R"({"a":"\u00e4"})",
    "{\"a\":\"\x7F\"}",
    "{\"a\":\"\xC3\xA4\"}",
    "{\"a\":\"12345678\xFF\"}",
    R"({"a":"\uD83D"})",
    R"({"a":"\uDE00"})",
    R"({"a":"\uD83D\uD83D\uDE00"})",
    R"({"a":"\uD83D\u0041"})",
    R"({"a":"\uDCC3\uDCA4"})",
    R"({"a":"\uD800\uDC80"})",
    R"({"\u0061":1})",
};

TEST(MembersTextTest, LeavesWhatIsWrittenAsItIs) {
    for (const std::string text : kWritten) {
        EXPECT_EQ(Read(text), "as it is: " + text);
        EXPECT_EQ(Written(text), text);
    }
    for (const std::string text : kWrittenAsUtf8) {
        const UnitsFor utf8(libjson::text_units::utf8);
        EXPECT_EQ(Read(text), "as it is: " + text);
        EXPECT_EQ(Written(text), text);
    }
}

TEST(MembersTextTest, WritesEverythingElseAgain) {
    for (const libjson::text_units units : {libjson::text_units::bytes, libjson::text_units::utf8}) {
        const UnitsFor set(units);
        for (const std::string text : kWrittenOtherwise) {
            // Some are written as they are read, by the rules for what stands around them.
            const std::string read = Read(text);
            EXPECT_TRUE(read == "again: " + Written(text) ||
                        (read == "as it is: " + text && Written(text) == text))
                << read;
        }
    }
    const UnitsFor bytes(libjson::text_units::bytes);
    for (const std::string text : kWrittenAsUtf8) {
        EXPECT_EQ(Read(text), "again: " + Written(text));
    }
}

std::string ErrorOfReading(const std::string& text) {
    try {
        return Read(text);
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
}

TEST(MembersTextTest, RefusesWhatIsNotAnObject) {
    for (const std::string text : {"5", "[1]", "\"{}\"", "null", "true"}) {
        EXPECT_EQ(ErrorOfReading(text), "they are not an object");
    }
    const std::string broken[] = {"",
                                  "{",
                                  "}",
                                  "{}}",
                                  R"({"a")",
                                  R"({"a":)",
                                  R"({"a":1)",
                                  R"({"a":1,})",
                                  R"({"a":1,,"b":1})",
                                  R"({,"a":1})",
                                  R"({"a":[1,]})",
                                  R"({"a":[1}})",
                                  R"({"a":{"b"}})",
                                  R"({"a":tru})",
                                  R"({"a":nulll})",
                                  R"({"a":01})",
                                  R"({"a":-})",
                                  R"({"a":1.})",
                                  R"({"a":1e})",
                                  R"({"a":1e+})",
                                  R"({"a":+1})",
                                  R"({"a":"\u00"})",
                                  R"({"a":"\x"})",
                                  R"({"a":"\)",
                                  R"({"a":"\u)",
                                  R"({"a":"\uD83D\)",
                                  R"({"a":"b)",
                                  R"({"a":1}{"b":1})",
                                  std::string("{\"a\":1\0}", 8),
                                  std::string("{\"a\":\"\0\"}", 9),
                                  "{\"a\":\"\x1F\"}"};
    for (const std::string& text : broken) {
        EXPECT_TRUE(ErrorOfReading(text).starts_with("line 1, column "))
            << text << ": " << ErrorOfReading(text);
    }
}

/// Changes, cuts and doubles characters: what is read is what libjson reads and writes, or is refused by
/// both.
TEST(MembersTextTest, AgreesWithLibjsonOnChangedTexts) {
    std::minstd_rand random(1);
    const auto below = [&](std::size_t end) { return static_cast<std::size_t>(random() % end); };
    constexpr std::string_view kCharacters = "{}[]\",:\\/u0dDeE8+-.ntrue \x7F\xC3\xA4\n";
    MembersText members;
    MembersLayout layout;
    std::size_t left = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string text = round % 3 == 0 ? kWrittenOtherwise[below(std::size(kWrittenOtherwise))]
                                          : kWritten[below(std::size(kWritten))];
        for (std::size_t change = below(3); change > 0 && !text.empty(); --change) {
            const std::size_t at = below(text.size());
            if (below(3) == 0) {
                text.erase(at, below(3));
            } else {
                text.insert(at, 1, kCharacters[below(kCharacters.size())]);
            }
        }
        std::string expected;
        try {
            expected = Written(text);
        } catch (const std::invalid_argument&) {
        }
        std::string read;
        try {
            read = members.Read(text, layout);
            left += read == text ? 1 : 0;
        } catch (const std::invalid_argument&) {
        }
        // What is not an object has no text.
        ASSERT_EQ(read, expected.starts_with('{') ? expected : "") << text;
    }
    EXPECT_GT(left, 5000U);
}

std::string Layout(const std::string& text) {
    MembersText members;
    MembersLayout layout;
    const std::string read(members.Read(text, layout));
    std::string found = std::string(layout.isEmpty ? "empty " : "") + (layout.hasKey ? "key " : "") +
                        (layout.hasType ? "type " : "") + (layout.hasSubType ? "subType " : "");
    constexpr const char* kNames[] = {"type:", "key:", "repeated:", "children:", "files:"};
    for (const MembersEdit& edit : layout.edits) {
        found += kNames[static_cast<std::size_t>(edit.kind)] +
                 read.substr(edit.begin, edit.end - edit.begin) + " ";
    }
    return found;
}

TEST(MembersTextTest, FindsWhereTheDocumentHasMore) {
    EXPECT_EQ(Layout("{}"), "empty ");
    EXPECT_EQ(Layout(R"({"a":{"type":"b","dbkey":"c","children":[],"files":[],"subType":"d"}})"), "");
    EXPECT_EQ(Layout(R"({"type":"b","type":"c","subType":"d"})"), "type subType type: ");
    EXPECT_EQ(Layout(R"({"a":1,"dbkey":{"b":[1]},"type":"c"})"), R"(key type key:{"b":[1]} type: )");
    EXPECT_EQ(Layout(R"({"dbkey":"a","b":1,"dbkey":[2],"c":3})"), R"(key key:"a" repeated:,"dbkey":[2] )");
    EXPECT_EQ(Layout(R"({"files":[],"children":{"a":1},"children":[1]})"),
              R"(files:[] children:{"a":1} children:[1] )");
    EXPECT_EQ(Layout(R"({"files":"[]","children":7,"Children":[],"childre":[]})"), "");
    EXPECT_EQ(Layout(R"({ "d\u0062key" : "\u0061" })"), R"(key key:"a" )");
}

}  // namespace
}  // namespace host
