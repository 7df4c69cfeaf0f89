#pragma once

#include "CAETypes.h"
#include "KorvaneExport.h"
#include "OuString.h"

class CAEProject;

/// Creates an object of the kind below the object with the identifier `parentId` and writes its identifier to
/// `newId`; the object carries the present time and user. A project created this way is a project of its own
/// within the same tree, with the directory of the given one until it gets another. Returns 0, or another
/// value, with `newId` and the tree unchanged, for a null project, an unknown parent and a kind that cannot
/// be created.
KORVANE_API int createCAEObject(CAEProject* project, const int& parentId, _tagCAEObjectType type, int& newId);

/// Writes to `id` the identifier of the master assembly of an item: of the sub-assemblies and run assemblies
/// in the project's tree whose own database key is `itemId`, the one with the lowest identifier. Where there
/// is none (an empty key finds none), the function returns a value other than 0 and leaves `id` alone.
KORVANE_API int getMasterAssemblyCAEIDByITEMID(CAEProject* project, OuString itemId, int& id);

/// Copies the content of a version (name, keys, dates, metadata, files, everything under it; neither its
/// identifier nor a list of versions) onto the object with the identifier. Returns 0, or another value, with
/// nothing changed, when the project does not have the object or the object does not have the version.
KORVANE_API int overwriteCurrentVersionWithVersion(CAEProject* project, int objectId, int major, int minor);

/// The name of a kind of file; "Unknown" for a value without one. Never null.
KORVANE_API const char* CAEGetFileTypeName(int type);
/// The kind of file with exactly this name; CAE_FILE_UNKNOWN where there is none.
KORVANE_API _tagFileType GetCAEFileType(const OuString& name);
