#include "Files.h"

#include "Access.h"
#include "ObjectData.h"
#include "Recorded.h"
#include "Status.h"

namespace korvane {
namespace {

/// Attaches the file and hands it, with the object's files, to what gives it its role. Identifiers are
/// positive; any other attaches nothing.
template <typename GiveRole>
int Attach(CAEObject& object, int fileId, const GiveRole& giveRole) {
    if (fileId <= 0) {
        return kFailed;
    }
    std::unique_ptr<AttachedFiles>& files = Access::Data(object).files;
    if (!files) {
        files = std::make_unique<AttachedFiles>();
    }
    giveRole(*files, files->list.FindOrAdd(fileId));
    return kDone;
}

}  // namespace

int SetCadFile(CAEObject& object, int fileId) {
    return Attach(object, fileId,
                  [](AttachedFiles& files, const AttachedFile& file) { files.cadFile = file.id; });
}

int SetGraphicFile(CAEObject& object, int fileId) {
    return Attach(object, fileId,
                  [](AttachedFiles& files, const AttachedFile& file) { files.graphicFile = file.id; });
}

int AttachMesh(CAEObject& object, int fileId) {
    return Attach(object, fileId, [](AttachedFiles&, AttachedFile& file) { file.isMesh = true; });
}

int SetActiveMesh(CAEObject& object, int fileId) {
    AttachedFiles* const files = Access::Data(object).files.get();
    const AttachedFile* const file = files != nullptr ? files->list.Find(fileId) : nullptr;
    if (file == nullptr || !file->isMesh) {
        return kFailed;
    }
    files->activeMesh = fileId;
    return kDone;
}

int SetFeRepresentation(CAEObject& object, int fileId) {
    return Attach(object, fileId,
                  [](AttachedFiles& files, const AttachedFile& file) { files.feRepresentation = file.id; });
}

}  // namespace korvane

using korvane::Access;
using korvane::AttachedFile;
using korvane::AttachedFiles;
using korvane::kFailed;
using korvane::Recorded;

OuList CAEObject::GetFiles() {
    const Recorded note("CAEObject::GetFiles", *this);
    OuList identifiers;
    if (data_->files) {
        for (const AttachedFile& file : data_->files->list.Entries()) {
            identifiers.AddTail(file.id);
        }
    }
    return identifiers;
}

int CAEObject::attachCustomFile(int fileId, CAEProject* project) {
    const Recorded note("CAEObject::attachCustomFile", *this, fileId, project);
    if (project != nullptr && Access::Data(*project).tree != data_->tree) {
        return kFailed;
    }
    return korvane::Attach(*this, fileId, [](AttachedFiles&, AttachedFile& file) { file.isCustom = true; });
}
