#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/commands/ProgramSupport.h"
#include "support/ProgramCommands.h"

/// Commands on files that are damaged or hostile: each says so and changes nothing, or does exactly what it
/// does with the sound file.

/// Which file of the commands is damaged.
enum class DamagedFile { Project, Database };

class DamageTest : public ProgramInFolder {
protected:
    void SetUp() override;

    /// Runs every command that reads this file on it, with these bytes in place of the sound ones.
    void ExpectSafe(DamagedFile file, const std::string& bytes, const std::string& what);
    const std::string& BytesOf(DamagedFile file) const { return file == DamagedFile::Project ? kvp_ : db_; }

private:
    /// What a run leaves: all that can be seen of it.
    struct Outcome {
        int status = 0;
        std::string output;
        std::string error;
        /// The bytes of the file that the command works on.
        std::string bytes;
        /// What the program reads from the files that the command may change or create.
        std::string reading;
        /// All other files.
        Content others;
    };
    static const char* NameOf(DamagedFile file) { return file == DamagedFile::Project ? "p.kvp" : "s.db"; }

    Outcome RunOn(const ProgramCommand& command, const std::string& bytes, bool isRead);
    void ExpectRightOrRefused(const ProgramCommand& command, const Outcome& outcome, const Outcome& right,
                              const std::string& bytes) const;

    std::string kvp_;
    std::string db_;
    std::string key_;
    /// The commands that read or change a file that is there.
    std::vector<ProgramCommand> commands_ = CommandsWhere(&ProgramCommand::HasFile);
    /// Their outcomes with the sound file, in the same order.
    std::vector<Outcome> right_;
    /// All other files before the commands run.
    Content others_;
};
