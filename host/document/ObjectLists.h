#pragma once

#include <CAEFile.h>
#include <CAEObject.h>

#include <vector>

/// The lists of the object model as vectors.
namespace host {

/// The children, in their order.
std::vector<CAEObject*> ChildrenOf(const CAEObject& object);

/// The attached files, in their order, without those that the project does not have.
std::vector<CAEFile*> AttachedFilesOf(CAEObject& object);

}  // namespace host
