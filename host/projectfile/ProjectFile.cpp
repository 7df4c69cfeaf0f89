#include "ProjectFile.h"

#include <optional>
#include <system_error>
#include <utility>

#include "ProjectTables.h"
#include "host/system/DatabaseJournal.h"
#include "host/system/FileSystem.h"
#include "host/system/NewDatabase.h"

namespace host {

using std::filesystem::path;

namespace {

std::unique_ptr<CAEProject> Read(Database& database, const path& file, CheckDepth depth, Console& console) {
    const ReadingLimits limits(database);
    console.ShowProgress("Checking the project file", 0, 0);
    CheckProjectTables(database, depth);
    return ReadProjectTables(database, file, console);
}

}  // namespace

struct ProjectFile::State {
    State(const path& name, bool forChange)
        : file(name),
          database(name, forChange ? DatabaseUse::Changing : DatabaseUse::Reading, kProjectFileKind) {
        if (forChange) {
            transaction.emplace(database);
        }
    }

    path file;
    Database database;
    std::optional<Transaction> transaction;
    std::unique_ptr<CAEProject> project;
};

std::unique_ptr<CAEProject> ReadProjectFile(const path& file, Console& console) {
    Database database(file, DatabaseUse::Reading, kProjectFileKind);
    return Read(database, file, CheckDepth::ForReading, console);
}

ProjectFile::ProjectFile(std::unique_ptr<State> state) : state_(std::move(state)) {}
ProjectFile::~ProjectFile() = default;
ProjectFile::ProjectFile(ProjectFile&&) noexcept = default;
ProjectFile& ProjectFile::operator=(ProjectFile&&) noexcept = default;

ProjectFile ProjectFile::Open(const path& file, bool forChange, Console& console) {
    auto state = std::make_unique<State>(file, forChange);
    // Without a change too: a dry run fails if the real run would.
    RefuseLongName(file);
    state->project = Read(state->database, file, CheckDepth::ForChanging, console);
    return ProjectFile(std::move(state));
}

CAEProject& ProjectFile::Project() const {
    return *state_->project;
}

std::unique_ptr<CAEProject> ProjectFile::TakeProject() {
    return std::move(state_->project);
}

void ProjectFile::Save(Console& console) {
    Save(*state_->project, console);
}

void ProjectFile::Save(CAEProject& project, Console& console) {
    Save({project, state_->file}, console);
}

void ProjectFile::SaveWithout(std::unordered_set<int> files, Console& console) {
    Save({*state_->project, state_->file, std::move(files)}, console);
}

void ProjectFile::Save(const ProjectWriting& writing, Console& console) {
    state_->transaction->Complete([&] { WriteProjectTables(state_->database, writing, console); });
}

void ProjectFile::SaveKeys(Console& console) {
    state_->transaction->Complete([&] {
        UpdateProjectTables(state_->database, {*state_->project, state_->file}, console);
    });
}

void RefuseNewName(const path& file) {
    std::error_code error;
    Entry entry;
    // A broken link counts as existing, and so does a device, which Windows has in every folder.
    if (std::filesystem::exists(std::filesystem::symlink_status(file, error)) ||
        !InspectTarget(file, entry)) {
        throw DatabaseError("already exists");
    }
    RefuseLongName(file);
}

void CreateProjectFile(const path& file, CAEProject& project, Console& console) {
    RefuseNewName(file);
    NewDatabase database(file, kProjectFileKind);
    database.Fill([&](Database& tables) {
        CreateProjectTables(tables);
        WriteProjectTables(tables, {project, file}, console);
    });
    if (!database.PutInPlace()) {
        throw DatabaseError("already exists");
    }
}

}  // namespace host
