#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <map>
#include <memory>
#include <new>

#include "FileSystem.h"
#include "MemoryReserve.h"

namespace host {
namespace {

std::error_code LastError() {
    const std::error_code error(errno, std::generic_category());
    ThrowIfOutOfMemory(error);
    return error;
}

EntryType TypeOf(mode_t mode) {
    if (S_ISREG(mode)) {
        return EntryType::File;
    }
    if (S_ISDIR(mode)) {
        return EntryType::Directory;
    }
    return S_ISLNK(mode) ? EntryType::Link : EntryType::Other;
}

void FillIn(const struct stat& status, Entry& entry) {
    entry.type = TypeOf(status.st_mode);
    entry.size = entry.type == EntryType::File ? static_cast<std::uint64_t>(status.st_size) : 0;
    entry.modified = status.st_mtime;
    entry.owner = status.st_uid;
}

/// Gives the file the new name and nothing else, with what the file system has.
std::error_code NameAnew(const std::filesystem::path& from, const std::filesystem::path& to) {
    // Plain renaming would replace a file that another program has created under the name since. A link does
    // not.
    std::error_code error;
    std::filesystem::create_hard_link(from, to, error);
    if (!error) {
        // The file has its new name, whether or not the old one can be removed.
        std::error_code ignored;
        std::filesystem::remove(from, ignored);
        return {};
    }
    if (error == std::errc::file_exists) {
        return error;
    }
    // Some file systems have no links, such as those of memory cards, but rename without replacing.
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return LastError();
    }
    // Others, behind a network, do neither. The look beforehand is the best that can be done there.
    const bool isThere = std::filesystem::exists(std::filesystem::symlink_status(to, error));
    if (isThere) {
        return std::make_error_code(std::errc::file_exists);
    }
    std::filesystem::rename(from, to, error);
    return error;
}

}  // namespace

std::error_code ListDirectory(const std::filesystem::path& directory, Listing& listing) {
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(directory.c_str()), ::closedir);
    if (!stream) {
        return LastError();
    }
    const int folder = ::dirfd(stream.get());
    for (;;) {
        errno = 0;
        const dirent* const found = ::readdir(stream.get());
        if (found == nullptr) {
            return errno == 0 ? std::error_code() : LastError();
        }
        const std::string name = static_cast<const char*>(found->d_name);
        if (name == "." || name == "..") {
            continue;
        }
        Entry entry;
        entry.name = name;
        entry.isHidden = name.front() == '.';
        struct stat status {};
        if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
            listing.unreadable.push_back({entry.name, LastError()});
            continue;
        }
        FillIn(status, entry);
        listing.entries.push_back(std::move(entry));
    }
}

std::error_code InspectTarget(const std::filesystem::path& path, Entry& entry) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        return LastError();
    }
    FillIn(status, entry);
    entry.name = path.filename();
    entry.isHidden = !entry.name.empty() && entry.name.native().front() == '.';
    return {};
}

void ThrowIfOutOfMemory(const std::error_code& error) {
    if (error == std::errc::not_enough_memory) {
        throw std::bad_alloc();
    }
}

std::filesystem::path ResolvePath(const std::filesystem::path& path, std::error_code& error) {
    std::filesystem::path whole = std::filesystem::canonical(path, error);
    ThrowIfOutOfMemory(error);
    return whole;
}

std::uint64_t SizeOfMemory() {
    return static_cast<std::uint64_t>(::sysconf(_SC_PHYS_PAGES)) *
           static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

bool IsInputDevice() {
    struct stat status {};
    return ::fstat(STDIN_FILENO, &status) == 0 && (S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode));
}

bool WouldBeSameFile(const std::filesystem::path& left, const std::filesystem::path& right) {
    // From the root: weakly_canonical leaves a path relative whose beginning does not exist.
    const auto whole = [](const std::filesystem::path& path, std::error_code& error) {
        const std::filesystem::path absolute = std::filesystem::absolute(path, error);
        return error ? absolute : std::filesystem::weakly_canonical(absolute, error);
    };
    std::error_code error;
    const std::filesystem::path one = whole(left, error);
    const bool isSame = !error && one == whole(right, error) && !error;
    ThrowIfOutOfMemory(error);
    return isSame;
}

std::size_t LongestName(const std::filesystem::path& folder) {
    constexpr std::size_t kUsual = 255;
    const long size = ::pathconf(folder.empty() ? "." : folder.c_str(), _PC_NAME_MAX);
    return size > 0 ? static_cast<std::size_t>(size) : kUsual;
}

std::error_code MoveToNewName(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (const std::error_code error = NameAnew(from, to)) {
        return error;
    }
    // The new name is on the disk when the folder is; if a file system cannot do that, it is not a failure.
    const int folder =
        ::open(to.has_parent_path() ? to.parent_path().c_str() : ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        static_cast<void>(::fsync(folder));
        ::close(folder);
    }
    return {};
}

std::string OwnerName(std::uint32_t owner) {
    static std::map<std::uint32_t, std::string> names;
    const auto known = names.find(owner);
    if (known != names.end()) {
        return known->second;
    }
    EnsureMemory();
    std::string name = std::to_string(owner);
    std::array<char, 16384> buffer{};
    passwd record{};
    passwd* found = nullptr;
    const int error = ::getpwuid_r(owner, &record, buffer.data(), buffer.size(), &found);
    ThrowIfOutOfMemory({error, std::generic_category()});
    if (error == 0 && found != nullptr) {
        name = found->pw_name;
    }
    names.emplace(owner, name);
    return name;
}

std::optional<std::filesystem::path> PathOfStandardOutput() {
    struct stat status {};
    if (::fstat(STDOUT_FILENO, &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    std::error_code error;
    std::filesystem::path path = std::filesystem::read_symlink("/proc/self/fd/1", error);
    return error ? std::nullopt : std::optional(path);
}

std::error_code ReadSample(const std::filesystem::path& file, std::size_t headSize, std::size_t tailSize,
                           FileSample& sample) {
    // Without waiting: what was a file when it was listed may be a pipe by now.
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (descriptor < 0) {
        return LastError();
    }
    const auto closeAndReturn = [&](std::error_code error) {
        ::close(descriptor);
        return error;
    };
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) {
        return closeAndReturn(LastError());
    }
    if (!S_ISREG(status.st_mode)) {
        return closeAndReturn(std::make_error_code(std::errc::invalid_argument));
    }
    const auto readAt = [&](std::uint64_t place, std::string& bytes) -> std::error_code {
        std::size_t filled = 0;
        while (filled < bytes.size()) {
            const ssize_t count = ::pread(descriptor, bytes.data() + filled, bytes.size() - filled,
                                          static_cast<off_t>(place + filled));
            if (count < 0 && errno == EINTR) {
                continue;
            }
            if (count < 0) {
                return LastError();
            }
            if (count == 0) {
                break;
            }
            filled += static_cast<std::size_t>(count);
        }
        bytes.resize(filled);
        return {};
    };
    const auto size = static_cast<std::uint64_t>(status.st_size);
    sample.head.resize(std::min<std::uint64_t>(size, headSize));
    sample.tail.resize(std::min<std::uint64_t>(size - sample.head.size(), tailSize));
    std::error_code error = readAt(0, sample.head);
    if (!error) {
        error = readAt(size - sample.tail.size(), sample.tail);
    }
    return closeAndReturn(error);
}

}  // namespace host
