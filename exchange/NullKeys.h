#pragma once

#include <libjson.h>

#include <algorithm>
#include <utility>

#include "NodeWalker.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

/// Keys that are null. Read as texts, they would be the key "null".
namespace korvane::exchange {

inline bool IsNullKey(const JSONNode& value) {
    const NodeText name = value.type() == JSON_NULL ? NodeName(value) : NodeText();
    return format::member::kDatabaseKey == name;
}

/// Whether a node of the document or answer has one.
inline bool HasNullKeys(const JSONNode& document) {
    bool isFound = false;
    WalkNodes(document, SectionOrder::AsWritten, [&](const auto& visit) {
        if (visit.node.type() == JSON_NODE) {
            isFound = isFound || std::any_of(visit.node.begin(), visit.node.end(), IsNullKey);
        }
        return !isFound;
    });
    return isFound;
}

/// Removes them, and calls `found` with the node for each. To change a document that has other holders copies
/// all of its nodes, so ask first whether it has any: hardly any document does.
template <typename Found>
void RemoveNullKeys(JSONNode& document, const Found& found) {
    WalkNodesToChange(document, SectionOrder::AsWritten, [&](const auto& visit) {
        JSONNode& node = visit.node;
        for (json_index_t index = node.size(); node.type() == JSON_NODE && index-- > 0;) {
            if (IsNullKey(std::as_const(node).at(index))) {
                found(std::as_const(node));
                node.pop_back(index);
            }
        }
        return true;
    });
}

}  // namespace korvane::exchange
