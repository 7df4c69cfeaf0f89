#include "DatabaseCheck.h"

#include <sqlite3.h>

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "DatabaseSettings.h"
#include "Notes.h"
#include "Text.h"

namespace host {
namespace {

constexpr const char* kChecksumTable = "CREATE TABLE checksum (value INTEGER NOT NULL);";

constexpr const char* kHasChecksum = "SELECT count(*) FROM sqlite_schema WHERE name = 'checksum'";

/// Reading takes about five steps for a byte of the smallest rows.
constexpr std::int64_t kStepsForAByte = 64;
constexpr std::int64_t kStepsForAnyFile = 20'000'000;
constexpr int kStepsBetweenChecks = 100'000;

std::int64_t NumberOf(Database& database, const char* question) {
    Statement statement(database, question);
    return statement.Begin().Next() ? statement.Number(0) : 0;
}

/// The size of the file of a database; that of its pages if it is in memory, as the copy of a file is.
std::int64_t SizeOf(Database& database) {
    sqlite3_file* file = nullptr;
    sqlite3_int64 size = 0;
    if (sqlite3_file_control(database.Handle(), "main", SQLITE_FCNTL_FILE_POINTER,
                             static_cast<void*>(&file)) != SQLITE_OK ||
        file == nullptr || file->pMethods == nullptr) {
        return NumberOf(database, "PRAGMA page_count") * NumberOf(database, "PRAGMA page_size");
    }
    return file->pMethods->xFileSize(file, &size) == SQLITE_OK ? size : 0;
}

/// A table, an index or anything else that a database can have: its type and name, and then the table that it
/// belongs to and the statement that created it.
using SchemaEntry = std::pair<std::pair<std::string, std::string>, std::pair<std::string, std::string>>;

SchemaEntry ReadEntry(const Statement& row) {
    return {{row.Text(0), row.Text(1)}, {row.Text(2), row.Text(3)}};
}

constexpr const char* kSchema = "SELECT type, name, tbl_name, sql FROM sqlite_schema";

/// A table that is missing, or a view or anything else in its place, would otherwise be met by a statement
/// that expects the table.
void CheckTables(Database& database, const std::string& statements) {
    Database model;
    model.Run(statements.c_str());
    std::map<SchemaEntry::first_type, SchemaEntry::second_type> expected;
    Statement ours(model, kSchema);
    ours.Begin();
    while (ours.Next()) {
        expected.insert(ReadEntry(ours));
    }
    Statement theirs(database, kSchema);
    theirs.Begin();
    while (theirs.Next()) {
        const auto [what, definition] = ReadEntry(theirs);
        const auto found = expected.find(what);
        if (found == expected.end()) {
            RefuseForeign("it has the " + Printable(std::string_view(what.first)) + " " +
                          Quoted(what.second) + ", which korvane-json does not create");
        }
        if (found->second != definition) {
            RefuseForeign("the " + what.first + " " + Quoted(what.second) +
                          " is not as korvane-json creates it");
        }
        expected.erase(found);
    }
    if (!expected.empty()) {
        const auto& [type, name] = expected.rbegin()->first;
        RefuseForeign("the " + type + " " + Quoted(name) + " is missing");
    }
    Statement encoding(database, "PRAGMA encoding");
    if (!encoding.Begin().Next() || encoding.Text(0) != "UTF-8") {
        RefuseForeign("its texts are not in UTF-8");
    }
}

void CheckPages(Database& database) {
    Statement check(database, "PRAGMA quick_check(1)");
    if (const std::string result = check.Begin().Next() ? check.Text(0) : ""; result != "ok") {
        RefuseDamaged(Printable(std::string_view(result)));
    }
}

/// Refuses what no reader of a text sees whole, and passes every row on.
class TextCheck final : public RowReader {
public:
    /// `next` may be null.
    explicit TextCheck(RowReader* next) : next_(next) {}

    void Read(std::string_view table, const Row& row) override {
        for (const ColumnValue& value : row) {
            // The object model, and a key in an answer, would keep only what is before it.
            if (value.HasBytes() && value.bytes.find('\0') != std::string_view::npos) {
                RefuseDamaged("a text has a NUL character: " + Excerpt(value.bytes));
            }
        }
        if (next_ != nullptr) {
            next_->Read(table, row);
        }
    }

private:
    RowReader* next_;
};

}  // namespace

ReadingLimits::ReadingLimits(Database& database) : handle_(database.Handle()) {
    const std::int64_t size = SizeOf(database);
    longestValue_ = sqlite3_limit(handle_, SQLITE_LIMIT_LENGTH, -1);
    if (size == 0) {
        return;
    }
    constexpr std::int64_t kLongestOfAnyFile = 1'000'000;
    sqlite3_limit(handle_, SQLITE_LIMIT_LENGTH,
                  static_cast<int>(std::clamp<std::int64_t>(size, kLongestOfAnyFile, longestValue_)));
    stepsLeft_ = size > std::numeric_limits<std::int64_t>::max() / (2 * kStepsForAByte)
                     ? std::numeric_limits<std::int64_t>::max()
                     : kStepsForAnyFile + size * kStepsForAByte;
    sqlite3_progress_handler(handle_, kStepsBetweenChecks, CountSteps, this);
}

ReadingLimits::~ReadingLimits() {
    sqlite3_progress_handler(handle_, 0, nullptr, nullptr);
    sqlite3_limit(handle_, SQLITE_LIMIT_LENGTH, longestValue_);
}

int ReadingLimits::CountSteps(void* limits) {
    auto& self = *static_cast<ReadingLimits*>(limits);
    self.stepsLeft_ -= kStepsBetweenChecks;
    return self.stepsLeft_ < 0 ? 1 : 0;
}

void CheckDatabase(Database& database, const char* tables, CheckDepth depth, RowReader* reader) {
    const bool hasChecksum = NumberOf(database, "PRAGMA user_version") >= kFirstFormatWithChecksum;
    CheckTables(database, std::string(tables) + (hasChecksum ? kChecksumTable : ""));
    EnlargeCache(database.Handle());
    TextCheck check(reader);
    const std::int64_t sum = ChecksumOf(database, SizeOf(database), &check);
    if (hasChecksum && ReadChecksum(database) != sum) {
        RefuseDamaged("its content does not have the checksum that was written with it");
    }
    // After all rows have been read, because SQLite checks pages below each other without a limit of depth.
    if (depth == CheckDepth::ForChanging) {
        CheckPages(database);
    }
}

std::optional<std::int64_t> ReadChecksum(Database& database) {
    if (NumberOf(database, kHasChecksum) == 0) {
        return std::nullopt;
    }
    Statement rows(database, "SELECT value FROM checksum");
    std::optional<std::int64_t> checksum;
    std::size_t count = 0;
    rows.Begin();
    while (rows.Next()) {
        ++count;
        checksum = rows.IsNumber(0) ? std::optional(rows.Number(0)) : std::nullopt;
    }
    return count == 1 ? checksum : std::nullopt;
}

void WriteChecksum(Database& database, const DatabaseKind& kind) {
    WriteChecksum(database, kind, ChecksumOf(database, 0));
}

void WriteChecksum(Database& database, const DatabaseKind& kind, std::int64_t sum) {
    if (NumberOf(database, kHasChecksum) == 0) {
        database.Run(kChecksumTable);
        database.SetKind(kind);
    }
    database.Run("DELETE FROM checksum");
    Statement(database, "INSERT INTO checksum VALUES (?)").Run(sum);
}

}  // namespace host
