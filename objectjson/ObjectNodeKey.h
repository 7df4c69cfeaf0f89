#pragma once

#include <string_view>

/// The members of an object node that the import recognises; every other name is kUnknown, "type" and "id"
/// among them.
enum class ObjectNodeKey {
    kUnknown = 0,
    kName = 1,
    kDatabaseKey = 2,
    kCreatedDate = 3,
    kCreatedBy = 4,
    kProjectId = 5,
    kMetaData = 6,
    kChildren = 7,
    kStatus = 8,
    kCheckOut = 9,
    kSubType = 10,
    kStartDate = 11,
    kObjectName = 12,
    kIsBaseObject = 13,
    kProjectType = 14,
    kCategory = 15,
    kModels = 16,
    kFiles = 17,
    kDisplayName = 18,
    kVersions = 19,
    kVersion = 20,
};

/// The key with exactly this name, byte for byte.
ObjectNodeKey ClassifyObjectNodeKey(std::string_view name);
