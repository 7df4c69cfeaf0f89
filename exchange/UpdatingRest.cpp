#include <korvaneexchange/PrintableText.h>

#include <algorithm>
#include <utility>

#include "NodeText.h"
#include "UpdatingImport.h"
#include "format/MemberNames.h"

namespace member = format::member;
using format::Kind;

namespace korvane::exchange {

// What the document lacks.

void UpdatingImport::LeaveMatched(Frame& frame) {
    MatchedNode* const match = MatchOf(frame);
    if (match == nullptr) {
        return;
    }
    CAEObject& object = match->Object();
    const auto tellKept = [&](format::MemberName section, const std::string& what) {
        Tell(Reason::kKept, PointerTo(section.View()), object.getID(), [&] {
            const std::string subject = what + " of " + DescribeAsItWas(object);
            return std::pair(subject, subject + " is not in the document, and stays");
        });
    };
    if (frame.hasMetadata) {
        for (const std::string& name : match->ListedEntries()) {
            const MatchedNode::Entry& entry = match->Entries()[name];
            if (entry.lastRecord == nullptr) {
                tellKept(member::kMetaData, "the metadata entry " + Excerpt(Utf8Of(entry.name)));
            }
        }
    }
    if (frame.hasFiles) {
        for (CAEFile* const file : match->ListedFiles()) {
            if (!landed_.contains(file) && !inConflict_.contains(file)) {
                tellKept(member::kFiles, "the file " + DescribeAsItWas(*file));
            }
        }
    }
    if (frame.hasChildren) {
        for (CAEObject* const child : match->ListedChildren()) {
            // Session objects are never written.
            if (!landed_.contains(child) && KindOf(*child) != Kind::kSessionObject) {
                missing_.push_back({child, std::nullopt});
                if (Builder().IsListing()) {
                    missing_.back().pointer = Pointer() + PointerTo(member::kChildren.View());
                    Builder().Reserve(missing_.back().pointer->size());
                }
            }
        }
    }
}

void UpdatingImport::Finish() {
    if (!HasParentOfRoot()) {
        LeaveMatched(Innermost());
    }
    // Nothing is done for objects in conflict, so what they lie below stays too.
    std::unordered_set<const CAEObject*> staying;
    for (CAEObject* object : inConflict_) {
        while (object != nullptr && !landed_.contains(object) && staying.insert(object).second) {
            object = object->getParent();
        }
    }
    for (Missing& missing : missing_) {
        if (missing.pointer) {
            Builder().Release(missing.pointer->size());
        }
        // What was left out has its own entry, and stays.
        if (!landed_.contains(missing.object) && !inConflict_.contains(missing.object)) {
            KeepOrRemove(missing, staying);
        }
    }
}

void UpdatingImport::KeepOrRemove(Missing& missing, const std::unordered_set<const CAEObject*>& staying) {
    CAEObject& object = *missing.object;
    const std::optional<std::size_t> removed =
        Options().remove && !staying.contains(&object) ? CountRemoved(object, staying) : std::nullopt;
    const Reason reason = removed ? Reason::kRemoved : Reason::kKept;
    if (missing.pointer) {
        const std::string subject = DescribeAsItWas(object);
        Builder().Add(reason, std::move(*missing.pointer), object.getID(), subject,
                      subject + (removed ? " is not in the document, and is removed with everything below it"
                                         : " is not in the document, and stays"));
    } else {
        Builder().CountUnlisted(reason);
    }
    Result().objectsRemoved += removed.value_or(0);
    if (removed && !Options().dryRun) {
        CAEObject* leaving = &object;
        object.getParent()->detachChild(leaving, true);
    }
}

std::optional<std::size_t> UpdatingImport::CountRemoved(
    CAEObject& root, const std::unordered_set<const CAEObject*>& staying) const {
    std::size_t count = 0;
    std::vector<CAEObject*> open = {&root};
    while (!open.empty()) {
        CAEObject& object = *open.back();
        open.pop_back();
        // In a dry run, what moves away still hangs there.
        if (landed_.contains(&object)) {
            continue;
        }
        const std::vector<CAEFile*> files = FilesOf(object);
        if (std::ranges::any_of(files, [&](const CAEFile* file) { return staying.contains(file); })) {
            return std::nullopt;
        }
        count += KindOf(object) == Kind::kFile ? 0 : 1;
        const std::vector<CAEObject*> children = ChildrenOf(object);
        open.insert(open.end(), children.begin(), children.end());
    }
    return count;
}

}  // namespace korvane::exchange
