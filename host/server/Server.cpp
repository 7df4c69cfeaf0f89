#include "Server.h"

#include <optional>
#include <system_error>
#include <utility>

#include "ServerStore.h"
#include "ServerTables.h"
#include "host/system/DatabaseJournal.h"
#include "host/system/FileSystem.h"
#include "host/system/NewDatabase.h"

namespace host {
namespace {

/// Whether there is nothing at the path. An empty file counts as something: a database can be created in it.
bool IsMissing(const std::filesystem::path& file) {
    Entry entry;
    return !file.empty() && InspectTarget(file, entry) == std::errc::no_such_file_or_directory;
}

}  // namespace

/// Either an open database or one that is still to get its name.
struct Server::State {
    State() : database(std::in_place) {}
    State(const std::filesystem::path& name, DatabaseUse use) : file(name) {
        if (use == DatabaseUse::Creating && IsMissing(name)) {
            fresh.emplace(name, kServerKind);
        } else {
            database.emplace(name, use, kServerKind);
        }
    }

    std::filesystem::path file;
    std::optional<NewDatabase> fresh;
    std::optional<Database> database;
};

Server::Server(std::unique_ptr<State> state) : state_(std::move(state)) {}
Server::~Server() = default;
Server::Server(Server&&) noexcept = default;
Server& Server::operator=(Server&&) noexcept = default;

Server Server::OpenForStoring(const std::filesystem::path& file, bool isDryRun) {
    if (!isDryRun) {
        return Server(std::make_unique<State>(file, DatabaseUse::Creating));
    }
    auto copy = std::make_unique<State>();
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    const bool isNew =
        status.type() == std::filesystem::file_type::not_found ||
        (std::filesystem::is_regular_file(status) && std::filesystem::file_size(file, error) == 0);
    // A dry run fails if the real run would fail to open the database.
    if (!isNew || file.empty()) {
        Database original(file, DatabaseUse::Creating, kServerKind);
        copy->database->CopyFrom(original);
    } else {
        RefuseLongName(file);
    }
    return Server(std::move(copy));
}

Server Server::OpenForFetching(const std::filesystem::path& file) {
    return Server(std::make_unique<State>(file, DatabaseUse::Reading));
}

JSONNode Server::Store(const JSONNode& document, const StoreRequest& request, StoreReport& report,
                       Console& console) {
    JSONNode answer(JSON_NODE);
    const auto store = [&](Database& database) {
        report = StoreReport();
        answer = StoreDocument(database, document, request, report, console);
    };
    if (state_->fresh) {
        state_->fresh->Fill(store);
        const bool isInPlace = state_->fresh->PutInPlace();
        state_->fresh.reset();
        if (isInPlace) {
            return answer;
        }
        // Another program has created the database since, so the document is stored in that one.
    }
    if (!state_->database) {
        state_->database.emplace(state_->file, DatabaseUse::Creating, kServerKind);
    }
    Transaction(*state_->database).Complete([&] { store(*state_->database); });
    return answer;
}

std::vector<StoredRoot> Server::List() {
    return ListRoots(*state_->database);
}

std::optional<FetchedRoot> Server::Find(const std::string& key) {
    return FindRoot(*state_->database, key);
}

std::error_code Server::Fetch(const FetchedRoot& root, const WritePiece& write, Console& console) {
    return FetchDocument(*state_->database, root, write, console);
}

}  // namespace host
