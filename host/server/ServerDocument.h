#pragma once

#include <libjson.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "format/MemberName.h"
#include "host/document/NodeWalker.h"
#include "host/system/Notes.h"

namespace host {

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

    std::int64_t object = 0;
    std::string key;
    std::optional<std::int64_t> shown;
    std::int64_t number = 0;

    bool IsFile() const;
    bool IsViewItem() const;
    /// Whether a view item can show it.
    bool IsMasterAssembly() const;
};

/// The object nodes and file records of a document: each comes before what is in it, children before files.
/// Elements that are not objects are noted and left out.
std::vector<StoredNode> ListNodes(const JSONNode& document, Notes& notes);

/// The members of a node as the database stores them: with empty "children" and "files", without a second one
/// of either, and without the "subType" of the root.
std::string KeptMembers(const StoredNode& stored, bool isRoot);

/// An empty array with the name.
JSONNode NamedArray(format::MemberName name);

/// The answer to the document, when all nodes have their keys.
JSONNode MakeAnswer(const std::vector<StoredNode>& nodes);

}  // namespace host
