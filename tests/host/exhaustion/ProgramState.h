#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "support/Process.h"
#include "support/ProgramCommands.h"
#include "support/TemporaryDirectory.h"

namespace exhaustion {

/// The folder with all that a command works on, and the old files `out/document.json` and `out/answer.json`.
class ProgramState {
public:
    explicit ProgramState(const ProgramCommand& command);

    const std::filesystem::path& Folder() const { return folder_.Path(); }
    /// What is in it before a command runs.
    const Content& Before() const { return before_; }
    /// Makes it so again after a command has run.
    void Restore();

    /// Runs the program in a child process, which calls `prepare` first. The status is the number of a signal
    /// below zero if one ended it.
    ProcessResult Run(const std::function<void()>& prepare) const { return RunWith(arguments_, prepare); }

    /// Runs it with other arguments.
    ProcessResult RunWith(const std::vector<std::string>& arguments,
                          const std::function<void()>& prepare) const;

    /// The same once more after a run that was interrupted: what a database knows by then is stored again.
    ProcessResult RunAgain(const std::function<void()>& prepare) const;

    /// What the program reads from the project file or database, or the text of another file. The digits by
    /// which the keys of one database differ from those of another are left out. Throws if the program cannot
    /// read it.
    std::string TextOf(const std::string& name) const;

private:
    TemporaryDirectory folder_;
    Content before_;
    std::vector<std::string> arguments_;
};

}  // namespace exhaustion
