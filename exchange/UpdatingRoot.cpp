#include <korvaneexchange/PrintableText.h>

#include <algorithm>
#include <array>

#include "NodeText.h"
#include "UpdatingImport.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;
using format::Kind;

namespace korvane::exchange {

// What the root of the document becomes.

bool UpdatingImport::EnterRoot(const ImportTarget& target, const JSONNode& node) {
    Enter(node, false);
    if (!HasType(node)) {
        return false;
    }
    CAEObject& object = *target.object;
    const OuString key = TextOf(LastMembers(node).key);
    if (!IsEmpty(key) && KindOf(object) != Kind::kViewItem) {
        if (const OuString own = object.getDBKey(); !IsEmpty(own) && !IsWrittenAs(own, key)) {
            Conflict(node, &object, "the target of the import has another key, " + Excerpt(Utf8Of(own)));
            return false;
        }
        const TreeIndex::Owners& owners = index_.ObjectsWith(key);
        const std::string shown = "the key " + Excerpt(Utf8Of(key));
        if (!owners.several.empty()) {
            Conflict(node, &object, shown + " belongs to several objects");
            return false;
        }
        if (owners.object != nullptr && owners.object != &object) {
            Conflict(node, &object, shown + " belongs to another object, " + DescribeAsItWas(*owners.object));
            return false;
        }
    }
    if (!MatchRoot(object, node)) {
        return false;
    }
    Result().root = object.getID();
    Result().hasRoot = true;
    ++Result().objectsMatched;
    return true;
}

void UpdatingImport::EnterParentOfRoot(const ImportTarget& target) {
    ReportingImport::EnterParentOfRoot(target);
    Match(*target.object, noNode_);
}

bool UpdatingImport::MatchRoot(CAEObject& object, const JSONNode& root) {
    Match(object, root);
    // A document does not say where its root hangs, so that stays, and what it lies below cannot move below
    // it.
    for (CAEObject* above = object.getParent(); above != nullptr && open_.insert(above).second;) {
        above = above->getParent();
    }
    MatchedNode& match = *MatchOf(Innermost());
    const OuString key = TextOf(match.Last().key);
    if (Options().sameRoot || (!IsEmpty(key) && IsWrittenAs(object.getDBKey(), key))) {
        return true;
    }
    const bool hasOtherName = HasOtherName(object, match.Last());
    if (!hasOtherName && !RemovesAll(match, root)) {
        return true;
    }
    Tell(Reason::kOtherRoot, {}, object.getID(), [&] {
        const std::string it = DescribeAsItWas(object);
        const std::string subject = Describe(root);
        return std::pair(subject,
                         hasOtherName
                             ? "the document of " + subject + " is of another project than " + it +
                                   ": it has another name, and not the key of this project"
                             : "the document of " + subject + " may be of another object than " + it +
                                   ": nothing below it is known there, so that all objects would be removed");
    });
    return false;
}

bool UpdatingImport::HasOtherName(CAEObject& object, const LastMembers& last) {
    const OuString own = NameOf(object);
    if (KindOf(object) != Kind::kProject || IsEmpty(own)) {
        return false;
    }
    const std::array said = {TextOf(last.displayName), TextOf(last.name)};
    const auto isName = [](const OuString& text) { return !IsEmpty(text); };
    const auto isOwn = [&own](const OuString& text) { return IsWrittenAs(own, text); };
    return std::ranges::any_of(said, isName) && std::ranges::none_of(said, isOwn);
}

bool UpdatingImport::RemovesAll(MatchedNode& match, const JSONNode& root) const {
    const auto canGo = [](CAEObject* child) { return KindOf(*child) != Kind::kSessionObject; };
    if (!Options().remove || std::ranges::none_of(match.ListedChildren(), canGo) || index_.HasAnyOf(keys_)) {
        return false;
    }
    bool hasSection = false;
    for (ChildWalk members(root); const JSONNode* const section = members.Next();) {
        const NodeText name = NodeName(*section);
        if (!(member::kChildren == name) || !IsContainer(*section)) {
            continue;
        }
        hasSection = true;
        for (ChildWalk elements(*section); const JSONNode* const element = elements.Next();) {
            const LastMembers last(*element);
            const bool isViewItem =
                format::KindOfType(AnsiFormOf(TextOf(last.type))) == Kind::kViewItem && last.key != nullptr;
            if (FindByName(match, last) != nullptr || (isViewItem && FindByLink(&match, last) != nullptr)) {
                return false;
            }
        }
    }
    return hasSection;
}

}  // namespace korvane::exchange
