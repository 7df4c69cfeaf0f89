#pragma once

#include <CAEObject.h>

#include <vector>

/// The object model's lists as vectors.
namespace host {

/// The direct children, in their order.
std::vector<CAEObject*> ChildrenOf(const CAEObject& object);

struct MetadataOfObject {
    OuString name;
    OuString value;
    OuString type;
    OuString unit;
};
/// The metadata entries, in their order.
std::vector<MetadataOfObject> MetadataOf(const CAEObject& object);

}  // namespace host
