#include <windows.h>

#include <array>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "support/Process.h"
#include "support/TemporaryDirectory.h"

namespace {

struct CloseHandleOfProcess {
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseHandleOfProcess>;

[[noreturn]] void Fail(const char* what) {
    throw std::system_error(static_cast<int>(::GetLastError()), std::system_category(), what);
}

std::wstring Widen(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end())).wstring();
}

/// Appends an argument so that CommandLineToArgvW gives it back: backslashes count only in front of a quote.
void AppendQuoted(std::wstring& line, const std::wstring& argument) {
    line += line.empty() ? L"\"" : L" \"";
    std::size_t backslashes = 0;
    for (const wchar_t character : argument) {
        if (character == L'"') {
            line.append(backslashes + 1, L'\\');
        }
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        line += character;
    }
    line.append(backslashes, L'\\');
    line += L'"';
}

/// Wine cannot always say how a new process's first steps went: ERROR_INTERNAL_ERROR stands for that alone,
/// and the process never came to run. Windows does not give it.
PROCESS_INFORMATION Start(const std::filesystem::path& program, const std::wstring& line,
                          const std::filesystem::path& directory, STARTUPINFOW& streams) {
    constexpr int kMostStarts = 5;
    PROCESS_INFORMATION started{};
    for (int start = 1;; ++start) {
        std::wstring ownLine = line;
        if (::CreateProcessW(program.c_str(), ownLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                             directory.empty() ? nullptr : directory.c_str(), &streams, &started) != 0) {
            return started;
        }
        if (::GetLastError() != ERROR_INTERNAL_ERROR || start == kMostStarts) {
            Fail("start of the program");
        }
    }
}

bool IsUnderWine() {
    return ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

/// Whether the first thread of a process has done nothing yet, not even what every program does before its
/// main function.
bool HasDoneNothing(HANDLE thread) {
    constexpr DWORD kLeast = 300'000;  // In steps of 100 nanoseconds: 30 milliseconds.
    FILETIME ignored{};
    FILETIME kernel{};
    FILETIME user{};
    return ::GetThreadTimes(thread, &ignored, &ignored, &kernel, &user) != 0 && kernel.dwHighDateTime == 0 &&
           user.dwHighDateTime == 0 && kernel.dwLowDateTime < kLeast && user.dwLowDateTime < kLeast;
}

/// Waits for the end. A process can wait for itself inside of Wine before it comes to run: it is ended after
/// a minute, and false comes back.
bool WaitForEnd(HANDLE process, HANDLE firstThread) {
    constexpr DWORD kMinute = 60'000;
    while (::WaitForSingleObject(process, kMinute) == WAIT_TIMEOUT) {
        if (IsUnderWine() && HasDoneNothing(firstThread)) {
            ::TerminateProcess(process, 1);
            ::WaitForSingleObject(process, INFINITE);
            return false;
        }
    }
    return true;
}

Handle OpenInherited(const std::filesystem::path& file, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE const handle = ::CreateFileW(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                        disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        Fail("the program's stream");
    }
    return Handle(handle);
}

std::string ReadFromPipe(HANDLE pipe, std::size_t most) {
    std::string bytes;
    std::array<char, 4096> buffer{};
    while (bytes.size() < most) {
        DWORD count = 0;
        const auto size = static_cast<DWORD>(std::min(buffer.size(), most - bytes.size()));
        if (::ReadFile(pipe, buffer.data(), size, &count, nullptr) == 0 || count == 0) {
            break;
        }
        bytes.append(buffer.data(), count);
    }
    return bytes;
}

/// Returns nothing if the program did not come to run.
std::optional<ProcessResult> RunOnce(const std::filesystem::path& program, const ProcessOptions& options) {
    const TemporaryDirectory folder;
    const std::filesystem::path outputFile = options.output.empty() ? folder / "output" : options.output;
    const std::filesystem::path errorFile = folder / "error";
    const Handle input =
        OpenInherited(options.input.empty() ? L"NUL" : options.input, GENERIC_READ, OPEN_EXISTING);
    const Handle error = OpenInherited(errorFile, GENERIC_WRITE, CREATE_ALWAYS);
    Handle output;
    Handle pipe;
    if (options.bytesRead) {
        SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        HANDLE readEnd = nullptr;
        HANDLE writeEnd = nullptr;
        if (::CreatePipe(&readEnd, &writeEnd, &inherited, 0) == 0) {
            Fail("pipe");
        }
        pipe.reset(readEnd);
        output.reset(writeEnd);
        ::SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    } else {
        output = OpenInherited(outputFile, GENERIC_WRITE, OPEN_ALWAYS);
    }

    std::wstring line;
    AppendQuoted(line, program.wstring());
    for (const std::string& argument : options.arguments) {
        AppendQuoted(line, Widen(argument));
    }
    // The child takes the test's own variables, so these are set here for its start.
    for (const auto& [name, value] : options.environment) {
        ::SetEnvironmentVariableW(Widen(name).c_str(), Widen(value).c_str());
    }
    STARTUPINFOW streams{};
    streams.cb = sizeof(streams);
    streams.dwFlags = STARTF_USESTDHANDLES;
    streams.hStdInput = input.get();
    streams.hStdOutput = output.get();
    streams.hStdError = error.get();
    const PROCESS_INFORMATION started = Start(program, line, options.directory, streams);
    for (const auto& [name, value] : options.environment) {
        ::SetEnvironmentVariableW(Widen(name).c_str(), nullptr);
    }
    const Handle process(started.hProcess);
    const Handle thread(started.hThread);
    output.reset();
    ProcessResult result;
    if (options.bytesRead) {
        result.output = ReadFromPipe(pipe.get(), *options.bytesRead);
        pipe.reset();
    }
    if (!WaitForEnd(process.get(), thread.get())) {
        return std::nullopt;
    }
    DWORD status = 0;
    ::GetExitCodeProcess(process.get(), &status);
    result.status = static_cast<int>(status);
    if (options.output.empty() && !options.bytesRead) {
        result.output = ReadWholeFile(outputFile);
    }
    result.error = ReadWholeFile(errorFile);
    return result;
}

}  // namespace

ProcessResult RunProgram(const std::filesystem::path& program, const ProcessOptions& options) {
    constexpr int kMostRuns = 3;
    for (int run = 0; run < kMostRuns; ++run) {
        if (std::optional<ProcessResult> result = RunOnce(program, options)) {
            return *std::move(result);
        }
        std::cout << "Wine did not let a program come to run; it is started again\n";
    }
    throw std::runtime_error("the program did not come to run");
}

std::filesystem::path ProgramPath(const std::string& name) {
    std::vector<wchar_t> path(32768);
    const DWORD length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return std::filesystem::path(std::wstring(path.data(), length)).parent_path() / (name + ".exe");
}
