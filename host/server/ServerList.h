#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/system/Database.h"

namespace host {

/// The root of a stored document, which is a whole project or an object that was stored alone.
struct StoredRoot {
    std::string key;
    /// The project that it was stored under, whose name may be another than that of the root.
    std::string project;
    /// Members of the root's node.
    std::string name;
    std::string type;
    std::string createdDate;
    /// What is below the root and was not detached, the root itself included. A file that is attached to
    /// several objects counts once.
    std::size_t objects = 0;
    std::size_t files = 0;
};

/// See Server::List.
std::vector<StoredRoot> ListRoots(Database& database);

}  // namespace host
