#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Command.h"
#include "host/directory/Selection.h"

/// Options that commands share.
namespace host {

/// Options of the commands that read a directory or a project file.
struct InputOptions {
    /// The directory or the project file.
    std::string input;
    bool isStrict = false;
    Selection selection = {};
    /// Further directories whose files may be looked at.
    std::vector<std::string> filesIn = {};
};
/// Returns the argument for the directory or project file.
Option AddInputOptions(const Command& command, InputOptions& options);

/// Adds --study and --exclude. AddInputOptions has them.
void AddSelection(const Command& command, Selection& selection);

/// Adds --files-in.
void AddFilesIn(const Command& command, std::vector<std::string>& directories);

/// Adds --object, which takes an identifier.
void AddObjectOption(const Command& command, std::optional<int>& object, const std::string& description);

/// Adds an option that takes one of several words, in any letter case. `word` becomes it as it is in the
/// list.
Option AddChoice(const Command& command, const std::string& name, std::string& word,
                 const std::vector<std::string>& words, const std::string& type,
                 const std::string& description);

/// What a comparison leaves out.
struct Ignored {
    bool dates = false;
    bool keys = false;
    bool IsEmpty() const { return !dates && !keys; }
};
/// Adds --ignore, which takes `dates` or `keys` and can be given for each.
void AddIgnore(const Command& command, Ignored& ignored);

enum class ReportFormat { Text, Json };
/// Adds --format, which takes `text` (the default) or `json`.
void AddFormat(const Command& command, ReportFormat& format, const std::string& description);
/// The same for a command whose report is a message as text, and on the standard output as JSON.
void AddReportFormat(const Command& command, ReportFormat& format);

/// Adds the end of a command's help: the notes, if there are any, and the examples.
void AddExamples(const Command& command, const std::string& examples, const std::string& notes = {});

/// Adds --dry-run.
void AddDryRun(const Command& command, bool& isDryRun);

}  // namespace host
