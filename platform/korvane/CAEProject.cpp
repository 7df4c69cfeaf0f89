#include "CAEProject.h"

#include "Access.h"
#include "ObjectData.h"
#include "ObjectTree.h"
#include "Recorded.h"
#include "Status.h"

using korvane::Access;
using korvane::kDone;
using korvane::kFailed;
using korvane::ObjectData;
using korvane::ObjectTree;
using korvane::ProjectData;
using korvane::Recorded;

CAEProject::CAEProject() : CAEObject(CAE_PROJECT), projectData_(std::make_unique<ProjectData>()) {
    Access::Data(*this).project = this;
}

CAEProject::~CAEProject() = default;

CAEObject* CAEProject::getCAEObject(int id) {
    const Recorded note("CAEProject::getCAEObject", *this, id);
    if (const auto* const odd = note.Odd()) {
        return odd->object;
    }
    return Access::Data(*this).tree->Find(id);
}

CAEFile* CAEProject::getFile(int id) {
    const Recorded note("CAEProject::getFile", *this, id);
    if (const auto* const odd = note.Odd()) {
        return dynamic_cast<CAEFile*>(odd->object);
    }
    CAEObject* const object = Access::Data(*this).tree->Find(id);
    return object != nullptr && Access::Data(*object).type == CAE_FILE ? static_cast<CAEFile*>(object)
                                                                       : nullptr;
}

int CAEProject::assignID(CAEObject* object) {
    const Recorded note("CAEProject::assignID", *this, object);
    if (object == nullptr) {
        return 0;
    }
    const int id = Access::Data(*this).tree->TakeIdentifier();
    if (id != 0) {
        Access::SetId(*object, id);
    }
    return id;
}

int CAEProject::addFile(CAEFile* file) {
    const Recorded note("CAEProject::addFile", *this, file);
    if (file == nullptr || Access::Data(*file).tree != nullptr) {
        return kFailed;
    }
    ObjectTree& tree = *Access::Data(*this).tree;
    const int id = Access::Id(*file);
    if (id <= 0 || tree.Find(id) != nullptr) {
        return kFailed;
    }
    ObjectData& data = Access::Data(*file);
    data.tree = &tree;
    try {
        tree.HangFile(*this, *file);
    } catch (...) {
        data.tree = nullptr;
        throw;
    }
    tree.Own(std::unique_ptr<CAEObject>(file));
    return kDone;
}

void CAEProject::getDirectory(OuString& directory) const {
    const Recorded note("CAEProject::getDirectory", *this);
    directory = projectData_->directory;
}

void CAEProject::SetDisplayName(const OuString& name) {
    const Recorded note("CAEProject::SetDisplayName", *this, name);
    projectData_->displayName = name;
}

OuString CAEProject::getAdditionalType() const {
    const Recorded note("CAEProject::getAdditionalType", *this);
    return projectData_->additionalType;
}

void CAEProject::setAdditionalType(const OuString& type) {
    const Recorded note("CAEProject::setAdditionalType", *this, type);
    projectData_->additionalType = type;
}

void CAEProject::SetProgramReference(bool reference) {
    const Recorded note("CAEProject::SetProgramReference", *this, reference);
    projectData_->programReference = reference;
}
