#include "Server.h"

#include "ServerState.h"
#include "host/system/Text.h"

namespace host {

void StoreReport::Say(const std::string& what, Console& console) const {
    console.Say(what + ": " + FormatCount(objects, "object", "objects") + " and " +
                FormatCount(files, "file", "files") + " stored, " + std::to_string(newKeys) +
                " of them under new keys" +
                (parted == 0 ? ""
                             : ", " + std::to_string(parted) +
                                   " no longer part of what they belonged to, because the document has them "
                                   "no more"));
    notes.Say(what, console);
}

Server::State::EmptyFile::~EmptyFile() {
    std::error_code error;
    if (isOurs && !name.empty() && std::filesystem::is_regular_file(name, error) &&
        std::filesystem::file_size(name, error) == 0) {
        std::filesystem::remove(name, error);
    }
}

Server::Server(std::unique_ptr<State> state) : state_(std::move(state)) {}
Server::~Server() = default;
Server::Server(Server&&) noexcept = default;
Server& Server::operator=(Server&&) noexcept = default;

Server Server::OpenForStoring(const std::filesystem::path& file, bool isDryRun) {
    return AsServer([&] {
        if (!isDryRun) {
            return Server(std::make_unique<State>(file, DatabaseUse::Creating));
        }
        auto copy = std::make_unique<State>();
        std::error_code error;
        const std::filesystem::file_status status = std::filesystem::status(file, error);
        const bool isNew =
            status.type() == std::filesystem::file_type::not_found ||
            (std::filesystem::is_regular_file(status) && std::filesystem::file_size(file, error) == 0);
        // What keeps the database from being opened keeps a run that is not dry from it as well.
        if (!isNew || file.empty()) {
            State original(file, DatabaseUse::Reading);
            copy->database.CopyFrom(original.database);
        }
        return Server(std::move(copy));
    });
}

Server Server::OpenForFetching(const std::filesystem::path& file) {
    return AsServer([&] { return Server(std::make_unique<State>(file, DatabaseUse::Reading)); });
}

}  // namespace host
