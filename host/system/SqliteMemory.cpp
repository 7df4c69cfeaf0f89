#include "SqliteMemory.h"

#include <sqlite3.h>

#include <atomic>

namespace host {
namespace {

sqlite3_mem_methods usual;
std::atomic<bool> isWatched = false;
std::atomic<bool> hasLacked = false;

void* Allocate(int size) {
    void* const memory = usual.xMalloc(size);
    if (memory == nullptr) {
        hasLacked = true;
    }
    return memory;
}

void* Reallocate(void* block, int size) {
    void* const memory = usual.xRealloc(block, size);
    if (memory == nullptr) {
        hasLacked = true;
    }
    return memory;
}

}  // namespace

void WatchSqliteMemory() {
    if (isWatched || sqlite3_config(SQLITE_CONFIG_GETMALLOC, &usual) != SQLITE_OK) {
        return;
    }
    sqlite3_mem_methods watching = usual;
    watching.xMalloc = Allocate;
    watching.xRealloc = Reallocate;
    isWatched = sqlite3_config(SQLITE_CONFIG_MALLOC, &watching) == SQLITE_OK;
}

bool HasSqliteLackedMemory() {
    return !isWatched || hasLacked;
}

}  // namespace host
