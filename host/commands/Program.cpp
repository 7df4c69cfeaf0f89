#include "Program.h"

#include <exception>
#include <initializer_list>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "CommandLine.h"
#include "ExitStatus.h"
#include "host/system/Console.h"
#include "host/system/Terminal.h"

#if defined(_WIN32)
#include <windows.h>
// Needs the types of windows.h before it.
#include <shellapi.h>
#endif

namespace host {
namespace {

#if defined(_WIN32)
/// The arguments as the user wrote them: in those of main, wildcards are expanded and characters may be lost.
std::vector<std::string> ReadArguments(int, char**) {
    std::vector<std::string> arguments;
    int count = 0;
    wchar_t** const wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    for (int index = 1; wide != nullptr && index < count; ++index) {
        const int size = ::WideCharToMultiByte(CP_UTF8, 0, wide[index], -1, nullptr, 0, nullptr, nullptr);
        std::string argument(static_cast<std::size_t>(size), '\0');
        ::WideCharToMultiByte(CP_UTF8, 0, wide[index], -1, argument.data(), size, nullptr, nullptr);
        argument.resize(argument.empty() ? 0 : argument.size() - 1);
        arguments.push_back(std::move(argument));
    }
    ::LocalFree(wide);
    return arguments;
}
#else
std::vector<std::string> ReadArguments(int count, char** arguments) {
    return count > 1 ? std::vector<std::string>(arguments + 1, arguments + count)
                     : std::vector<std::string>();
}
#endif

/// Says why the work ended, in pieces: there may be no memory for a whole line.
void SayEnd(std::initializer_list<std::string_view> pieces) {
    for (const std::string_view piece : pieces) {
        // If a message cannot be written, there is no way to say so.
        static_cast<void>(WriteAll(Stream::Error, piece));
    }
}

}  // namespace

int RunProgram(int argumentCount, char** arguments) {
    const StandardStreams streams;
    try {
        Console console;
        return RunCommandLine(ReadArguments(argumentCount, arguments), console);
    } catch (const std::bad_alloc&) {
        SayEnd(
            {"korvane-json: there is not enough memory for this project. Nothing was changed; export a part "
             "of it with --object, or give a directory in it\n"});
    } catch (const std::exception& error) {
        SayEnd({"korvane-json: the work could not be finished: ", error.what(), "\n"});
    }
    // There may be no memory for the arguments either.
    return FailureStatus(argumentCount > 1 ? arguments[1] : "");
}

}  // namespace host
