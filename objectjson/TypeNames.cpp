#include "CAEObjectJson.h"
#include "format/Kinds.h"

namespace {

/// The name that the format fixes for a kind, whatever the object model calls it; empty for all others.
std::string_view FixedName(format::Kind kind) {
    for (const format::KindName& known : format::kKindNames) {
        if (known.kind == kind && known.writing == format::Writing::kAsRead) {
            return known.name;
        }
    }
    return {};
}

}  // namespace

OuString CAEObjectJson::ObjectTypeName(_tagCAEObjectType type) {
    const OuString modelName = TextOfModel(CAEObject::getTypeName(type));
    if (const std::string_view fixed = FixedName(static_cast<format::Kind>(type)); !fixed.empty()) {
        return OuString(fixed.data(), 0);
    }
    OuString name(format::kKindPrefix, 0);
    name.Append(CharactersOf(modelName), 0);
    return name;
}

_tagCAEObjectType CAEObjectJson::ObjectTypeFromName(const char* name) {
    return ToObjectType(name == nullptr ? format::Kind::kUnknown : format::KindOfType(name));
}
