#include "Process.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <stdexcept>
#include <utility>

namespace bench {
namespace {

double SecondsOf(const rusage& usage) {
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

[[noreturn]] void Become(std::vector<std::string> command, int output) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (std::string& argument : command) {
        arguments.push_back(argument.data());
    }
    arguments.push_back(nullptr);
    dup2(output, STDOUT_FILENO);
    execv(arguments.front(), arguments.data());
    _exit(127);
}

Usage WaitFor(pid_t child, const std::vector<std::string>& command) {
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) != 0) {
        throw std::runtime_error("this failed: " + command.front() + " " +
                                 (command.size() > 1 ? command[1] : std::string()));
    }
    constexpr double kKiBPerMiB = 1024;
    return {SecondsOf(usage), static_cast<double>(usage.ru_maxrss) / kKiBPerMiB, {}};
}

}  // namespace

void RunApart(const std::function<void()>& work) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        try {
            work();
        } catch (const std::exception& error) {
            std::fprintf(stderr, "measure-program: %s\n", error.what());
            _exit(1);
        }
        _exit(0);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        throw std::runtime_error("a check failed");
    }
}

Usage Run(const std::vector<std::string>& command) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        throw std::runtime_error("no pipe can be made");
    }
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        Become(command, ends[1]);
    }
    close(ends[1]);
    std::string output;
    std::array<char, 4096> bytes{};
    for (ssize_t size = 0; (size = read(ends[0], bytes.data(), bytes.size())) > 0;) {
        output.append(bytes.data(), static_cast<std::size_t>(size));
    }
    close(ends[0]);
    Usage usage = WaitFor(child, command);
    usage.output = std::move(output);
    return usage;
}

Usage RunInto(const std::string& file, const std::vector<std::string>& command) {
    const int output = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (output < 0) {
        throw std::runtime_error("this cannot be written: " + file);
    }
    const pid_t child = fork();
    if (child == 0) {
        Become(command, output);
    }
    close(output);
    return WaitFor(child, command);
}

double ProcessorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return SecondsOf(usage);
}

}  // namespace bench
