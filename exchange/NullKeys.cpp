#include "NullKeys.h"

#include <algorithm>
#include <utility>

#include "NodeWalker.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

namespace korvane::exchange {

bool IsNullKey(const JSONNode& value) {
    return value.type() == JSON_NULL && format::member::kDatabaseKey == NodeName(value);
}

bool HasNullKeys(const JSONNode& document) {
    bool isFound = false;
    WalkNodes(document, SectionOrder::AsWritten, [&](const auto& visit) {
        if (visit.node.type() == JSON_NODE) {
            isFound = isFound || std::any_of(visit.node.begin(), visit.node.end(), IsNullKey);
        }
        return !isFound;
    });
    return isFound;
}

JSONNode WithoutNullKeys(const JSONNode& document) {
    JSONNode without = document;
    WalkNodesToChange(without, SectionOrder::AsWritten, [&](const auto& visit) {
        JSONNode& node = visit.node;
        for (json_index_t index = node.size(); node.type() == JSON_NODE && index-- > 0;) {
            if (IsNullKey(std::as_const(node).at(index))) {
                node.pop_back(index);
            }
        }
        return true;
    });
    return without;
}

}  // namespace korvane::exchange
