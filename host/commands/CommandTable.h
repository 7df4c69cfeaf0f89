#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

/// The commands and options of the program as plain data, for the completion of shells.
namespace host {

/// What an argument, or the value of an option, can be.
struct ValueKind {
    /// One of these words.
    std::vector<std::string> words;
    /// A file or a directory.
    bool isFile = false;
    bool isDirectory = false;
    /// How the names of the files end; any if it is empty.
    std::vector<std::string> endings;
};

struct CommandOption {
    /// `--output`
    std::string longName;
    /// `-o`, or empty.
    std::string shortName;
    /// The first part of it, on one line.
    std::string description;
    bool hasValue = false;
    std::string valueName;
    ValueKind value;
};

struct CommandArgument {
    std::string name;
    /// Whether any number of them may follow.
    bool isRepeated = false;
    ValueKind value;
};

struct CommandEntry {
    std::string name;
    std::string description;
    std::vector<CommandOption> options;
    std::vector<CommandArgument> arguments;
};

/// The program itself, which has no arguments, and then its commands in their order.
std::vector<CommandEntry> CommandTableOf(const CLI::App& program);

}  // namespace host
