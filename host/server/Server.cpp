#include "Server.h"

#include <system_error>
#include <utility>

#include "ServerFetch.h"
#include "ServerStore.h"
#include "ServerTables.h"

namespace host {
namespace {

/// Removes the file if it is empty: that is left if a new database was not completed. A file is also empty
/// while another program creates its database there, so it is kept until this program has the lock.
class EmptyFile {
public:
    EmptyFile() = default;
    /// A file that exists already is never removed.
    explicit EmptyFile(const std::filesystem::path& file) {
        std::error_code error;
        if (!std::filesystem::exists(std::filesystem::symlink_status(file, error))) {
            name_ = file;
        }
    }
    ~EmptyFile() {
        std::error_code error;
        if (isOurs_ && !name_.empty() && std::filesystem::is_regular_file(name_, error) &&
            std::filesystem::file_size(name_, error) == 0) {
            std::filesystem::remove(name_, error);
        }
    }
    EmptyFile(const EmptyFile&) = delete;
    EmptyFile& operator=(const EmptyFile&) = delete;

    /// To be called when this program has the lock of the database.
    void TakeOver() { isOurs_ = true; }

private:
    std::filesystem::path name_;
    bool isOurs_ = false;
};

}  // namespace

/// The open database. It is closed before an empty file is removed.
struct Server::State {
    State() = default;
    State(const std::filesystem::path& file, DatabaseUse use)
        : leftover(use == DatabaseUse::Creating ? file : std::filesystem::path()),
          database(file, use, kServerKind) {}

    EmptyFile leftover;
    Database database;
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
        State original(file, DatabaseUse::Reading);
        copy->database.CopyFrom(original.database);
    }
    return Server(std::move(copy));
}

Server Server::OpenForFetching(const std::filesystem::path& file) {
    return Server(std::make_unique<State>(file, DatabaseUse::Reading));
}

JSONNode Server::Store(const JSONNode& document, const std::string& project, StoreReport& report,
                       Console& console) {
    Transaction transaction(state_->database);
    state_->leftover.TakeOver();
    JSONNode answer = StoreDocument(state_->database, document, project, report, console);
    transaction.Commit();
    return answer;
}

bool Server::Fetch(const std::string& key, JSONNode& document, Console& console) {
    return FetchDocument(state_->database, key, document, console);
}

}  // namespace host
