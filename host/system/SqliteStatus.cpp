#include "SqliteStatus.h"

#include <sqlite3.h>

#include <new>
#include <string>
#include <system_error>

#include "DatabaseError.h"
#include "SqliteMemory.h"

namespace host {
namespace {

std::error_code SystemError(sqlite3* handle) {
    return {handle != nullptr ? sqlite3_system_errno(handle) : 0, std::system_category()};
}

bool LacksDescriptors(std::error_code error) {
    return error == std::errc::too_many_files_open || error == std::errc::too_many_files_open_in_system;
}

}  // namespace

void Fail(sqlite3* handle, int code) {
    switch (code & 0xFF) {
        case SQLITE_NOTADB:
            throw DatabaseError("is not a SQLite database");
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            throw DatabaseError("is in use by another program: try again when that program has finished");
        case SQLITE_CORRUPT:
            RefuseDamaged("its pages do not fit together");
        case SQLITE_READONLY:
            throw DatabaseError(
                code == SQLITE_READONLY_ROLLBACK
                    ? "has a change that was not finished, and is read-only, so that the change "
                      "cannot be undone: make the file and its directory writable"
                    : "is read-only: make it writable");
        case SQLITE_CANTOPEN:
            if (const std::error_code error = SystemError(handle); LacksDescriptors(error)) {
                throw DatabaseError("cannot be opened or created: " + error.message());
            }
            throw DatabaseError("cannot be opened or created: its directory must exist and be writable");
        case SQLITE_FULL:
            throw DatabaseError("cannot be written, because the disk is full: free some space");
        case SQLITE_NOMEM:
            if (!HasSqliteLackedMemory()) {
                RefuseDamaged("a record in it has no possible length");
            }
            throw std::bad_alloc();
        case SQLITE_INTERRUPT:
            // Only ReadingLimits (DatabaseCheck.h) interrupt.
            RefuseDamaged("reading it does not come to an end");
        case SQLITE_ERROR:
            // The statements are right, so something that they expect in the database is not there.
            RefuseForeign(handle != nullptr ? sqlite3_errmsg(handle) : sqlite3_errstr(code));
        default:
            throw DatabaseError(std::string("cannot be used: ") +
                                (handle != nullptr ? sqlite3_errmsg(handle) : sqlite3_errstr(code)));
    }
}

void Check(sqlite3* handle, int code) {
    if (code != SQLITE_OK) {
        Fail(handle, code);
    }
}

}  // namespace host
