#pragma once

#include "ObjectTree.h"

namespace korvane {

/// Copies an object and everything under it, identifiers included: children, the files of projects, and the
/// versions of all that lies under the object, but not those of the object itself. The copies hang nowhere,
/// belong to the tree of the original and are owned by the list. Returns the copy of the object.
CAEObject& CopyTree(const CAEObject& original, OwnedObjects& copies);

/// Moves what makes up an object's content (name, keys, date and user, metadata, attached files, what its
/// class adds) from an object to another one of the same kind. Children and the files of a project are not
/// moved.
void MoveContent(CAEObject& from, CAEObject& to);

}  // namespace korvane
