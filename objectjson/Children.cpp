#include "CAEObjectJson.h"
#include "NodeReading.h"
#include "Sections.h"
#include "format/MemberNames.h"

using format::Kind;

namespace {

constexpr int kListBlockSize = 10;

}  // namespace

bool CAEObjectJson::IsChildExported(CAEObject* child) const {
    return IsLetThrough(ExportModeOfText(ModuleExportMode()), child);
}

ExportedChildren::ExportedChildren(CAEObject& object, ExportMode mode)
    : mode_(mode), children_(kListBlockSize) {
    object.getChildrenList(children_);
    next_ = children_.GetHeadPosition();
}

CAEObject* ExportedChildren::Next() {
    while (next_) {
        auto* const child = static_cast<CAEObject*>(children_.GetNext(next_));
        if (IsLetThrough(mode_, child) && child != nullptr && KindOf(*child) != Kind::kSessionObject) {
            return child;
        }
    }
    return nullptr;
}

CAEObject* CreateChild(CAEObject& parent, CAEProject& project, const JSONNode& element) {
    const OuString typeName = CAEObjectJson::ReadTypeField(element);
    if (typeName.IsEmpty()) {
        return nullptr;
    }
    const _tagCAEObjectType type = CAEObjectJson::ObjectTypeFromName(typeName.GetAnsiBuffer());
    int newId = 0;
    // The status is not asked for: an identifier is what says that there is an object.
    createCAEObject(&project, parent.getID(), type, newId);
    return newId == 0 ? nullptr : project.getCAEObject(newId);
}
