#include <sqlite3.h>

#include <new>

#include "Database.h"
#include "SqliteStatus.h"

namespace host {

Statement::Statement(Database& database, const char* text) : database_(database.Handle()) {
    Check(database_,
          sqlite3_prepare_v3(database_, text, -1, SQLITE_PREPARE_PERSISTENT, &statement_, nullptr));
}

Statement::~Statement() {
    sqlite3_finalize(statement_);
}

bool Statement::Next() {
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        Fail(database_, code);
    }
    return code == SQLITE_ROW;
}

void Statement::Reset() {
    // It returns the error of the last step, which was reported then.
    sqlite3_reset(statement_);
}

std::int64_t Statement::Number(int column) const {
    return sqlite3_column_int64(statement_, column);
}

bool Statement::IsNull(int column) const {
    return sqlite3_column_type(statement_, column) == SQLITE_NULL;
}

bool Statement::IsNumber(int column) const {
    return sqlite3_column_type(statement_, column) == SQLITE_INTEGER;
}

bool Statement::IsText(int column) const {
    return sqlite3_column_type(statement_, column) == SQLITE_TEXT;
}

std::string Statement::Text(int column) const {
    return std::string(TextView(column));
}

std::string_view Statement::TextView(int column) const {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    if (text == nullptr && sqlite3_errcode(database_) == SQLITE_NOMEM) {
        throw std::bad_alloc();
    }
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
    return text != nullptr ? std::string_view(text, size) : std::string_view("");
}

void Statement::Bind(int index, std::int64_t value) {
    Check(database_, sqlite3_bind_int64(statement_, index, value));
}

void Statement::Bind(int index, std::string_view value) {
    const char* const text = value.data() != nullptr ? value.data() : "";
    Check(database_, sqlite3_bind_text64(statement_, index, text, value.size(), SQLITE_STATIC, SQLITE_UTF8));
}

void Statement::Bind(int index, const std::optional<std::int64_t>& value) {
    if (value) {
        Bind(index, *value);
    } else {
        Check(database_, sqlite3_bind_null(statement_, index));
    }
}

}  // namespace host
