#include "FaultyFiles.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace failures {
namespace {

/// What fails at present.
struct State {
    const FaultKind* kind = nullptr;
    Manner manner = Manner::Once;
    std::uint64_t number = 0;
    std::uint64_t count = 0;
    bool isCacheSmall = false;
    sqlite3_vfs* system = nullptr;
};
State& TheState() {
    static State state;
    return state;
}

/// Counts an operation and says whether it fails.
bool Fails(Operation operation) {
    State& state = TheState();
    if (state.kind == nullptr) {
        return false;
    }
    const bool isReached = state.count >= state.number;
    if (std::ranges::find(state.kind->operations, operation) == state.kind->operations.end()) {
        return isReached && state.manner == Manner::Gone;
    }
    ++state.count;
    return state.manner == Manner::Once || state.manner == Manner::Stop ? state.count == state.number
                                                                        : state.count >= state.number;
}

/// Ends the process, or gives the error.
int Failure(Operation operation) {
    const State& state = TheState();
    if (state.manner == Manner::Stop) {
        // Without any destructor: this is how a process ends that is killed.
        std::_Exit(kStopped);
    }
    const auto& operations = state.kind->operations;
    const bool isOfKind = std::ranges::find(operations, operation) != operations.end();
    return isOfKind ? state.kind->code : operation == Operation::Open ? SQLITE_CANTOPEN : SQLITE_IOERR;
}

FaultKind::Done DoneBefore() {
    return TheState().kind->done;
}

struct File {
    sqlite3_file base;
    sqlite3_file* Real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* RealOf(sqlite3_file* file) {
    return reinterpret_cast<File*>(file)->Real();
}

int Close(sqlite3_file* file) {
    sqlite3_file* const real = RealOf(file);
    return real->pMethods != nullptr ? real->pMethods->xClose(real) : SQLITE_OK;
}

int Read(sqlite3_file* file, void* bytes, int size, sqlite3_int64 position) {
    if (Fails(Operation::Read)) {
        return Failure(Operation::Read);
    }
    sqlite3_file* const real = RealOf(file);
    return real->pMethods->xRead(real, bytes, size, position);
}

int Write(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 position) {
    sqlite3_file* const real = RealOf(file);
    if (Fails(Operation::Write)) {
        if (DoneBefore() != FaultKind::Done::Nothing) {
            const int done = DoneBefore() == FaultKind::Done::Half ? size / 2 : size;
            static_cast<void>(real->pMethods->xWrite(real, bytes, done, position));
        }
        return Failure(Operation::Write);
    }
    return real->pMethods->xWrite(real, bytes, size, position);
}

int Truncate(sqlite3_file* file, sqlite3_int64 size) {
    if (Fails(Operation::Truncate)) {
        return Failure(Operation::Truncate);
    }
    sqlite3_file* const real = RealOf(file);
    return real->pMethods->xTruncate(real, size);
}

int Sync(sqlite3_file*, int) {
    // What is written is there for every later process, so no test has to wait for the disk.
    return Fails(Operation::Sync) ? Failure(Operation::Sync) : SQLITE_OK;
}

int Size(sqlite3_file* file, sqlite3_int64* size) {
    if (Fails(Operation::Size)) {
        return Failure(Operation::Size);
    }
    sqlite3_file* const real = RealOf(file);
    return real->pMethods->xFileSize(real, size);
}

int Lock(sqlite3_file* file, int lock) {
    if (Fails(Operation::Lock)) {
        return Failure(Operation::Lock);
    }
    sqlite3_file* const real = RealOf(file);
    return real->pMethods->xLock(real, lock);
}

int Unlock(sqlite3_file* file, int lock) {
    sqlite3_file* const real = RealOf(file);
    const int code = real->pMethods->xUnlock(real, lock);
    // A lock that could not be given back ends with the process, which the test does not.
    return Fails(Operation::Unlock) ? Failure(Operation::Unlock) : code;
}

int CheckReservedLock(sqlite3_file* file, int* isLocked) {
    if (Fails(Operation::Lock)) {
        return Failure(Operation::Lock);
    }
    sqlite3_file* const real = RealOf(file);
    return real->pMethods->xCheckReservedLock(real, isLocked);
}

int Control(sqlite3_file* file, int command, void* argument) {
    sqlite3_file* const real = RealOf(file);
    return real->pMethods->xFileControl(real, command, argument);
}

int SectorSize(sqlite3_file* file) {
    sqlite3_file* const real = RealOf(file);
    return real->pMethods->xSectorSize(real);
}

int Characteristics(sqlite3_file* file) {
    sqlite3_file* const real = RealOf(file);
    return real->pMethods->xDeviceCharacteristics(real);
}

// Version 1 has no shared memory and no mapped files: every byte goes through Read and Write.
constexpr sqlite3_io_methods kMethods = {1,
                                         Close,
                                         Read,
                                         Write,
                                         Truncate,
                                         Sync,
                                         Size,
                                         Lock,
                                         Unlock,
                                         CheckReservedLock,
                                         Control,
                                         SectorSize,
                                         Characteristics,
                                         nullptr,
                                         nullptr,
                                         nullptr,
                                         nullptr,
                                         nullptr,
                                         nullptr};

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    file->pMethods = nullptr;
    RealOf(file)->pMethods = nullptr;
    if (Fails(Operation::Open)) {
        return Failure(Operation::Open);
    }
    sqlite3_vfs* const system = TheState().system;
    const int code = system->xOpen(system, name, RealOf(file), flags, outFlags);
    if (RealOf(file)->pMethods != nullptr) {
        file->pMethods = &kMethods;
    }
    return code;
}

int Delete(sqlite3_vfs*, const char* name, int isFolderSynced) {
    sqlite3_vfs* const system = TheState().system;
    if (Fails(Operation::Delete)) {
        if (DoneBefore() == FaultKind::Done::All) {
            static_cast<void>(system->xDelete(system, name, 0));
        }
        return Failure(Operation::Delete);
    }
    static_cast<void>(isFolderSynced);
    return system->xDelete(system, name, 0);
}

int Access(sqlite3_vfs*, const char* name, int flags, int* result) {
    if (Fails(Operation::Access)) {
        return Failure(Operation::Access);
    }
    sqlite3_vfs* const system = TheState().system;
    return system->xAccess(system, name, flags, result);
}

int FullPathname(sqlite3_vfs*, const char* name, int size, char* path) {
    sqlite3_vfs* const system = TheState().system;
    return system->xFullPathname(system, name, size, path);
}

int Randomness(sqlite3_vfs*, int size, char* bytes) {
    sqlite3_vfs* const system = TheState().system;
    return system->xRandomness(system, size, bytes);
}

int Sleep(sqlite3_vfs*, int microseconds) {
    // Nobody else has the lock that a fault refuses, so waiting would change nothing.
    return microseconds;
}

int CurrentTime(sqlite3_vfs*, double* time) {
    sqlite3_vfs* const system = TheState().system;
    return system->xCurrentTime(system, time);
}

int LastError(sqlite3_vfs*, int size, char* text) {
    sqlite3_vfs* const system = TheState().system;
    return system->xGetLastError(system, size, text);
}

/// Runs for every database that is opened.
int ShrinkCache(sqlite3* database, char**, const sqlite3_api_routines*) {
    State& state = TheState();
    if (state.isCacheSmall) {
        const FaultKind* const kind = state.kind;
        state.kind = nullptr;
        sqlite3_exec(database, "PRAGMA cache_size = 10", nullptr, nullptr, nullptr);
        state.kind = kind;
    }
    return SQLITE_OK;
}

}  // namespace

const std::vector<FaultKind>& FaultKinds() {
    static const std::vector<FaultKind> kinds = {
        {"open", {Operation::Open}, SQLITE_CANTOPEN},
        {"read", {Operation::Read}, SQLITE_IOERR_READ},
        {"write", {Operation::Write}, SQLITE_IOERR_WRITE},
        {"disk full", {Operation::Write}, SQLITE_FULL, FaultKind::Done::Half},
        {"sync", {Operation::Sync}, SQLITE_IOERR_FSYNC},
        {"truncate", {Operation::Truncate}, SQLITE_IOERR_TRUNCATE},
        {"size", {Operation::Size}, SQLITE_IOERR_FSTAT},
        {"lock", {Operation::Lock}, SQLITE_IOERR_LOCK},
        {"lock of another program", {Operation::Lock}, SQLITE_BUSY},
        {"unlock", {Operation::Unlock}, SQLITE_IOERR_UNLOCK},
        {"delete", {Operation::Delete}, SQLITE_IOERR_DELETE},
        {"folder of what was deleted", {Operation::Delete}, SQLITE_IOERR_DIR_FSYNC, FaultKind::Done::All},
        {"access", {Operation::Access}, SQLITE_IOERR_ACCESS},
    };
    return kinds;
}

void UseFaultyFiles(bool isCacheSmall) {
    static sqlite3_vfs files;
    State& state = TheState();
    state.isCacheSmall = isCacheSmall;
    if (state.system != nullptr) {
        return;
    }
    state.system = sqlite3_vfs_find(nullptr);
    files = *state.system;
    files.iVersion = 1;
    files.szOsFile = static_cast<int>(sizeof(File)) + state.system->szOsFile;
    files.zName = "faulty";
    files.xOpen = Open;
    files.xDelete = Delete;
    files.xAccess = Access;
    files.xFullPathname = FullPathname;
    files.xRandomness = Randomness;
    files.xSleep = Sleep;
    files.xCurrentTime = CurrentTime;
    files.xGetLastError = LastError;
    if (sqlite3_vfs_register(&files, 1) != SQLITE_OK ||
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(ShrinkCache)) != SQLITE_OK) {
        throw std::runtime_error("SQLite does not take other files");
    }
}

void Arm(const FaultKind& kind, Manner manner, std::uint64_t number) {
    State& state = TheState();
    state.kind = &kind;
    state.manner = manner;
    state.number = number;
    state.count = 0;
}

std::uint64_t Disarm() {
    TheState().kind = nullptr;
    return TheState().count;
}

}  // namespace failures
