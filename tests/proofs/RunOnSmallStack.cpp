#include "RunOnSmallStack.h"

#if defined(_WIN32)
#include <string_view>

#include "host/commands/CommandLine.h"
#include "host/system/Console.h"
#include "support/OutputTo.h"
#include "support/SmallStack.h"

CommandResult RunOnSmallStack(const std::vector<std::string>& arguments, const TemporaryDirectory& folder) {
    CommandResult result;
    host::Console console([&](std::string_view text) { result.said += text; }, false,
                          &host::Console::Clock::now);
    const CurrentFolder there(folder.Path());
    const OutputTo output("output");
    OnSmallStack([&] { result.status = host::RunCommandLine(arguments, console); });
    return result;
}

#else

#include "support/Process.h"

CommandResult RunOnSmallStack(const std::vector<std::string>& arguments, const TemporaryDirectory& folder) {
    ProcessOptions options;
    options.arguments = {"-c", R"(ulimit -s 256 && exec "$0" "$@")", ToUtf8(ProgramPath("korvane-json"))};
    options.arguments.insert(options.arguments.end(), arguments.begin(), arguments.end());
    options.directory = folder.Path();
    options.output = folder / "output";
    const ProcessResult result = RunProgram("/bin/sh", options);
    return {result.status, result.error};
}

#endif
