#include "NewDatabase.h"

#include <string>
#include <system_error>

#include "DatabaseJournal.h"
#include "FileSystem.h"
#include "TemporaryFile.h"

namespace host {
namespace {

using std::filesystem::path;

/// The folder of the file, where what earlier programs left unfinished is removed.
path CleanFolderOf(const path& file) {
    path folder = file.parent_path();
    RemoveLeftovers(folder.empty() ? path(".") : folder);
    return folder;
}

void Remove(const path& file) {
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
}

}  // namespace

NewDatabase::NewDatabase(const path& file, const DatabaseKind& kind)
    : file_(FollowToNewFile(file)),
      hiddenName_(NewTemporaryName(CleanFolderOf(file_))),
      hiddenJournal_(JournalOf(hiddenName_)) {
    RefuseLeftoverJournal(file_);
    RefuseLongName(file_);
    try {
        onInterrupt_.emplace(hiddenName_);
        held_.emplace(hiddenName_);
        database_.emplace(hiddenName_, DatabaseUse::Creating, kind);
    } catch (...) {
        Remove(hiddenName_);
        throw;
    }
}

NewDatabase::~NewDatabase() {
    database_.reset();
    Remove(hiddenJournal_);
    Remove(hiddenName_);
}

void NewDatabase::Fill(const std::function<void(Database&)>& work) {
    try {
        Transaction(*database_).Complete([&] { work(*database_); });
    } catch (const DatabaseError& error) {
        // Whatever remains has the hidden name.
        throw DatabaseError(error.what());
    }
}

bool NewDatabase::PutInPlace() {
    database_.reset();
    const std::error_code error = MoveToNewName(hiddenName_, file_);
    if (error && error != std::errc::file_exists) {
        throw DatabaseError("cannot be created: " + error.message());
    }
    onInterrupt_.reset();
    return !error;
}

}  // namespace host
