#include "Commands.h"

#include <string_view>

#if defined(_WIN32)
#include <windows.h>

#include <stdexcept>

#include "host/commands/CommandLine.h"
#include "host/system/Console.h"
#include "support/SmallStack.h"
#else
#include "support/Process.h"
#endif

namespace {

std::string FirstKey(const TemporaryDirectory& folder) {
    constexpr std::string_view kMember = R"("dbkey":")";
    const std::string answer = ReadWholeFile(folder / "answer.json");
    const std::size_t begin = answer.find(kMember) + kMember.size();
    return answer.substr(begin, answer.find('"', begin) - begin);
}

std::vector<std::string> ArgumentsOf(const Command& command, const TemporaryDirectory& folder) {
    std::vector<std::string> arguments = command.arguments;
    for (std::string& argument : arguments) {
        if (argument.starts_with('@')) {
            argument = ToUtf8(folder / argument.substr(1));
        } else if (argument == "KEY") {
            argument = FirstKey(folder);
        }
    }
    return arguments;
}

#if defined(_WIN32)
/// Leads the standard output to a file.
class OutputTo {
public:
    explicit OutputTo(const std::filesystem::path& file)
        : before_(GetStdHandle(STD_OUTPUT_HANDLE)),
          file_(
              CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr)) {
        if (file_ == INVALID_HANDLE_VALUE || SetStdHandle(STD_OUTPUT_HANDLE, file_) == 0) {
            throw std::runtime_error("the standard output cannot be led to a file");
        }
    }
    ~OutputTo() {
        SetStdHandle(STD_OUTPUT_HANDLE, before_);
        CloseHandle(file_);
    }
    OutputTo(const OutputTo&) = delete;
    OutputTo& operator=(const OutputTo&) = delete;

private:
    HANDLE before_;
    HANDLE file_;
};
#endif

}  // namespace

const std::vector<Command>& Commands() {
    static const std::vector<Command> commands{
        {"import", {"import", "@doc.json", "@project.kvp"}},
        {"import_dry", {"import", "@doc.json", "@project.kvp", "--dry-run"}},
        {"tree_of_document", {"tree", "@doc.json"}},
        {"tree", {"tree", "@project.kvp"}},
        {"export_indented", {"export", "@project.kvp", "--text", "indented", "-o", "@indented.json"}},
        {"export_mode", {"export", "@project.kvp", "--mode", "STUDY", "-o", "@study.json"}},
        {"export", {"export", "@project.kvp", "-o", "@exported.json"}},
        {"compare_before", {"compare", "@exported.json", "@project.kvp"}},
        {"store_dry", {"store", "@exported.json", "--db", "@server.db", "-o", "@answer.json", "--dry-run"}},
        {"store", {"store", "@exported.json", "--db", "@server.db", "-o", "@answer.json"}},
        {"apply", {"apply", "@answer.json", "@project.kvp"}},
        {"fetch", {"fetch", "KEY", "--db", "@server.db", "-o", "@fetched.json"}},
        {"import_fetched", {"import", "@fetched.json", "@rebuilt.kvp"}},
        {"new", {"new", "--empty", "--force", "@rebuilt.kvp"}},
        {"compare", {"compare", "@fetched.json", "@project.kvp"}},
    };
    return commands;
}

#if defined(_WIN32)

CommandResult RunOnSmallStack(const Command& command, const TemporaryDirectory& folder) {
    CommandResult result;
    const std::vector<std::string> arguments = ArgumentsOf(command, folder);
    host::Console console([&](std::string_view text) { result.said += text; }, false,
                          &host::Console::Clock::now);
    const OutputTo output(folder / "output");
    OnSmallStack([&] { result.status = host::RunCommandLine(arguments, console); });
    return result;
}

#else

CommandResult RunOnSmallStack(const Command& command, const TemporaryDirectory& folder) {
    ProcessOptions options;
    options.arguments = {"-c", R"(ulimit -s 256 && exec "$0" "$@")", ToUtf8(ProgramPath("korvane-json"))};
    const std::vector<std::string> arguments = ArgumentsOf(command, folder);
    options.arguments.insert(options.arguments.end(), arguments.begin(), arguments.end());
    options.output = folder / "output";
    const ProcessResult result = RunProgram("/bin/sh", options);
    return {result.status, result.error};
}

#endif
