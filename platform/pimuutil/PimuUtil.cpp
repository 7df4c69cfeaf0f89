#include "PimuUtil.h"

#if defined(_WIN32)
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>

#include <cerrno>
#endif

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <exception>
#include <string>

#include "EmbeddedConsole.h"
#include "OuString.h"

namespace {

constinit std::atomic<bool> unloadWarningEnabled{false};

/// A formatted text as it is written to the console: its ANSI form and a line break. NUL characters inside
/// are kept.
std::string Line(const OuString& text) {
    std::string line;
    const wchar_t* const end = text.GetBuffer() + text.GetLength();
    for (const wchar_t* place = text.GetBuffer();; ++place) {
        const OuString upToNul(place);
        line += upToNul.GetAnsiBuffer();
        place += upToNul.GetLength();
        if (place == end) {
            break;
        }
        line += '\0';
    }
    return line += '\n';
}

/// Writes to the file directly: a stream that was used for wide characters does not accept bytes.
void WriteToStandardError(const std::string& bytes) {
    std::fflush(stderr);
    const char* place = bytes.data();
    std::size_t left = bytes.size();
#if defined(_WIN32)
    constexpr DWORD kMost = 1U << 20;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): this is how the runtime hands out a handle.
    auto* const handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stderr)));
    DWORD written = 0;
    while (left > 0 && WriteFile(handle, place, left < kMost ? static_cast<DWORD>(left) : kMost, &written,
                                 nullptr) != 0) {
        place += written;
        left -= written;
    }
#else
    while (left > 0) {
        const ssize_t written = write(fileno(stderr), place, left);
        if (written < 0 && errno != EINTR) {
            return;
        }
        if (written > 0) {
            place += written;
            left -= static_cast<std::size_t>(written);
        }
    }
#endif
}

}  // namespace

bool PimuIsDLLUnloadWarningEnabled() {
    return unloadWarningEnabled;
}

void PimuSetDLLUnloadWarning(bool enabled) {
    unloadWarningEnabled = enabled;
}

void PimuWriteConsoleMessage(_PimuMessageType /*type*/, const wchar_t* format, ...) {
    // NOLINTNEXTLINE(cppcoreguidelines-init-variables): va_start does that.
    std::va_list arguments;
    va_start(arguments, format);
    try {
        OuString text;
        text.FormatV(format, arguments);
        WriteToStandardError(Line(text));
    } catch (const std::exception&) {
        // The library that reports may be on its way out: no message is better than no unloading.
    }
    va_end(arguments);
}
