#include "Files.h"

#include "Access.h"
#include "ObjectData.h"
#include "Recorded.h"
#include "Status.h"

namespace korvane {
namespace {

constexpr std::size_t kMostFilesWithoutIndex = 16;

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
    giveRole(*files, files->FindOrAttach(fileId));
    return kDone;
}

}  // namespace

AttachedFiles::AttachedFiles(const AttachedFiles& other)
    : cadFile(other.cadFile),
      graphicFile(other.graphicFile),
      activeMesh(other.activeMesh),
      feRepresentation(other.feRepresentation),
      files_(other.files_) {}

std::size_t AttachedFiles::PositionOf(int id) const {
    if (files_.size() <= kMostFilesWithoutIndex) {
        std::size_t position = 0;
        while (position < files_.size() && files_[position].id != id) {
            ++position;
        }
        return position;
    }
    if (!index_) {
        auto index = std::make_unique<Index>();
        for (std::size_t i = 0; i < files_.size(); ++i) {
            index->emplace(files_[i].id, i);
        }
        index_ = std::move(index);
    }
    const auto found = index_->find(id);
    return found != index_->end() ? found->second : files_.size();
}

const AttachedFiles::File* AttachedFiles::Find(int id) const {
    const std::size_t position = PositionOf(id);
    return position < files_.size() ? &files_[position] : nullptr;
}

AttachedFiles::File& AttachedFiles::FindOrAttach(int id) {
    const std::size_t position = PositionOf(id);
    if (position == files_.size()) {
        files_.push_back({id, false, false});
        if (index_) {
            try {
                index_->emplace(id, position);
            } catch (...) {
                files_.pop_back();
                throw;
            }
        }
    }
    return files_[position];
}

int SetCadFile(CAEObject& object, int fileId) {
    return Attach(object, fileId,
                  [](AttachedFiles& files, const AttachedFiles::File& file) { files.cadFile = file.id; });
}

int SetGraphicFile(CAEObject& object, int fileId) {
    return Attach(object, fileId,
                  [](AttachedFiles& files, const AttachedFiles::File& file) { files.graphicFile = file.id; });
}

int AttachMesh(CAEObject& object, int fileId) {
    return Attach(object, fileId, [](AttachedFiles&, AttachedFiles::File& file) { file.isMesh = true; });
}

int SetActiveMesh(CAEObject& object, int fileId) {
    AttachedFiles* const files = Access::Data(object).files.get();
    const AttachedFiles::File* const file = files != nullptr ? files->Find(fileId) : nullptr;
    if (file == nullptr || !file->isMesh) {
        return kFailed;
    }
    files->activeMesh = fileId;
    return kDone;
}

int SetFeRepresentation(CAEObject& object, int fileId) {
    return Attach(object, fileId, [](AttachedFiles& files, const AttachedFiles::File& file) {
        files.feRepresentation = file.id;
    });
}

}  // namespace korvane

using korvane::Access;
using korvane::AttachedFiles;
using korvane::kFailed;
using korvane::Recorded;

OuList CAEObject::GetFiles() {
    const Recorded note("CAEObject::GetFiles", *this);
    OuList identifiers;
    if (data_->files) {
        for (const AttachedFiles::File& file : data_->files->Files()) {
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
    return korvane::Attach(*this, fileId,
                           [](AttachedFiles&, AttachedFiles::File& file) { file.isCustom = true; });
}
