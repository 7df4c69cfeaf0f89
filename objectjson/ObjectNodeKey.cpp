#include "ObjectNodeKey.h"

namespace {

struct NamedKey {
    std::string_view name;
    ObjectNodeKey key;
};

constexpr NamedKey kKeys[] = {
    {"name", ObjectNodeKey::kName},
    {"dbkey", ObjectNodeKey::kDatabaseKey},
    {"createdDate", ObjectNodeKey::kCreatedDate},
    {"createdBy", ObjectNodeKey::kCreatedBy},
    {"projectId", ObjectNodeKey::kProjectId},
    {"metaData", ObjectNodeKey::kMetaData},
    {"children", ObjectNodeKey::kChildren},
    {"status", ObjectNodeKey::kStatus},
    {"checkOut", ObjectNodeKey::kCheckOut},
    {"subType", ObjectNodeKey::kSubType},
    {"startDate", ObjectNodeKey::kStartDate},
    {"objectName", ObjectNodeKey::kObjectName},
    {"isBaseObject", ObjectNodeKey::kIsBaseObject},
    {"projectType", ObjectNodeKey::kProjectType},
    {"category", ObjectNodeKey::kCategory},
    {"models", ObjectNodeKey::kModels},
    {"files", ObjectNodeKey::kFiles},
    {"displayName", ObjectNodeKey::kDisplayName},
    {"versions", ObjectNodeKey::kVersions},
    {"version", ObjectNodeKey::kVersion},
};

}  // namespace

ObjectNodeKey ClassifyObjectNodeKey(std::string_view name) {
    for (const NamedKey& known : kKeys) {
        if (known.name == name) {
            return known.key;
        }
    }
    return ObjectNodeKey::kUnknown;
}
