#pragma once

#include <string_view>

#include "MemberNames.h"

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

/// What an import does with the members of object nodes and file records.
namespace format {

enum class Effect {
    /// The name means nothing there.
    kUnknown,
    /// The name is known, and its value changes nothing.
    kWithoutEffect,
    /// The value is applied.
    kTaken,
};

/// What a member that is taken is read as.
enum class Shape {
    kText,
    /// An object of metadata records.
    kRecords,
    /// An array of nodes.
    kNodes,
};

struct MemberEffect {
    MemberName name;
    ObjectNodeKey key;
    Effect inObject;
    Effect inRecord;
    Shape shape = Shape::kText;
};

/// Every member that an import knows.
inline constexpr MemberEffect kMemberEffects[] = {
    // New objects and files get identifiers of their own.
    {member::kId, ObjectNodeKey::kUnknown, Effect::kWithoutEffect, Effect::kWithoutEffect},
    {member::kName, ObjectNodeKey::kName, Effect::kTaken, Effect::kTaken},
    // Follows from where the iteration hangs.
    {member::kStudyTypeName, ObjectNodeKey::kUnknown, Effect::kWithoutEffect, Effect::kWithoutEffect},
    {member::kCreatedDate, ObjectNodeKey::kCreatedDate, Effect::kTaken, Effect::kTaken},
    // Whoever imports is the creator.
    {member::kCreatedBy, ObjectNodeKey::kCreatedBy, Effect::kWithoutEffect, Effect::kWithoutEffect},
    // Says which kind of object is made; what is made of a record is always a file.
    {member::kType, ObjectNodeKey::kUnknown, Effect::kTaken, Effect::kWithoutEffect},
    {member::kDatabaseKey, ObjectNodeKey::kDatabaseKey, Effect::kTaken, Effect::kTaken},
    {member::kMetaData, ObjectNodeKey::kMetaData, Effect::kTaken, Effect::kTaken, Shape::kRecords},
    // A record is read before its file has a project, so nothing is made below it.
    {member::kChildren, ObjectNodeKey::kChildren, Effect::kTaken, Effect::kWithoutEffect, Shape::kNodes},
    {member::kFiles, ObjectNodeKey::kFiles, Effect::kTaken, Effect::kWithoutEffect, Shape::kNodes},
    {member::kSubType, ObjectNodeKey::kSubType, Effect::kWithoutEffect, Effect::kWithoutEffect},

    {member::kFileType, ObjectNodeKey::kUnknown, Effect::kUnknown, Effect::kTaken},
    {member::kFileFormat, ObjectNodeKey::kUnknown, Effect::kUnknown, Effect::kTaken},
    {member::kLocationType, ObjectNodeKey::kUnknown, Effect::kUnknown, Effect::kTaken},
    // Replaced by the path of the project's directory and the name as soon as the record has been read.
    {member::kFilePath, ObjectNodeKey::kUnknown, Effect::kUnknown, Effect::kWithoutEffect},
    {member::kIsInCoordinateGlobalFrame, ObjectNodeKey::kUnknown, Effect::kUnknown, Effect::kTaken},
    {member::kIsFileDownloaded, ObjectNodeKey::kUnknown, Effect::kUnknown, Effect::kTaken},

    {member::kVersions, ObjectNodeKey::kVersions, Effect::kWithoutEffect, Effect::kWithoutEffect},
    {member::kVersion, ObjectNodeKey::kVersion, Effect::kWithoutEffect, Effect::kWithoutEffect},
    {member::kDisplayName, ObjectNodeKey::kDisplayName, Effect::kTaken, Effect::kTaken},
    {member::kProjectId, ObjectNodeKey::kProjectId, Effect::kWithoutEffect, Effect::kWithoutEffect},
    {member::kStatus, ObjectNodeKey::kStatus, Effect::kWithoutEffect, Effect::kWithoutEffect},
    {member::kCheckOut, ObjectNodeKey::kCheckOut, Effect::kWithoutEffect, Effect::kWithoutEffect},
    {member::kStartDate, ObjectNodeKey::kStartDate, Effect::kWithoutEffect, Effect::kWithoutEffect},
    {member::kObjectName, ObjectNodeKey::kObjectName, Effect::kWithoutEffect, Effect::kWithoutEffect},
    {member::kIsBaseObject, ObjectNodeKey::kIsBaseObject, Effect::kWithoutEffect, Effect::kWithoutEffect},
    {member::kProjectType, ObjectNodeKey::kProjectType, Effect::kWithoutEffect, Effect::kWithoutEffect},
    {member::kCategory, ObjectNodeKey::kCategory, Effect::kWithoutEffect, Effect::kWithoutEffect},
    {member::kModels, ObjectNodeKey::kModels, Effect::kWithoutEffect, Effect::kWithoutEffect},
};

/// What is known of a name; null where nothing is.
constexpr const MemberEffect* FindEffect(std::string_view name) {
    for (const MemberEffect& known : kMemberEffects) {
        if (known.name == name) {
            return &known;
        }
    }
    return nullptr;
}

}  // namespace format
