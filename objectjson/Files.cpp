#include <CAEFile.h>
#include <CAEPart.h>
#include <CAEProject.h>
#include <CAERunAssembly.h>
#include <CAESubAssembly.h>
#include <OuStringFileName.h>

#include <memory>

#include "CAEFileJson.h"
#include "CAEObjectJson.h"
#include "ExportWalk.h"
#include "Members.h"

namespace {

constexpr const char* kFiles = "files";

/// Calls operations of the object's own class, one after the other, with the identifier of a file.
template <typename Owner, int (Owner::*... operations)(int)>
void Attach(CAEObject& object, int fileId) {
    if (auto* owner = dynamic_cast<Owner*>(&object)) {
        (static_cast<void>((owner->*operations)(fileId)), ...);
    }
}

/// How the files of the three types with a role are attached to an object of a kind, and what comes before
/// the custom attachment of all others.
struct Roles {
    using Operation = void (*)(CAEObject& object, int fileId);
    _tagCAEObjectType kind;
    Operation mesh;
    Operation cad;
    Operation graphic;
    Operation beforeCustom;
};

constexpr Roles::Operation kRepresentation = Attach<CAERunAssembly, &CAERunAssembly::setFERepresentationFile>;

constexpr Roles kRoles[] = {
    {CAE_PART, Attach<CAEPart, &CAEPart::attachNewMeshOrMeshingRequest, &CAEPart::setActiveMesh>,
     Attach<CAEPart, &CAEPart::setCADFile>, Attach<CAEPart, &CAEPart::setGraphicFile>, nullptr},
    {CAE_SUBASSEMBLY,
     Attach<CAESubAssembly, &CAESubAssembly::attachNewRepresentationOrMeshingReq,
            &CAESubAssembly::setActiveMesh>,
     Attach<CAESubAssembly, &CAESubAssembly::setCADFile>,
     Attach<CAESubAssembly, &CAESubAssembly::setGraphicFile>, nullptr},
    // Every file of a run assembly becomes its representation, and one without a role is attached as well:
    // this is meant.
    {CAE_ITERATION_MODEL, kRepresentation, kRepresentation, kRepresentation, kRepresentation},
};

/// What the kind does with a file of the type; null where it does nothing.
Roles::Operation FindOperation(_tagCAEObjectType kind, _tagFileType type) {
    for (const Roles& roles : kRoles) {
        if (roles.kind == kind) {
            return type == CAE_FILE_MESH      ? roles.mesh
                   : type == CAE_FILE_CAD     ? roles.cad
                   : type == CAE_FILE_GRAPHIC ? roles.graphic
                                              : roles.beforeCustom;
        }
    }
    return nullptr;
}

bool IsCustom(_tagFileType type) {
    return type != CAE_FILE_MESH && type != CAE_FILE_CAD && type != CAE_FILE_GRAPHIC;
}

}  // namespace

JSONNode CAEObjectJson::ExportFiles() {
    return ExportWalk::Write(*this, ExportWalk::Section::kFiles);
}

void ExportWalk::BeginFiles(Place& place) {
    place.array = NamedContainer(kFiles, JSON_ARRAY);
    if (CAEObject* const object = place.converter.object_) {
        place.elements = object->GetFiles();
        place.project = object->getProject();
    }
    place.next = place.project == nullptr ? nullptr : place.elements.GetHeadPosition();
}

bool ExportWalk::EnterNextFile(Place& place) {
    while (place.next != nullptr) {
        const int identifier = place.elements.GetNextID(place.next);
        if (CAEFile* file = place.project->getFile(identifier)) {
            Enter(places_.emplace_back(*file));
            return true;
        }
    }
    return false;
}

void CAEObjectJson::ImportFiles(JSONNode files) {
    if (project_ == nullptr || object_ == nullptr) {
        return;
    }
    OuStringFileName directory;
    project_->getDirectory(directory);
    directory.NormalizeDirectory();
    const JSONNode& records = files;
    for (const JSONNode& record : records) {
        OuString path = directory;
        auto file = std::make_unique<CAEFile>(nullptr, CAE_FILE_UNKNOWN, CAE_FORMAT_UNKNOWN, false);
        const CAEFileJson converter(record, file.get());
        OuString name;
        file->getName(name);
        path.Append(name.GetBuffer(), 0);
        // The record's own path never survives: a file lies where its project lies.
        file->setFullPathName(path);
        file->m_fullPathCopy = path;
        const int fileId = project_->assignID(file.get());
        project_->addFile(file.get());
        AttachFile(fileId, *file.release());
    }
}

void CAEObjectJson::AttachFile(int fileId, const CAEFile& file) {
    const _tagCAEObjectType kind = object_->getType();
    const _tagFileType type = file.getFileType();
    if (const Roles::Operation attach = FindOperation(kind, type)) {
        attach(*object_, fileId);
    }
    if (IsCustom(type)) {
        object_->attachCustomFile(fileId, nullptr);
    }
}
