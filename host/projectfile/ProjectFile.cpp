#include "ProjectFile.h"

#include <optional>
#include <random>
#include <string>
#include <system_error>

#include "ProjectTables.h"
#include "host/system/FileSystem.h"

namespace host {
namespace {

using std::filesystem::path;

/// A hidden, random name in the same folder.
path TemporaryName(const path& file) {
    std::random_device random;
    path name = ".korvane-json-";
    name += std::to_string(random()) + "-" + std::to_string(random()) + ".tmp";
    return file.parent_path() / name;
}

/// Removes the file with this name, and what SQLite keeps beside it, unless the file was renamed.
class TemporaryFile {
public:
    explicit TemporaryFile(path name) : name_(std::move(name)) {}
    ~TemporaryFile() {
        std::error_code ignored;
        std::filesystem::remove(name_, ignored);
        path journal = name_;
        journal += "-journal";
        std::filesystem::remove(journal, ignored);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    const path& Name() const { return name_; }

private:
    path name_;
};

/// SQLite would take a journal that is left over from an older file of this name for that of the new file.
void RefuseLeftovers(const path& file) {
    for (const char* const ending : {"-journal", "-wal"}) {
        path leftover = file;
        leftover += ending;
        std::error_code ignored;
        if (std::filesystem::exists(leftover, ignored)) {
            throw DatabaseError(std::string("cannot be created: a file with the same name and '") + ending +
                                "' at its end is left over from an older one. Remove it first");
        }
    }
}

/// Gives the complete file its name.
void PutInPlace(const path& temporary, const path& file) {
    const std::error_code error = MoveToNewName(temporary, file);
    if (error == std::errc::file_exists) {
        throw DatabaseError("already exists");
    }
    if (error) {
        throw DatabaseError("cannot be created: " + error.message());
    }
}

}  // namespace

struct ProjectFile::State {
    State(const path& file, bool forChange)
        : database(file, forChange ? DatabaseUse::Changing : DatabaseUse::Reading, kProjectFileKind) {
        if (forChange) {
            transaction.emplace(database);
        }
    }

    Database database;
    std::optional<Transaction> transaction;
    std::unique_ptr<CAEProject> project;
};

std::unique_ptr<CAEProject> ReadProjectFile(const path& file, Console& console) {
    Database database(file, DatabaseUse::Reading, kProjectFileKind);
    return ReadProjectTables(database, console);
}

ProjectFile::ProjectFile(std::unique_ptr<State> state) : state_(std::move(state)) {}
ProjectFile::~ProjectFile() = default;
ProjectFile::ProjectFile(ProjectFile&&) noexcept = default;
ProjectFile& ProjectFile::operator=(ProjectFile&&) noexcept = default;

ProjectFile ProjectFile::Open(const path& file, bool forChange, Console& console) {
    auto state = std::make_unique<State>(file, forChange);
    state->project = ReadProjectTables(state->database, console);
    return ProjectFile(std::move(state));
}

CAEProject& ProjectFile::Project() const {
    return *state_->project;
}

void ProjectFile::Save(Console& console) {
    Save(*state_->project, console);
}

void ProjectFile::Save(CAEProject& project, Console& console) {
    WriteProjectTables(state_->database, project, console);
    state_->transaction->Commit();
}

void CreateProjectFile(const path& file, CAEProject& project, Console& console) {
    std::error_code error;
    Entry entry;
    // A broken link counts as existing, and so does a device, which Windows has in every folder.
    if (std::filesystem::exists(std::filesystem::symlink_status(file, error)) ||
        !InspectTarget(file, entry)) {
        throw DatabaseError("already exists");
    }
    RefuseLeftovers(file);
    const TemporaryFile temporary(TemporaryName(file));
    {
        Database database(temporary.Name(), DatabaseUse::Creating, kProjectFileKind);
        Transaction transaction(database);
        CreateProjectTables(database);
        WriteProjectTables(database, project, console);
        transaction.Commit();
    }
    PutInPlace(temporary.Name(), file);
}

}  // namespace host
