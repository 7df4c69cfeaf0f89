#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// How a program is started.
struct ProcessOptions {
    /// Arguments in UTF-8, the program's own name left out.
    std::vector<std::string> arguments;
    /// Variables set besides those of the test.
    std::vector<std::pair<std::string, std::string>> environment;
    /// Where it runs; the test's own directory if empty.
    std::filesystem::path directory;
    /// A file or device that takes its standard output instead of the result; made when it is not there.
    std::filesystem::path output;
    /// Its standard output is a pipe that is closed after this many bytes have been read.
    std::optional<std::size_t> bytesRead;
    /// A file that is its standard input; nothing is on it if empty.
    std::filesystem::path input = {};
};

struct ProcessResult {
    /// The exit status; a signal's number below zero where one ended the program.
    int status = 0;
    std::string output;
    std::string error;
};

/// Runs a program to its end. Throws when it cannot be started.
ProcessResult RunProgram(const std::filesystem::path& program, const ProcessOptions& options);

/// The path of a program of this project: it is beside the program that runs the tests.
std::filesystem::path ProgramPath(const std::string& name);
