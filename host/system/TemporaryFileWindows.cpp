#include <windows.h>

#include <atomic>
#include <cstring>
#include <cwchar>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "TemporaryFile.h"

namespace host {
namespace {

/// What SQLite adds to the name of a database for that of its journal.
constexpr const wchar_t* kJournal = L"-journal";

// All that the console's thread works on.
std::array<wchar_t, 32768> removedName{};
std::array<wchar_t, 32768> removedJournal{};
std::atomic<bool> isNameSet{false};

/// Called in a thread of its own when the user or the system ends the program.
BOOL WINAPI RemoveAndEnd(DWORD) {
    if (isNameSet.load()) {
        ::DeleteFileW(removedJournal.data());
        ::DeleteFileW(removedName.data());
    }
    // The next handler ends the program.
    return FALSE;
}

/// Whether the file was written in the last minute.
bool IsFresh(const FILETIME& written) {
    constexpr std::uint64_t kMinute = 60ULL * 10'000'000;
    const auto count = [](const FILETIME& time) {
        return static_cast<std::uint64_t>(time.dwHighDateTime) << 32U | time.dwLowDateTime;
    };
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    return count(now) < count(written) + kMinute;
}

/// Removes the file if no process has it open, and if it is not fresh: a process that writes such a file
/// closes it in the moment before it gets its own name.
void RemoveIfLeftBehind(const std::filesystem::path& file) {
    // A file of another user cannot be opened for this.
    HANDLE const handle =
        ::CreateFileW(file.c_str(), DELETE, 0, nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return;
    }
    BY_HANDLE_FILE_INFORMATION data{};
    constexpr DWORD kNoFile = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    if (::GetFileInformationByHandle(handle, &data) != 0 && (data.dwFileAttributes & kNoFile) == 0 &&
        data.nNumberOfLinks == 1 && !IsFresh(data.ftLastWriteTime)) {
        ::DeleteFileW((file.wstring() + kJournal).c_str());
        FILE_DISPOSITION_INFO removal{TRUE};
        ::SetFileInformationByHandle(handle, FileDispositionInfo, &removal, sizeof removal);
    }
    ::CloseHandle(handle);
}

}  // namespace

std::array<std::uint8_t, 16> RandomBytes() {
    std::random_device random;
    std::array<std::uint8_t, 16> bytes{};
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(random());
    }
    return bytes;
}

void RemoveLeftovers(const std::filesystem::path& folder) {
    WIN32_FIND_DATAW data{};
    HANDLE const search = ::FindFirstFileW((folder / L".korvane-json-*.tmp").c_str(), &data);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    const std::unique_ptr<void, BOOL(WINAPI*)(HANDLE)> closer(search, ::FindClose);
    do {
        const std::filesystem::path name = static_cast<const wchar_t*>(data.cFileName);
        // To open a file that another process is about to move or remove would keep it from that.
        if (IsTemporaryName(name) && !IsFresh(data.ftLastWriteTime)) {
            RemoveIfLeftBehind(folder / name);
        }
    } while (::FindNextFileW(search, &data) != 0);
}

HeldTemporaryFile::HeldTemporaryFile(const std::filesystem::path& name)
    : handle_(reinterpret_cast<std::intptr_t>(
          ::CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                        nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr))) {}

HeldTemporaryFile::~HeldTemporaryFile() {
    auto* const handle = reinterpret_cast<HANDLE>(handle_);  // NOLINT(performance-no-int-to-ptr)
    if (handle != INVALID_HANDLE_VALUE) {
        ::CloseHandle(handle);
    }
}

RemovedOnInterrupt::RemovedOnInterrupt(const std::filesystem::path& name)
    : isFirst_(!isNameSet.load() && name.native().size() + std::wcslen(kJournal) < removedName.size()) {
    if (isFirst_) {
        const std::wstring& text = name.native();
        std::memcpy(removedName.data(), text.c_str(), (text.size() + 1) * sizeof(wchar_t));
        std::memcpy(removedJournal.data(), text.c_str(), text.size() * sizeof(wchar_t));
        std::memcpy(removedJournal.data() + text.size(), kJournal,
                    (std::wcslen(kJournal) + 1) * sizeof(wchar_t));
        isNameSet.store(true);
        ::SetConsoleCtrlHandler(RemoveAndEnd, TRUE);
    }
}

RemovedOnInterrupt::~RemovedOnInterrupt() {
    if (isFirst_) {
        ::SetConsoleCtrlHandler(RemoveAndEnd, FALSE);
        isNameSet.store(false);
    }
}

}  // namespace host
