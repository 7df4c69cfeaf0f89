#include <windows.h>

#include <algorithm>

#include "Terminal.h"

namespace host {
namespace {

HANDLE HandleOf(Stream stream) {
    return ::GetStdHandle(stream == Stream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

}  // namespace

StandardStreams::StandardStreams() noexcept : outputCodePage_(::GetConsoleOutputCP()) {
    if (IsTerminal(Stream::Output) || IsTerminal(Stream::Error)) {
        ::SetConsoleOutputCP(CP_UTF8);
    }
    for (const Stream stream : {Stream::Output, Stream::Error}) {
        DWORD mode = 0;
        if (::GetConsoleMode(HandleOf(stream), &mode) != 0) {
            ::SetConsoleMode(HandleOf(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
        }
    }
}

StandardStreams::~StandardStreams() {
    if (outputCodePage_ != 0) {
        ::SetConsoleOutputCP(outputCodePage_);
    }
}

bool IsTerminal(Stream stream) {
    DWORD mode = 0;
    return ::GetConsoleMode(HandleOf(stream), &mode) != 0;
}

bool IsOutputUtf8() {
    return ::GetConsoleOutputCP() == CP_UTF8;
}

bool IsOutputColoured() {
    // The length includes the NUL: more than one means that the value is not empty.
    const bool isRefused = ::GetEnvironmentVariableW(L"NO_COLOR", nullptr, 0) > 1;
    DWORD mode = 0;
    return !isRefused && ::GetConsoleMode(HandleOf(Stream::Output), &mode) != 0 &&
           (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::error_code WriteAll(Stream stream, std::string_view bytes) {
    constexpr std::size_t kMostAtOnce = 1U << 20U;
    while (!bytes.empty()) {
        DWORD count = 0;
        const auto size = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
        if (::WriteFile(HandleOf(stream), bytes.data(), size, &count, nullptr) == 0) {
            const DWORD reason = ::GetLastError();
            if (reason == ERROR_BROKEN_PIPE || reason == ERROR_NO_DATA) {
                return std::make_error_code(std::errc::broken_pipe);
            }
            return {static_cast<int>(reason), std::system_category()};
        }
        bytes.remove_prefix(count);
    }
    return {};
}

}  // namespace host
