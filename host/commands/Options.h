#pragma once

#include <array>
#include <optional>
#include <string>

namespace CLI {
class App;
}

/// Options that commands share.
namespace host {

/// Options of the commands that read a directory or a project file.
struct InputOptions {
    /// The directory or the project file.
    std::string input;
    bool isStrict = false;
};
void AddInputOptions(CLI::App& command, InputOptions& options);

/// Adds --object, which takes an identifier.
void AddObjectOption(CLI::App& command, std::optional<int>& object, const std::string& description);

/// Adds an option that takes one of two words.
void AddChoice(CLI::App& command, const std::string& name, std::string& word,
               const std::array<std::string, 2>& words, const std::string& type,
               const std::string& description);

/// Adds the end of a command's help: the notes, if there are any, and the examples.
void AddExamples(CLI::App& command, const std::string& examples, const std::string& notes = {});

/// Adds --dry-run.
void AddDryRun(CLI::App& command, bool& isDryRun);

}  // namespace host
