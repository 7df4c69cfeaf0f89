#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "DatabaseError.h"

struct sqlite3;
struct sqlite3_stmt;

/// SQLite 3: databases, prepared statements and transactions. Texts are bytes, UTF-8 or not, and are read as
/// they were written.
namespace host {

/// Whether the file begins as SQLite databases do. If it cannot be read, returns false and the reason.
bool IsDatabaseFile(const std::filesystem::path& file, std::error_code& error);

/// What a database is opened for.
enum class DatabaseUse { Reading, Changing, Creating };

/// The kind of a database, which its header shows.
struct DatabaseKind {
    /// The number of the application.
    std::int32_t application;
    /// The newest format that can be read; formats are numbered from 1.
    std::int32_t format;
    /// What messages call it: "project file".
    std::string_view name;
};

/// A connection to a database. It waits a few seconds for other programs that use it. Every operation throws
/// DatabaseError.
class Database {
public:
    /// A database in memory.
    Database();
    /// Opens a database of the kind. With DatabaseUse::Creating, a missing or empty file becomes a new
    /// database, which has no kind until SetKind is called. Throws if the file is not a database, or one of
    /// another kind or of a newer format. With DatabaseUse::Reading, everything is read as of one moment:
    /// other programs change nothing from the first reading on until this object is destroyed.
    Database(const std::filesystem::path& file, DatabaseUse use, const DatabaseKind& kind);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /// Runs statements that have no parameters and no result.
    void Run(const char* statements);
    void SetKind(const DatabaseKind& kind);
    /// Copies everything from the other database.
    void CopyFrom(Database& other);
    sqlite3* Handle() const { return handle_; }

private:
    friend class Transaction;

    void CheckKind(const DatabaseKind& kind);
    std::int64_t ReadNumber(const char* question);
    /// The number that SQLite raises with every change; nothing if it cannot be read.
    std::optional<std::uint32_t> ReadChangeCounter();
    /// Ends the transaction, if one is open, and undoes what a failure has left in the file.
    bool Undo() noexcept;

    std::filesystem::path file_;
    sqlite3* handle_ = nullptr;
};

/// A prepared statement; it must not outlive its database.
class Statement {
public:
    Statement(Database& database, const char* text);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// Starts with these values for the parameters, in their order. Texts must live until the rows have been
    /// read. An empty optional is NULL.
    template <typename... Values>
    Statement& Begin(const Values&... values) {
        Reset();
        int index = 0;
        (Bind(++index, values), ...);
        return *this;
    }
    /// Goes to the next row; returns false after the last.
    bool Next();
    /// Runs it to its end with these values, and ignores the rows.
    template <typename... Values>
    void Run(const Values&... values) {
        Begin(values...);
        while (Next()) {
        }
        Reset();
    }
    /// Ends the reading of rows.
    void Reset();

    /// The columns of the current row, counted from 0.
    std::int64_t Number(int column) const;
    bool IsNull(int column) const;
    bool IsNumber(int column) const;
    bool IsText(int column) const;
    std::string Text(int column) const;
    /// The same without a copy: it is there until the next row, and has a NUL after its end.
    std::string_view TextView(int column) const;
    sqlite3_stmt* Handle() const { return statement_; }

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

/// A transaction for writing. What is not complete when it is destroyed is undone.
class Transaction {
public:
    explicit Transaction(Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    /// Does the work and commits it. If that fails, it is undone; a DatabaseError says what remains.
    void Complete(const std::function<void()>& work);

private:
    Remains UndoFailure(bool isCommit) noexcept;

    Database& database_;
    std::optional<std::uint32_t> counter_;
    bool isOpen_ = true;
};

}  // namespace host
