#include "DocumentNode.h"

#include <OuString.h>

#include <algorithm>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "NodeWalker.h"
#include "format/MemberNames.h"
#include "host/system/Text.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;

namespace host {
namespace {

constexpr std::string_view kNullKeys = "\"dbkey\" ignored, because it is null";

/// Some builds of libjson have texts of another type.
std::string Taken(json_string text) {
    if constexpr (std::is_same_v<json_string, std::string>) {
        return text;
    } else {
        return {text.data(), text.size()};
    }
}

bool IsNullKey(const JSONNode& value) {
    return value.type() == JSON_NULL && NameOfMember(value) == member::kDatabaseKey;
}

/// Hardly any document has such keys, and to change a document that has other holders copies all of its
/// nodes.
bool HasNullKeys(const JSONNode& document) {
    bool isFound = false;
    WalkNodes(document, SectionOrder::AsWritten, [&](const auto& visit) {
        if (visit.node.type() == JSON_NODE) {
            isFound = isFound || std::ranges::any_of(visit.node, IsNullKey);
        }
        return !isFound;
    });
    return isFound;
}

}  // namespace

std::string ValueText(const JSONNode& value) {
    std::string text = Taken(value.as_string());
    if (const std::size_t end = text.find('\0'); end != std::string::npos) {
        text.resize(end);
    }
    return text;
}

std::string MemberText(const JSONNode& node, format::MemberName name) {
    const JSONNode* const found = FindMember(node, name);
    return found == nullptr ? std::string() : ValueText(*found);
}

std::string NameOfMember(const JSONNode& value) {
    return Taken(value.name());
}

std::string ComparedName(const std::string& name) {
    const auto isAscii = [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte != 0 && byte < 0x80;
    };
    // Nearly all names are, and the object model compares them in the same way.
    if (std::ranges::all_of(name, isAscii)) {
        return ToUpperAscii(name);
    }
    OuString text(name.c_str(), 0);
    text.MakeUpper();
    return text.GetAnsiBuffer();
}

std::string Describe(const JSONNode& node) {
    if (node.type() != JSON_NODE) {
        return "an element that is not an object";
    }
    const std::string id = MemberText(node, member::kId);
    return Excerpt(MemberText(node, member::kName)) + (id.empty() ? "" : " (id " + Excerpt(id) + ")");
}

void RemoveNullKeys(JSONNode& document, Notes& notes) {
    if (!HasNullKeys(document)) {
        return;
    }
    WalkNodesToChange(document, SectionOrder::AsWritten, [&](const auto& visit) {
        JSONNode& node = visit.node;
        for (json_index_t index = node.size(); node.type() == JSON_NODE && index-- > 0;) {
            const JSONNode& value = std::as_const(node).at(index);
            if (IsNullKey(value)) {
                notes.Add(kNullKeys, [&] { return Describe(node); });
                node.pop_back(index);
            }
        }
        return true;
    });
}

}  // namespace host
