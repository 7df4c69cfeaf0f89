#pragma once

#include <libjson.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ServerPath.h"
#include "exchange/NodeWalker.h"
#include "format/MemberName.h"
#include "host/system/Notes.h"

namespace host {

using korvane::exchange::NodePlace;

/// A node of a document, and what the database has for it.
struct StoredNode {
    JSONNode node;
    /// The index of the node above; its own index for the root.
    std::size_t above = 0;
    NodePlace place = NodePlace::Root;
    std::int64_t position = 0;
    std::vector<std::size_t> children;
    std::vector<std::size_t> files;

    std::optional<std::string> identifier;
    std::string type;
    /// The "dbkey" in the document; empty if there is none.
    std::string givenKey;

    /// The index of the first node of the same file: one with the same "id". Its own index otherwise.
    std::size_t first = 0;
    /// How many equal siblings come before it.
    std::int64_t ordinal = 0;

    /// The object, or 0 if it is not known yet.
    std::int64_t object = 0;
    std::string key;
    std::optional<std::int64_t> shown;
    std::int64_t number = 0;

    NodeName Name() const { return NameOf(node, type); }
    bool IsFile() const;
    bool IsViewItem() const;
    /// Whether a view item can show it.
    bool IsMasterAssembly() const;
};

/// The object nodes and file records of a document: each comes before what is in it, children before files.
/// Elements that are not objects are noted and left out. The nodes have no objects and no ordinals yet.
std::vector<StoredNode> ListNodes(const JSONNode& document, Notes& notes);

/// The members of a node as the database stores them: with empty "children" and "files", without a second one
/// of either, and without the "subType" of the root.
std::string KeptMembers(const StoredNode& stored, bool isRoot);

/// Reads what KeptMembers wrote. Throws DatabaseError if it cannot be read.
JSONNode ParseKeptMembers(const std::string& keptMembers);

/// Adds the members that a node does not have and that another one has, which KeptMembers wrote. Throws
/// DatabaseError if they cannot be read.
void AddMissingMembers(JSONNode& node, const std::string& keptMembers);

/// An empty array with the name.
JSONNode NamedArray(format::MemberName name);

/// The answer to the document, when all nodes have their keys.
JSONNode MakeAnswer(const std::vector<StoredNode>& nodes);

}  // namespace host
