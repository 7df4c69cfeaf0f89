#pragma once

#include <CAEProject.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <unordered_set>

#include "host/system/Console.h"
#include "host/system/Database.h"
#include "host/system/DatabaseCheck.h"

/// The tables of a project file; writing a project to them, and reading it.
namespace host {

/// "KvPr" as a number.
inline constexpr DatabaseKind kProjectFileKind = {0x4B765072, 3, "project file"};

/// The first format that has the table "place".
inline constexpr std::int32_t kFirstFormatWithPlaces = 3;

/// Whether the tables are of a format that has the table "place".
bool HasPlaces(Database& database);
void CreatePlaceTable(Database& database);

/// Creates the tables, empty. They are complete when a project has been written to them.
void CreateProjectTables(Database& database);

/// Throws DatabaseError unless the database has exactly these tables, undamaged.
void CheckProjectTables(Database& database, CheckDepth depth);

/// What is written of a project, and where.
struct ProjectWriting {
    CAEProject& project;
    /// The file that the tables are in, or will be in.
    std::filesystem::path file;
    /// The identifiers of files that are left out. No object has them attached, and nothing is below them.
    std::unordered_set<int> leftOut = {};
};

/// Replaces everything in the tables by the project, and makes tables of an older format those of the newest.
/// The caller has begun a transaction.
void WriteProjectTables(Database& database, const ProjectWriting& writing, Console& console);

/// The same if only keys of objects and display names of projects have changed since the project was read
/// from these tables: only the rows that they change are written.
void UpdateProjectTables(Database& database, const ProjectWriting& writing, Console& console);

/// Creates the project that the tables hold, which have been checked. Throws DatabaseError if they do not
/// hold one, for example because an object has an unknown parent, identifier or kind. Directories are where
/// they are now (ProjectFile.h); `file` is the file of the tables.
std::unique_ptr<CAEProject> ReadProjectTables(Database& database, const std::filesystem::path& file,
                                              Console& console);

}  // namespace host
