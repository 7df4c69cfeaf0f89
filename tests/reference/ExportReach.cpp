#include "ExportReach.h"

#include <CAEFile.h>
#include <CAEProject.h>

namespace {

bool MayReach(CAEObject& from, const CAEObject& to, int& budget) {
    // A version may become its object, whose identifier it has.
    if (&from == &to || (from.getID() > 0 && from.getID() == to.getID()) || --budget < 0) {
        return true;
    }
    bool isReached = false;
    OuList children;
    from.getChildrenList(children);
    for (auto* position = children.GetHeadPosition(); position != nullptr && !isReached;) {
        isReached = MayReach(*static_cast<CAEObject*>(children.GetNext(position)), to, budget);
    }
    const OuList files = from.GetFiles();
    CAEProject* const project = from.getProject();
    for (auto* position = files.GetHeadPosition(); project != nullptr && position != nullptr && !isReached;) {
        CAEFile* const file = project->getFile(files.GetNextID(position));
        isReached = file != nullptr && MayReach(*file, to, budget);
    }
    return isReached;
}

}  // namespace

bool MayReach(CAEObject& from, const CAEObject& to) {
    int budget = 200;
    return MayReach(from, to, budget);
}
