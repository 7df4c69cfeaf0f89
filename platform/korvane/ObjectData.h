#pragma once

#include <memory>

#include "CAEObject.h"
#include "CAETypes.h"
#include "Files.h"
#include "Metadata.h"
#include "OuString.h"
#include "Versions.h"

namespace korvane {

class ObjectTree;

/// What an object knows beyond its identifier, name and keys. There may be a million of these, so what only
/// few objects have is behind a pointer that is null for the others.
struct ObjectData {
    explicit ObjectData(_tagCAEObjectType kind) noexcept : type(kind) {}

    const _tagCAEObjectType type;
    /// The identifier under which the tree finds the object; 0 when it does not.
    int registeredId = 0;
    /// Whether the object hangs below the root of the tree (or is a file of a project that does).
    bool isInTree = false;

    /// The tree that owns the object; null for a file that still belongs to whoever made it.
    ObjectTree* tree = nullptr;
    /// What getProject returns.
    CAEProject* project = nullptr;

    CAEObject* parent = nullptr;
    CAEObject* firstChild = nullptr;
    CAEObject* lastChild = nullptr;
    /// The neighbours among the parent's children, or among the files of the project that the file belongs
    /// to.
    CAEObject* previousSibling = nullptr;
    CAEObject* nextSibling = nullptr;
    /// The neighbours among all objects with the same owner.
    CAEObject* previousOwned = nullptr;
    CAEObject* nextOwned = nullptr;

    OuString createdDate;
    OuString createdUserName;
    std::unique_ptr<Metadata> metadata;
    std::unique_ptr<AttachedFiles> files;
    std::unique_ptr<Versions> versions;
};

struct ProjectData {
    OuString displayName;
    OuString additionalType;
    OuString directory;
    bool programReference = true;
    /// The files that addFile put into the project, linked as siblings.
    CAEObject* firstFile = nullptr;
    CAEObject* lastFile = nullptr;
    /// The whole tree, for its root; null for a project created in another one.
    std::unique_ptr<ObjectTree> ownTree;
};

struct FileData {
    OuString fullPathName;
    _tagFileType type = CAE_FILE_UNKNOWN;
    _tagFileFormat format = CAE_FORMAT_UNKNOWN;
    bool isInGlobalFrame = false;
    bool isDownloaded = false;
};

/// The metadata entry of the object with the name, made when there is none.
MetadataEntry& MetadataOf(CAEObject& object, const OuString& name);

}  // namespace korvane
