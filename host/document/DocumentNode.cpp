#include "DocumentNode.h"

#include <utility>

#include "NodeWalker.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;

namespace host {
namespace {

constexpr std::string_view kNullKeys = "\"dbkey\" ignored, because it is null";

}  // namespace

std::string ValueText(const JSONNode& value) {
    return value.as_string().c_str();
}

std::string MemberText(const JSONNode& node, format::MemberName name) {
    const JSONNode* const found = FindMember(node, name);
    return found == nullptr ? std::string() : ValueText(*found);
}

std::string NameOfMember(const JSONNode& value) {
    const json_string name = value.name();
    return {name.data(), name.size()};
}

std::string Describe(const JSONNode& node) {
    if (node.type() != JSON_NODE) {
        return "an element that is not an object";
    }
    const std::string id = MemberText(node, member::kId);
    return Excerpt(MemberText(node, member::kName)) + (id.empty() ? "" : " (id " + Excerpt(id) + ")");
}

void RemoveNullKeys(JSONNode& document, Notes& notes) {
    WalkNodesToChange(document, SectionOrder::AsWritten, [&](const auto& visit) {
        JSONNode& node = visit.node;
        for (json_index_t index = node.size(); node.type() == JSON_NODE && index-- > 0;) {
            const JSONNode& value = std::as_const(node).at(index);
            if (value.type() == JSON_NULL && NameOfMember(value) == member::kDatabaseKey) {
                notes.Add(kNullKeys, [&] { return Describe(node); });
                node.pop_back(index);
            }
        }
        return true;
    });
}

}  // namespace host
