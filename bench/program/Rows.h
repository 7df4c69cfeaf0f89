#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct sqlite3;

namespace bench {

/// A connection to a database, with SQLite as it is set up by default. Everything throws
/// std::runtime_error.
class Connection {
public:
    explicit Connection(const std::string& file);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    void Run(const std::string& statements);
    /// The number in the first row of a query.
    std::int64_t Number(const std::string& query) const;
    sqlite3* Handle() const { return handle_; }

private:
    sqlite3* handle_ = nullptr;
};

/// A value of a row: a number or null, or a text in the bytes of its table.
struct Value {
    int type = 0;
    std::int64_t number = 0;
    std::size_t size = 0;
};

struct Table {
    std::string name;
    std::string definition;
    int columns = 0;
    std::vector<Value> values;
    std::string bytes;

    std::size_t RowCount() const {
        return columns == 0 ? 0 : values.size() / static_cast<std::size_t>(columns);
    }
    std::string_view TextOf(const Value& value) const { return {bytes.data() + value.number, value.size}; }
};

/// What a database has in it.
struct Rows {
    std::string kind;
    std::vector<Table> tables;
    std::vector<std::string> indexes;
};

Rows LoadRows(const std::string& file);

/// Writes the rows to a new database, in one transaction, the indexes last.
void WriteRows(const Rows& rows, const std::string& file);

/// Reads every value of the tables, and returns the number of rows.
std::size_t ReadRows(const std::string& file, const std::vector<std::string>& tables);

/// Sets the keys of these objects in a project file, in one transaction.
void UpdateKeys(const std::string& file, const std::vector<std::pair<std::int64_t, std::string>>& keys);

/// What differs between the rows of two databases; empty if nothing does. The table "checksum" is left out.
std::string DifferenceOf(const Rows& first, const Rows& second);

}  // namespace bench
