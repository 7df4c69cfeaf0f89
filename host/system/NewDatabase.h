#pragma once

#include <filesystem>
#include <functional>
#include <optional>

#include "Database.h"
#include "TemporaryFile.h"

namespace host {

/// A database that does not exist yet. It is created under a hidden name in the same folder and gets its own
/// name when it is complete, so that no other program sees a part of it, and a failure leaves nothing.
class NewDatabase {
public:
    /// Begins a new database, which has no kind until SetKind is called. Throws DatabaseError if it cannot be
    /// created, or if a journal is left over from an older one. If there is a file with the name, nothing is
    /// reported until PutInPlace.
    NewDatabase(const std::filesystem::path& file, const DatabaseKind& kind);
    ~NewDatabase();
    NewDatabase(const NewDatabase&) = delete;
    NewDatabase& operator=(const NewDatabase&) = delete;

    /// Fills it in one transaction. Throws DatabaseError, and then nothing was changed.
    void Fill(const std::function<void(Database&)>& work);
    /// Closes the complete database and gives it its name. Returns false, and changes nothing, if a file with
    /// the name has come into being; throws DatabaseError if the name cannot be given for another reason.
    bool PutInPlace();

private:
    std::filesystem::path file_;
    std::filesystem::path hiddenName_;
    std::filesystem::path hiddenJournal_;
    std::optional<RemovedOnInterrupt> onInterrupt_;
    std::optional<HeldTemporaryFile> held_;
    std::optional<Database> database_;
};

}  // namespace host
