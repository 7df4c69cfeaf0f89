#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "support/Process.h"
#include "support/TemporaryDirectory.h"

namespace exhaustion {

/// The files in a folder and below it, with their bytes.
using Content = std::map<std::string, std::string>;
Content ContentOf(const std::filesystem::path& folder);

/// A command that is tried with failures.
struct Command {
    const char* name;
    /// KEY stands for a key of the database.
    std::vector<std::string> arguments;
};
std::ostream& operator<<(std::ostream& stream, const Command& command);

/// All commands: a new one is tried in every way when it has a line here.
const std::vector<Command>& AllCommands();

/// A folder with all that the commands work on: the directory `root`, the project file `bracket.kvp`, its
/// document `bracket.json`, the database `server.db` with it, the answer `answer.json`, and the old files
/// `out/document.json` and `out/answer.json`.
class ProgramState {
public:
    ProgramState();

    const std::filesystem::path& Folder() const { return folder_.Path(); }
    /// What is in it before a command runs.
    const Content& Before() const { return before_; }
    /// Makes it so again after a command has run.
    void Restore();

    /// Runs the program in a child process, which calls `prepare` first. The status is the number of a signal
    /// below zero if one ended it.
    ProcessResult Run(const Command& command, const std::function<void()>& prepare) const;

private:
    void Do(const std::vector<std::string>& arguments) const;

    TemporaryDirectory folder_;
    Content before_;
    std::string key_;
};

/// Whether everything is tried, instead of a part.
bool IsLong();

}  // namespace exhaustion
