#include "EmbeddedRestore.h"

#include "Access.h"
#include "Creation.h"
#include "ObjectData.h"
#include "ObjectTree.h"

namespace korvane {

CAEObject* RestoreObject(CAEObject& parent, _tagCAEObjectType type, const OuString& name, int id) {
    const ObjectData& data = Access::Data(parent);
    if (!data.isInTree || !CanBeCreated(type) || id <= 0 || data.tree->Find(id) != nullptr) {
        return nullptr;
    }
    std::unique_ptr<CAEObject> made = Access::MakeObject(type);
    data.tree->StampCreation(*made);
    if (CAEProject* const project = AsProject(*made)) {
        Access::Project(*project).directory = Access::Project(*data.project).directory;
    }
    Access::Name(*made) = name;
    Access::SetId(*made, id);
    return &data.tree->HangNewChild(parent, std::move(made));
}

CAEFile* RestoreFile(CAEProject& project, const OuString& name, int id) {
    const ObjectData& data = Access::Data(project);
    if (!data.isInTree || id <= 0 || data.tree->Find(id) != nullptr) {
        return nullptr;
    }
    std::unique_ptr<CAEObject> made = Access::MakeObject(CAE_FILE);
    data.tree->StampCreation(*made);
    Access::Name(*made) = name;
    Access::SetId(*made, id);
    return &data.tree->HangNewFile(project, std::move(made));
}

void SetMetadata(CAEObject& object, const MetadataValues& values) {
    MetadataEntry& entry = MetadataOf(object, values.name);
    entry.value = values.value;
    entry.type = values.type;
    entry.unit = values.unit;
}

void SetFileRoles(CAEObject& object, const FileRoles& roles) {
    auto files = std::make_unique<AttachedFiles>();
    for (const int id : roles.files) {
        if (id > 0) {
            files->list.FindOrAdd(id);
        }
    }
    const auto attached = [&](int id) { return files->list.Find(id) != nullptr ? id : 0; };
    files->cadFile = attached(roles.cadFile);
    files->graphicFile = attached(roles.graphicFile);
    files->feRepresentation = attached(roles.feRepresentation);
    for (const int id : roles.meshes) {
        if (attached(id) != 0) {
            files->list.FindOrAdd(id).isMesh = true;
        }
    }
    for (const int id : roles.customFiles) {
        if (attached(id) != 0) {
            files->list.FindOrAdd(id).isCustom = true;
        }
    }
    const AttachedFile* const mesh = files->list.Find(roles.activeMesh);
    files->activeMesh = mesh != nullptr && mesh->isMesh ? mesh->id : 0;
    Access::Data(object).files = std::move(files);
}

int GetNextIdentifier(const CAEProject& project) {
    return Access::Data(project).tree->NextIdentifier();
}

void SetNextIdentifier(CAEProject& project, int next) {
    Access::Data(project).tree->SkipIdentifiersBefore(next);
}

}  // namespace korvane
