#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "ServerProject.h"
#include "host/system/Database.h"

namespace host {

/// What the database has below an object, to be found by the last step of the path.
class StoredSiblings {
public:
    /// Whether an object may be taken.
    using IsFree = std::function<bool(std::int64_t object)>;

    /// Reads all that the object owns.
    StoredSiblings(Statement& ownedBy, std::int64_t owner);

    /// The object that is the one with this ordinal among the equal siblings; or else, the last one that was
    /// detached when it had the ordinal. Returns null if there is none that is free. `name` is
    /// NodeName::Text.
    const KnownObject* Find(const std::string& name, std::int64_t ordinal, const IsFree& isFree) const;

    /// How many of the equal siblings are attached.
    std::int64_t CountOf(const std::string& name) const;

    /// The statement for the constructor, which can be used for many objects.
    static constexpr const char* kOwnedBy =
        "SELECT object.number, object.key, object.type, node.above, node.name, node.file_type, node.ordinal"
        " FROM node JOIN object ON object.number = node.object WHERE node.owner = ?"
        " ORDER BY node.above, node.section, node.position, node.number";

private:
    struct Equal {
        /// In their order.
        std::vector<KnownObject> attached;
        std::multimap<std::int64_t, KnownObject> detached;
    };
    std::unordered_map<std::string, Equal> byName_;
};

}  // namespace host
