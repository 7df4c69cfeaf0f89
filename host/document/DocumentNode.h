#pragma once

#include <CAETypes.h>
#include <libjson.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "host/system/Notes.h"

/// What the host itself reads of the nodes of documents and answers.
namespace host {

/// The members that the host reads.
namespace member {
inline constexpr const char* kChildren = "children";
inline constexpr const char* kDatabaseKey = "dbkey";
inline constexpr const char* kDisplayName = "displayName";
inline constexpr const char* kFileFormat = "fileFormat";
inline constexpr const char* kFileType = "fileType";
inline constexpr const char* kFiles = "files";
inline constexpr const char* kId = "id";
inline constexpr const char* kMetaData = "metaData";
inline constexpr const char* kName = "name";
inline constexpr const char* kStudyTypeName = "studyTypeName";
inline constexpr const char* kSubType = "subType";
inline constexpr const char* kType = "type";
}  // namespace member

/// The value of a document's root that says what wrote it.
inline constexpr const char* kSubTypeValue = "SDM";

/// The text of a node's own value, up to its first NUL.
std::string ValueText(const JSONNode& value);
/// The text of the first member of the name; empty where there is none.
std::string MemberText(const JSONNode& node, const char* name);
/// The name of a member, NUL characters included.
std::string NameOfMember(const JSONNode& value);

/// The kind of object that a "type" below the root makes; CAE_UNKNOWN_OBJECT for one that makes none, the
/// additional types of projects among them.
_tagCAEObjectType KindOfTypeName(std::string_view type);

/// An element of "children" or "files" for a message: 'bracket' (id 12).
std::string Describe(const JSONNode& node);

/// Takes every "dbkey" that is null out of the document or answer, so that no object gets the key "null", and
/// notes each.
void RemoveNullKeys(JSONNode& document, Notes& notes);

}  // namespace host
