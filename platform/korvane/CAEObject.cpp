#include "CAEObject.h"

#include <utility>

#include "Access.h"
#include "ObjectData.h"
#include "ObjectTree.h"
#include "Recorded.h"
#include "Status.h"

using korvane::Access;
using korvane::IsWithin;
using korvane::kDone;
using korvane::kFailed;
using korvane::ObjectData;
using korvane::ObjectTree;
using korvane::Recorded;

CAEObject::CAEObject(_tagCAEObjectType type) : data_(std::make_unique<ObjectData>(type)) {}
CAEObject::~CAEObject() = default;

_tagCAEObjectType CAEObject::getType() const {
    const Recorded note("CAEObject::getType", *this);
    if (const auto* const odd = note.Odd()) {
        return odd->type;
    }
    return data_->type;
}

CAEObject* CAEObject::getParent() const {
    const Recorded note("CAEObject::getParent", *this);
    if (const auto* const odd = note.Odd()) {
        return odd->object;
    }
    return data_->parent;
}

CAEProject* CAEObject::getProject() const {
    const Recorded note("CAEObject::getProject", *this);
    if (const auto* const odd = note.Odd()) {
        return dynamic_cast<CAEProject*>(odd->object);
    }
    return data_->project;
}

void CAEObject::getChildrenList(OuList& children) const {
    const Recorded note("CAEObject::getChildrenList", *this);
    if (const auto* const odd = note.Odd()) {
        for (CAEObject* const child : odd->children) {
            children.AddTail(child);
        }
        return;
    }
    for (CAEObject* child = data_->firstChild; child != nullptr; child = Access::Data(*child).nextSibling) {
        children.AddTail(child);
    }
}

int CAEObject::addChild(CAEObject* child) {
    const Recorded note("CAEObject::addChild", *this, child);
    if (const auto* const odd = note.Odd()) {
        return odd->status;
    }
    if (child == nullptr) {
        return kFailed;
    }
    const ObjectData& added = Access::Data(*child);
    const bool hangs = added.isInTree || korvane::HangsOn(*child) != nullptr;
    if (added.tree == nullptr || added.tree != data_->tree || hangs || IsWithin(*this, *child)) {
        return kFailed;
    }
    data_->tree->HangChild(*this, *child);
    return kDone;
}

int CAEObject::detachChild(CAEObject*& child, bool destroy) {
    const Recorded note("CAEObject::detachChild", *this, child, destroy);
    if (child == nullptr || Access::Data(*child).parent != this) {
        return kFailed;
    }
    CAEObject& detached = *child;
    child = nullptr;
    ObjectTree& tree = *data_->tree;
    tree.Unhang(detached);
    if (destroy) {
        tree.Destroy(detached);
    }
    return kDone;
}

void CAEObject::getCreatedDate(OuString& date) const {
    const Recorded note("CAEObject::getCreatedDate", *this);
    date = data_->createdDate;
}

void CAEObject::setCreatedDate(OuString date) {
    const Recorded note("CAEObject::setCreatedDate", *this, date);
    data_->createdDate = std::move(date);
}

void CAEObject::getCreatedUserName(OuString& userName) const {
    const Recorded note("CAEObject::getCreatedUserName", *this);
    userName = data_->createdUserName;
}

void CAEObject::setName(const OuString& name) {
    const Recorded note("CAEObject::setName", *this, name);
    Access::Name(*this) = name;
}

int CAEObject::setDBKey(const OuString& key) {
    const Recorded note("CAEObject::setDBKey", *this, key);
    if (data_->tree != nullptr) {
        data_->tree->SetKey(*this, key);
    } else {
        Access::Key(*this) = key;
    }
    return kDone;
}
