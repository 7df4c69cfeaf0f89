#include <windows.h>

#include <atomic>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "TemporaryFile.h"

namespace host {
namespace {

// All that the console's thread works on.
std::array<wchar_t, 32768> removedName{};
std::atomic<bool> isNameSet{false};

/// Called in a thread of its own when the user or the system ends the program.
BOOL WINAPI RemoveAndEnd(DWORD) {
    if (isNameSet.load()) {
        ::DeleteFileW(removedName.data());
    }
    // The next handler ends the program.
    return FALSE;
}

/// Removes the file if no process has it open.
void RemoveIfLeftBehind(const std::filesystem::path& file) {
    // A process that writes such a file has it open until it has its own name, and a file of another user
    // cannot be opened for this.
    HANDLE const handle =
        ::CreateFileW(file.c_str(), DELETE, 0, nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return;
    }
    BY_HANDLE_FILE_INFORMATION data{};
    constexpr DWORD kNoFile = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    if (::GetFileInformationByHandle(handle, &data) != 0 && (data.dwFileAttributes & kNoFile) == 0 &&
        data.nNumberOfLinks == 1) {
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
        if (IsTemporaryName(name)) {
            RemoveIfLeftBehind(folder / name);
        }
    } while (::FindNextFileW(search, &data) != 0);
}

RemovedOnInterrupt::RemovedOnInterrupt(const std::filesystem::path& name) {
    const std::wstring& text = name.native();
    if (text.size() < removedName.size()) {
        std::memcpy(removedName.data(), text.c_str(), (text.size() + 1) * sizeof(wchar_t));
        isNameSet.store(true);
        ::SetConsoleCtrlHandler(RemoveAndEnd, TRUE);
    }
}

RemovedOnInterrupt::~RemovedOnInterrupt() {
    if (isNameSet.load()) {
        ::SetConsoleCtrlHandler(RemoveAndEnd, FALSE);
        isNameSet.store(false);
    }
}

}  // namespace host
