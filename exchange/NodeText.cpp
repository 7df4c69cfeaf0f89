#include "NodeText.h"

#include <korvaneexchange/PrintableText.h>
#include <korvaneexchange/Text.h>

#include <algorithm>
#include <cstring>

#include "format/MemberNames.h"
#include "format/Values.h"
#include "objectjson/NodeReading.h"
#include "objectjson/Sections.h"

namespace member = format::member;

namespace korvane::exchange {

bool IsAscii(std::string_view text) {
    return std::ranges::all_of(text,
                               [](char character) { return static_cast<unsigned char>(character) < 0x80; });
}

std::string Utf8OfAnsi(std::string_view text) {
    const std::string_view read = text.substr(0, text.find('\0'));
    return IsAscii(read) ? std::string(read) : Utf8Of(TextFromAnsi(read));
}

std::string Utf8Of(const OuString& text) {
    return ToUtf8(text);
}

std::string Utf8OfValue(const JSONNode& value) {
    const NodeText text = NodeValue(value);
    return Utf8OfAnsi(text);
}

std::string Describe(const JSONNode& node) {
    if (node.type() != JSON_NODE) {
        return "an element that is not an object";
    }
    const JSONNode* const name = FindMember(node, member::kName);
    const JSONNode* const id = FindMember(node, member::kId);
    const std::string idText = id == nullptr ? std::string() : Utf8OfValue(*id);
    return Excerpt(name == nullptr ? std::string() : Utf8OfValue(*name)) +
           (idText.empty() ? "" : " (id " + Excerpt(idText) + ")");
}

std::string Describe(CAEObject& object) {
    return Excerpt(Utf8Of(ExportedName(object))) + " (id " + std::to_string(object.getID()) + ")";
}

std::string PointerTo(std::string_view name) {
    std::string component = "/";
    for (const char character : name) {
        if (character == '~') {
            component += "~0";
        } else if (character == '/') {
            component += "~1";
        } else {
            component += character;
        }
    }
    return component;
}

bool IsWrittenAs(const OuString& text, const OuString& value) {
    return AreEqual(text, value) || std::strcmp(AnsiFormOf(text), AnsiFormOf(value)) == 0;
}

std::string ComparedName(const OuString& name) {
    OuString upper = TextFromAnsi(AnsiFormOf(name));
    upper.MakeUpper();
    return AnsiFormOf(upper);
}

OuString NameOf(CAEObject& object) {
    OuString name;
    object.getName(name);
    return name;
}

OuString ExportedName(CAEObject& object) {
    return ObjectName(object, KindOf(object));
}

}  // namespace korvane::exchange
