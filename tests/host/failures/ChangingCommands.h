#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "support/TemporaryDirectory.h"

/// The commands that change files, and what the tests of their failures share.
namespace failures {

/// What is at the command's file before it runs.
enum class Before { Nothing, EmptyFile, Database };

/// A command that changes a database. The test runs it in a folder with the directory "given", which nothing
/// changes, and the directory "work", in which the only file is the one that the command changes.
struct ChangingCommand {
    const char* name;
    std::vector<std::string> arguments;
    /// The file in "work".
    const char* file;
    Before before;
};

/// All commands that change databases. A new command is one line here.
inline const std::vector<ChangingCommand>& ChangingCommands() {
    static const std::vector<ChangingCommand> commands = {
        {"New", {"new", "given/studies", "work/p.kvp"}, "p.kvp", Before::Nothing},
        {"NewEmpty", {"new", "--empty", "work/p.kvp"}, "p.kvp", Before::Nothing},
        {"NewForce", {"new", "--force", "given/fewer", "work/p.kvp"}, "p.kvp", Before::Database},
        {"Apply", {"apply", "given/answer.json", "work/p.kvp"}, "p.kvp", Before::Database},
        {"ImportNew", {"import", "given/document.json", "work/p.kvp"}, "p.kvp", Before::Nothing},
        {"Import", {"import", "given/fewer.json", "work/p.kvp"}, "p.kvp", Before::Database},
        {"StoreNew",
         {"store", "given/document.json", "--db", "work/s.db", "-o", "answer"},
         "s.db",
         Before::Nothing},
        {"StoreEmpty",
         {"store", "given/document.json", "--db", "work/s.db", "-o", "answer"},
         "s.db",
         Before::EmptyFile},
        {"Store",
         {"store", "given/fewer.json", "--db", "work/s.db", "-o", "answer"},
         "s.db",
         Before::Database},
    };
    return commands;
}

/// How GoogleTest shows the command.
inline void PrintTo(const ChangingCommand& command, std::ostream* output) {
    *output << command.name;
}

/// Whether the tests run in full. Otherwise they try a part of the moments at which something can fail.
bool IsLongRun();

/// The folder in which the commands run, and the states that their files can have.
class CommandFolder {
public:
    /// Makes what the commands read, by running the program. Throws if one of them fails.
    /// `studies` sets the size of the projects: 40 make a database of a hundred pages.
    explicit CommandFolder(const ChangingCommand& command, int studies = 40);

    /// Puts the command's file, and nothing else, into "work".
    void Reset() const;
    /// The names in "work", in their order, each followed by a space.
    std::string Names() const;
    std::string NamesBefore() const {
        return command_.before == Before::Nothing ? "" : std::string(command_.file) + " ";
    }
    std::string NamesAfter() const { return std::string(command_.file) + " "; }
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

    std::filesystem::path Path() const { return folder_.Path(); }
    std::filesystem::path File() const { return folder_.Path() / "work" / command_.file; }

private:
    /// Whether the file's journal is left, which could not be deleted, and changes nothing.
    bool IsIdleJournalLeft() const;

    const ChangingCommand& command_;
    std::string start_;
    TemporaryDirectory folder_;
    std::optional<std::string> bytesBefore_;
    mutable std::map<std::string, std::string> texts_;
    std::string textBefore_;
    std::string textAfter_;
};

}  // namespace failures
