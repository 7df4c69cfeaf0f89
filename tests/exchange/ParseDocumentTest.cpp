#include <gtest/gtest.h>
#include <korvaneexchange/ParseDocument.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

#if !defined(_WIN32)
#include <sys/stat.h>
#endif

#include "exchange/DocumentFault.h"
#include "support/TemporaryDirectory.h"

using korvane::exchange::DocumentError;
using korvane::exchange::FaultOf;
using korvane::exchange::FaultOfMessage;
using korvane::exchange::ParseDocument;
using korvane::exchange::ReadDocument;

namespace {

constexpr const char* kNoValue = "a value is missing here";
constexpr const char* kAfter = "nothing may follow the value of a document";
constexpr const char* kMemberName = "the name of a member is missing here, in double quotes";
constexpr const char* kInObject = "the text ends inside an object";
constexpr const char* kInString = "the text ends inside a string";
constexpr const char* kControl = "a control character must be escaped in a string";
constexpr const char* kEmpty = "the text is empty: a document is one value";

template <class Read>
std::optional<DocumentError> ErrorOf(const Read& read) {
    try {
        read();
    } catch (const DocumentError& error) {
        return error;
    }
    return std::nullopt;
}

std::string TextOf(const JSONNode& node) {
    const json_string text = node.write();
    return {text.data(), text.size()};
}

}  // namespace

TEST(ParseDocument, GivesTheDocument) {
    EXPECT_EQ(TextOf(ParseDocument(R"( {"id":"1","name":"part","files":[]} )")),
              R"({"id":"1","name":"part","files":[]})");
    EXPECT_EQ(ParseDocument("null").type(), JSON_NULL);
}

TEST(ParseDocument, ReadsNoFurtherThanTheView) {
    EXPECT_EQ(TextOf(ParseDocument(std::string_view("[1]]").substr(0, 3))), "[1]");
    EXPECT_THROW(ParseDocument(std::string_view("[1]").substr(0, 2)), DocumentError);
}

TEST(ParseDocument, LeavesTheTextToItsOwner) {
    std::optional<JSONNode> document;
    {
        const std::string text = R"({"name":"a name that is longer than what fits into a handle"})";
        document = ParseDocument(text);
    }
    EXPECT_EQ(TextOf(*document), R"({"name":"a name that is longer than what fits into a handle"})");
}

TEST(ParseDocument, SaysWhereAndWhatTheFaultIs) {
    const struct {
        std::string text;
        std::size_t line;
        std::size_t column;
        std::size_t offset;
        const char* reason;
    } rows[] = {
        // The first byte, the last one, and the one after it.
        {"x", 1, 1, 0, kNoValue},
        {"]", 1, 1, 0, kNoValue},
        {"{}x", 1, 3, 2, kAfter},
        {"{\"a\":1", 1, 7, 6, kInObject},
        {"\"abc", 1, 5, 4, kInString},
        {"\n\n\"abc", 3, 5, 6, kInString},
        // Lines that end in each of the three ways.
        {"{\r\n\"a\":1,\r\nx}", 3, 1, 11, kMemberName},
        {"{\n\"a\":1,\n  x}", 3, 3, 11, kMemberName},
        {"{\r\"a\":1,\r x}", 3, 2, 10, kMemberName},
        {"[1]\r\n\r\n x", 3, 2, 8, kAfter},
        {"\r\n", 2, 1, 2, kEmpty},
        {"\r", 2, 1, 1, kEmpty},
        {"\"a\r\n\"", 1, 3, 2, kControl},
        // Characters of several bytes: columns and offsets are bytes.
        {"[\"\xC3\xBC\xE6\x97\xA5\xF0\x9F\x9A\x97\" x", 1, 14, 13,
         "a comma or a closing bracket is missing here"},
        {"[\xC3\xBC]", 1, 2, 1, kNoValue},
        {"[1]\xC2\xA0", 1, 4, 3, kAfter},
        {"\xEF\xBB\xBF{}", 1, 1, 0, "a document must not begin with a byte order mark"},
        // No text, and NUL characters.
        {"", 1, 1, 0, kEmpty},
        {" \t\n ", 2, 2, 4, kEmpty},
        {std::string("\0", 1), 1, 1, 0, kNoValue},
        {std::string("{}\0", 3), 1, 3, 2, kAfter},
        {std::string("[\"a\0b\"]", 7), 1, 4, 3, kControl},
        {std::string("[1,\0]", 5), 1, 4, 3, kNoValue},
    };
    for (const auto& row : rows) {
        const auto error = ErrorOf([&] { ParseDocument(row.text); });
        ASSERT_TRUE(error) << testing::PrintToString(row.text);
        EXPECT_EQ(error->Line(), row.line) << testing::PrintToString(row.text);
        EXPECT_EQ(error->Column(), row.column) << testing::PrintToString(row.text);
        EXPECT_EQ(error->Offset(), row.offset) << testing::PrintToString(row.text);
        EXPECT_EQ(error->Reason(), row.reason) << testing::PrintToString(row.text);
        EXPECT_EQ(error->what(), "line " + std::to_string(row.line) + ", column " +
                                     std::to_string(row.column) + ": " + row.reason);
    }
}

TEST(ParseDocument, FindsTheFaultAtTheEndOfALongText) {
    std::string text = "[\n";
    for (int line = 0; line < 200'000; ++line) {
        text += "\"entry\",\r\n";
    }
    text += "  }";
    const auto error = ErrorOf([&] { ParseDocument(text); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Line(), 200'002U);
    EXPECT_EQ(error->Column(), 3U);
    EXPECT_EQ(error->Offset(), text.size() - 1);
    EXPECT_EQ(error->Reason(), kNoValue);
}

TEST(ParseDocument, TakesBytesAsTheyAre) {
    // Longer than needed, cut short, and a surrogate: what they mean is for those who read the texts.
    for (const std::string bytes : {"\xC0\xAF", "\xE0\x80\xAF", "\xE6\x97", "\xED\xA0\x80"}) {
        const json_string text = ParseDocument("[\"" + bytes + "\"]")[0].as_string();
        EXPECT_EQ(std::string(text.data(), text.size()), bytes);
    }
}

TEST(ParseDocument, ReadsAMillionLevels) {
    constexpr std::size_t kLevels = 1'000'000;
    const std::string text = std::string(kLevels, '[') + std::string(kLevels, ']');
    EXPECT_EQ(TextOf(ParseDocument(text)), text);
    const auto error = ErrorOf([&] { ParseDocument(std::string_view(text).substr(0, text.size() - 1)); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Offset(), text.size() - 1);
}

TEST(DocumentError, IsCopiedWhole) {
    const DocumentError error(3, 5, 70, "a reason that does not fit into a short text");
    DocumentError copy(1, 1, 0, "");
    copy = error;
    EXPECT_STREQ(copy.what(), "line 3, column 5: a reason that does not fit into a short text");
    EXPECT_EQ(copy.Line(), 3U);
    EXPECT_EQ(copy.Column(), 5U);
    EXPECT_EQ(copy.Offset(), 70U);
    EXPECT_EQ(copy.Reason(), error.Reason());
    EXPECT_THROW(throw DocumentError(copy), std::runtime_error);
}

TEST(DocumentError, HasWhatTheMessageOfAnotherLibrarySays) {
    const std::string_view text = "{\r\n\"a\":1,\rx}";
    const DocumentError placed = FaultOfMessage("line 3, column 2: no", text);
    EXPECT_EQ(placed.Line(), 3U);
    EXPECT_EQ(placed.Column(), 2U);
    EXPECT_EQ(placed.Offset(), 11U);
    EXPECT_EQ(placed.Reason(), "no");
    EXPECT_STREQ(placed.what(), "line 3, column 2: no");
    EXPECT_EQ(FaultOfMessage("line 1, column 1: no", text).Offset(), 0U);
    EXPECT_EQ(FaultOfMessage("line 1, column 1: no", text).Line(), 1U);
    EXPECT_EQ(FaultOfMessage("line 1, column 1: no", text).Column(), 1U);
    EXPECT_EQ(FaultOfMessage("line 3, column 1: no", "\n\r").Offset(), 2U);
    EXPECT_EQ(FaultOfMessage("line 9, column 1: no", "\n\r").Offset(), 2U);
    EXPECT_EQ(FaultOfMessage("line 2, column 99: no", text).Offset(), text.size());
    EXPECT_EQ(FaultOfMessage("line 2, column 18446744073709551615: no", text).Offset(), text.size());
    EXPECT_EQ(FaultOf(std::invalid_argument("line 2, column 2: no"), text).Offset(), 4U);

    for (const char* const message :
         {"", "not JSON", "line 3: no", "line 3, column 2", "line x, column 2: no", "line 3, column : no",
          "line 0, column 2: no", "line 3, column 0: no", "Line 3, column 2: no", "line 3; column 2: no",
          "line 99999999999999999999, column 2: no"}) {
        const DocumentError error = FaultOfMessage(message, text);
        EXPECT_EQ(error.Line(), 0U) << message;
        EXPECT_EQ(error.Column(), 0U) << message;
        EXPECT_EQ(error.Offset(), 0U) << message;
        EXPECT_EQ(error.Reason(), message);
        EXPECT_STREQ(error.what(), message);
    }
}

TEST(ReadDocument, GivesTheDocumentInTheFile) {
    const TemporaryDirectory directory;
    const std::string text = R"({"name":")" + std::string(200'000, 'x') + R"("})";
    EXPECT_EQ(TextOf(ReadDocument(directory.Write("Pr\xC3\xBC"
                                                  "fstand \xE6\x97\xA5.json",
                                                  text + "\r\n"))),
              text);
}

TEST(ReadDocument, SaysWhereTheFaultIs) {
    const TemporaryDirectory directory;
    const std::filesystem::path file = directory.Write("broken.json", "{\r\n  \"a\" 1\r\n}");
    const auto error = ErrorOf([&] { ReadDocument(file); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Line(), 2U);
    EXPECT_EQ(error->Column(), 7U);
    EXPECT_EQ(error->Offset(), 9U);
    const std::filesystem::path empty = directory.Write("empty.json", "");
    EXPECT_EQ(ErrorOf([&] { ReadDocument(empty); })->Reason(), kEmpty);
}

#if !defined(_WIN32)
TEST(ReadDocument, ReadsAPipeToItsEnd) {
    const TemporaryDirectory directory;
    const std::filesystem::path pipe = directory / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const std::string text = "[\"" + std::string(300'000, 'x') + "\"]";
    std::thread writer([&] { std::ofstream(pipe, std::ios::binary) << text; });
    EXPECT_EQ(TextOf(ReadDocument(pipe)), text);
    writer.join();
}
#endif

#if defined(__linux__)
TEST(ReadDocument, ThrowsForAFileThatIsOpenedAndNotRead) {
    // There is nothing at the address 0.
    EXPECT_THROW(ReadDocument("/proc/self/mem"), std::filesystem::filesystem_error);
}
#endif

TEST(ReadDocument, ThrowsForAFileThatCannotBeRead) {
    const TemporaryDirectory directory;
    for (const std::filesystem::path& file :
         {directory / "missing.json", directory.MakeDirectory("folder")}) {
        try {
            ReadDocument(file);
            ADD_FAILURE() << file;
        } catch (const std::filesystem::filesystem_error& error) {
            EXPECT_EQ(error.path1(), file);
            EXPECT_NE(std::string(error.what()).find("cannot read the document"), std::string::npos);
            EXPECT_TRUE(error.code() == std::errc::no_such_file_or_directory ||
                        error.code() == std::errc::is_a_directory)
                << error.what();
        }
    }
}
