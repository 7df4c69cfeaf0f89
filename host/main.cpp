#include <exception>
#include <string>
#include <vector>

#include "commands/CommandLine.h"
#include "commands/ExitStatus.h"
#include "system/Console.h"
#include "system/Terminal.h"

#if defined(_WIN32)
#include <windows.h>
// Needs the types of windows.h before it.
#include <shellapi.h>
#endif

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

}  // namespace

int main(int argumentCount, char** arguments) {
    const host::StandardStreams streams;
    host::Console console;
    try {
        return host::RunCommandLine(ReadArguments(argumentCount, arguments), console);
    } catch (const std::bad_alloc&) {
        console.Say(
            "there is not enough memory for this project; export a part of it with --object, or give a "
            "directory in it");
    } catch (const std::exception& error) {
        console.Say(std::string("the work could not be finished: ") + error.what());
    }
    return host::kFailure;
}
