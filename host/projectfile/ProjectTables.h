#pragma once

#include <CAEProject.h>

#include <memory>

#include "host/system/Console.h"
#include "host/system/Database.h"
#include "host/system/DatabaseCheck.h"

/// The tables of a project file; writing a project to them, and reading it.
namespace host {

/// "KvPr" as a number.
inline constexpr DatabaseKind kProjectFileKind = {0x4B765072, 2, "project file"};

/// Creates the tables, empty. They are complete when a project has been written to them.
void CreateProjectTables(Database& database);

/// Throws DatabaseError unless the database has exactly these tables, undamaged.
void CheckProjectTables(Database& database, CheckDepth depth);

/// Replaces everything in the tables by the project. The caller has begun a transaction.
void WriteProjectTables(Database& database, CAEProject& project, Console& console);

/// The same if only keys of objects and display names of projects have changed since the project was read
/// from these tables: only the rows that they change are written.
void UpdateProjectTables(Database& database, CAEProject& project, Console& console);

/// Creates the project that the tables hold, which have been checked. Throws DatabaseError if they do not
/// hold one, for example because an object has an unknown parent, identifier or kind.
std::unique_ptr<CAEProject> ReadProjectTables(Database& database, Console& console);

}  // namespace host
