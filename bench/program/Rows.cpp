#include "Rows.h"

#include <sqlite3.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace bench {
namespace {

void Check(sqlite3* handle, int code) {
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE) {
        throw std::runtime_error(sqlite3_errmsg(handle));
    }
}

using Prepared = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

Prepared Prepare(const Connection& connection, const std::string& text) {
    sqlite3_stmt* statement = nullptr;
    Check(connection.Handle(),
          sqlite3_prepare_v2(connection.Handle(), text.c_str(), -1, &statement, nullptr));
    return {statement, sqlite3_finalize};
}

bool Next(const Connection& connection, const Prepared& statement) {
    const int code = sqlite3_step(statement.get());
    Check(connection.Handle(), code);
    return code == SQLITE_ROW;
}

std::string TextOf(const Prepared& statement, int column) {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), column));
    return text == nullptr ? std::string() : text;
}

void Load(const Connection& connection, Table& table) {
    const Prepared rows = Prepare(connection, "SELECT * FROM " + table.name);
    table.columns = sqlite3_column_count(rows.get());
    while (Next(connection, rows)) {
        for (int column = 0; column < table.columns; ++column) {
            Value value;
            value.type = sqlite3_column_type(rows.get(), column);
            if (value.type == SQLITE_TEXT) {
                const auto* const text =
                    reinterpret_cast<const char*>(sqlite3_column_text(rows.get(), column));
                value.size = static_cast<std::size_t>(sqlite3_column_bytes(rows.get(), column));
                value.number = static_cast<std::int64_t>(table.bytes.size());
                table.bytes.append(text, value.size);
            } else {
                value.number = sqlite3_column_int64(rows.get(), column);
            }
            table.values.push_back(value);
        }
    }
}

void Write(const Connection& connection, const Table& table) {
    std::string parameters = "?";
    for (int column = 1; column < table.columns; ++column) {
        parameters += ", ?";
    }
    const Prepared insert = Prepare(connection, "INSERT INTO " + table.name + " VALUES (" + parameters + ")");
    const auto columns = static_cast<std::size_t>(table.columns);
    for (std::size_t first = 0; first < table.values.size(); first += columns) {
        for (std::size_t column = 0; column < columns; ++column) {
            const Value& value = table.values[first + column];
            const int index = static_cast<int>(column) + 1;
            if (value.type == SQLITE_TEXT) {
                const std::string_view text = table.TextOf(value);
                sqlite3_bind_text64(insert.get(), index, text.data(), text.size(), SQLITE_STATIC,
                                    SQLITE_UTF8);
            } else if (value.type == SQLITE_INTEGER) {
                sqlite3_bind_int64(insert.get(), index, value.number);
            } else {
                sqlite3_bind_null(insert.get(), index);
            }
        }
        Next(connection, insert);
        Check(connection.Handle(), sqlite3_reset(insert.get()));
    }
}

bool IsSame(const Table& first, const Table& second) {
    const auto isSame = [&](const Value& left, const Value& right) {
        return left.type == right.type &&
               (left.type == SQLITE_TEXT ? first.TextOf(left) == second.TextOf(right)
                                         : left.number == right.number);
    };
    return first.columns == second.columns && std::ranges::equal(first.values, second.values, isSame);
}

}  // namespace

Connection::Connection(const std::string& file) {
    Check(handle_, sqlite3_open(file.c_str(), &handle_));
}

Connection::~Connection() {
    sqlite3_close(handle_);
}

void Connection::Run(const std::string& statements) {
    Check(handle_, sqlite3_exec(handle_, statements.c_str(), nullptr, nullptr, nullptr));
}

std::int64_t Connection::Number(const std::string& query) const {
    const Prepared rows = Prepare(*this, query);
    Next(*this, rows);
    return sqlite3_column_int64(rows.get(), 0);
}

Rows LoadRows(const std::string& file) {
    const Connection connection(file);
    Rows rows;
    for (const char* const name : {"application_id", "user_version"}) {
        const Prepared pragma = Prepare(connection, std::string("PRAGMA ") + name);
        Next(connection, pragma);
        rows.kind += std::string("PRAGMA ") + name + " = " + TextOf(pragma, 0) + ";";
    }
    const Prepared schema =
        Prepare(connection, "SELECT type, name, sql FROM sqlite_schema WHERE sql IS NOT NULL");
    while (Next(connection, schema)) {
        if (TextOf(schema, 0) == "table") {
            rows.tables.push_back({TextOf(schema, 1), TextOf(schema, 2), 0, {}, {}});
        } else {
            rows.indexes.push_back(TextOf(schema, 2));
        }
    }
    for (Table& table : rows.tables) {
        Load(connection, table);
    }
    return rows;
}

void WriteRows(const Rows& rows, const std::string& file) {
    Connection connection(file);
    connection.Run("BEGIN IMMEDIATE;" + rows.kind);
    for (const Table& table : rows.tables) {
        connection.Run(table.definition);
    }
    for (const Table& table : rows.tables) {
        Write(connection, table);
    }
    for (const std::string& index : rows.indexes) {
        connection.Run(index);
    }
    connection.Run("COMMIT");
}

std::size_t ReadRows(const std::string& file, const std::vector<std::string>& tables) {
    const Connection connection(file);
    std::size_t count = 0;
    std::int64_t sum = 0;
    for (const std::string& table : tables) {
        const Prepared rows = Prepare(connection, "SELECT * FROM " + table);
        const int columns = sqlite3_column_count(rows.get());
        for (; Next(connection, rows); ++count) {
            for (int column = 0; column < columns; ++column) {
                if (sqlite3_column_type(rows.get(), column) == SQLITE_TEXT) {
                    sum += *sqlite3_column_text(rows.get(), column);
                    sum += sqlite3_column_bytes(rows.get(), column);
                } else {
                    sum += sqlite3_column_int64(rows.get(), column);
                }
            }
        }
    }
    if (sum == 0) {
        throw std::runtime_error("there is nothing in " + file);
    }
    return count;
}

void UpdateKeys(const std::string& file, const std::vector<std::pair<std::int64_t, std::string>>& keys) {
    Connection connection(file);
    connection.Run("BEGIN IMMEDIATE");
    {
        const Prepared update = Prepare(connection, "UPDATE object SET database_key = ? WHERE id = ?");
        for (const auto& [id, key] : keys) {
            sqlite3_bind_text64(update.get(), 1, key.data(), key.size(), SQLITE_STATIC, SQLITE_UTF8);
            sqlite3_bind_int64(update.get(), 2, id);
            Next(connection, update);
            Check(connection.Handle(), sqlite3_reset(update.get()));
        }
    }
    connection.Run("COMMIT");
}

std::string DifferenceOf(const Rows& first, const Rows& second) {
    if (first.tables.size() != second.tables.size()) {
        return "the number of tables";
    }
    for (std::size_t index = 0; index < first.tables.size(); ++index) {
        const Table& table = first.tables[index];
        const auto other = std::ranges::find(second.tables, table.name, &Table::name);
        if (other == second.tables.end()) {
            return "the table " + table.name;
        }
        if (table.name != "checksum" && !IsSame(table, *other)) {
            return "the rows of " + table.name + ", " + std::to_string(table.RowCount()) + " and " +
                   std::to_string(other->RowCount());
        }
    }
    return {};
}

}  // namespace bench
