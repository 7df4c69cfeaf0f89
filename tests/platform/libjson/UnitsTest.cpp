#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "Texts.h"

namespace {

using libjson::text_units;

/// What the object {"": TEXT} writes for the text, without quotes.
std::string Written(const std::string& text) {
    JSONNode object;
    object.push_back(JSONNode(Text(""), Text(text)));
    const std::string document = Write(object);
    const std::string before = "{\"\":\"";
    return document.substr(before.size(), document.size() - before.size() - 2);
}

std::string ReadFrom(const std::string& escaped) {
    return ValueOf(Parse("\"" + escaped + "\""));
}

/// Writes the text as a name and as a value and reads it back.
void ExpectSurvives(const std::string& text) {
    JSONNode object;
    object.push_back(JSONNode(Text(text), Text(text)));
    const std::string document = Write(object);
    for (const char character : document) {
        ASSERT_TRUE(character >= 0x20 && character < 0x7F) << document;
    }
    const JSONNode read = Parse(document);
    ASSERT_EQ(NameOf(read[0]), text) << document;
    ASSERT_EQ(ValueOf(read[0]), text) << document;
    ASSERT_EQ(libjson::parse(read.write_formatted()), read);
}

TEST(TextUnits, AreThoseThatWereSet) {
    for (const text_units units : {text_units::bytes, text_units::utf8, text_units::bytes}) {
        const UnitsFor unitsHere(units);
        EXPECT_EQ(libjson::get_text_units(), units);
    }
}

TEST(TextUnits, LetEveryByteSurvive) {
    for (const text_units units : {text_units::bytes, text_units::utf8}) {
        const UnitsFor unitsHere(units);
        for (int byte = 0; byte < 256; ++byte) {
            const std::string text(1, static_cast<char>(byte));
            ExpectSurvives(text);
            ExpectSurvives("before " + text + " and behind, far enough for a second block");
        }
    }
}

TEST(TextUnits, LetEveryPairOfBytesSurvive) {
    for (const text_units units : {text_units::bytes, text_units::utf8}) {
        const UnitsFor unitsHere(units);
        for (int pair = 0; pair < 0x10000; ++pair) {
            const char bytes[] = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF)};
            const std::string text(bytes, 2);
            ASSERT_EQ(ReadFrom(Written(text)), text) << pair;
        }
    }
}

TEST(TextUnits, LetRandomSequencesSurvive) {
    // Pieces whose neighbours matter: leads, continuations, surrogate forms, complete characters.
    const std::vector<std::string> pieces = {"a",
                                             "\\",
                                             "\"",
                                             "/",
                                             "\x80",
                                             "\xBF",
                                             "\xC0",
                                             "\xC3",
                                             "\xC3\xBC",
                                             "\xE4\xB8\xAD",
                                             "\xE4",
                                             "\xED",
                                             "\xED\xA0\x80",
                                             "\xED\xAF\xBF",
                                             "\xED\xB0\x80",
                                             "\xED\xB2\x80",
                                             "\xED\xB3\xBF",
                                             "\xED\xBF\xBF",
                                             "\xF0\x9F\x98\x80",
                                             "\xF0\x9F",
                                             "\xF4\x8F\xBF\xBF",
                                             "\xF4\x90\x80\x80",
                                             "\xE0\x80\x80",
                                             "\xFF",
                                             std::string(1, '\0'),
                                             "\n"};
    for (const text_units units : {text_units::bytes, text_units::utf8}) {
        const UnitsFor unitsHere(units);
        std::mt19937 random(20260101);
        for (int round = 0; round < 20000; ++round) {
            std::string text;
            for (std::size_t left = random() % 12; left > 0; --left) {
                text += pieces[random() % pieces.size()];
            }
            ExpectSurvives(text);
            if (HasFatalFailure()) {
                return;
            }
        }
    }
}

TEST(BytesAsUnits, AreWrittenAndReadAsOneEscapeEach) {
    const UnitsFor bytes(text_units::bytes);
    EXPECT_EQ(Written("\xC3\xBC"), "\\u00C3\\u00BC");
    EXPECT_EQ(ReadFrom("\\u00C3\\u00BC"), "\xC3\xBC");
    EXPECT_EQ(ReadFrom("\\u0080\\u00ff"), "\x80\xFF");
    EXPECT_EQ(ReadFrom("\xFC\x80"), "\xFC\x80");
}

TEST(BytesAsUnits, CodePointsBeyondABytesBecomeUtf8) {
    const UnitsFor bytes(text_units::bytes);
    EXPECT_EQ(ReadFrom("\\u0100"), "\xC4\x80");
    EXPECT_EQ(ReadFrom("\\u07FF\\u0800"), "\xDF\xBF\xE0\xA0\x80");
    EXPECT_EQ(ReadFrom("\\u4E2D"), "\xE4\xB8\xAD");
    EXPECT_EQ(ReadFrom("\\uD83D\\uDE00"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(ReadFrom("\\uDBFF\\uDFFF"), "\xF4\x8F\xBF\xBF");
    EXPECT_EQ(ReadFrom("\\uFFFF"), "\xEF\xBF\xBF");
}

TEST(BytesAsUnits, LoneSurrogatesKeepTheirThreeByteForm) {
    const UnitsFor bytes(text_units::bytes);
    EXPECT_EQ(ReadFrom("\\uD800"), "\xED\xA0\x80");
    EXPECT_EQ(ReadFrom("\\uDC80"), "\xED\xB2\x80");
    EXPECT_EQ(ReadFrom("\\uD800\\u0041"),
              "\xED\xA0\x80"
              "A");
    EXPECT_EQ(ReadFrom("\\uD800\\uD83D\\uDE00"), "\xED\xA0\x80\xF0\x9F\x98\x80");
    EXPECT_EQ(ReadFrom("\\uD800\\n"), "\xED\xA0\x80\n");
}

TEST(Utf8AsUnits, SequencesAreWrittenAsTheirCodePoint) {
    const UnitsFor utf8(text_units::utf8);
    EXPECT_EQ(Written("\xC3\xBC"), "\\u00FC");
    EXPECT_EQ(Written("\xC2\x80"), "\\u0080");
    EXPECT_EQ(Written("\xE4\xB8\xAD"), "\\u4E2D");
    EXPECT_EQ(Written("\xF0\x9F\x98\x80"), "\\uD83D\\uDE00");
    EXPECT_EQ(Written("\xF4\x8F\xBF\xBF"), "\\uDBFF\\uDFFF");
    EXPECT_EQ(Written("a\x7F\x1F/"), "a\\u007F\\u001F\\/");
}

TEST(Utf8AsUnits, CodePointsAreReadAsTheirSequence) {
    const UnitsFor utf8(text_units::utf8);
    EXPECT_EQ(ReadFrom("\\u00FC"), "\xC3\xBC");
    EXPECT_EQ(ReadFrom("\\u0080"), "\xC2\x80");
    EXPECT_EQ(ReadFrom("\\u0041"), "A");
    EXPECT_EQ(ReadFrom("\\uD83D\\uDE00"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(ReadFrom("\xC3\xBC"), "\xC3\xBC");
    EXPECT_EQ(ReadFrom("\xFC"), "\xFC");
}

TEST(Utf8AsUnits, BytesThatBelongToNoSequenceHaveEscapesOfTheirOwn) {
    const UnitsFor utf8(text_units::utf8);
    for (int byte = 0x80; byte < 256; ++byte) {
        const char* const digits = "0123456789ABCDEF";
        const std::string text(1, static_cast<char>(byte));
        const std::string escaped = std::string("\\uDC") + digits[byte / 16] + digits[byte % 16];
        EXPECT_EQ(Written(text), escaped);
        EXPECT_EQ(ReadFrom(escaped), text);
    }
    EXPECT_EQ(Written("\xE4\xB8"), "\\uDCE4\\uDCB8");
    EXPECT_EQ(Written("\xC0\x80"), "\\uDCC0\\uDC80");
    EXPECT_EQ(Written("\xF4\x90\x80\x80"), "\\uDCF4\\uDC90\\uDC80\\uDC80");
}

TEST(Utf8AsUnits, OtherLoneSurrogatesKeepTheirThreeByteForm) {
    const UnitsFor utf8(text_units::utf8);
    for (const char* escaped :
         {"\\uD800", "\\uDBFF", "\\uDC00", "\\uDC7F", "\\uDD00", "\\uDFFF", "\\uD800\\uD800", "\\uD800A",
          "\\uD800\\uD83D\\uDE00", "\\uDC00\\uD800", "\\uD800\\u00FC"}) {
        EXPECT_EQ(Written(ReadFrom(escaped)), escaped);
    }
    EXPECT_EQ(ReadFrom("\\uD800"), "\xED\xA0\x80");
    EXPECT_EQ(ReadFrom("\\uDFFF"), "\xED\xBF\xBF");
}

TEST(Utf8AsUnits, ThreeByteFormsThatAReaderWouldTakeForSomethingElseAreWrittenAsBytes) {
    const UnitsFor utf8(text_units::utf8);
    EXPECT_EQ(Written("\xED\xB2\x80"), "\\uDCED\\uDCB2\\uDC80");
    EXPECT_EQ(Written("\xED\xA0\x80\xED\xB0\x80"), "\\uDCED\\uDCA0\\uDC80\\uDC00");
    EXPECT_EQ(Written("\xED\xA0\x80\x80"), "\\uDCED\\uDCA0\\uDC80\\uDC80");
    EXPECT_EQ(Written("\xED\xA0\x80\xED\xA0\x81\xFF"), "\\uDCED\\uDCA0\\uDC80\\uDCED\\uDCA0\\uDC81\\uDCFF");
}

}  // namespace
