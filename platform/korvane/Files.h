#pragma once

#include "CAEObject.h"
#include "IndexedList.h"

namespace korvane {

/// A file attached to an object, and the roles that several files may have.
struct AttachedFile {
    int id = 0;
    bool isMesh = false;
    bool isCustom = false;
};

struct ById {
    static int Compare(int left, int right) noexcept { return left < right ? -1 : left > right ? 1 : 0; }
    static bool AreSame(int left, int right) noexcept { return left == right; }
};

/// The files attached to one object and their roles.
struct AttachedFiles {
    /// Each file once, in the order in which they were first attached.
    IndexedList<AttachedFile, &AttachedFile::id, ById> list;
    /// The current file of each role that only one file has; 0 for none.
    int cadFile = 0;
    int graphicFile = 0;
    int activeMesh = 0;
    int feRepresentation = 0;
};

/// The role operations of parts, sub-assemblies and run assemblies, with the same statuses.
int SetCadFile(CAEObject& object, int fileId);
int SetGraphicFile(CAEObject& object, int fileId);
int AttachMesh(CAEObject& object, int fileId);
int SetActiveMesh(CAEObject& object, int fileId);
int SetFeRepresentation(CAEObject& object, int fileId);

}  // namespace korvane
