#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "host/system/CheckedInsert.h"
#include "host/system/Database.h"
#include "host/system/DatabaseChecksum.h"
#include "host/system/RowHash.h"

namespace host {
namespace {

/// The same hash in the plainest way: a byte after the other.
class PlainHash {
public:
    void Add(std::string_view bytes) {
        for (const char byte : bytes) {
            hash_ = (hash_ ^ static_cast<unsigned char>(byte)) * RowHash::kPrime;
        }
    }
    void Add(std::uint64_t number) {
        for (int index = 0; index < 8; ++index) {
            Add(std::string_view(std::string(1, static_cast<char>(number >> (8 * index)))));
        }
    }
    std::uint64_t Value() const {
        std::uint64_t value = hash_;
        value = (value ^ (value >> 32U)) * RowHash::kPrime;
        value = (value ^ (value >> 29U)) * RowHash::kPrime;
        return value ^ (value >> 32U);
    }

private:
    std::uint64_t hash_ = 0xCBF29CE484222325;
};

constexpr std::uint64_t kNumber = 1;
constexpr std::uint64_t kText = 3;
constexpr std::uint64_t kNull = 5;

const std::vector<std::int64_t> kNumbers = {0,
                                            1,
                                            -1,
                                            255,
                                            256,
                                            65'536,
                                            0x0100'0000'0000'0001,
                                            std::numeric_limits<std::int64_t>::min(),
                                            std::numeric_limits<std::int64_t>::max()};

std::string LongText(std::size_t size) {
    std::string text;
    while (text.size() < size) {
        text += static_cast<char>(text.size() * 7 % 256);
    }
    return text;
}

TEST(RowHashTest, SumsAreThoseOfTheBytesOneAfterAnother) {
    RowSum sum;
    std::uint64_t expected = 0;
    // More rows than are hashed together, and texts around the lengths at which rows begin and cease to wait.
    for (const std::size_t size : {0U, 1U, 63U, 64U, 65U, 300U, 1000U, 65'535U, 65'536U, 65'537U, 100'000U}) {
        for (const std::int64_t number : kNumbers) {
            const std::string first = LongText(size);
            const std::string second = LongText(size / 2);
            sum.Begin("table");
            sum.Add(number);
            sum.Add(std::string_view(first));
            sum.Add(nullptr);
            sum.Add(std::string_view(second));
            sum.Add(number);
            sum.End();
            PlainHash plain;
            plain.Add(std::string_view("table"));
            plain.Add(kNumber);
            plain.Add(static_cast<std::uint64_t>(number));
            plain.Add(kText);
            plain.Add(std::uint64_t{first.size()});
            plain.Add(std::string_view(first));
            plain.Add(kNull);
            plain.Add(kText);
            plain.Add(std::uint64_t{second.size()});
            plain.Add(std::string_view(second));
            plain.Add(kNumber);
            plain.Add(static_cast<std::uint64_t>(number));
            expected += plain.Value();
        }
    }
    EXPECT_EQ(sum.Value(), expected);
    EXPECT_EQ(sum.Value(), expected);
}

TEST(RowHashTest, RowsThatAreInsertedHaveTheSumThatIsReadAgain) {
    Database database;
    database.Run(
        "CREATE TABLE indexed (number INTEGER PRIMARY KEY, text TEXT NOT NULL UNIQUE, above INTEGER);"
        "CREATE TABLE plain (object INTEGER, position INTEGER, flag INTEGER, text TEXT,"
        " PRIMARY KEY (object, position)) WITHOUT ROWID");
    RowSum sum;
    {
        CheckedInsert indexed(database, "indexed", 3, true, sum);
        CheckedInsert plain(database, "plain", 4, false, sum);
        for (int row = 0; row < 100; ++row) {
            const std::string text = LongText(static_cast<std::size_t>(row) * 5) + std::to_string(row);
            const std::optional<std::int64_t> above =
                row == 0 ? std::nullopt : std::optional<std::int64_t>(row - 1);
            indexed.Run(std::int64_t{row} * 1000, text, above);
            plain.Run(row, -row, row % 2 == 0, text.c_str());
        }
    }
    EXPECT_EQ(static_cast<std::int64_t>(sum.Value()), ChecksumOf(database, 0));
}

}  // namespace
}  // namespace host
