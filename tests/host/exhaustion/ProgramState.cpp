#include "ProgramState.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <ostream>
#include <stdexcept>
#include <system_error>

#include "host/commands/Program.h"

namespace exhaustion {

using std::filesystem::path;

std::ostream& operator<<(std::ostream& stream, const Command& command) {
    return stream << command.name;
}

const std::vector<Command>& AllCommands() {
    static const std::vector<Command> commands = {
        {"Help", {"--help"}},
        {"TreeOfDirectory", {"tree", "root"}},
        {"TreeOfProjectFile", {"tree", "bracket.kvp"}},
        {"TreeOfDocument", {"tree", "bracket.json"}},
        {"Export", {"export", "root"}},
        {"ExportToNewFile", {"export", "root", "-o", "out/new.json"}},
        {"ExportToOldFile", {"export", "bracket.kvp", "-o", "out/document.json"}},
        {"New", {"new", "root", "made.kvp"}},
        {"NewEmpty", {"new", "--empty", "made.kvp"}},
        {"NewInOldFile", {"new", "--force", "root", "bracket.kvp"}},
        {"Import", {"import", "bracket.json", "made.kvp"}},
        {"ImportIntoOldFile", {"import", "bracket.json", "bracket.kvp"}},
        {"ImportDryRun", {"import", "bracket.json", "bracket.kvp", "--dry-run"}},
        {"Store", {"store", "bracket.json", "--db", "server.db", "-o", "out/answer.json"}},
        {"StoreInNewDatabase", {"store", "bracket.json", "--db", "made.db", "-o", "out/answer.json"}},
        {"Apply", {"apply", "answer.json", "bracket.kvp"}},
        {"Fetch", {"fetch", "KEY", "--db", "server.db", "-o", "out/document.json"}},
        {"Compare", {"compare", "bracket.kvp", "bracket.json"}},
    };
    return commands;
}

Content ContentOf(const path& folder) {
    Content content;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            content[entry.path().lexically_relative(folder)] = ReadWholeFile(entry.path());
        }
    }
    return content;
}

bool IsLong() {
    return std::getenv("KORVANEJSON_LONG") != nullptr;
}

ProgramState::ProgramState() {
    folder_.Write("root/README.md", "# A bracket\n");
    folder_.Write("root/plan.csv", "a;b\n");
    folder_.Write("root/static/job.inp", "*STEP\n*STATIC\n*END STEP\n");
    folder_.Write("root/static/plate.stp", "ISO-10303-21;\nHEADER;\n");
    folder_.Write("root/static/plate.png", "\x89PNG");
    folder_.Write("root/notes/old.txt", "text\n");
    std::filesystem::create_symlink("gone", folder_ / "root/dangling.inp");
    folder_.Write("out/document.json", "old\n");
    folder_.Write("out/answer.json", "old\n");
    Do({"new", "root", "bracket.kvp"});
    Do({"export", "bracket.kvp", "-o", "bracket.json"});
    Do({"store", "bracket.json", "--db", "server.db", "-o", "answer.json"});
    const std::string answer = ReadWholeFile(folder_ / "answer.json");
    const std::string mark = "\"dbkey\":\"";
    const std::size_t begin = answer.find(mark) + mark.size();
    key_ = answer.substr(begin, answer.find('"', begin) - begin);
    before_ = ContentOf(Folder());
}

void ProgramState::Do(const std::vector<std::string>& arguments) const {
    const ProcessResult result = Run({"", arguments}, [] {});
    if (result.status != 0) {
        throw std::runtime_error(result.error);
    }
}

void ProgramState::Restore() {
    const Content now = ContentOf(Folder());
    for (const auto& [name, bytes] : now) {
        if (!before_.contains(name)) {
            std::filesystem::remove(Folder() / name);
        }
    }
    for (const auto& [name, bytes] : before_) {
        const auto found = now.find(name);
        if (found == now.end() || found->second != bytes) {
            folder_.Write(name, bytes);
        }
    }
}

ProcessResult ProgramState::Run(const Command& command, const std::function<void()>& prepare) const {
    std::vector<std::string> texts = {"korvane-json"};
    for (const std::string& argument : command.arguments) {
        texts.push_back(argument == "KEY" ? key_ : argument);
    }
    std::vector<char*> arguments;
    arguments.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        arguments.push_back(text.data());
    }
    arguments.push_back(nullptr);
    const TemporaryDirectory streams;
    const path output = streams / "output";
    const path error = streams / "error";
    const pid_t child = ::fork();
    if (child < 0) {
        throw std::system_error(errno, std::generic_category(), "fork");
    }
    if (child == 0) {
        // A run that never ends is a failure too.
        ::alarm(120);
        const bool isReady = ::dup2(::open("/dev/null", O_RDONLY), 0) == 0 &&
                             ::dup2(::open(output.c_str(), O_WRONLY | O_CREAT, 0600), 1) == 1 &&
                             ::dup2(::open(error.c_str(), O_WRONLY | O_CREAT, 0600), 2) == 2 &&
                             ::chdir(Folder().c_str()) == 0;
        if (!isReady) {
            ::_exit(126);
        }
        ::setenv("LC_ALL", "C.UTF-8", 1);
        prepare();
        ::_exit(host::RunProgram(static_cast<int>(texts.size()), arguments.data()));
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "waitpid");
        }
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), ReadWholeFile(output),
            ReadWholeFile(error)};
}

}  // namespace exhaustion
