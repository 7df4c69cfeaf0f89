#include "AnswerPlaces.h"

#include <optional>

#include "NodeWalker.h"
#include "TreeIndex.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"
#include "rest/Answer.h"

namespace korvane::exchange {
namespace {

/// What a node stands for.
struct NodeObject {
    bool hasIdentifier = false;
    CAEObject* object = nullptr;
    NodeFit fit = NodeFit::kFits;
    /// The files that are attached to the object, once they were asked for.
    std::optional<std::unordered_set<const CAEObject*>> files;
};

bool HasFile(NodeObject& above, const CAEObject& file) {
    if (!above.files) {
        above.files.emplace();
        for (const CAEFile* const attached : FilesOf(*above.object)) {
            above.files->insert(attached);
        }
    }
    return above.files->contains(&file);
}

bool IsIn(const CAEObject& object, NodeObject& above, NodePlace place) {
    if (above.object == nullptr) {
        return false;
    }
    return place == NodePlace::FileRecord ? HasFile(above, object) : object.getParent() == above.object;
}

}  // namespace

AnswerPlaces::AnswerPlaces(const JSONNode& answer, CAEProject& project) {
    WalkNodes<NodeObject>(
        answer, SectionOrder::FirstOfEach,
        [&](const auto& visit) {
            NodeObject& own = visit.own;
            if (const JSONNode* const id = FindMember(visit.node, format::member::kId)) {
                const NodeText text = NodeValue(*id);
                own.hasIdentifier = true;
                own.object = project.getCAEObject(ReadIdentifier(UpToNul(text)));
            }
            if (visit.above != nullptr && visit.above->fit != NodeFit::kFits) {
                own.fit = NodeFit::kBelowMisplaced;
            } else if (visit.above != nullptr && visit.above->hasIdentifier && own.object != nullptr &&
                       !IsIn(*own.object, *visit.above, visit.place)) {
                own.fit = NodeFit::kMisplaced;
            }
            if (own.fit != NodeFit::kFits && own.object != nullptr) {
                misplaced_.insert(own.object);
            }
            fits_.push_back(own.fit);
            return true;
        },
        [](const auto&) {});
}

}  // namespace korvane::exchange
