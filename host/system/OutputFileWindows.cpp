#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "FileSystem.h"
#include "OutputFile.h"
#include "TemporaryFile.h"

namespace host {
namespace {

using std::filesystem::path;

std::error_code LastError() {
    return {static_cast<int>(::GetLastError()), std::system_category()};
}

struct CloseHandleOfFile {
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using FileHandle = std::unique_ptr<void, CloseHandleOfFile>;

FileHandle Open(const path& file, DWORD disposition, DWORD access, DWORD sharing,
                SECURITY_ATTRIBUTES* security = nullptr) {
    HANDLE const handle =
        ::CreateFileW(file.c_str(), access, sharing, security, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    return FileHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

std::error_code WriteBytes(HANDLE handle, std::string_view bytes) {
    constexpr std::size_t kMostAtOnce = 1U << 20U;
    while (!bytes.empty()) {
        DWORD count = 0;
        const auto size = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
        if (::WriteFile(handle, bytes.data(), size, &count, nullptr) == 0) {
            return LastError();
        }
        bytes.remove_prefix(count);
    }
    return {};
}

/// Whether the system removes the file when it is closed, which it does for a killed process too. Some
/// network file systems cannot do that.
void RemoveWhenClosed(HANDLE file, bool isRemoved) {
    FILE_DISPOSITION_INFO disposition{static_cast<BOOLEAN>(isRemoved)};
    ::SetFileInformationByHandle(file, FileDispositionInfo, &disposition, sizeof disposition);
}

/// The list of those who may use the file. Empty if it has none or cannot be read.
std::vector<std::byte> AccessListOf(const path& file) {
    DWORD size = 0;
    ::GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::byte> list(size);
    if (size == 0 ||
        ::GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, list.data(), size, &size) == 0) {
        list.clear();
    }
    return list;
}

/// Gives the complete temporary file the name of the target.
std::error_code PutInPlace(const path& temporary, const path& target, bool isThere) {
    if (!isThere) {
        return ::MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) != 0
                   ? std::error_code()
                   : LastError();
    }
    // This keeps the permissions of the old file, but needs an old file.
    if (::ReplaceFileW(target.c_str(), temporary.c_str(), nullptr, 0, nullptr, nullptr) != 0) {
        return {};
    }
    const std::error_code error = LastError();
    // With these errors the old file is gone already, with the second one by another process.
    if ((error.value() == ERROR_UNABLE_TO_MOVE_REPLACEMENT || error.value() == ERROR_FILE_NOT_FOUND) &&
        ::MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) != 0) {
        return {};
    }
    return error;
}

std::error_code ReplaceFile(const path& target, const WriteText& write, bool isThere) {
    const path folder = target.has_parent_path() ? target.parent_path() : path(L".");
    RemoveLeftovers(folder);
    const path temporary = NewTemporaryName(folder);
    // The file is never open to more users than the old one.
    std::vector<std::byte> accessList = isThere ? AccessListOf(target) : std::vector<std::byte>();
    SECURITY_ATTRIBUTES security{sizeof security, accessList.empty() ? nullptr : accessList.data(), FALSE};
    const RemovedOnInterrupt onInterrupt(temporary);
    FileHandle file = Open(temporary, CREATE_NEW, GENERIC_WRITE | DELETE,
                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &security);
    if (!file) {
        return LastError();
    }
    RemoveWhenClosed(file.get(), true);
    std::error_code error = write([&](std::string_view piece) { return WriteBytes(file.get(), piece); });
    if (!error && ::FlushFileBuffers(file.get()) == 0) {
        error = LastError();
    }
    if (!error) {
        RemoveWhenClosed(file.get(), false);
        file.reset();
        error = PutInPlace(temporary, target, isThere);
    }
    file.reset();
    // Nothing but the temporary file may be left after this error. Mostly another process was faster.
    const bool isOnlyOne = error.value() == ERROR_UNABLE_TO_MOVE_REPLACEMENT &&
                           ::GetFileAttributesW(target.c_str()) == INVALID_FILE_ATTRIBUTES;
    if (error && !isOnlyOne) {
        ::DeleteFileW(temporary.c_str());
    }
    return error;
}

}  // namespace

std::error_code WriteOutputFile(const std::filesystem::path& target, const WriteText& write) {
    const DWORD attributes = ::GetFileAttributesW(target.c_str());
    const bool isThere = attributes != INVALID_FILE_ATTRIBUTES;
    if (isThere && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    if (isThere && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        return std::make_error_code(std::errc::permission_denied);
    }
    FileHandle old = Open(target, OPEN_EXISTING, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE);
    if (!old) {
        const DWORD reason = ::GetLastError();
        return reason == ERROR_FILE_NOT_FOUND
                   ? ReplaceFile(target, write, false)
                   : std::error_code(static_cast<int>(reason), std::system_category());
    }
    if (::GetFileType(old.get()) != FILE_TYPE_DISK) {
        std::string text;
        const std::error_code error = CollectText(write, text);
        return error ? error : WriteBytes(old.get(), text);
    }
    old.reset();
    std::error_code error;
    const path whole = ResolvePath(target, error);
    return error ? error : ReplaceFile(whole, write, true);
}

}  // namespace host
