#include "HandImport.h"

#include <CAEFunctions.h>
#include <CAEPart.h>
#include <CAERunAssembly.h>
#include <CAESubAssembly.h>
#include <CAEViewItem.h>
#include <OuStringFileName.h>

#include <memory>

namespace {

OuString Wide(const char* text) {
    return OuString(text, 0);
}

template <typename Owner, typename AttachMesh>
void AttachInRole(Owner& owner, _tagFileType type, int fileId, const AttachMesh& attachMesh) {
    if (type == CAE_FILE_CAD) {
        owner.setCADFile(fileId);
    } else if (type == CAE_FILE_GRAPHIC) {
        owner.setGraphicFile(fileId);
    } else {
        attachMesh();
        owner.setActiveMesh(fileId);
    }
}

bool HasRole(_tagFileType type) {
    return type == CAE_FILE_CAD || type == CAE_FILE_MESH || type == CAE_FILE_GRAPHIC;
}

void Attach(CAEObject& object, _tagFileType type, int fileId) {
    if (object.getType() == CAE_ITERATION_MODEL) {
        static_cast<CAERunAssembly&>(object).setFERepresentationFile(fileId);
    }
    if (!HasRole(type)) {
        object.attachCustomFile(fileId, nullptr);
    } else if (object.getType() == CAE_PART) {
        auto& part = static_cast<CAEPart&>(object);
        AttachInRole(part, type, fileId, [&] { part.attachNewMeshOrMeshingRequest(fileId); });
    } else if (object.getType() == CAE_SUBASSEMBLY) {
        auto& assembly = static_cast<CAESubAssembly&>(object);
        AttachInRole(assembly, type, fileId, [&] { assembly.attachNewRepresentationOrMeshingReq(fileId); });
    }
}

}  // namespace

HandImport::HandImport(CAEProject& project)
    : root_(Note(project)), additionalType_(Keep(project.getAdditionalType())) {}

const char* HandImport::Keep(const OuString& text) {
    return texts_.emplace_back(text.GetAnsiBuffer()).c_str();
}

HandImport::Header HandImport::NoteHeader(CAEObject& object, const OuString& name) {
    Header header;
    header.name = Keep(name);
    OuString text;
    object.getCreatedDate(text);
    header.createdDate = Keep(text);
    text = object.getDBKey();
    header.key = text.IsEmpty() ? nullptr : Keep(text);
    return header;
}

HandImport::Object HandImport::Note(CAEObject& object) {
    Object noted;
    noted.type = object.getType();
    OuString name;
    object.getName(name);
    noted.header = NoteHeader(object, name);
    OuTemplateArray<OuString, OuCRTAllocator> names;
    OuTemplateArray<OuString, OuCRTAllocator> values;
    object.getAllMetadata(names, values);
    for (int index = 0; index < names.GetSize(); ++index) {
        OuString unit;
        object.getMetadataUnitString(names[index], unit);
        noted.metadata.push_back({Keep(names[index]), Keep(values[index]), Keep(unit)});
    }
    OuList children;
    object.getChildrenList(children);
    for (OuListPosition* position = children.GetHeadPosition(); position != nullptr;) {
        noted.children.push_back(Note(*static_cast<CAEObject*>(children.GetNext(position))));
    }
    const OuList files = object.GetFiles();
    for (OuListPosition* position = files.GetHeadPosition(); position != nullptr;) {
        noted.files.push_back(NoteFile(*object.getProject()->getFile(files.GetNextID(position))));
    }
    return noted;
}

HandImport::File HandImport::NoteFile(CAEFile& file) {
    OuStringFileName path;
    file.getFullPathName(path);
    return {NoteHeader(file, path.GetFileName()), file.getFileType(), file.getFileFormat(),
            Keep(file.m_locationType)};
}

void HandImport::MakeIn(CAEProject& project) const {
    project.setAdditionalType(Wide(additionalType_));
    project.SetDisplayName(Wide(root_.header.name));
    Make(project, project, root_);
}

void HandImport::Make(CAEProject& project, CAEObject& object, const Object& noted) {
    object.setCreatedDate(Wide(noted.header.createdDate));
    if (noted.header.key != nullptr && noted.type == CAE_VIEW_ITEM) {
        object.setLinkDBKey(Wide(noted.header.key));
    } else if (noted.header.key != nullptr) {
        object.setDBKey(Wide(noted.header.key));
    }
    for (const Entry& entry : noted.metadata) {
        const OuString name = Wide(entry.name);
        object.setMetadataType(name, Wide(entry.type));
        object.setMetadataValue(name, Wide(entry.value));
    }
    for (const Object& child : noted.children) {
        MakeChild(project, object, child);
    }
    for (const File& file : noted.files) {
        MakeFile(project, object, file);
    }
}

void HandImport::MakeChild(CAEProject& project, CAEObject& parent, const Object& noted) {
    int id = 0;
    createCAEObject(&project, parent.getID(), noted.type, id);
    CAEObject& object = *project.getCAEObject(id);
    object.setName(Wide(noted.header.name));
    Make(project, object, noted);
    if (noted.type == CAE_VIEW_ITEM) {
        int masterId = 0;
        if (getMasterAssemblyCAEIDByITEMID(&project, object.getLinkDBKey(), masterId) == 0) {
            static_cast<CAEViewItem&>(object).setReferencedCAEObject(masterId);
        }
    }
}

void HandImport::MakeFile(CAEProject& project, CAEObject& object, const File& noted) {
    OuString path;
    project.getDirectory(path);
    auto file = std::make_unique<CAEFile>(nullptr, noted.type, noted.format, false);
    const OuString name = Wide(noted.header.name);
    file->setName(name);
    file->setCreatedDate(Wide(noted.header.createdDate));
    if (noted.header.key != nullptr) {
        file->setDBKey(Wide(noted.header.key));
    }
    file->m_locationType = Wide(noted.locationType);
    path.Append(name.GetBuffer(), 0);
    file->setFullPathName(path);
    file->m_fullPathCopy = path;
    const int fileId = project.assignID(file.get());
    project.addFile(file.release());
    Attach(object, noted.type, fileId);
}
