#include <windows.h>

#include <algorithm>
#include <memory>
#include <string>

#include "FileSystem.h"
#include "OutputFile.h"

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

FileHandle Open(const path& file, DWORD disposition) {
    HANDLE const handle = ::CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
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

std::error_code ReplaceFile(const path& target, std::string_view text, bool isThere) {
    const path folder = target.has_parent_path() ? target.parent_path() : path(L".");
    const std::wstring begin = L".korvane-json-" + std::to_wstring(::GetCurrentProcessId()) + L'-';
    path temporary;
    FileHandle file;
    for (int attempt = 0; !file && attempt < 100; ++attempt) {
        temporary = folder / (begin + std::to_wstring(attempt) + L".tmp");
        file = Open(temporary, CREATE_NEW);
        if (!file && ::GetLastError() != ERROR_FILE_EXISTS) {
            return LastError();
        }
    }
    if (!file) {
        return std::make_error_code(std::errc::file_exists);
    }
    std::error_code error = WriteBytes(file.get(), text);
    if (!error && ::FlushFileBuffers(file.get()) == 0) {
        error = LastError();
    }
    file.reset();
    // ReplaceFileW keeps the permissions of the old file, but needs an old file.
    if (!error && isThere &&
        ::ReplaceFileW(target.c_str(), temporary.c_str(), nullptr, 0, nullptr, nullptr) == 0) {
        error = LastError();
    }
    if (!error && !isThere && ::MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) == 0) {
        error = LastError();
    }
    if (error) {
        ::DeleteFileW(temporary.c_str());
    }
    return error;
}

}  // namespace

std::error_code WriteOutputFile(const std::filesystem::path& target, std::string_view text) {
    const DWORD attributes = ::GetFileAttributesW(target.c_str());
    const bool isThere = attributes != INVALID_FILE_ATTRIBUTES;
    if (isThere && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    FileHandle old = Open(target, OPEN_EXISTING);
    if (!old) {
        const DWORD reason = ::GetLastError();
        return reason == ERROR_FILE_NOT_FOUND
                   ? ReplaceFile(target, text, false)
                   : std::error_code(static_cast<int>(reason), std::system_category());
    }
    if (::GetFileType(old.get()) != FILE_TYPE_DISK) {
        return WriteBytes(old.get(), text);
    }
    old.reset();
    std::error_code error;
    const path whole = ResolvePath(target, error);
    return error ? error : ReplaceFile(whole, text, true);
}

}  // namespace host
