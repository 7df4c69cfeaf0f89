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
    const ProcessResult result = RunProgram(start.program, options);
    return {result.status - start.success, result.error, result.processorTime};
}
