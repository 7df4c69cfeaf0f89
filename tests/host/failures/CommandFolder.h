#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/ProgramCommands.h"
#include "support/TemporaryDirectory.h"

namespace failures {

/// The commands that change databases, those that are tried here.
inline std::vector<ProgramCommand> ChangingCommands() {
    return OneOfEachInASample(CommandsWhere(&ProgramCommand::IsChanging));
}

/// The folder in which the commands run, and the states that their files can have.
class CommandFolder {
public:
    /// Makes what the commands read, by running the program. Throws if one of them fails.
    /// `studies` sets the size of the projects: 40 make a database of a hundred pages.
    explicit CommandFolder(const ProgramCommand& command, int studies = 40);

    /// Puts the command's file, and nothing else, into "work", and leaves nothing in "out".
    void Reset() const;
    /// The command's arguments in this folder.
    std::vector<std::string> Arguments() const { return ArgumentsIn(folder_, command_); }
    /// The names in "work", in their order, each followed by a space.
    std::string Names() const;
    std::string NamesBefore() const { return command_.use == FileUse::Creates ? "" : command_.file + " "; }
    std::string NamesAfter() const { return command_.file + " "; }
    /// The bytes of the command's file; nothing if there is none.
    std::optional<std::string> Bytes() const;
    const std::optional<std::string>& BytesBefore() const { return bytesBefore_; }

    /// What is in the command's file, as SQLite and the program's own reading commands find it: TextBefore or
    /// TextAfter, or what is wrong. SQLite repairs what an interrupted program left.
    std::string Text() const;
    const std::string& TextBefore() const { return textBefore_; }
    const std::string& TextAfter() const { return textAfter_; }

    /// Opens the command's file with a reading command, which repairs it. Returns what the program said if
    /// that is not what it says of a whole file.
    std::string OpenWithProgram() const;

    /// What is untrue of what the command said with the exit status, or wrong with its file; empty if all is
    /// well.
    std::string Untruth(int status, const std::string& said) const;

    const TemporaryDirectory& Folder() const { return folder_; }
    std::filesystem::path Path() const { return folder_.Path(); }
    std::filesystem::path File() const { return folder_.Path() / "work" / command_.file; }

private:
    /// Whether the file's journal is left, which could not be deleted, and changes nothing.
    bool IsIdleJournalLeft() const;

    const ProgramCommand& command_;
    std::string start_;
    TemporaryDirectory folder_;
    std::optional<std::string> bytesBefore_;
    mutable std::map<std::string, std::string> texts_;
    std::string textBefore_;
    std::string textAfter_;
};

}  // namespace failures
