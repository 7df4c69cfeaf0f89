#pragma once

struct sqlite3;

namespace host {

/// Throws the DatabaseError, or std::bad_alloc, for a result code of SQLite. The connection may be null.
[[noreturn]] void Fail(sqlite3* handle, int code);

/// The same unless the code is SQLITE_OK.
void Check(sqlite3* handle, int code);

}  // namespace host
