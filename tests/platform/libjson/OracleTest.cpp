// The scanner against two packaged readers: what both accept it accepts with the same values, what both
// refuse it refuses.

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <cstdint>
#include <iterator>
#include <random>
#include <string>

#include "Oracles.h"
#include "Texts.h"

namespace {

/// A document with known oddities, from a random source.
class Generator {
public:
    explicit Generator(std::uint32_t seed) : random_(seed) {}

    std::string Document() { return Blanks() + Value(0) + Blanks(); }

    /// The text with some bytes changed, removed, doubled or inserted.
    std::string Mutated(std::string text) {
        static const std::string kBytes = "{}[],:\"\\/0123456789.eE+-truefalsn \t\n\r\x01\x7F\x80\xC3\xFF";
        for (std::size_t changes = 1 + Below(3); changes > 0 && !text.empty(); --changes) {
            const std::size_t at = Below(text.size());
            const char byte = kBytes[Below(kBytes.size())];
            switch (Below(4)) {
                case 0:
                    text[at] = byte;
                    break;
                case 1:
                    text.erase(at, 1 + Below(3));
                    break;
                case 2:
                    text.insert(at, 1, byte);
                    break;
                default:
                    text.insert(at, text.substr(at, 1 + Below(5)));
                    break;
            }
        }
        return text;
    }

private:
    std::size_t Below(std::size_t limit) { return random_() % limit; }

    std::string Blanks() {
        std::string blanks;
        for (std::size_t count = Below(4) == 0 ? Below(3) : 0; count > 0; --count) {
            blanks += " \t\n\r"[Below(4)];
        }
        return blanks;
    }

    std::string Value(int depth) {
        switch (Below(depth < 5 ? 9 : 6)) {
            case 0:
                return "null";
            case 1:
                return Below(2) == 0 ? "true" : "false";
            case 2:
            case 3:
                return Number();
            case 4:
            case 5:
                return String();
            case 6:
                return List('[', ']', depth, false);
            default:
                return List('{', '}', depth, true);
        }
    }

    std::string List(char open, char close, int depth, bool named) {
        std::string text(1, open);
        const std::size_t count = Below(6);
        for (std::size_t index = 0; index < count; ++index) {
            text += (index > 0 ? "," : "") + Blanks();
            if (named) {
                // One oracle would distinguish equal names, and the other would not.
                text += String("m" + std::to_string(index)) + Blanks() + ":" + Blanks();
            }
            text += Value(depth + 1) + Blanks();
        }
        return text + (count == 0 ? Blanks() : "") + close;
    }

    std::string Digits() {
        std::string digits;
        for (std::size_t count = 1 + Below(Below(10) == 0 ? 25 : 5); count > 0; --count) {
            digits += static_cast<char>('0' + Below(10));
        }
        return digits;
    }

    std::string Number() {
        std::string text = Below(3) == 0 ? "-" : "";
        text += Below(4) == 0 ? "0" : std::to_string(1 + Below(9)) + (Below(2) == 0 ? Digits() : "");
        if (Below(3) == 0) {
            text += "." + Digits();
        }
        if (Below(4) == 0) {
            const char* const signs[] = {"", "+", "-"};
            text += (Below(2) == 0 ? "e" : "E") + std::string(signs[Below(3)]) + std::to_string(Below(200));
        }
        return text;
    }

    std::string String(const std::string& start = "") {
        static const char* const kPieces[] = {"a",
                                              "Z",
                                              " ",
                                              "~",
                                              "\x7F",
                                              "\\n",
                                              "\\\"",
                                              "\\\\",
                                              "\\/",
                                              "/",
                                              "\\u0000",
                                              "\\u0041",
                                              "\\u00e9",
                                              "\\u4E2D",
                                              "\\uFFFF",
                                              "\xC3\xBC",
                                              "\xE4\xB8\xAD",
                                              "\xF0\x9F\x98\x80",
                                              "\\uD83D\\uDE00",
                                              "\\b\\f\\r\\t",
                                              "a longer run of plain characters"};
        std::string text = "\"" + start;
        for (std::size_t count = Below(6); count > 0; --count) {
            text += kPieces[Below(std::size(kPieces))];
        }
        return text + "\"";
    }

    std::mt19937 random_;
};

TEST(Oracles, ReadTheSameFromDocuments) {
    const UnitsFor utf8(libjson::text_units::utf8);
    Generator generator(20261121);
    for (int round = 0; round < 5000; ++round) {
        const std::string text = generator.Document();
        const OracleVerdict verdict = AskOracles(text);
        ASSERT_EQ(verdict.difference, "") << text;
        ASSERT_TRUE(verdict.bothAccept) << text;
    }
}

TEST(Oracles, RefuseTheSameTexts) {
    const UnitsFor utf8(libjson::text_units::utf8);
    Generator generator(1234567);
    int accepted = 0;
    int refused = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::string text = generator.Mutated(generator.Document());
        const OracleVerdict verdict = AskOracles(text);
        ASSERT_EQ(verdict.difference, "") << text;
        accepted += verdict.bothAccept ? 1 : 0;
        refused += verdict.bothRefuse ? 1 : 0;
    }
    EXPECT_GT(accepted, 2000);
    EXPECT_GT(refused, 8000);
}

TEST(Oracles, ReadWhatIsWritten) {
    const UnitsFor utf8(libjson::text_units::utf8);
    Generator generator(42);
    for (int round = 0; round < 3000; ++round) {
        JSONNode root(JSON_ARRAY);
        root.push_back(Parse(generator.Document()));
        for (const std::string& text : {Write(root), Plain(root.write_formatted())}) {
            const OracleVerdict verdict = AskOracles(text);
            ASSERT_EQ(verdict.difference, "") << text;
            ASSERT_TRUE(verdict.bothAccept) << text;
            ASSERT_EQ(Parse(text), root);
        }
    }
}

TEST(Oracles, ReadEscapesOfBytesAsCodePointsOfTheSameNumber) {
    const UnitsFor bytes(libjson::text_units::bytes);
    for (int byte = 0; byte < 256; ++byte) {
        JSONNode root(JSON_ARRAY);
        root.push_back(JSONNode(Text(""), Text(std::string(1, static_cast<char>(byte)))));
        rapidjson::GenericDocument<rapidjson::UTF16<>> wide;
        const std::string text = Write(root);
        wide.Parse(std::basic_string<rapidjson::UTF16<>::Ch>(text.begin(), text.end()).c_str());
        ASSERT_FALSE(wide.HasParseError()) << byte;
        ASSERT_EQ(wide[0].GetStringLength(), 1U);
        EXPECT_EQ(static_cast<int>(wide[0].GetString()[0]), byte);
    }
}

}  // namespace
