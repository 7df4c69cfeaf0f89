#include "ModelBuilders.h"

namespace {

template <typename Object>
void SetOrigin(Object& object) {
    object.setCreatedDate(kTestDate);
    korvane::SetCreatedUserName(object, kTestUser);
}

void AttachCustomFile(CAEObject& object, int fileId) {
    CAEProject* const ownProject = nullptr;
    object.attachCustomFile(fileId, ownProject);
}

/// What parts and sub-assemblies have in common.
template <typename Owner, typename AttachMesh>
void AttachInRole(Owner& owner, const AttachMesh& attachMesh, int fileId, _tagFileType type) {
    switch (type) {
        case CAE_FILE_CAD:
            owner.setCADFile(fileId);
            break;
        case CAE_FILE_MESH:
            attachMesh();
            owner.setActiveMesh(fileId);
            break;
        case CAE_FILE_GRAPHIC:
            owner.setGraphicFile(fileId);
            break;
        default:
            AttachCustomFile(owner, fileId);
    }
}

}  // namespace

TestProject::TestProject(const OuString& name) : project_(korvane::CreateProject(name, L"/studies")) {
    SetOrigin(*project_);
    project_->setAdditionalType(L"Simulation");
}

CAEObject& TestProject::Add(CAEObject& parent, _tagCAEObjectType type, const OuString& name) {
    CAEObject& object = *korvane::CreateObject(parent, type, name);
    SetOrigin(object);
    return object;
}

CAEObject& TestProject::Add(_tagCAEObjectType type, const OuString& name) {
    return Add(*project_, type, name);
}

CAEFile& TestProject::AddFile(CAEObject& object, const OuString& name, _tagFileType type,
                              _tagFileFormat format) {
    OuString path(L"/studies/");
    path.Append(name.GetBuffer(), 0);
    CAEFile& file = *korvane::CreateFile(*project_, path, type, format);
    SetOrigin(file);
    AttachFile(object, file.getID(), type);
    return file;
}

void SetMetadata(CAEObject& object, const OuString& name, const OuString& value, const OuString& unit,
                 const OuString& type) {
    object.setMetadataValue(name, value);
    if (!unit.IsEmpty()) {
        korvane::SetMetadataUnit(object, name, unit);
    }
    if (!type.IsEmpty()) {
        object.setMetadataType(name, type);
    }
}

void AttachFile(CAEObject& object, int fileId, _tagFileType type) {
    if (auto* part = dynamic_cast<CAEPart*>(&object)) {
        AttachInRole(
            *part, [&] { part->attachNewMeshOrMeshingRequest(fileId); }, fileId, type);
    } else if (auto* assembly = dynamic_cast<CAESubAssembly*>(&object)) {
        AttachInRole(
            *assembly, [&] { assembly->attachNewRepresentationOrMeshingReq(fileId); }, fileId, type);
    } else if (auto* run = dynamic_cast<CAERunAssembly*>(&object)) {
        run->setFERepresentationFile(fileId);
    } else {
        AttachCustomFile(object, fileId);
    }
}
