#pragma once

#include <cstdint>
#include <optional>

#include "Database.h"
#include "DatabaseChecksum.h"

/// Databases come from anywhere, and disks fail: nothing in a database may run, and damage must not pass as
/// sound content.
namespace host {

/// Both kinds of databases have a checksum since this format. What older formats hold is read without one.
inline constexpr std::int32_t kFirstFormatWithChecksum = 2;

/// While this object exists, reading a database of a file takes at most a number of steps, and values of a
/// size, that follow from the size of the file: a file in which pages refer to each other in circles would
/// otherwise be read without an end.
class ReadingLimits {
public:
    explicit ReadingLimits(Database& database);
    ~ReadingLimits();
    ReadingLimits(const ReadingLimits&) = delete;
    ReadingLimits& operator=(const ReadingLimits&) = delete;

private:
    static int CountSteps(void* limits);

    sqlite3* handle_;
    std::int64_t stepsLeft_ = 0;
    int longestValue_ = 0;
};

/// What a database is checked for.
enum class CheckDepth {
    /// The tables, their rows and indexes, and the checksum.
    ForReading,
    /// These, and how the pages of the file are used, so that writing damages nothing.
    ForChanging,
};

/// Throws DatabaseError unless the database has exactly the tables and indexes that the statements create,
/// every index has the rows of its table, no text has a NUL character, and the rows have the checksum that
/// was written with them. The caller has begun a transaction. Every row is read once, and once again for each
/// index. `reader` gets every row; it may be null.
void CheckDatabase(Database& database, const char* tables, CheckDepth depth, RowReader* reader = nullptr);

/// The checksum in the database; nothing if it has none, as in older formats.
std::optional<std::int64_t> ReadChecksum(Database& database);

/// Writes the checksum of all rows, which is the last thing before a commit: the sum over the rows if the
/// caller has added it up (CheckedInsert.h), or else that of the rows as they are read again. A database of a
/// format without checksum gets the format of the kind.
void WriteChecksum(Database& database, const DatabaseKind& kind);
void WriteChecksum(Database& database, const DatabaseKind& kind, std::int64_t sum);

}  // namespace host
