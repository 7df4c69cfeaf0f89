#include <fcntl.h>
#include <linux/limits.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <string_view>

#include "Failures.h"
#include "Plans.h"
#include "host/system/TemporaryFile.h"

namespace exhaustion {
namespace {

Plan plannedCalls;
bool countsCalls = false;
/// The descriptors of files in the folders of the plan.
std::array<bool, 1024> isWatched{};

/// Whether it is the name of a folder of the plan, or of something in one.
bool IsInFolder(const char* name) {
    const std::string_view path(name);
    const auto isFolder = [](std::string_view whole) {
        return whole.substr(whole.rfind('/') + 1) == plannedCalls.folder;
    };
    const std::size_t last = path.rfind('/');
    return isFolder(path) || (last != std::string_view::npos && isFolder(path.substr(0, last)));
}

bool IsWatched(int descriptor) {
    return descriptor >= 0 && descriptor < static_cast<int>(isWatched.size()) &&
           isWatched[static_cast<std::size_t>(descriptor)];
}

/// Does in another process what every run does first in the folder that it writes in.
void CleanUp() {
    const pid_t other = ::fork();
    if (other == 0) {
        countsCalls = false;
        host::RemoveLeftovers(plannedCalls.folder);
        ::_exit(0);
    }
    ::waitpid(other, nullptr, 0);
}

/// Counts an operation. Returns whether it is to fail or to write half, and ends the process if that is
/// planned.
bool IsToFail() {
    if (!countsCalls || !IsReached(plannedCalls, ++SharedCounts().fileCalls)) {
        return false;
    }
    if (plannedCalls.outcome == Outcome::Killed) {
        ::raise(SIGKILL);
    } else if (plannedCalls.outcome == Outcome::Terminated) {
        ::raise(SIGTERM);
    } else if (plannedCalls.outcome == Outcome::CleanedUp) {
        CleanUp();
    }
    return plannedCalls.outcome == Outcome::Fails || plannedCalls.outcome == Outcome::WritesHalf;
}

/// Whether an operation that cannot be done by halves fails.
bool Fails() {
    return IsToFail() && plannedCalls.outcome == Outcome::Fails;
}

int Failure(int reason) {
    SharedCounts().reason = reason;
    errno = reason;
    return -1;
}

int Open(int folder, const char* name, int flags, mode_t mode) {
    const bool isChange = (flags & (O_WRONLY | O_RDWR)) != 0;
    const bool isUnnamed = (flags & O_TMPFILE) == O_TMPFILE;
    if (countsCalls && isUnnamed && !plannedCalls.hasUnnamedFiles) {
        return Failure(EOPNOTSUPP);
    }
    const bool isCounted = countsCalls && isChange && IsInFolder(name);
    if (isCounted && Fails()) {
        return Failure(EMFILE);
    }
    const auto descriptor = static_cast<int>(::syscall(SYS_openat, folder, name, flags, mode));
    if (descriptor >= 0 && descriptor < static_cast<int>(isWatched.size())) {
        isWatched[static_cast<std::size_t>(descriptor)] = isCounted;
    }
    return descriptor;
}

/// Whether the file does not get the name.
bool IsNameRefused(const char* name) {
    return countsCalls && IsInFolder(name) && (plannedCalls.refusesNames || Fails());
}

/// Removes a name, as unlink and remove do.
int Remove(const char* name, bool isFolderToo) {
    if (countsCalls && IsInFolder(name) && Fails()) {
        SharedCounts().isRemovalRefused = true;
        return Failure(EIO);
    }
    const auto result = static_cast<int>(::syscall(SYS_unlinkat, AT_FDCWD, name, 0));
    return result != 0 && errno == EISDIR && isFolderToo
               ? static_cast<int>(::syscall(SYS_unlinkat, AT_FDCWD, name, AT_REMOVEDIR))
               : result;
}

}  // namespace

Counts& SharedCounts() {
    static auto* const counts = static_cast<Counts*>(
        ::mmap(nullptr, sizeof(Counts), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    return *counts;
}

void PlanFileCalls(const Plan& next) {
    plannedCalls = next;
    countsCalls = true;
}

}  // namespace exhaustion

using exhaustion::Fails;
using exhaustion::Failure;

extern "C" {

int open(const char* name, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return exhaustion::Open(AT_FDCWD, name, flags, mode);
}

int open64(const char* name, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return exhaustion::Open(AT_FDCWD, name, flags, mode);
}

ssize_t write(int descriptor, const void* bytes, std::size_t count) {
    if (exhaustion::IsWatched(descriptor) && exhaustion::IsToFail()) {
        if (exhaustion::plannedCalls.outcome == exhaustion::Outcome::Fails) {
            return Failure(ENOSPC);
        }
        count = (count + 1) / 2;
    }
    return ::syscall(SYS_write, descriptor, bytes, count);
}

int fsync(int descriptor) {
    return exhaustion::IsWatched(descriptor) && Fails() ? Failure(ENOSPC)
                                                        : static_cast<int>(::syscall(SYS_fsync, descriptor));
}

int fchmod(int descriptor, mode_t mode) {
    return exhaustion::IsWatched(descriptor) && Fails()
               ? Failure(EPERM)
               : static_cast<int>(::syscall(SYS_fchmod, descriptor, mode));
}

int fchown(int descriptor, uid_t owner, gid_t group) {
    return exhaustion::IsWatched(descriptor) && Fails()
               ? Failure(EPERM)
               : static_cast<int>(::syscall(SYS_fchown, descriptor, owner, group));
}

int flock(int descriptor, int operation) {
    return exhaustion::IsWatched(descriptor) && Fails()
               ? Failure(ENOLCK)
               : static_cast<int>(::syscall(SYS_flock, descriptor, operation));
}

int link(const char* oldName, const char* newName) {
    if (exhaustion::countsCalls && !exhaustion::plannedCalls.hasLinks) {
        return Failure(EPERM);
    }
    return exhaustion::IsNameRefused(newName)
               ? Failure(EIO)
               : static_cast<int>(::syscall(SYS_linkat, AT_FDCWD, oldName, AT_FDCWD, newName, 0));
}

int linkat(int oldFolder, const char* oldName, int newFolder, const char* newName, int flags) {
    return exhaustion::IsNameRefused(newName)
               ? Failure(EIO)
               : static_cast<int>(::syscall(SYS_linkat, oldFolder, oldName, newFolder, newName, flags));
}

int rename(const char* oldName, const char* newName) {
    return exhaustion::IsNameRefused(newName) ? Failure(EIO)
                                              : static_cast<int>(::syscall(SYS_rename, oldName, newName));
}

int renameat2(int oldFolder, const char* oldName, int newFolder, const char* newName, unsigned flags) {
    if (exhaustion::countsCalls && !exhaustion::plannedCalls.renamesExclusively) {
        return Failure(EINVAL);
    }
    return exhaustion::IsNameRefused(newName)
               ? Failure(EIO)
               : static_cast<int>(::syscall(SYS_renameat2, oldFolder, oldName, newFolder, newName, flags));
}

int unlink(const char* name) {
    return exhaustion::Remove(name, false);
}

int remove(const char* name) {
    return exhaustion::Remove(name, true);
}
}
