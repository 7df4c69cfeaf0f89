#pragma once

#include <libjson.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "NodeWalker.h"
#include "format/MemberName.h"

namespace host {

/// A member that is compared as a text.
struct CarriedMember {
    format::MemberName name;
    std::string text;
};

/// What the format carries of one node: two nodes with the same of these come from one another.
struct CarriedNode {
    std::vector<CarriedMember> members;
    /// Metadata entries, in their order: name and value.
    std::vector<std::pair<std::string, std::string>> metadata;
    /// Of a project, the name that is compared on its own.
    std::optional<std::string> projectName;
    std::string identifier;
    /// The object nodes and file records below that an import makes something of.
    std::vector<JSONNode> children;
    std::vector<JSONNode> files;

    std::string type;
    std::string name;
};

/// Reads the node. `study` is the node two levels above, null where there is none in the document.
CarriedNode ReadCarried(const JSONNode& node, NodePlace place, const CarriedNode* study);

}  // namespace host
