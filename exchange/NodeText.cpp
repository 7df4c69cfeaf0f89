#include "NodeText.h"

#include <korvaneexchange/PrintableText.h>

#include <algorithm>
#include <cstdint>

#include "format/MemberNames.h"
#include "format/Values.h"
#include "objectjson/NodeReading.h"
#include "objectjson/Sections.h"

namespace member = format::member;

namespace korvane::exchange {
namespace {

bool IsAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char character) { return static_cast<unsigned char>(character) < 0x80; });
}

void AppendUtf8(std::string& utf8, std::uint32_t character) {
    const auto append = [&](std::uint32_t byte) { utf8 += static_cast<char>(byte); };
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0U | character >> 6U);
        append(0x80U | (character & 0x3FU));
    } else if (character >= 0xDC80 && character <= 0xDCFF) {
        // A byte that is no text.
        append(character & 0xFFU);
    } else if (character < 0x10000) {
        append(0xE0U | character >> 12U);
        append(0x80U | (character >> 6U & 0x3FU));
        append(0x80U | (character & 0x3FU));
    } else {
        append(0xF0U | character >> 18U);
        append(0x80U | (character >> 12U & 0x3FU));
        append(0x80U | (character >> 6U & 0x3FU));
        append(0x80U | (character & 0x3FU));
    }
}

}  // namespace

std::string Utf8OfAnsi(std::string_view text) {
    const std::string_view read = text.substr(0, text.find('\0'));
    return IsAscii(read) ? std::string(read) : Utf8Of(TextFromAnsi(read));
}

std::string Utf8Of(const OuString& text) {
    std::string utf8;
    for (const wchar_t* unit = CharactersOf(text); *unit != L'\0'; ++unit) {
        auto character = static_cast<std::uint32_t>(*unit);
        if (character >= 0xD800 && character < 0xDC00 && unit[1] >= 0xDC00 && unit[1] < 0xE000) {
            ++unit;
            character = 0x10000 + ((character - 0xD800) << 10U) + (static_cast<std::uint32_t>(*unit) - 0xDC00);
        }
        AppendUtf8(utf8, character);
    }
    return utf8;
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

std::string ComparedName(const OuString& name) {
    OuString upper = name;
    upper.MakeUpper();
    return Utf8Of(upper);
}

OuString ExportedName(CAEObject& object) {
    return ObjectName(object, KindOf(object));
}

}  // namespace korvane::exchange
