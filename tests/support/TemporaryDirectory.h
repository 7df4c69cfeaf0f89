#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

/// A directory of the running test's own, removed with everything in it at the end.
class TemporaryDirectory {
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    /// The whole path, without links in it.
    const std::filesystem::path& Path() const { return path_; }
    /// The path of something in it; `name` is UTF-8.
    std::filesystem::path operator/(std::string_view name) const;

    /// Writes a file and makes the directories for it. Returns its path; throws when it cannot be
    /// written.
    std::filesystem::path Write(std::string_view name, std::string_view content) const;
    std::filesystem::path MakeDirectory(std::string_view name) const;

private:
    std::filesystem::path path_;
};

/// The bytes of a file; throws when it cannot be read.
std::string ReadWholeFile(const std::filesystem::path& file);

/// What is in a folder and below it: the files with their bytes, and the names of everything else.
using Content = std::map<std::string, std::string>;
Content ContentOf(const std::filesystem::path& folder);

/// Makes a folder the current one until it is destroyed.
class CurrentFolder {
public:
    explicit CurrentFolder(const std::filesystem::path& folder) : old_(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    ~CurrentFolder() { std::filesystem::current_path(old_); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    std::filesystem::path old_;
};

/// The path as UTF-8, as it is given on a command line.
std::string ToUtf8(const std::filesystem::path& path);
