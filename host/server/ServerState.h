#pragma once

#include <filesystem>
#include <utility>

#include "Server.h"
#include "ServerTables.h"
#include "host/system/Database.h"

namespace host {

/// The open database behind a Server.
struct Server::State {
    /// Removes the file, as long as it is empty: what is left where a new database did not come about. A file
    /// is empty too while another program makes its database there, so it stays until this one has its lock.
    struct EmptyFile {
        std::filesystem::path name;
        bool isOurs = false;
        EmptyFile() = default;
        /// A file that is there already is nobody's leftover.
        explicit EmptyFile(const std::filesystem::path& file) {
            std::error_code error;
            if (!std::filesystem::exists(std::filesystem::symlink_status(file, error))) {
                name = file;
            }
        }
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
