#include "ProgramState.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <ostream>
#include <stdexcept>
#include <system_error>

#include "host/commands/Program.h"

namespace exhaustion {

using std::filesystem::path;

ProgramState::ProgramState(const ProgramCommand& command) {
    folder_.Write("given/studies/README.md", "# A bracket\n");
    folder_.Write("given/studies/plan.csv", "a;b\n");
    folder_.Write("given/studies/static/job.inp", "*STEP\n*STATIC\n*END STEP\n");
    folder_.Write("given/studies/static/plate.stl",
                  "solid\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendloop\n"
                  "endfacet\nendsolid\n");
    folder_.Write("given/studies/static/plate.png", "\x89PNG");
    folder_.Write("given/studies/notes/old.txt", "text\n");
    std::filesystem::create_symlink("gone", folder_ / "given/studies/dangling.inp");
    folder_.Write("given/other/modes/job.bdf", "SOL 101\nCEND\nBEGIN BULK\nENDDATA\n");
    const auto run = [&](const std::vector<std::string>& arguments) {
        const ProcessResult result = RunWith(arguments, [] {});
        if (result.status != 0) {
            throw std::runtime_error(result.error);
        }
    };
    run({"new", "given/studies", "given/p.kvp"});
    run({"export", "given/other", "-o", "given/other.json"});
    CompleteCommandFolder(folder_, run);
    folder_.Write("out/document.json", "old\n");
    folder_.Write("out/answer.json", "old\n");
    PutFileOf(command, folder_);
    arguments_ = ArgumentsIn(folder_, command);
    before_ = ContentOf(Folder());
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

ProcessResult ProgramState::RunAgain(const std::function<void()>& prepare) const {
    std::vector<std::string> arguments = arguments_;
    if (arguments.front() == "store" && std::ranges::find(arguments, "--again") == arguments.end()) {
        const ProcessResult first = RunWith(arguments, prepare);
        if (first.status == 0) {
            return first;
        }
        arguments.emplace_back("--again");
    }
    return RunWith(arguments, prepare);
}

ProcessResult ProgramState::RunWith(const std::vector<std::string>& arguments,
                                    const std::function<void()>& prepare) const {
    std::vector<std::string> texts = {"korvane-json"};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
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
        ::_exit(host::RunProgram(static_cast<int>(texts.size()), pointers.data()));
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
