#include "ObjectLists.h"

#include <CAEProject.h>

namespace host {

std::vector<CAEObject*> ChildrenOf(const CAEObject& object) {
    OuList list;
    object.getChildrenList(list);
    std::vector<CAEObject*> children;
    children.reserve(list.GetCount());
    OuListPosition* position = list.GetHeadPosition();
    while (position != nullptr) {
        children.push_back(static_cast<CAEObject*>(list.GetNext(position)));
    }
    return children;
}

std::vector<CAEFile*> AttachedFilesOf(CAEObject& object) {
    std::vector<CAEFile*> files;
    CAEProject* const project = object.getProject();
    const OuList list = object.GetFiles();
    OuListPosition* position = project != nullptr ? list.GetHeadPosition() : nullptr;
    while (position != nullptr) {
        if (CAEFile* const file = project->getFile(list.GetNextID(position))) {
            files.push_back(file);
        }
    }
    return files;
}

}  // namespace host
