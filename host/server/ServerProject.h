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
    std::int64_t project = 0;
};

/// The project that a document is of.
struct ProjectOfDocument {
    std::int64_t number = 0;
    std::string name;
    bool isNew = false;
};

/// Finds the project of a document whose root is the object that it has the key of. Follows a root that has
/// got another name. Throws DatabaseError if the user says that it is another project.
ProjectOfDocument FindProjectOfRoot(Database& database, const StoredNode& root, const StoreRequest& request);

/// Finds the project of a document whose root has no key of the database, or adds it. Throws DatabaseError if
/// it is not certain which project is meant: if the database has a project of the name, unless the user says
/// that it is that one; and if it has none, but the user says so.
ProjectOfDocument FindProjectByName(Database& database, const StoredNode& root, const StoreRequest& request,
                                    RowSum& sum);

/// Finds the root of a document in its project: a root that was stored before, or else the only object of its
/// kind and name. Nothing if it is new. `taken` are the objects that other nodes have by their keys. Throws
/// DatabaseError if no or several objects have the kind and the name.
std::optional<KnownObject> FindRootByName(Database& database, const ProjectOfDocument& project,
                                          const StoredNode& root,
                                          const std::unordered_set<std::int64_t>& taken);

/// Whether the database has the root of the project itself, and not only objects that were stored alone.
bool HasWhole(Database& database, std::int64_t project);

/// Whether the object was stored as the root of a document, and is below no other.
bool IsStoredRoot(Database& database, std::int64_t object);

}  // namespace host
