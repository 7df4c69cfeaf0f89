#include <windows.h>

#include <algorithm>
#include <memory>
#include <new>
#include <string_view>

#include "FileSystem.h"

namespace host {
namespace {

std::error_code LastError() {
    return {static_cast<int>(::GetLastError()), std::system_category()};
}

struct CloseHandleOfFile {
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using FileHandle = std::unique_ptr<void, CloseHandleOfFile>;

FileHandle OpenToRead(const std::filesystem::path& path, DWORD access) {
    HANDLE const handle =
        ::CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    return FileHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

std::uint64_t Join(DWORD high, DWORD low) {
    return static_cast<std::uint64_t>(high) << 32U | low;
}

/// FILETIME counts units of 100 nanoseconds since 1601.
std::int64_t ToSecondsSince1970(const FILETIME& time) {
    return static_cast<std::int64_t>(Join(time.dwHighDateTime, time.dwLowDateTime) / 10'000'000) -
           11'644'473'600;
}

/// The data of FindFirstFileW and of GetFileInformationByHandle have the same names for these members.
template <typename Data>
void FillIn(const Data& data, bool isLink, Entry& entry) {
    const bool isDirectory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    entry.type = isLink ? EntryType::Link : isDirectory ? EntryType::Directory : EntryType::File;
    entry.size = entry.type == EntryType::File ? Join(data.nFileSizeHigh, data.nFileSizeLow) : 0;
    entry.modified = ToSecondsSince1970(data.ftLastWriteTime);
    entry.isHidden = (data.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0 ||
                     (!entry.name.empty() && entry.name.native().front() == L'.');
}

/// Symbolic links and mount points lead elsewhere; other reparse points, such as files in a cloud, are
/// treated as plain entries.
bool IsLink(const WIN32_FIND_DATAW& data) {
    return (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (data.dwReserved0 == IO_REPARSE_TAG_SYMLINK || data.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

/// The full path of an open file or directory, without links and without the prefix for long paths.
std::filesystem::path FinalPath(HANDLE handle, std::error_code& error) {
    std::vector<wchar_t> buffer(32768);
    const DWORD length =
        ::GetFinalPathNameByHandleW(handle, buffer.data(), static_cast<DWORD>(buffer.size()), 0);
    if (length == 0 || length >= buffer.size()) {
        error = LastError();
        return {};
    }
    constexpr std::wstring_view kLongPath = L"\\\\?\\";
    constexpr std::wstring_view kLongShare = L"\\\\?\\UNC\\";
    std::wstring path(buffer.data(), length);
    if (path.starts_with(kLongShare)) {
        path.replace(0, kLongShare.size(), L"\\\\");
    } else if (path.starts_with(kLongPath)) {
        path.erase(0, kLongPath.size());
    }
    return path;
}

/// The full path of a file that need not exist, with the links and short names in its folder resolved. What
/// Windows removes from names, such as dots at their end, is removed. Empty if the path cannot be found.
std::wstring PathOfNewFile(const std::filesystem::path& file) {
    std::vector<wchar_t> buffer(32768);
    const DWORD length =
        ::GetFullPathNameW(file.c_str(), static_cast<DWORD>(buffer.size()), buffer.data(), nullptr);
    if (length == 0 || length >= buffer.size()) {
        return {};
    }
    const std::filesystem::path whole = std::wstring(buffer.data(), length);
    std::error_code error;
    const std::filesystem::path folder = ResolvePath(whole.parent_path(), error);
    return error ? whole.wstring() : (folder / whole.filename()).wstring();
}

}  // namespace

std::error_code ListDirectory(const std::filesystem::path& directory, Listing& listing) {
    WIN32_FIND_DATAW data{};
    HANDLE const search = ::FindFirstFileW((directory / L"*").c_str(), &data);
    if (search == INVALID_HANDLE_VALUE) {
        return LastError();
    }
    const std::unique_ptr<void, BOOL(WINAPI*)(HANDLE)> closer(search, ::FindClose);
    do {
        const std::wstring name = static_cast<const wchar_t*>(data.cFileName);
        if (name == L"." || name == L"..") {
            continue;
        }
        Entry entry;
        entry.name = name;
        FillIn(data, IsLink(data), entry);
        listing.entries.push_back(std::move(entry));
    } while (::FindNextFileW(search, &data) != 0);
    return ::GetLastError() == ERROR_NO_MORE_FILES ? std::error_code() : LastError();
}

std::error_code InspectTarget(const std::filesystem::path& path, Entry& entry) {
    const FileHandle handle = OpenToRead(path, 0);
    if (!handle) {
        return LastError();
    }
    if (::GetFileType(handle.get()) != FILE_TYPE_DISK) {
        entry.type = EntryType::Other;
        return {};
    }
    BY_HANDLE_FILE_INFORMATION data{};
    if (::GetFileInformationByHandle(handle.get(), &data) == 0) {
        return LastError();
    }
    entry.name = path.filename();
    FillIn(data, false, entry);
    return {};
}

void ThrowIfOutOfMemory(const std::error_code& error) {
    if (error == std::errc::not_enough_memory) {
        throw std::bad_alloc();
    }
}

std::filesystem::path ResolvePath(const std::filesystem::path& path, std::error_code& error) {
    const FileHandle handle = OpenToRead(path, 0);
    error = handle ? std::error_code() : LastError();
    return handle ? FinalPath(handle.get(), error) : std::filesystem::path();
}

std::uint64_t SizeOfMemory() {
    MEMORYSTATUSEX memory{};
    memory.dwLength = sizeof memory;
    ::GlobalMemoryStatusEx(&memory);
    return memory.ullTotalPhys;
}

bool IsInputDevice() {
    return ::GetFileType(::GetStdHandle(STD_INPUT_HANDLE)) == FILE_TYPE_CHAR;
}

bool WouldBeSameFile(const std::filesystem::path& left, const std::filesystem::path& right) {
    const std::wstring one = PathOfNewFile(left);
    const std::wstring other = PathOfNewFile(right);
    return !one.empty() && ::CompareStringOrdinal(one.c_str(), static_cast<int>(one.size()), other.c_str(),
                                                  static_cast<int>(other.size()), TRUE) == CSTR_EQUAL;
}

std::size_t LongestName(const std::filesystem::path&) {
    return 255;
}

std::error_code MoveToNewName(const std::filesystem::path& from, const std::filesystem::path& to) {
    // std::filesystem::rename would replace.
    return ::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) != 0 ? std::error_code()
                                                                                : LastError();
}

std::string OwnerName(std::uint32_t owner) {
    return std::to_string(owner);
}

std::optional<std::filesystem::path> PathOfStandardOutput() {
    HANDLE const output = ::GetStdHandle(STD_OUTPUT_HANDLE);
    if (output == nullptr || output == INVALID_HANDLE_VALUE || ::GetFileType(output) != FILE_TYPE_DISK) {
        return std::nullopt;
    }
    std::error_code error;
    std::filesystem::path path = FinalPath(output, error);
    return error ? std::nullopt : std::optional(path);
}

std::error_code ReadSample(const std::filesystem::path& file, std::size_t headSize, std::size_t tailSize,
                           FileSample& sample) {
    const FileHandle handle = OpenToRead(file, GENERIC_READ);
    if (!handle) {
        return LastError();
    }
    LARGE_INTEGER size{};
    if (::GetFileSizeEx(handle.get(), &size) == 0) {
        return LastError();
    }
    const auto readAt = [&](std::uint64_t place, std::string& bytes) -> std::error_code {
        LARGE_INTEGER distance{};
        distance.QuadPart = static_cast<LONGLONG>(place);
        if (::SetFilePointerEx(handle.get(), distance, nullptr, FILE_BEGIN) == 0) {
            return LastError();
        }
        DWORD count = 0;
        if (!bytes.empty() &&
            ::ReadFile(handle.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) == 0) {
            return LastError();
        }
        bytes.resize(count);
        return {};
    };
    const auto total = static_cast<std::uint64_t>(size.QuadPart);
    sample.head.resize(std::min<std::uint64_t>(total, headSize));
    sample.tail.resize(std::min<std::uint64_t>(total - sample.head.size(), tailSize));
    if (const std::error_code error = readAt(0, sample.head)) {
        return error;
    }
    return readAt(total - sample.tail.size(), sample.tail);
}

}  // namespace host
