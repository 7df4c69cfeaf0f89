#pragma once

#include <libjson.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "NodeWalker.h"
#include "format/Kinds.h"
#include "format/MemberName.h"

namespace host {

/// A member that is compared as text.
struct CarriedMember {
    format::MemberName name;
    std::string text;
};

/// What the format carries of one node: after an import and an export, a node has the same again.
struct CarriedNode {
    std::vector<CarriedMember> members;
    /// Metadata entries in their order: name and value.
    std::vector<std::pair<std::string, std::string>> metadata;
    /// The name of a project, which is compared separately.
    std::optional<std::string> projectName;
    std::string identifier;
    /// The nodes below that an import creates an object or a file from.
    std::vector<JSONNode> children;
    std::vector<JSONNode> files;

    format::Kind kind = format::Kind::kUnknown;
    std::string type;
    std::string name;
};

/// The kind of a root of this type, as far as the type says it: a project has its additional type there,
/// which may be any text.
format::Kind KindOfRoot(const std::string& type);

/// Reads a node of the kind; a file record is a file. `study` is the node two levels above; null if the
/// document has none.
CarriedNode ReadCarried(const JSONNode& node, NodePlace place, format::Kind kind, const CarriedNode* study);

}  // namespace host
