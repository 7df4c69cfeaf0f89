#pragma once

#include "EmbeddedModel.h"

/// What a host needs to make a project again as it was when it was kept: objects under the identifiers that
/// they had, their files in their roles, and the sequence of identifiers where it stood. None of these
/// operations shows in a recording.
namespace korvane {

/// As CreateObject, under the identifier of the caller's choice, which takes none from the sequence. Null,
/// with nothing changed, for an identifier that is taken or not positive as well.
KORVANE_API CAEObject* RestoreObject(CAEObject& parent, _tagCAEObjectType type, const OuString& name, int id);
/// A file of the project, attached to nothing, likewise; it has an empty path, the type and format unknown,
/// and is a project's file as one that addFile took.
KORVANE_API CAEFile* RestoreFile(CAEProject& project, const OuString& name, int id);

/// Attaches exactly these files to the object, in the order of `roles.files`, in place of those that it has.
/// Identifiers that stand in the other members only are left out, and so are those that are not positive.
KORVANE_API void SetFileRoles(CAEObject& object, const FileRoles& roles);

/// The identifier that the next new object of the project's tree gets at the earliest; those that are taken
/// are passed over.
KORVANE_API int GetNextIdentifier(const CAEProject& project);
/// Lets the sequence of identifiers go on with `next`; it never goes back, so a smaller one than the present
/// changes nothing.
KORVANE_API void SetNextIdentifier(CAEProject& project, int next);

}  // namespace korvane
