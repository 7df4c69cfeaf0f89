#pragma once

#include "EmbeddedModel.h"

/// What a host needs to restore a project as it was when it was saved: objects under the identifiers that
/// they had, their files in their roles, and the sequence of identifiers at its old position. None of these
/// operations shows in a recording.
namespace korvane {

/// Creates an object as CreateObject does, under an identifier that the caller chooses instead of the next
/// one of the sequence. Null, with nothing changed, also for an identifier that is taken or not positive.
KORVANE_API CAEObject* RestoreObject(CAEObject& parent, _tagCAEObjectType type, const OuString& name, int id);
/// Creates a file of the project in the same way, attached to nothing, with an empty path and unknown type
/// and format. It belongs to the project as if it had been added with addFile.
KORVANE_API CAEFile* RestoreFile(CAEProject& project, const OuString& name, int id);

/// Sets value, type and unit of the metadata entry with the name, made when there is none.
KORVANE_API void SetMetadata(CAEObject& object, const MetadataValues& entry);

/// Attaches exactly these files to the object, in the order of `roles.files`, in place of those that it has.
/// Identifiers that are only in the other members are left out, and so are those that are not positive.
KORVANE_API void SetFileRoles(CAEObject& object, const FileRoles& roles);

/// The lowest identifier that the next new object of the project's tree can get; identifiers that are taken
/// are skipped.
KORVANE_API int GetNextIdentifier(const CAEProject& project);
/// Continues the sequence of identifiers with `next`. The sequence never goes back, so a lower number than
/// the present one changes nothing.
KORVANE_API void SetNextIdentifier(CAEProject& project, int next);

}  // namespace korvane
