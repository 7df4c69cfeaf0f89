#include <OuStringFileName.h>

#include <memory>

#include "SecondReading.h"

namespace reference {
namespace {

template <typename Owner>
void AttachInRole(Owner* owner, int (Owner::*attachMesh)(int), int fileId, int fileType) {
    if (owner == nullptr) {
        return;
    }
    if (fileType == CAE_FILE_MESH) {
        (owner->*attachMesh)(fileId);
        owner->setActiveMesh(fileId);
    } else if (fileType == CAE_FILE_CAD) {
        owner->setCADFile(fileId);
    } else if (fileType == CAE_FILE_GRAPHIC) {
        owner->setGraphicFile(fileId);
    }
}

void AttachFile(CAEObject& object, const CAEFile& file, int fileId) {
    const int type = object.getType();
    const int fileType = file.getFileType();
    if (type == CAE_PART) {
        AttachInRole(dynamic_cast<CAEPart*>(&object), &CAEPart::attachNewMeshOrMeshingRequest, fileId,
                     fileType);
    } else if (type == CAE_SUBASSEMBLY) {
        AttachInRole(dynamic_cast<CAESubAssembly*>(&object),
                     &CAESubAssembly::attachNewRepresentationOrMeshingReq, fileId, fileType);
    } else if (type == CAE_ITERATION_MODEL) {
        if (auto* const run = dynamic_cast<CAERunAssembly*>(&object)) {
            run->setFERepresentationFile(fileId);
        }
    }
    if (fileType != CAE_FILE_CAD && fileType != CAE_FILE_MESH && fileType != CAE_FILE_GRAPHIC) {
        object.attachCustomFile(fileId, nullptr);
    }
}

void ImportNewFile(const JSONNode& record, const OuStringFileName& directory, const Target& target) {
    auto file = std::make_unique<CAEFile>(nullptr, CAE_FILE_UNKNOWN, CAE_FORMAT_UNKNOWN, false);
    ImportFileRecord(record, *file);
    OuString name;
    file->getName(name);
    OuString path = directory;
    path.Append(name.GetBuffer(), 0);
    file->setFullPathName(path);
    file->m_fullPathCopy = path;
    const int id = target.project->assignID(file.get());
    const bool isTaken = target.project->addFile(file.get()) == 0;
    const CAEFile& attached = *file;
    if (isTaken) {
        static_cast<void>(file.release());  // The project owns it from here on.
    }
    AttachFile(*target.object, attached, id);
}

}  // namespace

OuString FileFormatName(_tagFileFormat format) {
    if (format == CAE_FORMAT_ASCII) {
        return L"ASCII";
    }
    return format == CAE_FORMAT_BINARY ? L"Binary" : L"Unknown";
}

JSONNode ExportFileRecord(CAEFile& file, const OuString& mode) {
    JSONNode record = ExportObject(file, mode);
    record.push_back(MakeString(L"fileType", {CAEGetFileTypeName(file.getFileType()), 0}));
    record.push_back(MakeString(L"fileFormat", FileFormatName(file.getFileFormat())));
    record.push_back(MakeString(L"locationType", file.m_locationType));
    // The path is not written: the reader makes one from the directory and the name.
    record.push_back(MakeString(L"filePath", L""));
    return record;
}

JSONNode ExportFiles(CAEObject& object, const OuString& mode) {
    JSONNode section = MakeContainer(JSON_ARRAY, L"files");
    const OuList files = object.GetFiles();
    CAEProject* const project = object.getProject();
    if (project == nullptr) {
        return section;
    }
    for (auto* position = files.GetHeadPosition(); position != nullptr;) {
        if (CAEFile* const file = project->getFile(files.GetNextID(position))) {
            section.push_back(ExportFileRecord(*file, mode));
        }
    }
    return section;
}

void ImportFiles(const JSONNode& section, const Target& target) {
    if (target.project == nullptr || target.object == nullptr) {
        return;
    }
    OuStringFileName directory;
    target.project->getDirectory(directory);
    directory.NormalizeDirectory();
    if (!IsContainer(section)) {
        return;
    }
    for (const JSONNode& record : section) {
        ImportNewFile(record, directory, target);
    }
}

void ImportFileRecord(const JSONNode& record, CAEFile& file) {
    ImportMembers(record, PrepareTarget(record, &file));
    const auto read = [&record](const char* name, auto apply) {
        if (const JSONNode* const member = FindMember(record, name)) {
            apply(Widen(TextOf(*member)));
        }
    };
    read("filePath", [&](const OuString& text) { file.setFullPathName(text); });
    read("fileType", [&](const OuString& text) { file.setFileType(GetCAEFileType(text)); });
    read("locationType", [&](const OuString& text) { file.m_locationType = text; });
    read("fileFormat", [&](const OuString& text) {
        const int format = text == L"ASCII" ? 1 : text == L"Binary" ? 2 : 0;
        file.setFileFormat(static_cast<_tagFileFormat>(format));
    });
    read("isInCoordinateGlobalFrame",
         [&](const OuString& text) { file.setGlobalFrameCoordinate(text == L"true"); });
    read("isFileDownloaded", [&](const OuString& text) { file.SetFileDownloadFlag(text == L"true"); });
}

}  // namespace reference
