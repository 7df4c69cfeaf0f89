#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "ProgramCommands.h"

/// The formats of files that commands of korvane-json read. The table of all of them is in FileFormats.cpp;
/// what has a row there is damaged in every test of damage, and given to every command that reads it.

/// What a command may do with a damaged file that it does not refuse.
enum class DamagedReading {
    /// Exactly what it does with the sound one: a checksum shows any difference.
    AsSound,
    /// Exactly what the text says then, which is JSON: nothing shows that a letter is another one.
    AsText,
    /// What it makes of it, since people write such files by hand, or other programs do.
    AsFarAsItGoes,
};

struct FileFormat {
    std::string name;
    /// Where commands find it, in the folder of a ProgramCommand: by its name, or in a directory that they
    /// read. What is in `work` is a copy of the sound file in `given`.
    std::string place;
    DamagedReading damaged = DamagedReading::AsSound;
    /// The content of the sound file; empty if the folder has one anyway.
    std::string content = {};
    /// Commands that show all of the file; FILE and KEY stand for its name and for a key in it. The last one
    /// gives the same for the same content. Only for files that commands change.
    std::vector<std::vector<std::string>> readings = {};
    /// The command whose change is interrupted where tests need an interrupted one.
    std::string change = {};

    /// Whether the command reads it.
    bool IsReadBy(const ProgramCommand& command) const;
    /// The sound file in the folder.
    std::string Sound() const;
    /// The arguments of one of `readings`.
    static std::vector<std::string> Arguments(std::vector<std::string> reading, const std::string& file,
                                              const std::string& key);
};
/// How GoogleTest shows the format.
std::ostream& operator<<(std::ostream& stream, const FileFormat& format);

/// All formats. Each has commands that read it, and each file that a command changes is of one of them: tests
/// ask for both.
const std::vector<FileFormat>& AllFileFormats();

/// The format of the file with which a command works; throws if there is none.
const FileFormat& FormatOf(const ProgramCommand& command);
