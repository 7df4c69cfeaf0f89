#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string>

#include "Descriptor.h"
#include "FileSystem.h"
#include "OutputFile.h"
#include "TemporaryFile.h"
#include "Terminal.h"

namespace host {
namespace {

using std::filesystem::path;

constexpr int kMostTries = 10;
constexpr mode_t kOwner = 0600;
constexpr mode_t kEverybody = 0666;
constexpr mode_t kOtherIdentity = 06000;
constexpr mode_t kGroup = 070;
constexpr mode_t kOthers = 07;
constexpr mode_t kPermissions = 0777;
constexpr mode_t kAllBits = 07777;

std::error_code WriteBytes(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return LastError();
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

std::error_code WriteDirectly(const path& target, const std::string& text) {
    Descriptor device(::open(target.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
    if (!device.IsOpen()) {
        return LastError();
    }
    if (const std::error_code error = WriteBytes(device.Get(), text)) {
        return error;
    }
    return device.Close();
}

bool IsStandardOutput(const struct stat& status) {
    struct stat output {};
    return ::fstat(STDOUT_FILENO, &output) == 0 && output.st_dev == status.st_dev &&
           output.st_ino == status.st_ino;
}

/// What a new file may have before it has its content: not more than the old file, and no more than its owner
/// needs.
mode_t FirstMode(const struct stat* old) {
    return old != nullptr ? old->st_mode & kOwner : kEverybody;
}

/// Gives the new file the owner, the group and the permissions of the old one, as far as that can be done,
/// and returns the mode that it gets in the end.
mode_t TakeOwner(int file, const struct stat& old) {
    if (::fchown(file, old.st_uid, old.st_gid) == 0) {
        return old.st_mode & kAllBits;
    }
    // The set-user-ID and set-group-ID bits must not pass to another owner.
    const mode_t kept = old.st_mode & kAllBits & ~kOtherIdentity;
    if (::fchown(file, static_cast<uid_t>(-1), old.st_gid) == 0) {
        return kept;
    }
    // Another group gets no more than everybody.
    return (kept & ~kGroup) | (kept & kGroup & ((kept & kOthers) << 3U));
}

/// Writes everything about the file but its name.
std::error_code Fill(int file, const WriteText& write, const struct stat* old) {
    const mode_t mode = old != nullptr ? TakeOwner(file, *old) : 0;
    if (old != nullptr && ::fchmod(file, mode & kPermissions) != 0) {
        return LastError();
    }
    if (const std::error_code error =
            write([file](std::string_view piece) { return WriteBytes(file, piece); })) {
        return error;
    }
    // Writing removes these bits.
    if ((mode & ~kPermissions) != 0 && ::fchmod(file, mode) != 0) {
        return LastError();
    }
    return ::fsync(file) == 0 ? std::error_code() : LastError();
}

/// Locks the file, so that no other process takes it for one that was left behind. Returns false if another
/// process does that now.
bool Lock(int file) {
    // On a file system without locks nobody can lock the file in order to remove it.
    return ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

bool HasName(int file) {
    struct stat status {};
    return ::fstat(file, &status) == 0 && status.st_nlink > 0;
}

/// A file that is removed in the end, unless it has another name by then.
class RemovedFile {
public:
    explicit RemovedFile(const path& name) : name_(name) {}
    ~RemovedFile() {
        if (isRemoved_) {
            ::unlink(name_.c_str());
        }
    }
    RemovedFile(const RemovedFile&) = delete;
    RemovedFile& operator=(const RemovedFile&) = delete;
    void Keep() { isRemoved_ = false; }

private:
    const path& name_;
    bool isRemoved_ = true;
};

/// Writes the file under a temporary name, and then gives it its own.
std::error_code ReplaceThroughName(const path& folder, const path& target, const WriteText& write,
                                   const struct stat* old) {
    for (int attempt = 0; attempt < kMostTries; ++attempt) {
        const path temporary = NewTemporaryName(folder);
        // Before the file is there, so that no signal comes in between.
        const RemovedOnInterrupt onInterrupt(temporary);
        const Descriptor file(
            ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, FirstMode(old)));
        if (!file.IsOpen() && errno != EEXIST) {
            return LastError();
        }
        if (!file.IsOpen() || !Lock(file.Get()) || !HasName(file.Get())) {
            // Another process found it before it was locked, and removes it.
            continue;
        }
        RemovedFile removed(temporary);
        if (const std::error_code error = Fill(file.Get(), write, old)) {
            return error;
        }
        if (::rename(temporary.c_str(), target.c_str()) != 0) {
            return LastError();
        }
        removed.Keep();
        return {};
    }
    return std::make_error_code(std::errc::file_exists);
}

/// How a file that has no name yet can be linked.
std::string PathOf(const Descriptor& file) {
    return "/proc/self/fd/" + std::to_string(file.Get());
}

/// Opens a file without a name, which vanishes with the process. It is not open where the file system has no
/// such files, or where they cannot be linked.
Descriptor OpenUnnamed(const path& folder, const struct stat* old) {
    Descriptor file(::open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, FirstMode(old)));
    const bool canBeLinked = file.IsOpen() && ::access(PathOf(file).c_str(), F_OK) == 0;
    return canBeLinked ? std::move(file) : Descriptor();
}

/// Writes the file without a name, and then gives it its own. Returns nothing where that cannot be done.
std::optional<std::error_code> ReplaceThroughLink(const path& folder, const path& target,
                                                  const WriteText& write, const struct stat* old) {
    const Descriptor file = OpenUnnamed(folder, old);
    if (!file.IsOpen()) {
        return std::nullopt;
    }
    const std::string unnamed = PathOf(file);
    const auto link = [&](const path& name) {
        return ::linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    };
    // A link does not replace a file, so the new file has a temporary name for a moment.
    const path temporary = NewTemporaryName(folder);
    static_cast<void>(Lock(file.Get()));
    if (const std::error_code error = Fill(file.Get(), write, old)) {
        return error;
    }
    if (old == nullptr && link(target)) {
        return std::error_code();
    }
    const RemovedOnInterrupt onInterrupt(temporary);
    if (!link(temporary)) {
        return std::nullopt;
    }
    if (::rename(temporary.c_str(), target.c_str()) == 0) {
        return std::error_code();
    }
    const std::error_code error = LastError();
    ::unlink(temporary.c_str());
    return error;
}

std::error_code ReplaceFile(const path& target, const WriteText& write, const struct stat* old) {
    const path folder = target.has_parent_path() ? target.parent_path() : path(".");
    RemoveLeftovers(folder);
    const std::optional<std::error_code> linked = ReplaceThroughLink(folder, target, write, old);
    const std::error_code error = linked ? *linked : ReplaceThroughName(folder, target, write, old);
    if (error) {
        return error;
    }
    // The new name is on the disk when the folder is; if a file system cannot do that, it is not a failure.
    const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.IsOpen()) {
        static_cast<void>(::fsync(directory.Get()));
    }
    return {};
}

}  // namespace

std::error_code WriteOutputFile(const std::filesystem::path& target, const WriteText& write) {
    struct stat old {};
    if (::stat(target.c_str(), &old) != 0) {
        return errno == ENOENT ? ReplaceFile(FollowToNewFile(target), write, nullptr) : LastError();
    }
    if (S_ISDIR(old.st_mode)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    if (IsStandardOutput(old) || !S_ISREG(old.st_mode)) {
        std::string text;
        const std::error_code error = CollectText(write, text);
        return error                   ? error
               : IsStandardOutput(old) ? WriteAll(Stream::Output, text)
                                       : WriteDirectly(target, text);
    }
    if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) {
        return LastError();
    }
    std::error_code error;
    const path whole = std::filesystem::canonical(target, error);
    return error ? error : ReplaceFile(whole, write, &old);
}

}  // namespace host
