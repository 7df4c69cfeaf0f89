#pragma once

#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "TemporaryDirectory.h"

/// The commands of korvane-json that tests try in every way: with files that fail, without memory, on damaged
/// files, with deep documents. The table of all of them is in ProgramCommands.cpp.

/// What a command does with its project file or database.
enum class FileUse {
    /// It has none.
    None,
    /// It reads it.
    Reads,
    /// It creates it.
    Creates,
    /// It makes a database of an empty file.
    Fills,
    /// It changes it.
    Changes,
};

/// A command in a folder with three directories:
/// - `given`, which no command changes: the directories `studies` and `other`, the project file `p.kvp`, its
///   document `document.json`, another document `other.json`, the database `s.db` with the first document,
///   and `answer.json`, the answer to it;
/// - `work`, with the command's own project file or database, a copy of the one in `given`, and nothing else;
/// - `out`, for everything else that commands write.
struct ProgramCommand {
    std::string name;
    /// KEY stands for the key of the project in the database. A file that is written with -o comes last.
    std::vector<std::string> arguments;
    FileUse use = FileUse::None;
    /// The file in `work`.
    std::string file = {};
    /// The exit status where its work fails.
    int failure = 1;

    bool IsChanging() const { return use != FileUse::None && use != FileUse::Reads; }
    /// Whether its file is there, with a project or documents in it, before it runs.
    bool HasFile() const { return use == FileUse::Reads || use == FileUse::Changes; }
};
/// How GoogleTest shows the command.
std::ostream& operator<<(std::ostream& stream, const ProgramCommand& command);

/// All commands. Those of the program's help must be here: a test compares them.
const std::vector<ProgramCommand>& AllCommands();

/// The commands that the program's help lists.
std::set<std::string> CommandsOfHelp();

/// The commands for which the condition holds.
std::vector<ProgramCommand> CommandsWhere(const std::function<bool(const ProgramCommand&)>& condition);

/// The first of the commands with each name on the command line, where all of them would take too long.
std::vector<ProgramCommand> OneOfEach(const std::vector<ProgramCommand>& commands);

/// The same where a sample is enough (LongRun.h), elsewhere all of them.
std::vector<ProgramCommand> OneOfEachInASample(const std::vector<ProgramCommand>& commands);

/// Whether the command is one of those with other options of which a few failures say enough: only in a long
/// run are others than the first of the commands with a name tried with all of them.
bool IsTriedBriefly(const ProgramCommand& command);

/// Makes the rest of the folder when it has `given/studies`, `given/other`, `given/p.kvp` and
/// `given/other.json`. `run` runs the program in the folder, and throws if it fails.
void CompleteCommandFolder(const TemporaryDirectory& folder,
                           const std::function<void(const std::vector<std::string>&)>& run);

/// Puts the command's file, as it is before the command runs, and nothing else into `work`.
void PutFileOf(const ProgramCommand& command, const TemporaryDirectory& folder);

/// The arguments with the key in place of KEY.
std::vector<std::string> ArgumentsIn(const TemporaryDirectory& folder, const ProgramCommand& command);

/// The first key in an answer or a stored document.
std::string FirstKey(std::string_view text);
