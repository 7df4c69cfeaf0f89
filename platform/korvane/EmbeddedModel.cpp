#include "EmbeddedModel.h"

#include <memory>

#include "Access.h"
#include "Creation.h"
#include "ObjectData.h"
#include "ObjectTree.h"
#include "OuStringFileName.h"

namespace korvane {

std::unique_ptr<CAEProject> CreateProject(const OuString& name, const OuString& directory) {
    std::unique_ptr<CAEProject> project = Access::MakeProject();
    Access::Name(*project) = name;
    ProjectData& data = Access::Project(*project);
    data.displayName = name;
    data.directory = directory;
    data.ownTree = std::make_unique<ObjectTree>(*project);
    return project;
}

void SetCreation(CAEProject& project, const OuString& date, const OuString& userName) {
    Access::Data(project).tree->SetCreation(date, userName);
}

CAEObject* CreateObject(CAEObject& parent, _tagCAEObjectType type, const OuString& name) {
    const ObjectData& data = Access::Data(parent);
    if (!data.isInTree) {
        return nullptr;
    }
    CAEObject* const object = CreateUnder(parent, type, Access::Project(*data.project).directory);
    if (object != nullptr) {
        Access::Name(*object) = name;
    }
    return object;
}

CAEFile* CreateFile(CAEProject& project, const OuString& path, _tagFileType type, _tagFileFormat format) {
    ObjectTree& tree = *Access::Data(project).tree;
    std::unique_ptr<CAEObject> made = Access::MakeObject(CAE_FILE);
    auto& file = static_cast<CAEFile&>(*made);
    FileData& data = Access::File(file);
    data.fullPathName = path;
    data.type = type;
    data.format = format;
    Access::Name(file) = OuStringFileName(path).GetFileName();
    tree.StampCreation(file);
    const int id = tree.TakeIdentifier();
    if (id == 0) {
        return nullptr;
    }
    Access::SetId(file, id);
    return &tree.HangNewFile(project, std::move(made));
}

bool Renumber(CAEObject& object, int id) {
    const ObjectData& data = Access::Data(object);
    return data.isInTree && data.tree->Renumber(object, id);
}

void SetCreatedUserName(CAEObject& object, const OuString& userName) {
    Access::Data(object).createdUserName = userName;
}

void SetMetadataUnit(CAEObject& object, const OuString& name, const OuString& unit) {
    MetadataOf(object, name).unit = unit;
}

std::vector<MetadataValues> GetMetadata(const CAEObject& object) {
    std::vector<MetadataValues> entries;
    if (const Metadata* const metadata = Access::Data(object).metadata.get()) {
        entries.reserve(metadata->Entries().size());
        for (const MetadataEntry& entry : metadata->Entries()) {
            entries.push_back({entry.name, entry.value, entry.type, entry.unit});
        }
    }
    return entries;
}

void SetDirectory(CAEProject& project, const OuString& directory) {
    Access::Project(project).directory = directory;
}

OuString GetDisplayName(const CAEProject& project) {
    return Access::Project(project).displayName;
}

bool GetProgramReference(const CAEProject& project) {
    return Access::Project(project).programReference;
}

std::vector<CAEFile*> GetProjectFiles(const CAEProject& project) {
    std::vector<CAEFile*> files;
    for (CAEObject* file = FirstFileOf(project); file != nullptr; file = Access::Data(*file).nextSibling) {
        files.push_back(static_cast<CAEFile*>(file));
    }
    return files;
}

FileRoles GetFileRoles(const CAEObject& object) {
    FileRoles roles;
    const AttachedFiles* const files = Access::Data(object).files.get();
    if (files == nullptr) {
        return roles;
    }
    roles.cadFile = files->cadFile;
    roles.graphicFile = files->graphicFile;
    roles.activeMesh = files->activeMesh;
    roles.feRepresentation = files->feRepresentation;
    for (const AttachedFile& file : files->list.Entries()) {
        roles.files.push_back(file.id);
        if (file.isMesh) {
            roles.meshes.push_back(file.id);
        }
        if (file.isCustom) {
            roles.customFiles.push_back(file.id);
        }
    }
    return roles;
}

VersionNumber GetCurrentVersion(const CAEObject& object) {
    const Versions* const versions = Access::Data(object).versions.get();
    return versions != nullptr ? VersionNumber{versions->currentMajor, versions->currentMinor}
                               : VersionNumber{};
}

int GetReferencedObject(const CAEViewItem& viewItem) {
    return Access::ReferencedId(viewItem);
}

bool IsInGlobalFrame(const CAEFile& file) {
    return Access::File(file).isInGlobalFrame;
}

bool IsDownloaded(const CAEFile& file) {
    return Access::File(file).isDownloaded;
}

void VisitTree(CAEObject& object, const std::function<void(CAEObject&, int depth)>& visitor) {
    CAEObject* visited = &object;
    int depth = 0;
    while (visited != nullptr) {
        visitor(*visited, depth);
        if (CAEObject* const child = Access::Data(*visited).firstChild) {
            visited = child;
            ++depth;
            continue;
        }
        while (visited != &object && Access::Data(*visited).nextSibling == nullptr) {
            visited = Access::Data(*visited).parent;
            --depth;
        }
        visited = visited != &object ? Access::Data(*visited).nextSibling : nullptr;
    }
}

}  // namespace korvane
