#pragma once

#include <CAEFile.h>
#include <CAEObject.h>

#include <vector>

/// The object model's lists as vectors.
namespace host {

/// The direct children, in their order.
std::vector<CAEObject*> ChildrenOf(const CAEObject& object);

/// The attached files, in their order; those that the project does not have are left out.
std::vector<CAEFile*> AttachedFilesOf(CAEObject& object);

struct MetadataOfObject {
    OuString name;
    OuString value;
    OuString type;
    OuString unit;
};
/// The metadata entries, in their order.
std::vector<MetadataOfObject> MetadataOf(const CAEObject& object);

}  // namespace host
