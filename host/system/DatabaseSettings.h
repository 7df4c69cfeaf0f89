#pragma once

#include <filesystem>

struct sqlite3;

/// How SQLite is set up for databases that come from anywhere.
namespace host {

/// Switches off everything in SQLite that a database could make run.
void Harden(sqlite3* handle);

/// Whether the header of the file says that the database has a write-ahead log. This program creates none,
/// and SQLite writes files beside such a database even to read it.
bool HasWriteAheadLog(const std::filesystem::path& file);

}  // namespace host
