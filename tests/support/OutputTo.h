#pragma once

#include <cstdio>
#include <filesystem>
#include <stdexcept>

#if defined(_WIN32)
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

/// Leads the standard output of this process to a file until it is destroyed.
class OutputTo {
public:
    explicit OutputTo(const std::filesystem::path& file);
    ~OutputTo();
    OutputTo(const OutputTo&) = delete;
    OutputTo& operator=(const OutputTo&) = delete;

private:
#if defined(_WIN32)
    HANDLE before_;
    HANDLE file_;
#else
    int before_;
#endif
};

#if defined(_WIN32)

inline OutputTo::OutputTo(const std::filesystem::path& file)
    : before_(GetStdHandle(STD_OUTPUT_HANDLE)),
      file_(CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr)) {
    if (file_ == INVALID_HANDLE_VALUE || SetStdHandle(STD_OUTPUT_HANDLE, file_) == 0) {
        throw std::runtime_error("the standard output cannot be led to a file");
    }
}

inline OutputTo::~OutputTo() {
    SetStdHandle(STD_OUTPUT_HANDLE, before_);
    CloseHandle(file_);
}

#else

inline OutputTo::OutputTo(const std::filesystem::path& file) : before_(::dup(STDOUT_FILENO)) {
    std::fflush(stdout);
    const int opened = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (before_ < 0 || opened < 0 || ::dup2(opened, STDOUT_FILENO) < 0 || ::close(opened) != 0) {
        throw std::runtime_error("the standard output cannot be led to a file");
    }
}

inline OutputTo::~OutputTo() {
    ::dup2(before_, STDOUT_FILENO);
    ::close(before_);
}

#endif
