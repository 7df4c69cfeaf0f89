#include <memory>
#include <utility>

#include "CAEObjectJson.h"
#include "NodeReading.h"
#include "RepeatedTexts.h"
#include "Sections.h"

using format::FileType;
using format::Kind;

namespace {

/// Calls what attaches a file to objects of a class; nothing for an object of another class.
template <typename Owner, typename Attach>
void AttachTo(CAEObject& object, const Attach& attach) {
    if (auto* const owner = dynamic_cast<Owner*>(&object)) {
        attach(*owner);
    }
}

/// What parts and sub-assemblies have in common: everything but the operation that takes a mesh.
template <typename Owner, typename AttachMesh>
void AttachInRole(Owner& owner, FileType type, int fileId, const AttachMesh& attachMesh) {
    if (type == FileType::kMesh) {
        attachMesh();
        owner.setActiveMesh(fileId);
    } else if (type == FileType::kCad) {
        owner.setCADFile(fileId);
    } else if (type == FileType::kGraphic) {
        owner.setGraphicFile(fileId);
    }
}

/// Attaches a file of the project to the object in the role that its type has there.
void AttachFile(CAEObject& object, CAEFile& file, int fileId) {
    const Kind kind = KindOf(object);
    const FileType type = FileTypeOf(file);
    switch (kind) {
        case Kind::kPart:
            AttachTo<CAEPart>(object, [&](CAEPart& part) {
                AttachInRole(part, type, fileId, [&] { part.attachNewMeshOrMeshingRequest(fileId); });
            });
            break;
        case Kind::kSubAssembly:
            AttachTo<CAESubAssembly>(object, [&](CAESubAssembly& assembly) {
                AttachInRole(assembly, type, fileId,
                             [&] { assembly.attachNewRepresentationOrMeshingReq(fileId); });
            });
            break;
        case Kind::kIterationModel:
            // Whatever its type: everything that an iteration model has is what its solver runs on.
            AttachTo<CAERunAssembly>(
                object, [&](CAERunAssembly& assembly) { assembly.setFERepresentationFile(fileId); });
            break;
        default:
            break;
    }
    if (!format::HasRole(type)) {
        CAEProject* const ownProject = nullptr;
        object.attachCustomFile(fileId, ownProject);
    }
}

std::unique_ptr<CAEFile> NewFile() {
    OuString* const noPath = nullptr;
    return std::make_unique<CAEFile>(noPath, ToFileType(FileType::kUnknown),
                                     ToFileFormat(format::FileFormat::kUnknown), false);
}

void SetPath(CAEFile& file, const OuString& path) {
    file.setFullPathName(path);
    file.m_fullPathCopy = path;
}

/// What is read from a record lands in a new file, unless there is a policy that says otherwise.
ImportPolicy::FileLanding EnterFile(const ImportTarget& owner, const JSONNode& record) {
    return owner.policy == nullptr ? ImportPolicy::FileLanding() : owner.policy->EnterFile(owner, record);
}

/// Gives the file its path, a new one also its place in the project, and attaches it.
void PlaceFile(const ImportTarget& owner, CAEFile& file, std::unique_ptr<CAEFile> made,
               const OuString& path) {
    ImportPolicy* const policy = owner.policy;
    if (policy == nullptr || policy->SetsPath(file, path)) {
        SetPath(file, path);
    }
    if (policy != nullptr && !policy->AttachesFile(owner, file)) {
        return;
    }
    if (made == nullptr) {
        AttachFile(*owner.object, file, file.getID());
        return;
    }
    const int fileId = owner.project->assignID(made.get());
    owner.project->addFile(made.get());
    AttachFile(*owner.object, *made.release(), fileId);
}

}  // namespace

bool IsAttached(FileType type, Kind owner) {
    const bool hasRoles = owner == Kind::kPart || owner == Kind::kSubAssembly;
    return hasRoles || owner == Kind::kIterationModel || !format::HasRole(type);
}

ExportedFiles::ExportedFiles(CAEObject& object)
    : identifiers_(object.GetFiles()), walk_(identifiers_), project_(object.getProject()) {}

CAEFile* ExportedFiles::Next() {
    while (project_ != nullptr && walk_.HasNext()) {
        if (CAEFile* const file = project_->getFile(walk_.NextIdentifier())) {
            return file;
        }
    }
    return nullptr;
}

void ReadFiles(const ImportTarget& target, const JSONNode& records, RepeatedTexts& texts) {
    OuStringFileName directory;
    target.project->getDirectory(directory);
    directory.NormalizeDirectory();
    ChildWalk walk(records);
    while (const JSONNode* const record = walk.Next()) {
        const ImportPolicy::FileLanding landing = EnterFile(target, *record);
        if (landing.isLeftOut) {
            continue;
        }
        OuString path = directory;
        std::unique_ptr<CAEFile> made;
        if (landing.file == nullptr) {
            made = NewFile();
        }
        CAEFile& file = landing.file != nullptr ? *landing.file : *made;
        ReadFileRecord(file, target.policy, *record, texts);
        OuString name;
        file.getName(name);
        path.Append(CharactersOf(name), 0);
        // The record's own path never survives: a file lies where its project lies.
        PlaceFile(target, file, std::move(made), path);
        if (target.policy != nullptr) {
            target.policy->LeaveFile(target);
        }
    }
}

void CAEObjectJson::ImportFiles(JSONNode files) {
    if (project_ != nullptr && object_ != nullptr) {
        RepeatedTexts texts;
        ReadFiles({object_, project_}, files, texts);
    }
}
