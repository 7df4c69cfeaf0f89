#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "support/Process.h"
#include "support/TemporaryDirectory.h"

namespace {

[[noreturn]] void Fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

/// Becomes the program; every failure is the status 126.
[[noreturn]] void BecomeProgram(const std::filesystem::path& program, const ProcessOptions& options,
                                int output, const std::filesystem::path& error) {
    std::vector<std::string> texts = {program.native()};
    texts.insert(texts.end(), options.arguments.begin(), options.arguments.end());
    std::vector<char*> arguments;
    arguments.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        arguments.push_back(text.data());
    }
    arguments.push_back(nullptr);
    for (const auto& [name, value] : options.environment) {
        ::setenv(name.c_str(), value.c_str(), 1);
    }
    const int input = ::open(options.input.empty() ? "/dev/null" : options.input.c_str(), O_RDONLY);
    const int errors = ::open(error.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const bool isReady = input >= 0 && errors >= 0 && ::dup2(input, 0) == 0 && ::dup2(output, 1) == 1 &&
                         ::dup2(errors, 2) == 2 &&
                         (options.directory.empty() || ::chdir(options.directory.c_str()) == 0);
    if (isReady) {
        ::execv(program.c_str(), arguments.data());
    }
    ::_exit(126);
}

std::string ReadFromPipe(int pipe, std::size_t most) {
    std::string bytes;
    std::array<char, 4096> buffer{};
    while (bytes.size() < most) {
        const ssize_t count = ::read(pipe, buffer.data(), std::min(buffer.size(), most - bytes.size()));
        if (count <= 0) {
            break;
        }
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return bytes;
}

}  // namespace

ProcessResult RunProgram(const std::filesystem::path& program, const ProcessOptions& options) {
    const TemporaryDirectory folder;
    const std::filesystem::path outputFile = options.output.empty() ? folder / "output" : options.output;
    const std::filesystem::path errorFile = folder / "error";
    std::array<int, 2> pipe = {-1, -1};
    if (options.bytesRead) {
        if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
            Fail("pipe");
        }
    } else {
        pipe[1] = ::open(outputFile.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        if (pipe[1] < 0) {
            Fail("the program's output");
        }
    }
    const pid_t child = ::fork();
    if (child < 0) {
        Fail("fork");
    }
    if (child == 0) {
        BecomeProgram(program, options, pipe[1], errorFile);
    }
    ::close(pipe[1]);
    ProcessResult result;
    if (options.bytesRead) {
        result.output = ReadFromPipe(pipe[0], *options.bytesRead);
        ::close(pipe[0]);
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            Fail("waitpid");
        }
    }
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    if (options.output.empty() && !options.bytesRead) {
        result.output = ReadWholeFile(outputFile);
    }
    result.error = ReadWholeFile(errorFile);
    return result;
}

std::filesystem::path ProgramPath(const std::string& name) {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / name;
}
