#pragma once

#include <filesystem>
#include <string>

/// The file that SQLite keeps beside a database while it changes it: its journal, from which a change that
/// was not finished is undone. It has the name of the database and "-journal" at the end.
namespace host {

/// The name of the file as SQLite expects it. It is always a name of a file, though SQLite gives some names
/// another meaning.
std::string SqliteName(const std::filesystem::path& file);

/// The path of the journal. SQLite keeps it beside the file itself, not beside a link to it.
std::filesystem::path JournalOf(const std::filesystem::path& database);

/// Throws DatabaseError if the database has a journal that this program never writes: one that names a
/// super-journal, since SQLite deletes the file with that name, whatever it is; or one of a database with
/// more pages than both files have, since SQLite would make the file that large.
void RefuseForeignJournal(const std::filesystem::path& database);

/// Whether the file is what the interrupted creation of a database leaves: zeros, and a journal from which
/// SQLite makes it empty again.
bool IsInterruptedCreation(const std::filesystem::path& file);

/// Throws DatabaseError if the name or the path of the database is so long that its journal cannot be
/// created.
void RefuseLongName(const std::filesystem::path& database);

/// Throws DatabaseError if a journal is left over from an older database of this name, which does not exist
/// any more: SQLite would take it for that of a new one.
void RefuseLeftoverJournal(const std::filesystem::path& database);

/// Whether the database has a journal from which SQLite undoes a change when it reads the database. That may
/// also be the journal of a change that another program is making.
bool HasHotJournal(const std::filesystem::path& database);

}  // namespace host
