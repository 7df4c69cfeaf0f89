#pragma once

#include <CAEObject.h>

#include <functional>
#include <string>

#include "ObjectPath.h"

namespace host {

/// An object on a walk. It is valid during the visit.
struct WalkedObject {
    CAEObject& object;
    /// Null for the root.
    const CAEObject* above;
    /// The levels below the root. A file that is attached to an object is one level below it.
    std::size_t depth;
    /// The way to the object; for an attached file, to the object that it is attached to.
    const ObjectPath& way;
    bool isAttached;

    /// The names from below the root, as ObjectPath has them.
    std::string Path() const;
};

/// Visits the root, the files that are attached to it, and everything below it in the order of the tree,
/// objects before what is below them. A file that is attached to several objects, or is an object of the tree
/// as well, is visited once, where it comes first. The depth of nesting needs no stack. The visitor must not
/// change the tree.
void WalkObjects(CAEObject& root, const std::function<void(const WalkedObject&)>& visit);

}  // namespace host
