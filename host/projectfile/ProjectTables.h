#pragma once

#include <CAEProject.h>

#include <memory>

#include "host/system/Console.h"
#include "host/system/Database.h"

/// The tables of a project file, and the way of a project into and out of them.
namespace host {

/// "KvPr" as a number.
inline constexpr DatabaseKind kProjectFileKind = {0x4B765072, 1, "project file"};

/// Makes the tables, empty.
void CreateProjectTables(Database& database);

/// Puts the project in place of everything in the tables. The caller has begun a transaction.
void WriteProjectTables(Database& database, CAEProject& project, Console& console);

/// Makes the project that the tables hold. Throws DatabaseError where they hold none: an object hangs below
/// one that is not there, an identifier or a kind is none.
std::unique_ptr<CAEProject> ReadProjectTables(Database& database, Console& console);

}  // namespace host
