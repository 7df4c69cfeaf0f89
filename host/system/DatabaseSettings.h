#pragma once

#include <filesystem>

struct sqlite3;

/// How SQLite is set up for databases that come from anywhere.
namespace host {

/// Switches off what SQLite would count about its memory, with a lock for every block, and has it watched
/// (SqliteMemory.h). It must be called before the first database is opened; later it does nothing.
void SetUpSqlite();

/// Switches off everything in SQLite that a database could make run.
void Harden(sqlite3* handle);

/// Makes room for the pages that the indexes of a million objects change at once; SQLite takes memory only
/// for pages that are used. Whoever has set another size for all databases keeps it. Works without, if it
/// fails.
void EnlargeCache(sqlite3* handle);

/// Whether the header of the file says that the database has a write-ahead log. This program creates none,
/// and SQLite writes files beside such a database even to read it.
bool HasWriteAheadLog(const std::filesystem::path& file);

}  // namespace host
