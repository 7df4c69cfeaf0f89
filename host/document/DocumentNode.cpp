#include "DocumentNode.h"

#include <utility>
#include <vector>

#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;

namespace host {
namespace {

constexpr std::string_view kNullKeys = "passed over, because \"dbkey\" is null";

bool IsSection(const std::string& name) {
    return name == member::kChildren || name == member::kFiles;
}

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
        return "an element that is no object";
    }
    const std::string id = MemberText(node, member::kId);
    return Excerpt(MemberText(node, member::kName)) + (id.empty() ? "" : " (id " + Excerpt(id) + ")");
}

void RemoveNullKeys(JSONNode& document, Notes& notes) {
    std::vector<JSONNode*> waiting;
    const auto putElements = [&](JSONNode& container) {
        for (JSONNode& element : container) {
            waiting.push_back(&element);
        }
    };
    if (document.type() == JSON_ARRAY) {
        putElements(document);
    } else {
        waiting.push_back(&document);
    }
    while (!waiting.empty()) {
        JSONNode& node = *waiting.back();
        waiting.pop_back();
        if (node.type() != JSON_NODE) {
            continue;
        }
        // Keys go before any element is pointed to, so that nothing moves afterwards.
        for (json_index_t index = node.size(); index-- > 0;) {
            const JSONNode& value = std::as_const(node).at(index);
            if (value.type() == JSON_NULL && NameOfMember(value) == member::kDatabaseKey) {
                notes.Add(kNullKeys, [&] { return Describe(node); });
                node.pop_back(index);
            }
        }
        for (JSONNode& value : node) {
            if (IsSection(NameOfMember(value))) {
                putElements(value);
            }
        }
    }
}

}  // namespace host
