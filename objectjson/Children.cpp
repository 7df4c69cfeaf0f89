#include "CAEObjectJson.h"
#include "NodeReading.h"
#include "Sections.h"
#include "format/MemberNames.h"

namespace member = format::member;
using format::Kind;

namespace {

constexpr int kListBlockSize = 10;

OuList& FilledWithChildren(OuList& list, CAEObject& object) {
    object.getChildrenList(list);
    return list;
}

}  // namespace

bool CAEObjectJson::IsChildExported(CAEObject* child) const {
    return IsLetThrough(ExportModeOfText(ModuleExportMode()), child);
}

ExportedChildren::ExportedChildren(CAEObject& object, ExportMode mode)
    : mode_(mode), children_(kListBlockSize), walk_(FilledWithChildren(children_, object)) {}

CAEObject* ExportedChildren::Next() {
    while (walk_.HasNext()) {
        CAEObject* const child = walk_.NextObject();
        if (IsLetThrough(mode_, child) && child != nullptr && KindOf(*child) != Kind::kSessionObject) {
            return child;
        }
    }
    return nullptr;
}

CAEObject* CreateChild(CAEObject& parent, CAEProject& project, const JSONNode& element) {
    const JSONNode* const member = FindMember(element, member::kType);
    if (member == nullptr) {
        return nullptr;
    }
    const NodeText text = NodeValue(*member);
    const std::string_view typeName = UpToNul(text);
    if (typeName.empty()) {
        return nullptr;
    }
    const _tagCAEObjectType type = ToObjectType(format::KindOfType(typeName));
    int newId = 0;
    // The status is not asked for: an identifier is what says that there is an object.
    createCAEObject(&project, parent.getID(), type, newId);
    return newId == 0 ? nullptr : project.getCAEObject(newId);
}
