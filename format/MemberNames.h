#pragma once

#include "MemberName.h"

/// Every member name of the document format, by section, in the order in which a document has them.
namespace format::member {

// The header of an object node.
inline constexpr MemberName kId = "id";
inline constexpr MemberName kName = "name";
inline constexpr MemberName kStudyTypeName = "studyTypeName";
inline constexpr MemberName kCreatedDate = "createdDate";
inline constexpr MemberName kCreatedBy = "createdBy";
inline constexpr MemberName kType = "type";
inline constexpr MemberName kDatabaseKey = "dbkey";

// The sections of an object node.
inline constexpr MemberName kMetaData = "metaData";
inline constexpr MemberName kChildren = "children";
inline constexpr MemberName kFiles = "files";

// The end of the root.
inline constexpr MemberName kSubType = "subType";

// A metadata record.
inline constexpr MemberName kValue = "value";
inline constexpr MemberName kMetaDataType = "metaDataType";

// A file record, behind the members of an object node.
inline constexpr MemberName kFileType = "fileType";
inline constexpr MemberName kFileFormat = "fileFormat";
inline constexpr MemberName kLocationType = "locationType";
inline constexpr MemberName kFilePath = "filePath";

// A file record as a server may send it; never written.
inline constexpr MemberName kIsInCoordinateGlobalFrame = "isInCoordinateGlobalFrame";
inline constexpr MemberName kIsFileDownloaded = "isFileDownloaded";

// A version record. No document has "versions".
inline constexpr MemberName kVersions = "versions";
inline constexpr MemberName kVersion = "version";

// An object node as a server may send it; never written.
inline constexpr MemberName kDisplayName = "displayName";
inline constexpr MemberName kProjectId = "projectId";
inline constexpr MemberName kStatus = "status";
inline constexpr MemberName kCheckOut = "checkOut";
inline constexpr MemberName kStartDate = "startDate";
inline constexpr MemberName kObjectName = "objectName";
inline constexpr MemberName kIsBaseObject = "isBaseObject";
inline constexpr MemberName kProjectType = "projectType";
inline constexpr MemberName kCategory = "category";
inline constexpr MemberName kModels = "models";

}  // namespace format::member
