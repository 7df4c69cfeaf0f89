#include "UpdatingImport.h"

#include <korvaneexchange/PrintableText.h>

#include <memory>
#include <utility>

#include "NodeText.h"
#include "objectjson/NodeReading.h"

using format::Kind;

namespace korvane::exchange {
namespace {

/// Hangs the object elsewhere; where that fails, it hangs below its old parent again, at the end.
bool Rehang(CAEObject& object, CAEObject& from, CAEObject& to) {
    CAEObject* leaving = &object;
    from.detachChild(leaving, false);
    try {
        if (to.addChild(&object) == 0) {
            return true;
        }
    } catch (...) {
        from.addChild(&object);
        throw;
    }
    from.addChild(&object);
    return false;
}

}  // namespace

UpdatingImport::UpdatingImport(const ImportOptions& options, ImportReport& report, CAEObject& target,
                               const DocumentKeys& keys)
    : ReportingImport(options, report, keys.ElementCount()), keys_(keys), index_(target) {}

void UpdatingImport::Match(CAEObject& object, const JSONNode& element) {
    landed_.insert(&object);
    open_.insert(&object);
    Innermost().identifier = object.getID();
    Innermost().matching = std::make_unique<MatchedNode>(object, element, keys_);
}

UpdatingImport::Found UpdatingImport::Conflict(const JSONNode& element, CAEObject* object,
                                               const std::string& why) {
    Tell(Reason::kConflict, {}, object == nullptr ? 0 : object->getID(), [&] {
        return std::pair(Describe(element),
                         Describe(element) + " is left out with everything below it: " + why);
    });
    return {.isConflict = true};
}

UpdatingImport::Found UpdatingImport::FindByKey(const JSONNode& element, const OuString& key,
                                                const OuString& type) {
    const Kind kind = format::KindOfType(AnsiFormOf(type));
    const std::string shown = "the key " + Excerpt(Utf8Of(key));
    const TreeIndex::Owners& owners = index_.ObjectsWith(key);
    if (keys_.HasTwice(key)) {
        return Conflict(element, owners.object, shown + " occurs twice in the document");
    }
    if (!owners.several.empty()) {
        return Conflict(element, nullptr, shown + " belongs to several objects");
    }
    if (const TreeIndex::Owners& files = index_.FilesWith(key);
        files.object != nullptr || !files.several.empty()) {
        return Conflict(element, files.object, shown + " belongs to a file");
    }
    if (owners.object == nullptr) {
        return {};
    }
    if (owners.isOutside) {
        return Conflict(element, owners.object,
                        shown + " belongs to an object that is not below the target of the import, " +
                            DescribeAsItWas(*owners.object));
    }
    const bool isOfType = kind == Kind::kUnknown && IsOfType(*owners.object, type);
    if (KindOf(*owners.object) != kind && !isOfType) {
        return Conflict(element, owners.object,
                        shown + " belongs to an object of another kind, " + DescribeAsItWas(*owners.object));
    }
    if (open_.contains(owners.object)) {
        return Conflict(element, owners.object, shown + " belongs to an object that it lies below");
    }
    return {.object = owners.object};
}

UpdatingImport::Found UpdatingImport::FindObject(const JSONNode& element, const LastMembers& last) {
    const Kind kind = format::KindOfType(AnsiFormOf(TextOf(last.type)));
    const OuString key = TextOf(last.key);
    MatchedNode* const parent = MatchOf(AboveInnermost());
    if (kind == Kind::kViewItem && !IsEmpty(key)) {
        if (CAEObject* const linked = FindByLink(parent, last)) {
            return {.object = linked};
        }
    } else if (!IsEmpty(key)) {
        if (const Found found = FindByKey(element, key, TextOf(last.type));
            found.isConflict || found.object != nullptr) {
            return found;
        }
    }
    return {.object = parent == nullptr ? nullptr : FindByName(*parent, last)};
}

CAEObject* UpdatingImport::FindByLink(MatchedNode* parent, const LastMembers& last) const {
    const OuString key = TextOf(last.key);
    const TreeIndex::Owners& owners = index_.ViewItemsWith(key);
    if (owners.object != nullptr && !landed_.contains(owners.object)) {
        return owners.object;
    }
    return parent == nullptr ? nullptr
                             : parent->Children().Find(SignOfLink(key, TextOf(last.anyName)), false, landed_);
}

CAEObject* UpdatingImport::FindByName(MatchedNode& parent, const LastMembers& last) const {
    const Kind kind = format::KindOfType(AnsiFormOf(TextOf(last.type)));
    const OuString name = TextOf(last.anyName);
    const bool withoutKey = !IsEmpty(TextOf(last.key)) && kind != Kind::kViewItem;
    if (kind == Kind::kUnknown) {
        return parent.Children().Find(SignOfType(TextOf(last.type), name), withoutKey, landed_);
    }
    if (kind != Kind::kProject) {
        return parent.Children().Find(SignOf(kind, name), withoutKey, landed_);
    }
    // An import names a project by its "displayName", an export writes that as "name", and what an import
    // does with the "name" cannot be read back: a project without a name may be the one.
    for (const OuString& known : {TextOf(last.displayName), TextOf(last.name), OuString()}) {
        if (CAEObject* const found = parent.Children().Find(SignOf(kind, known), withoutKey, landed_)) {
            return found;
        }
    }
    return nullptr;
}

bool UpdatingImport::Move(const ImportTarget& parent, CAEObject& object) {
    CAEObject* const from = object.getParent();
    if (from == parent.object) {
        return true;
    }
    if (!Options().dryRun && from != nullptr && !Rehang(object, *from, *parent.object)) {
        Conflict(*Innermost().node, &object, "the object model does not let it hang there");
        return false;
    }
    ++Result().objectsMoved;
    Tell(Reason::kMoved, {}, object.getID(), [&] {
        const std::string subject = DescribeAsItWas(object);
        // A new parent is described by the document, as a dry run has it.
        const bool isParentNew = MatchOf(AboveInnermost()) == nullptr;
        return std::pair(
            subject, subject + " moves from " + (from == nullptr ? "nowhere" : DescribeAsItWas(*from)) +
                         " to " +
                         (isParentNew ? Describe(*AboveInnermost().node) : DescribeAsItWas(*parent.object)));
    });
    return true;
}

std::optional<ImportTarget> UpdatingImport::EnterChild(const ImportTarget& parent, const JSONNode& element) {
    CountStep();
    Enter(element, false);
    const bool isRoot = IsInnermostRoot();
    Result().elements += isRoot ? 0 : 1;
    std::optional<ImportTarget> child;
    if (HasType(element)) {
        const LastMembers last(element);
        const Found found = FindObject(element, last);
        if (found.object != nullptr &&
            (isRoot ? MatchRoot(*found.object, element) : Move(parent, *found.object))) {
            ++Result().membersTaken;
            ++Result().objectsMatched;
            if (!isRoot) {
                Match(*found.object, element);
            }
            child = ImportTarget{found.object, parent.project, this};
        } else if (found.object == nullptr && !found.isConflict) {
            child = Make(parent, element);
            if (child) {
                haveAssembliesChanged_ = haveAssembliesChanged_ || IsAssembly(child->Kind());
                if (child->object != nullptr) {
                    open_.insert(child->object);
                }
                TellAdded();
            }
        }
    }
    if (!child) {
        KeepOwnersOfKey(element);
        KeepProjectWithoutType(element);
        Leave();
        return std::nullopt;
    }
    CountLanded();
    return child;
}

void UpdatingImport::KeepOwnersOfKey(const JSONNode& element) {
    const OuString key = TextOf(LastMembers(element).key);
    for (const TreeIndex::Owners* const owners :
         {&index_.ObjectsWith(key), &index_.ViewItemsWith(key), &index_.FilesWith(key)}) {
        inConflict_.insert(owners->several.begin(), owners->several.end());
        if (owners->object != nullptr) {
            inConflict_.insert(owners->object);
        }
    }
}

void UpdatingImport::KeepProjectWithoutType(const JSONNode& element) {
    MatchedNode* const parent = MatchOf(AboveInnermost());
    const LastMembers last(element);
    if (parent != nullptr && IsEmpty(TextOf(last.type))) {
        landed_.insert(parent->Children().Find(SignOfType({}, TextOf(last.name)), false, landed_));
    }
}

void UpdatingImport::TellAdded() {
    const Frame& frame = Innermost();
    Tell(Reason::kAdded, {}, 0, [&] {
        const std::string subject = (frame.isFileRecord ? "the file " : "") + Describe(*frame.node);
        return std::pair(subject, subject + " is new");
    });
}

void UpdatingImport::LeaveChild(const ImportTarget& child) {
    LeaveMatched(Innermost());
    open_.erase(child.object);
    Leave();
}

}  // namespace korvane::exchange
