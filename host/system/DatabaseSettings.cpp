#include "DatabaseSettings.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

#include "FileSystem.h"
#include "SqliteMemory.h"

namespace host {

namespace {

/// In KiB, as SQLite counts the size of a cache that is not given in pages.
constexpr int kUsualCache = -2000;
constexpr const char* kLargeCache = "PRAGMA cache_size = -65536";

}  // namespace

void SetUpSqlite() {
    sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    WatchSqliteMemory();
}

void Harden(sqlite3* handle) {
    const std::pair<int, int> switches[] = {
        {SQLITE_DBCONFIG_DEFENSIVE, 1},      {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
        {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0}, {SQLITE_DBCONFIG_ENABLE_VIEW, 0},
        {SQLITE_DBCONFIG_DQS_DML, 0},        {SQLITE_DBCONFIG_DQS_DDL, 0},
    };
    for (const auto& [name, value] : switches) {
        sqlite3_db_config(handle, name, value, nullptr);
    }
    sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_limit(handle, SQLITE_LIMIT_EXPR_DEPTH, 50);
    sqlite3_exec(handle, "PRAGMA cell_size_check = 1; PRAGMA temp_store = MEMORY", nullptr, nullptr, nullptr);
}

void EnlargeCache(sqlite3* handle) {
    sqlite3_stmt* question = nullptr;
    sqlite3_prepare_v2(handle, "PRAGMA cache_size", -1, &question, nullptr);
    const bool isUsual =
        sqlite3_step(question) == SQLITE_ROW && sqlite3_column_int(question, 0) == kUsualCache;
    sqlite3_finalize(question);
    if (isUsual) {
        sqlite3_exec(handle, kLargeCache, nullptr, nullptr, nullptr);
    }
}

bool HasWriteAheadLog(const std::filesystem::path& file) {
    FileSample sample;
    // The two bytes say which version of the format is needed to write and to read; 2 is a write-ahead log.
    constexpr std::size_t kVersions = 18;
    return !ReadSample(file, kVersions + 2, 0, sample) && sample.head.size() == kVersions + 2 &&
           std::max(sample.head[kVersions], sample.head[kVersions + 1]) == 2;
}

}  // namespace host
