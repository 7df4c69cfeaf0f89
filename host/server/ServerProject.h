#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_set>

#include "ServerDocument.h"
#include "host/system/Database.h"
#include "host/system/RowHash.h"

namespace host {

/// What the user says about a document.
struct StoreRequest {
    /// The name of its project. If it is empty, the project has the name of the root.
    std::string project = {};
    /// Whether it is of a project that the database has.
    bool isAgain = false;
};

/// An object of the database.
struct KnownObject {
    std::int64_t object = 0;
    std::string key;
    std::string type;
};

/// The project that a document is of.
struct ProjectOfDocument {
    std::int64_t number = 0;
    /// What the root is in it, if it was found by its name.
    std::optional<KnownObject> root = std::nullopt;
};

/// Finds the project of a document whose root is the object that it has the key of. Follows a root that has
/// got another name. Throws DatabaseError if the user says that it is another project.
ProjectOfDocument FindProjectOfRoot(Database& database, const StoredNode& root, const StoreRequest& request);

/// Finds the project of a document whose root has no key of the database, or adds it, and finds the root in
/// it: a root that was stored before, or else the only object of its kind and name. `taken` are the objects
/// that other nodes have by their keys. Throws DatabaseError if it is not certain which project or which
/// object is meant: if the database has a project of the name, unless the user says that it is that one; if
/// it has none, but the user says so; and if no or several objects have the kind and the name.
ProjectOfDocument FindProjectByName(Database& database, const StoredNode& root, const StoreRequest& request,
                                    const std::unordered_set<std::int64_t>& taken, RowSum& sum);

}  // namespace host
