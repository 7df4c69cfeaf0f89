#include <algorithm>

#include "CAEObjectJson.h"
#include "Sections.h"
#include "format/Kinds.h"

using format::KindName;
using format::Writing;

namespace {

/// The entry that says how the kind is written; null where there is none.
const KindName* FindEntry(format::Kind kind) {
    const auto* const found = std::ranges::find(format::kKindNames, kind, &KindName::kind);
    return found == std::end(format::kKindNames) ? nullptr : found;
}

/// Whether the text in upper case is the other one, which has upper-case letters of ASCII only.
bool IsInUpperCase(std::string_view text, std::string_view upper) {
    return std::ranges::equal(text, upper, {}, [](char character) {
        return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
    });
}

}  // namespace

const char* KnownTypeName(format::Kind kind, const char* modelName) {
    const KindName* const entry = FindEntry(kind);
    if (entry == nullptr || entry->writing == Writing::kAsTheProjectSays) {
        return nullptr;
    }
    const std::string_view known = entry->name;
    const std::string_view prefix = format::kKindPrefix;
    if (entry->writing == Writing::kAsTheModelSays &&
        (modelName == nullptr || !known.starts_with(prefix) ||
         !IsInUpperCase(modelName, known.substr(prefix.size())))) {
        return nullptr;
    }
    return known.data();
}

OuString TypeNameOf(format::Kind kind, const char* modelName) {
    if (const KindName* const entry = FindEntry(kind);
        entry != nullptr && entry->writing == Writing::kAsRead) {
        return OuString(entry->name.data(), 0);
    }
    OuString name(format::kKindPrefix, 0);
    name.Append(CharactersOf(TextOfModel(modelName)), 0);
    return name;
}

OuString CAEObjectJson::ObjectTypeName(_tagCAEObjectType type) {
    return TypeNameOf(static_cast<format::Kind>(type), CAEObject::getTypeName(type));
}

_tagCAEObjectType CAEObjectJson::ObjectTypeFromName(const char* name) {
    return ToObjectType(name == nullptr ? format::Kind::kUnknown : format::KindOfType(name));
}
