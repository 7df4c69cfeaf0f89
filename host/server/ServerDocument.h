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

/// A node of a document that is stored, and what the database makes of it.
struct StoredNode {
    JSONNode node;
    /// The node that it stands in, by its place in the list; its own for the root.
    std::size_t above = 0;
    NodePlace place = NodePlace::Root;
    std::int64_t position = 0;
    std::vector<std::size_t> children;
    std::vector<std::size_t> files;

    std::optional<std::string> identifier;
    std::string type;
    /// The "dbkey" of the document; empty where there is none.
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

/// The object nodes and file records of a document: each in front of what it holds, children in front of
/// files. Elements that are no objects are noted and left out.
std::vector<StoredNode> ListNodes(const JSONNode& document, Notes& notes);

/// The members of a node as the database keeps them: "children" and "files" emptied, a second one of either
/// left out, and of the root "subType" too.
std::string KeptMembers(const StoredNode& stored, bool isRoot);

/// The node that the kept members belong to, with its key, children and files in their places. A key without
/// a place stands behind "type". Throws std::invalid_argument for members that are none.
JSONNode RestoreNode(const std::string& keptMembers, const std::string& key, const JSONNode& children,
                     const JSONNode& files);

/// An empty array with the name.
JSONNode NamedArray(format::MemberName name);

/// The answer to the document whose nodes have got their keys.
JSONNode MakeAnswer(const std::vector<StoredNode>& nodes);

}  // namespace host
