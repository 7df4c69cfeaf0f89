#pragma once

#include <filesystem>
#include <utility>

#include "Database.h"
#include "Server.h"
#include "ServerTables.h"

namespace host {

/// The open database behind a Server.
struct Server::State {
    /// Removes the file, as long as it is empty: what is left where a new database did not come about.
    struct EmptyFile {
        std::filesystem::path name;
        EmptyFile() = default;
        explicit EmptyFile(std::filesystem::path file) : name(std::move(file)) {}
        ~EmptyFile();
        EmptyFile(const EmptyFile&) = delete;
        EmptyFile& operator=(const EmptyFile&) = delete;
    };

    State() = default;
    State(const std::filesystem::path& file, DatabaseUse use)
        : leftover(use == DatabaseUse::Creating ? file : std::filesystem::path()),
          database(file, use, kServerKind) {}

    EmptyFile leftover;
    Database database;
};

/// Runs the work; what the database says becomes what the server says.
template <typename Work>
auto AsServer(const Work& work) {
    try {
        return work();
    } catch (const DatabaseError& error) {
        throw ServerError(error.what());
    }
}

}  // namespace host
