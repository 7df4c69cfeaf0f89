#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "host/system/Console.h"

/// What the fuzzers of files share: files in memory, and databases whose rows are changed as an input says.

/// A console that says nothing.
host::Console& Silent();

/// The place of a file or folder of this process in memory, so that nothing waits for a disk.
std::filesystem::path PlaceInMemory(const std::string& name);

void WriteBytes(const std::filesystem::path& file, std::string_view bytes);
/// The bytes of the file; none if it is not there.
std::string BytesOf(const std::filesystem::path& file);

/// Removes a database with everything that SQLite keeps beside it.
void RemoveDatabase(const std::filesystem::path& file);

/// The columns of a table; the first one says which row it is. Those that are left over are null.
struct TableColumns {
    const char* name;
    std::array<const char*, 11> columns;
};

/// The statement that changes one row of one of the tables, adds one or deletes some. Values are mostly small
/// numbers, since identifiers, kinds and flags are such; some are of `values`, which are SQL.
std::string ChangeOfRow(FuzzedDataProvider& bytes, std::span<const TableColumns> tables,
                        std::span<const char* const> values = {});
