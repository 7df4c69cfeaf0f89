#include "DocumentNode.h"

#include <OuString.h>

#include <algorithm>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "exchange/NullKeys.h"
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
    if (!korvane::exchange::HasNullKeys(document)) {
        return;
    }
    korvane::exchange::RemoveNullKeys(
        document, [&notes](const JSONNode& node) { notes.Add(kNullKeys, [&] { return Describe(node); }); });
}

}  // namespace host
