#include "Database.h"

#include <sqlite3.h>

#include <array>

#include "DatabaseJournal.h"
#include "DatabaseSettings.h"
#include "FileSystem.h"
#include "SqliteStatus.h"

namespace host {
namespace {

constexpr int kPatienceInMilliseconds = 5000;
/// A connection belongs to one thread, so it needs no lock of its own.
constexpr int kOpenFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;

std::string IsEmptyText(const DatabaseKind& kind) {
    return "is an empty file, not a " + std::string(kind.name);
}

/// Whether the file exists and has a database in it; an empty file counts as missing. Throws for everything
/// that SQLite would replace or misread.
bool IsThere(const std::filesystem::path& file, DatabaseUse use, const DatabaseKind& kind) {
    if (file.empty()) {
        throw DatabaseError("is not a file name");
    }
    Entry entry;
    std::error_code error = InspectTarget(file, entry);
    const bool isMissing =
        error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
    if (error && !isMissing) {
        throw DatabaseError("cannot be read: " + error.message());
    }
    if (isMissing && use != DatabaseUse::Creating) {
        throw DatabaseError("does not exist");
    }
    if (!isMissing && entry.type != EntryType::File) {
        throw DatabaseError("is not a file");
    }
    if (isMissing || entry.size == 0) {
        if (use != DatabaseUse::Creating) {
            throw DatabaseError(IsEmptyText(kind));
        }
        return false;
    }
    // SQLite reads some very short files as empty databases.
    if (!IsDatabaseFile(file, error) && (error || !IsInterruptedCreation(file))) {
        throw DatabaseError(error ? "cannot be read: " + error.message() : "is not a SQLite database");
    }
    if (HasWriteAheadLog(file)) {
        RefuseForeign("it has a write-ahead log");
    }
    return true;
}

}  // namespace

bool IsDatabaseFile(const std::filesystem::path& file, std::error_code& error) {
    constexpr std::string_view kBeginning("SQLite format 3\0", 16);
    FileSample sample;
    error = ReadSample(file, kBeginning.size(), 0, sample);
    return !error && sample.head == kBeginning;
}

Database::Database() {
    SetUpSqlite();
    const int code = sqlite3_open_v2(":memory:", &handle_, kOpenFlags | SQLITE_OPEN_CREATE, nullptr);
    if (code != SQLITE_OK) {
        const std::unique_ptr<sqlite3, int (*)(sqlite3*)> closer(handle_, sqlite3_close);
        Fail(handle_, code);
    }
    Harden(handle_);
}

Database::Database(const std::filesystem::path& file, DatabaseUse use, const DatabaseKind& kind)
    : file_(file) {
    const bool isThere = IsThere(file, use, kind);
    RefuseForeignJournal(file);
    if (use != DatabaseUse::Reading) {
        RefuseLongName(file);
    }
    // For reading too: SQLite repairs what another program left unfinished.
    SetUpSqlite();
    const int flags = kOpenFlags | (isThere ? 0 : SQLITE_OPEN_CREATE);
    const int code = sqlite3_open_v2(SqliteName(file).c_str(), &handle_, flags, nullptr);
    try {
        Check(handle_, code);
        sqlite3_extended_result_codes(handle_, 1);
        Check(handle_, sqlite3_busy_timeout(handle_, kPatienceInMilliseconds));
        Harden(handle_);
        // Only now has SQLite undone a creation that was interrupted.
        const bool isEmpty = isThere && ReadNumber("PRAGMA page_count") == 0;
        if (isEmpty && use != DatabaseUse::Creating) {
            throw DatabaseError(IsEmptyText(kind));
        }
        if (isThere && !isEmpty) {
            CheckKind(kind);
        } else {
            EnlargeCache(handle_);
        }
        if (use == DatabaseUse::Reading) {
            // All reading is one transaction, so that no other program changes anything in between.
            Run("PRAGMA query_only = 1; BEGIN");
        }
    } catch (...) {
        sqlite3_close(handle_);
        throw;
    }
}

Database::~Database() {
    sqlite3_close(handle_);
}

std::int64_t Database::ReadNumber(const char* question) {
    Statement statement(*this, question);
    return statement.Begin().Next() ? statement.Number(0) : 0;
}

std::optional<std::uint32_t> Database::ReadChangeCounter() {
    sqlite3_file* file = nullptr;
    std::array<unsigned char, 4> bytes{};
    constexpr sqlite3_int64 kPosition = 24;
    // With SQLite's own file: on POSIX systems, opening and closing it again would release its locks.
    if (sqlite3_file_control(handle_, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
        file == nullptr || file->pMethods == nullptr) {
        return std::nullopt;
    }
    const int code = file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()), kPosition);
    // An empty file has no counter yet.
    if (code != SQLITE_OK && code != SQLITE_IOERR_SHORT_READ) {
        return std::nullopt;
    }
    return std::uint32_t{bytes[0]} << 24U | std::uint32_t{bytes[1]} << 16U | std::uint32_t{bytes[2]} << 8U |
           bytes[3];
}

bool Database::Undo() noexcept {
    // Some errors have already ended the transaction, so this may fail.
    sqlite3_exec(handle_, "ROLLBACK", nullptr, nullptr, nullptr);
    // After an error of the file system, the journal is left. SQLite undoes the change from it when it reads.
    const int code =
        sqlite3_exec(handle_, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr) & 0xFF;
    // Another program can only have begun to change the file after the change was undone.
    return code == SQLITE_OK || code == SQLITE_BUSY;
}

void Database::CheckKind(const DatabaseKind& kind) {
    if (ReadNumber("PRAGMA application_id") != kind.application) {
        throw DatabaseError("is a database of another kind, not a " + std::string(kind.name));
    }
    const std::int64_t format = ReadNumber("PRAGMA user_version");
    if (format > kind.format) {
        throw DatabaseError("was written by a newer korvane-json: it has format " + std::to_string(format) +
                            ", and this version reads formats up to " + std::to_string(kind.format) +
                            ". Use the newer version");
    }
    if (format < 1) {
        RefuseDamaged("it does not say which format it has");
    }
}

void Database::Run(const char* statements) {
    Check(handle_, sqlite3_exec(handle_, statements, nullptr, nullptr, nullptr));
}

void Database::SetKind(const DatabaseKind& kind) {
    Run(("PRAGMA application_id = " + std::to_string(kind.application)).c_str());
    Run(("PRAGMA user_version = " + std::to_string(kind.format)).c_str());
}

void Database::CopyFrom(Database& other) {
    sqlite3_backup* const backup = sqlite3_backup_init(handle_, "main", other.handle_, "main");
    if (backup == nullptr) {
        Fail(handle_, sqlite3_errcode(handle_));
    }
    const int step = sqlite3_backup_step(backup, -1);
    sqlite3_backup_finish(backup);
    if (step != SQLITE_DONE) {
        Fail(other.handle_, step);
    }
}

Transaction::Transaction(Database& database) : database_(database) {
    database_.Run("BEGIN IMMEDIATE");
    counter_ = database_.ReadChangeCounter();
}

Transaction::~Transaction() {
    if (isOpen_) {
        database_.Undo();
    }
}

void Transaction::Complete(const std::function<void()>& work) {
    bool isCommit = false;
    try {
        work();
        isCommit = true;
        database_.Run("COMMIT");
        isOpen_ = false;
    } catch (const DatabaseError& error) {
        throw DatabaseError(error.what(), UndoFailure(isCommit));
    }
}

Remains Transaction::UndoFailure(bool isCommit) noexcept {
    isOpen_ = false;
    const bool isUndone = database_.Undo();
    if (!isUndone && HasHotJournal(database_.file_)) {
        return Remains::AJournal;
    }
    if (!isCommit) {
        // What is in the file is changed only as long as there is a journal.
        return Remains::TheOld;
    }
    const std::optional<std::uint32_t> counter = database_.ReadChangeCounter();
    if (!counter || !counter_) {
        return Remains::Unknown;
    }
    return counter == counter_ ? Remains::TheOld : Remains::TheNew;
}

}  // namespace host
