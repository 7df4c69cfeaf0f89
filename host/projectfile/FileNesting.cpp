#include "FileNesting.h"

#include <CAEFile.h>

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/document/ObjectLists.h"
#include "host/document/ProjectObjects.h"
#include "host/system/Database.h"

namespace host {
namespace {

constexpr double kMostNodes = 1e8;

/// What a document has directly below the node of the object.
std::vector<CAEObject*> Below(CAEObject& object) {
    std::vector<CAEObject*> below = ChildrenOf(object);
    const std::vector<CAEFile*> files = AttachedFilesOf(object);
    below.insert(below.end(), files.begin(), files.end());
    return below;
}

/// Counts the nodes below objects, each object once.
class NodeCounter {
public:
    /// Objects that are on the way from the one that is counted have no number of nodes yet: whoever meets
    /// them again has met itself.
    void Count(CAEObject& object) {
        Open(object);
        while (!open_.empty()) {
            OpenObject& last = open_.back();
            if (last.below.empty()) {
                Close();
                continue;
            }
            CAEObject& next = *last.below.back();
            last.below.pop_back();
            const auto known = nodes_.find(&next);
            if (known == nodes_.end()) {
                Open(next);
            } else {
                Add(known->second, next);
            }
        }
    }

private:
    static constexpr double kUncounted = -1;

    struct OpenObject {
        CAEObject& object;
        std::vector<CAEObject*> below;
        double nodes = 1;
    };

    void Open(CAEObject& object) {
        const auto [known, isNew] = nodes_.emplace(&object, kUncounted);
        if (isNew) {
            open_.push_back({object, Below(object)});
        }
    }
    void Close() {
        CAEObject& object = open_.back().object;
        const double nodes = open_.back().nodes;
        nodes_[&object] = nodes;
        open_.pop_back();
        if (!open_.empty()) {
            Add(nodes, object);
        }
    }
    void Add(double nodes, const CAEObject& object) {
        if (nodes == kUncounted) {
            RefuseDamaged("the file or object " + std::to_string(object.getID()) +
                          " is attached below itself");
        }
        open_.back().nodes += nodes;
        if (open_.back().nodes > kMostNodes) {
            RefuseDamaged("the files below the object " + std::to_string(open_.back().object.getID()) +
                          " are attached too many times below each other");
        }
    }

    std::unordered_map<const CAEObject*, double> nodes_;
    std::vector<OpenObject> open_;
};

}  // namespace

void CheckFileNesting(CAEProject& project) {
    // Nearly always no file has anything below it, and then there is nothing to count.
    std::vector<CAEObject*> files;
    VisitProject(project, [&](CAEObject& object, const ObjectPlace&) {
        if (object.getType() == CAE_FILE && !Below(object).empty()) {
            files.push_back(&object);
        }
    });
    if (files.empty()) {
        return;
    }
    NodeCounter counter;
    counter.Count(project);
    for (CAEObject* const file : files) {
        counter.Count(*file);
    }
}

}  // namespace host
