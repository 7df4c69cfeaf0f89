#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

struct sqlite3;
struct sqlite3_stmt;

/// SQLite 3 as the host uses it: databases, prepared statements and transactions. Texts are bytes and come
/// back as they went in, UTF-8 or not.
namespace host {

/// Why a database could not be used, in words that follow its name: "is in use by another program".
class DatabaseError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Whether the file begins as SQLite databases do. False, with the reason, for one that cannot be read.
bool IsDatabaseFile(const std::filesystem::path& file, std::error_code& error);

/// What a database is opened for.
enum class DatabaseUse { Reading, Changing, Creating };

/// Whose a database is, as it stands in its header.
struct DatabaseKind {
    /// The application's number.
    std::int32_t application;
    /// The newest format that is read; formats count from 1.
    std::int32_t format;
    /// What it is called in messages: "project file".
    std::string_view name;
};

/// A connection to a database; it waits a few seconds for other programs that use it. Every operation throws
/// DatabaseError.
class Database {
public:
    /// A database in memory, gone with the object.
    Database();
    /// Opens a database of the kind. One that is not there, or an empty file, is made when it is opened for
    /// creating; it is of no kind then until SetKind says so. A file that is no database, or one of another
    /// kind or of a newer format, is refused. What is read through a database that was opened for reading is
    /// of one moment: other programs change nothing from the first reading until the object is gone.
    Database(const std::filesystem::path& file, DatabaseUse use, const DatabaseKind& kind);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /// Runs statements that have no parameters and no result.
    void Run(const char* statements);
    void SetKind(const DatabaseKind& kind);
    /// Takes over the whole content of the other database.
    void CopyFrom(Database& other);
    sqlite3* Handle() const { return handle_; }

private:
    void CheckKind(const DatabaseKind& kind);
    std::int64_t ReadNumber(const char* question);

    sqlite3* handle_ = nullptr;
};

/// A prepared statement; it must not outlive its database.
class Statement {
public:
    Statement(Database& database, const char* text);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// Begins anew with the values for the parameters, in their order. Texts must stay until the rows have
    /// been read. An empty optional is NULL.
    template <typename... Values>
    Statement& Begin(const Values&... values) {
        Reset();
        int index = 0;
        (Bind(++index, values), ...);
        return *this;
    }
    /// Goes to the next row; false behind the last.
    bool Next();
    /// Runs it with the values to its end; a result is dropped.
    template <typename... Values>
    void Run(const Values&... values) {
        Begin(values...);
        while (Next()) {
        }
        Reset();
    }
    /// Ends the reading of rows.
    void Reset();

    /// The columns of the present row, counted from 0.
    std::int64_t Number(int column) const;
    bool IsNull(int column) const;
    std::string Text(int column) const;

private:
    void Bind(int index, std::int64_t value);
    void Bind(int index, int value) { Bind(index, std::int64_t{value}); }
    void Bind(int index, bool value) { Bind(index, std::int64_t{value ? 1 : 0}); }
    void Bind(int index, std::string_view value);
    void Bind(int index, const std::string& value) { Bind(index, std::string_view(value)); }
    void Bind(int index, const char* value) { Bind(index, std::string_view(value)); }
    void Bind(int index, const std::optional<std::int64_t>& value);

    sqlite3* database_;
    sqlite3_stmt* statement_ = nullptr;
};

/// A transaction for writing, which no other program shares. What was not committed at its end is undone.
class Transaction {
public:
    explicit Transaction(Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void Commit();

private:
    Database& database_;
    bool isOpen_ = true;
};

}  // namespace host
