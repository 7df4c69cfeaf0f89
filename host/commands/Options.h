#pragma once

#include <optional>
#include <string>

namespace CLI {
class App;
}

/// Options that commands share.
namespace host {

/// Options of every command that reads a directory or a project file.
struct InputOptions {
    /// The directory or the project file.
    std::string input;
    bool isStrict = false;
};
void AddInputOptions(CLI::App& command, InputOptions& options);

/// Adds --object, an identifier.
void AddObjectOption(CLI::App& command, std::optional<int>& object, const std::string& description);

/// Adds the examples that end a command's help, and the notes before them.
void AddExamples(CLI::App& command, const std::string& examples, const std::string& notes = {});

/// Adds --dry-run.
void AddDryRun(CLI::App& command, bool& isDryRun);

}  // namespace host
