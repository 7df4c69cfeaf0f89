#pragma once

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/commands/ProgramSupport.h"
#include "support/FileFormats.h"
#include "support/ProgramCommands.h"

/// Commands on files that are damaged or hostile: each says so and changes nothing, or does exactly what the
/// format of the file allows.
class DamageTest : public ProgramInFolder {
protected:
    void SetUp() override;

    /// The bytes of the sound file.
    std::string BytesOf(const FileFormat& format) const { return Read(format.Sound()); }
    /// Runs every command that reads this file on it, with these bytes in place of the sound ones.
    void ExpectSafe(const FileFormat& format, const std::string& bytes, const std::string& what);

private:
    /// What a run leaves: all that can be seen of it.
    struct Outcome {
        int status = 0;
        std::string output;
        std::string error;
        /// The bytes of the file that may be damaged.
        std::string bytes;
        /// Those of the project file or database that the command works on; nothing if there is none.
        std::optional<std::string> work;
        /// What the program reads from the files that the command may change or create.
        std::string reading;
        /// All other files.
        Content others;
    };
    /// A command that reads a file, and what it does with the sound one.
    struct Reader {
        ProgramCommand command;
        Outcome right;
    };

    /// The commands that read the file.
    const std::vector<Reader>& ReadersOf(const FileFormat& format);
    Outcome RunOn(const ProgramCommand& command, const FileFormat& format, const std::string& bytes);
    std::string ReadingOf(const ProgramCommand& command) const;

    void ExpectOutcome(const FileFormat& format, const Reader& reader, const std::string& bytes);
    static void ExpectSame(const Outcome& outcome, const Outcome& right);
    void ExpectRefused(const ProgramCommand& command, const FileFormat& format, const Outcome& outcome) const;

    /// A key in the database.
    std::string key_;
    /// All files before the commands run.
    Content before_;
    std::map<std::string, std::vector<Reader>> readers_;
};
