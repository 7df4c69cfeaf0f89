#include "ObjectWalk.h"

#include <cstddef>
#include <unordered_set>
#include <vector>

#include "ObjectLists.h"

namespace host {
namespace {

/// The objects of one level that are still to be visited.
struct Level {
    const CAEObject* above;
    std::vector<CAEObject*> children;
    std::size_t next = 0;
};

}  // namespace

std::string WalkedObject::Path() const {
    return isAttached ? way.TextOfChild(way.PlaceOf(dynamic_cast<const CAEFile&>(object))) : way.Text();
}

void WalkObjects(CAEObject& root, const std::function<void(const WalkedObject&)>& visit) {
    ObjectPath way(root);
    std::unordered_set<const CAEObject*> files;
    std::vector<Level> levels;
    const auto enter = [&](CAEObject& object, const CAEObject* above) {
        if (object.getType() != CAE_FILE || files.insert(&object).second) {
            visit({object, above, way.Depth(), way, false});
        }
        for (CAEFile* const file : AttachedFilesOf(object)) {
            if (files.insert(file).second) {
                visit({*file, &object, way.Depth() + 1, way, true});
            }
        }
        levels.push_back({&object, ChildrenOf(object)});
    };
    enter(root, nullptr);
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.children.size()) {
            levels.pop_back();
            if (!levels.empty()) {
                way.Leave();
            }
            continue;
        }
        CAEObject& child = *level.children[level.next++];
        way.Enter(child);
        enter(child, level.above);
    }
}

}  // namespace host
