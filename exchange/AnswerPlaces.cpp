#include "AnswerPlaces.h"

#include <algorithm>
#include <utility>

#include "TreeIndex.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"
#include "rest/Answer.h"

namespace member = format::member;

namespace korvane::exchange {
namespace {

/// What a node stands for.
struct NodeObject {
    bool hasIdentifier = false;
    CAEObject* object = nullptr;
    NodeFit fit = NodeFit::kFits;
};

/// The rest of the "children" or "files" of a node.
struct OpenSection {
    ChildWalk elements;
    NodeObject owner;
    bool isOfFiles = false;
    /// The files that are attached to the owner, sorted.
    std::vector<const CAEObject*> files = {};
};

std::vector<const CAEObject*> SortedFilesOf(CAEObject& object) {
    const std::vector<CAEFile*> files = FilesOf(object);
    std::vector<const CAEObject*> sorted(files.begin(), files.end());
    std::ranges::sort(sorted);
    return sorted;
}

bool IsIn(CAEObject& object, const OpenSection& section) {
    if (section.owner.object == nullptr) {
        return false;
    }
    return section.isOfFiles ? std::ranges::binary_search(section.files, &object)
                             : object.getParent() == section.owner.object;
}

NodeFit FitIn(const OpenSection& section, CAEObject* object) {
    if (section.owner.fit != NodeFit::kFits) {
        return NodeFit::kBelowMisplaced;
    }
    return section.owner.hasIdentifier && object != nullptr && !IsIn(*object, section) ? NodeFit::kMisplaced
                                                                                       : NodeFit::kFits;
}

}  // namespace

AnswerPlaces::AnswerPlaces(const JSONNode& answer, CAEProject& project) {
    if (answer.type() != JSON_ARRAY) {
        AddTree(answer, project);
        return;
    }
    for (const JSONNode& root : answer) {
        AddTree(root, project);
    }
}

void AnswerPlaces::AddTree(const JSONNode& root, CAEProject& project) {
    std::vector<OpenSection> open;
    for (const JSONNode* node = &root; node != nullptr;) {
        const auto [id, children, files] =
            FindMembers<3>(*node, {member::kId, member::kChildren, member::kFiles});
        NodeObject own;
        if (id != nullptr) {
            const NodeText text = NodeValue(*id);
            own = {true, project.getCAEObject(ReadIdentifier(UpToNul(text)))};
        }
        own.fit = open.empty() ? NodeFit::kFits : FitIn(open.back(), own.object);
        if (own.fit != NodeFit::kFits && own.object != nullptr) {
            misplaced_.insert(own.object);
        }
        fits_.push_back(own.fit);
        // What is opened last is read first.
        for (const JSONNode* const section : {files, children}) {
            if (const ChildWalk walk = section == nullptr ? ChildWalk() : ChildWalk(*section);
                walk.HasNext()) {
                open.push_back({walk, own, section == files});
                if (section == files && own.object != nullptr && own.fit == NodeFit::kFits) {
                    open.back().files = SortedFilesOf(*own.object);
                }
            }
        }
        while (!open.empty() && !open.back().elements.HasNext()) {
            open.pop_back();
        }
        node = open.empty() ? nullptr : open.back().elements.Next();
    }
}

}  // namespace korvane::exchange
