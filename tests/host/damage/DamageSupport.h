#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "host/commands/ProgramSupport.h"

/// Commands on files that are damaged or hostile: each says so and changes nothing, or does exactly what it
/// does with the sound file.

/// Which file a command gets damaged.
enum class DamagedFile { Project, Database };

/// A command that works on the project file `p.kvp` or the database `s.db`. Besides, there are the directory
/// `root`, the document `d.json` and the answer to it, `answer.json`; KEY stands for a key of the database.
struct DamagedRun {
    DamagedFile file;
    std::vector<std::string> arguments;
    /// Whether it may change the file; if it does, the file is read again.
    bool isChanging = false;
};

/// Every command that reads a project file or a database. A new one is one more line.
inline std::vector<DamagedRun> DamagedRuns() {
    return {
        {DamagedFile::Project, {"tree", "p.kvp"}},
        {DamagedFile::Project, {"export", "p.kvp"}},
        {DamagedFile::Project, {"export", "p.kvp", "--object", "3", "--mode", "STUDY", "-o", "out"}},
        {DamagedFile::Project, {"compare", "d.json", "p.kvp"}},
        {DamagedFile::Project, {"new", "p.kvp", "q.kvp"}},
        {DamagedFile::Project, {"new", "--empty", "--force", "p.kvp"}, true},
        {DamagedFile::Project, {"import", "part.json", "p.kvp"}, true},
        {DamagedFile::Project, {"import", "part.json", "p.kvp", "--dry-run"}},
        {DamagedFile::Project, {"apply", "answer.json", "p.kvp"}, true},
        {DamagedFile::Project, {"apply", "answer.json", "p.kvp", "--dry-run"}},
        {DamagedFile::Database, {"fetch", "KEY", "--db", "s.db", "-o", "out"}},
        {DamagedFile::Database, {"store", "d.json", "--db", "s.db", "-o", "out"}, true},
        {DamagedFile::Database, {"store", "part.json", "--db", "s.db", "--project", "P"}, true},
        {DamagedFile::Database, {"store", "d.json", "--db", "s.db", "--dry-run"}},
    };
}

/// The whole proof runs if the environment asks for it; the usual tests run a part of it.
inline bool IsLongTest() {
    const char* const text = std::getenv("KORVANEJSON_LONG");
    return text != nullptr && *text != '\0' && std::string_view(text) != "0";
}

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
        /// The names and bytes of all other files.
        std::string others;
    };
    static const char* NameOf(DamagedFile file) { return file == DamagedFile::Project ? "p.kvp" : "s.db"; }

    Outcome RunOn(const DamagedRun& run, const std::string& bytes, bool isRead);
    std::string ContentWithout(const std::string& name) const;
    void ExpectRightOrRefused(const DamagedRun& run, const Outcome& outcome, const Outcome& right,
                              const std::string& bytes) const;

    std::string kvp_;
    std::string db_;
    std::string key_;
    /// The outcomes with the sound file, in the order of DamagedRuns.
    std::vector<Outcome> right_;
    /// The names and bytes of everything else before the runs.
    std::string othersOfProject_;
    std::string othersOfDatabase_;
};
