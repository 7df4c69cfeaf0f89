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
#include <string_view>
#include <system_error>

#include "host/commands/Program.h"

namespace exhaustion {

using std::filesystem::path;

namespace {

/// The values of all members with the name.
std::vector<std::string> TextsOfMember(std::string_view name, const std::string& json) {
    const std::string begin = '"' + std::string(name) + "\":\"";
    std::vector<std::string> texts;
    for (std::size_t place = json.find(begin); place != std::string::npos; place = json.find(begin, place)) {
        place += begin.size();
        texts.push_back(json.substr(place, json.find('"', place) - place));
    }
    return texts;
}

/// The text without the end that the keys of one database have in common.
std::string WithoutEndOf(const std::string& key, const std::string& text) {
    const std::string end = key.substr(std::min(key.rfind('-'), key.size()));
    std::string result;
    std::size_t from = 0;
    for (std::size_t place = 0; !end.empty() && (place = text.find(end, from)) != std::string::npos;
         from = place + end.size()) {
        result += text.substr(from, place - from);
    }
    return result + text.substr(from);
}

}  // namespace

ProgramState::ProgramState(const ProgramCommand& command) {
    folder_.Write("given/studies/README.md", "# A bracket\n");
    folder_.Write("given/studies/plan.csv", "a;b\n");
    folder_.Write("given/studies/.korvaneignore", "*.bak\n!kept.bak\n");
    folder_.Write("given/studies/plan.bak", "a\n");
    folder_.Write("given/studies/static/korvane.toml",
                  "name = \"Static\"\n[metadata]\nMass = { value = 2400, unit = \"g\" }\n"
                  "[part.plate.metadata]\nMass = { value = 90000, unit = \"g\" }\n");
    folder_.Write("given/studies/static/job.inp", "*INCLUDE, INPUT=job.inc\n*STEP\n*STATIC\n*END STEP\n");
    folder_.Write("given/studies/static/job.inc",
                  "*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 0, 1, 0\n*ELEMENT, TYPE=S3, ELSET=ALL\n1, 1, 2, 3\n");
    folder_.Write("given/studies/static/plate.msh",
                  "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n$Nodes\n3\n1 0 0 0\n2 1 0 0\n3 0 1 0\n$EndNodes\n"
                  "$Elements\n1\n1 2 2 0 1 1 2 3\n$EndElements\n");
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

std::string ProgramState::TextOf(const std::string& name) const {
    const auto read = [&](const std::vector<std::string>& arguments) {
        const ProcessResult result = RunWith(arguments, [] {});
        if (result.status != 0) {
            throw std::runtime_error(result.error);
        }
        return result.output;
    };
    if (name.ends_with(".kvp")) {
        return read({"export", name});
    }
    if (!name.ends_with(".db")) {
        const std::string text = ReadWholeFile(Folder() / name);
        const std::vector<std::string> keys = TextsOfMember("dbkey", text);
        return keys.empty() ? text : WithoutEndOf(keys.front(), text);
    }
    std::string text = read({"fetch", "--list", "--format", "json", "--db", name});
    const std::vector<std::string> keys = TextsOfMember("key", text);
    for (const std::string& key : keys) {
        text += read({"fetch", key, "--db", name});
    }
    return keys.empty() ? text : WithoutEndOf(keys.front(), text);
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
