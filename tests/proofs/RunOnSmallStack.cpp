#include "RunOnSmallStack.h"

#include "support/Process.h"

namespace {

/// What a program that starts is given, and the status that stands for success.
struct Start {
    std::filesystem::path program;
    std::vector<std::string> firstArguments;
    int success;
};

#if defined(_WIN32)
Start SmallStackStart() {
    // SmallStackProgram.cpp says why its success is not 0.
    return {ProgramPath("korvane-json-on-small-stack"), {}, 100};
}
#else
Start SmallStackStart() {
    return {"/bin/sh", {"-c", R"(ulimit -s 256 && exec "$0" "$@")", ToUtf8(ProgramPath("korvane-json"))}, 0};
}
#endif

}  // namespace

CommandResult RunOnSmallStack(const std::vector<std::string>& arguments, const TemporaryDirectory& folder) {
    const Start start = SmallStackStart();
    ProcessOptions options;
    options.arguments = start.firstArguments;
    options.arguments.insert(options.arguments.end(), arguments.begin(), arguments.end());
    options.directory = folder.Path();
    options.output = folder / "output";
    std::filesystem::remove(options.output);
#if defined(_WIN32)
    const std::filesystem::path timeFile = folder / "milliseconds";
    std::filesystem::remove(timeFile);
    options.environment = {{"KORVANEJSON_TIME_FILE", ToUtf8(timeFile)}};
    const ProcessResult result = RunProgram(start.program, options);
    // One that did not come to its end has written none, and has a status that says so.
    const ProcessorTime time(std::filesystem::exists(timeFile) ? std::stoll(ReadWholeFile(timeFile)) : 0);
#else
    const ProcessorTime before = ProcessorTimeOfEndedPrograms();
    const ProcessResult result = RunProgram(start.program, options);
    const ProcessorTime time = ProcessorTimeOfEndedPrograms() - before;
#endif
    return {result.status - start.success, result.error, time};
}
