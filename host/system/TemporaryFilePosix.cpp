#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <climits>
#include <csignal>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "Descriptor.h"
#include "TemporaryFile.h"

namespace host {
namespace {

/// What SQLite adds to the name of a database for that of its journal.
constexpr const char* kJournal = "-journal";
constexpr std::array kInterrupts = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

// All that the signal handler works on.
std::array<char, PATH_MAX> removedName{};
std::array<char, PATH_MAX> removedJournal{};
std::atomic<bool> isNameSet{false};
static_assert(std::atomic<bool>::is_always_lock_free);

std::array<struct sigaction, kInterrupts.size()> oldActions{};

extern "C" void RemoveAndEnd(int signal) {
    if (isNameSet.load()) {
        ::unlink(removedJournal.data());
        ::unlink(removedName.data());
    }
    // The default action is in force again since the handler was called, so this ends the program.
    static_cast<void>(::raise(signal));
}

bool IsSame(const struct stat& left, const struct stat& right) {
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

/// Whether the file has a name in the folder that is not temporary.
bool HasFinalName(DIR* folder, const struct stat& file) {
    ::rewinddir(folder);
    while (const dirent* const found = ::readdir(folder)) {
        const char* const name = static_cast<const char*>(found->d_name);
        struct stat status {};
        if (!IsTemporaryName(name) && ::fstatat(::dirfd(folder), name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
            IsSame(status, file)) {
            return true;
        }
    }
    return false;
}

/// Removes the file if no process holds it locked.
void RemoveIfLeftBehind(DIR* stream, const std::string& text) {
    const int folder = ::dirfd(stream);
    const char* const name = text.c_str();
    struct stat listed {};
    const auto isOurs = [](const struct stat& status) {
        return S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
    };
    if (::fstatat(folder, name, &listed, AT_SYMLINK_NOFOLLOW) != 0 || !isOurs(listed)) {
        return;
    }
    if (listed.st_nlink != 1) {
        // A complete file whose process was killed before it could remove this name, or a file of somebody
        // else's making. It is not opened: closing it would drop the locks of a database in use.
        if (listed.st_nlink == 2 && HasFinalName(stream, listed)) {
            ::unlinkat(folder, name, 0);
        }
        return;
    }
    // Some network file systems give a lock only to those who may write.
    const Descriptor file(::openat(folder, name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.IsOpen() || ::flock(file.Get(), LOCK_EX | LOCK_NB) != 0) {
        return;
    }
    // Since it was opened, its process may have finished it and given it another name.
    struct stat opened {};
    struct stat named {};
    if (::fstat(file.Get(), &opened) == 0 && isOurs(opened) && opened.st_nlink == 1 &&
        ::fstatat(folder, name, &named, AT_SYMLINK_NOFOLLOW) == 0 && IsSame(named, opened)) {
        ::unlinkat(folder, (text + kJournal).c_str(), 0);
        ::unlinkat(folder, name, 0);
    }
}

}  // namespace

std::array<std::uint8_t, 16> RandomBytes() {
    std::array<std::uint8_t, 16> bytes{};
    while (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        if (errno != EINTR) {
            throw std::system_error(LastError(), "random numbers");
        }
    }
    return bytes;
}

void RemoveLeftovers(const std::filesystem::path& folder) {
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(folder.c_str()), ::closedir);
    if (!stream) {
        return;
    }
    // Names that are removed while a directory is read may hide others.
    std::vector<std::string> names;
    while (const dirent* const found = ::readdir(stream.get())) {
        if (IsTemporaryName(static_cast<const char*>(found->d_name))) {
            names.emplace_back(static_cast<const char*>(found->d_name));
        }
    }
    for (const std::string& name : names) {
        RemoveIfLeftBehind(stream.get(), name);
    }
}

HeldTemporaryFile::HeldTemporaryFile(const std::filesystem::path& name)
    : handle_(::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644)) {
    if (handle_ >= 0) {
        // On a file system without locks nobody can lock the file in order to remove it.
        static_cast<void>(::flock(static_cast<int>(handle_), LOCK_EX | LOCK_NB));
    }
}

HeldTemporaryFile::~HeldTemporaryFile() {
    if (handle_ >= 0) {
        ::close(static_cast<int>(handle_));
    }
}

RemovedOnInterrupt::RemovedOnInterrupt(const std::filesystem::path& name)
    // A name that is too long cannot be given to a file either.
    : isFirst_(!isNameSet.load() && name.native().size() + std::strlen(kJournal) < removedName.size()) {
    if (!isFirst_) {
        return;
    }
    const std::string& text = name.native();
    std::memcpy(removedName.data(), text.c_str(), text.size() + 1);
    std::memcpy(removedJournal.data(), text.c_str(), text.size());
    std::memcpy(removedJournal.data() + text.size(), kJournal, std::strlen(kJournal) + 1);
    isNameSet.store(true);
    for (std::size_t index = 0; index < kInterrupts.size(); ++index) {
        struct sigaction action {};
        ::sigaction(kInterrupts[index], nullptr, &oldActions[index]);
        // nohup and shells have some signals ignored, which stays so.
        if (oldActions[index].sa_handler == SIG_DFL) {
            action.sa_handler = RemoveAndEnd;
            action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
            ::sigaction(kInterrupts[index], &action, nullptr);
        }
    }
}

RemovedOnInterrupt::~RemovedOnInterrupt() {
    if (isFirst_) {
        for (std::size_t index = 0; index < kInterrupts.size(); ++index) {
            ::sigaction(kInterrupts[index], &oldActions[index], nullptr);
        }
        isNameSet.store(false);
    }
}

}  // namespace host
