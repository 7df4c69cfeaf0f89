#include <CAEFunctions.h>
#include <CAEObject.h>
#include <CAEProject.h>

#include "CAEObjectJson.h"
#include "ExportWalk.h"
#include "ImportWalk.h"
#include "Members.h"
#include "module/ExportMode.h"

namespace {

constexpr const char* kChildren = "children";

constexpr const wchar_t* kFilesOnly = L"PROJECT";
constexpr const wchar_t* kWithoutIterationModels = L"STUDY";

/// The kind that never shows among the children, whatever the mode.
constexpr auto kNeverExported = static_cast<_tagCAEObjectType>(26);

constexpr int kListBlockSize = 10;

}  // namespace

JSONNode CAEObjectJson::ExportChildren() {
    return ExportWalk::Write(*this, ExportWalk::Section::kChildren);
}

bool CAEObjectJson::IsChildExported(CAEObject* child) const {
    const OuString& mode = ModuleExportMode();
    if (mode.Compare(kFilesOnly) == 0) {
        return child != nullptr && child->getType() == CAE_FILE;
    }
    if (mode.Compare(kWithoutIterationModels) == 0) {
        return child == nullptr || child->getType() != CAE_ITERATION_MODEL;
    }
    return true;
}

void ExportWalk::BeginChildren(Place& place) {
    place.array = NamedContainer(kChildren, JSON_ARRAY);
    place.elements = OuList(kListBlockSize);
    if (CAEObject* const object = place.converter.object_) {
        object->getChildrenList(place.elements);
    }
    place.next = place.elements.GetHeadPosition();
}

bool ExportWalk::EnterNextChild(Place& place) {
    while (place.next != nullptr) {
        auto* child = static_cast<CAEObject*>(place.elements.GetNext(place.next));
        if (!place.converter.IsChildExported(child) || child == nullptr ||
            child->getType() == kNeverExported) {
            continue;
        }
        // An object node for every kind: a file among the children is no file record.
        Enter(places_.emplace_back(*child));
        return true;
    }
    return false;
}

void CAEObjectJson::ImportChildren(JSONNode children) {
    ImportWalk::ImportChildren(*this, children);
}

void ImportWalk::BeginChildren(Place& place, const JSONNode& children) {
    place.children = children;
    place.nextChild = 0;
}

void ImportWalk::EnterChild(Place& place, const JSONNode& element) {
    const OuString typeName = CAEObjectJson::ReadTypeField(element);
    CAEObject* parent = place.converter.object_;
    CAEProject* project = place.converter.project_;
    if (typeName.IsEmpty() || parent == nullptr || project == nullptr) {
        return;
    }
    const _tagCAEObjectType type = CAEObjectJson::ObjectTypeFromName(typeName.GetAnsiBuffer());
    int newId = 0;
    // The status is not asked for: an identifier is what tells that there is an object.
    createCAEObject(project, parent->getID(), type, newId);
    CAEObject* child = newId == 0 ? nullptr : project->getCAEObject(newId);
    if (child == nullptr) {
        return;
    }
    Place& entered = places_.emplace_back(element, *child);
    if (entered.converter.PrepareImport()) {
        BeginMembers(entered);
    }
}

void ImportWalk::LeaveChild() {
    CAEObject* child = places_.back().converter.object_;
    CAEObjectJson& parent = places_[places_.size() - 2].converter;
    if (child->getType() == CAE_VIEW_ITEM) {
        parent.ResolveViewItemReference(child);
    }
    places_.pop_back();
}
