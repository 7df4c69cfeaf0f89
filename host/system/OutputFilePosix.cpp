#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "OutputFile.h"
#include "Terminal.h"

namespace host {
namespace {

using std::filesystem::path;

std::error_code LastError() {
    return {errno, std::generic_category()};
}

/// A file descriptor, which is closed at the end.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { static_cast<void>(Close()); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool IsOpen() const { return number_ >= 0; }
    int Get() const { return number_; }
    /// Some file systems report only now that the bytes could not be written.
    std::error_code Close() {
        const int number = number_;
        number_ = -1;
        return number >= 0 && ::close(number) != 0 ? LastError() : std::error_code();
    }

private:
    int number_;
};

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

std::error_code WriteDirectly(const path& target, std::string_view text) {
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

/// The path at the end of a chain of links to a file that does not exist yet.
path FollowToNewFile(path target) {
    constexpr int kMostLinks = 40;
    for (int count = 0; count < kMostLinks; ++count) {
        std::error_code error;
        const path next = std::filesystem::read_symlink(target, error);
        if (error) {
            break;
        }
        target = target.parent_path() / next;
    }
    return target;
}

/// Completes the temporary file, with the permissions of the old file if there is one.
std::error_code FinishFile(Descriptor& file, const struct stat* old) {
    if (old != nullptr) {
        const bool isOwnerKept = ::fchown(file.Get(), old->st_uid, old->st_gid) == 0;
        // The set-user-ID and set-group-ID bits must not pass to another owner.
        const mode_t kept = isOwnerKept ? 07777U : 01777U;
        if (::fchmod(file.Get(), old->st_mode & kept) != 0) {
            return LastError();
        }
    }
    if (::fsync(file.Get()) != 0) {
        return LastError();
    }
    return file.Close();
}

std::error_code ReplaceFile(const path& target, std::string_view text, const struct stat* old) {
    const path folder = target.has_parent_path() ? target.parent_path() : path(".");
    const std::string begin = ".korvane-json-" + std::to_string(::getpid()) + '-';
    path temporary;
    int number = -1;
    for (int attempt = 0; number < 0 && attempt < 100; ++attempt) {
        temporary = folder / (begin + std::to_string(attempt) + ".tmp");
        number = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (number < 0 && errno != EEXIST) {
            return LastError();
        }
    }
    Descriptor file(number);
    if (!file.IsOpen()) {
        return std::make_error_code(std::errc::file_exists);
    }
    std::error_code error = WriteBytes(file.Get(), text);
    if (!error) {
        error = FinishFile(file, old);
    }
    if (!error && ::rename(temporary.c_str(), target.c_str()) != 0) {
        error = LastError();
    }
    if (error) {
        ::unlink(temporary.c_str());
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

std::error_code WriteOutputFile(const std::filesystem::path& target, std::string_view text) {
    struct stat old {};
    if (::stat(target.c_str(), &old) != 0) {
        return errno == ENOENT ? ReplaceFile(FollowToNewFile(target), text, nullptr) : LastError();
    }
    if (S_ISDIR(old.st_mode)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    if (IsStandardOutput(old)) {
        return WriteAll(Stream::Output, text);
    }
    if (!S_ISREG(old.st_mode)) {
        return WriteDirectly(target, text);
    }
    if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) {
        return LastError();
    }
    std::error_code error;
    const path whole = std::filesystem::canonical(target, error);
    return error ? error : ReplaceFile(whole, text, &old);
}

}  // namespace host
