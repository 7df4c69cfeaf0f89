#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "host/directory/DirectoryReader.h"

namespace CLI {
class App;
}

/// What the commands of the program share.
namespace host {

/// The program's exit statuses.
inline constexpr int kSuccess = 0;
/// The work could not be done, or --strict does not let it count, or `compare` found differences.
inline constexpr int kFailure = 1;
inline constexpr int kBadUsage = 2;

/// Options of every command that reads a directory or a project file.
struct InputOptions {
    /// The directory or the project file.
    std::string input;
    bool isStrict = false;
};
void AddInputOptions(CLI::App& command, InputOptions& options);

/// Adds --object, an identifier.
void AddObjectOption(CLI::App& command, std::optional<int>& object, const std::string& description);

/// Adds the examples that end a command's help.
void AddExamples(CLI::App& command, std::string_view examples);

/// Reads the project that the options name. Nothing, after a message, where the directory or the project file
/// cannot be read.
std::optional<DirectoryReading> OpenProject(const InputOptions& options,
                                            const std::optional<std::filesystem::path>& leftOut,
                                            Console& console);

/// Ends a command that has done its work: says how much was left out, and gives the exit status that the
/// options ask for then.
int Finish(const InputOptions& options, const DirectoryReading& reading, Console& console);

/// Writes the text to the standard output. A reader that has gone away has what it wanted; any other failure
/// is said on the console and gives false.
bool WriteToStandardOutput(std::string_view text, Console& console);

}  // namespace host
