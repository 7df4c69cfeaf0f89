#include <EmbeddedRestore.h>

#include <cstdint>
#include <optional>
#include <string_view>

#include "ProjectTables.h"
#include "host/document/ObjectLists.h"
#include "host/document/ProjectObjects.h"

namespace host {
namespace {

/// The text as bytes, which live as long as the text.
std::string_view Bytes(const OuString& text) {
    return text.GetAnsiBuffer();
}

class Writer {
public:
    Writer(Database& database, Console& console)
        : console_(console),
          object_(database, "INSERT INTO object VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
          project_(database, "INSERT INTO project VALUES (?, ?, ?, ?, ?)"),
          file_(database, "INSERT INTO file VALUES (?, ?, ?, ?, ?, ?, ?, ?)"),
          attachedFile_(database, "INSERT INTO attached_file VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"),
          metadata_(database, "INSERT INTO metadata VALUES (?, ?, ?, ?, ?, ?)"),
          viewItem_(database, "INSERT INTO view_item VALUES (?, ?)") {}

    void Write(CAEProject& root);

private:
    void WriteObject(CAEObject& object, const ObjectPlace& place);
    void WriteProject(const CAEProject& project);
    void WriteFile(const CAEFile& file);
    void WriteAttachedFiles(const CAEObject& object);
    void WriteMetadata(const CAEObject& object);

    Console& console_;
    Statement object_;
    Statement project_;
    Statement file_;
    Statement attachedFile_;
    Statement metadata_;
    Statement viewItem_;
    std::int64_t place_ = 0;
};

void Writer::Write(CAEProject& root) {
    VisitProject(root, [&](CAEObject& object, const ObjectPlace& place) { WriteObject(object, place); });
}

void Writer::WriteObject(CAEObject& object, const ObjectPlace& place) {
    OuString name;
    OuString createdDate;
    OuString createdBy;
    object.getName(name);
    object.getCreatedDate(createdDate);
    object.getCreatedUserName(createdBy);
    const OuString key = object.getDBKey();
    const OuString linkKey = object.getLinkDBKey();
    const std::optional<std::int64_t> above =
        place.above != nullptr ? std::optional<std::int64_t>(place.above->getID()) : std::nullopt;
    object_.Run(++place_, object.getID(), above, place.isProjectFile, static_cast<int>(object.getType()),
                Bytes(name), Bytes(key), Bytes(linkKey), Bytes(createdDate), Bytes(createdBy));
    if (const auto* const project = dynamic_cast<const CAEProject*>(&object)) {
        WriteProject(*project);
    } else if (const auto* const file = dynamic_cast<const CAEFile*>(&object)) {
        WriteFile(*file);
    } else if (const auto* const item = dynamic_cast<const CAEViewItem*>(&object)) {
        viewItem_.Run(item->getID(), korvane::GetReferencedObject(*item));
    }
    WriteAttachedFiles(object);
    WriteMetadata(object);
    console_.ShowProgress("Writing the project", static_cast<std::uint64_t>(place_), 0);
}

void Writer::WriteProject(const CAEProject& project) {
    OuString directory;
    project.getDirectory(directory);
    const OuString displayName = korvane::GetDisplayName(project);
    const OuString additionalType = project.getAdditionalType();
    project_.Run(project.getID(), Bytes(displayName), Bytes(additionalType), Bytes(directory),
                 korvane::GetProgramReference(project));
}

void Writer::WriteFile(const CAEFile& file) {
    OuString path;
    file.getFullPathName(path);
    file_.Run(file.getID(), Bytes(path), Bytes(file.m_fullPathCopy), Bytes(file.m_locationType),
              static_cast<int>(file.getFileType()), static_cast<int>(file.getFileFormat()),
              korvane::IsInGlobalFrame(file), korvane::IsDownloaded(file));
}

void Writer::WriteAttachedFiles(const CAEObject& object) {
    const korvane::FileRoles roles = korvane::GetFileRoles(object);
    // Meshes and custom files are in the same order as all files.
    auto mesh = roles.meshes.begin();
    auto custom = roles.customFiles.begin();
    int position = 0;
    for (const int id : roles.files) {
        const bool isMesh = mesh != roles.meshes.end() && *mesh == id;
        const bool isCustom = custom != roles.customFiles.end() && *custom == id;
        mesh += isMesh ? 1 : 0;
        custom += isCustom ? 1 : 0;
        attachedFile_.Run(object.getID(), position++, id, id == roles.cadFile, id == roles.graphicFile,
                          isMesh, id == roles.activeMesh, id == roles.feRepresentation, isCustom);
    }
}

void Writer::WriteMetadata(const CAEObject& object) {
    int position = 0;
    for (const MetadataOfObject& entry : MetadataOf(object)) {
        metadata_.Run(object.getID(), position++, Bytes(entry.name), Bytes(entry.value), Bytes(entry.type),
                      Bytes(entry.unit));
    }
}

}  // namespace

void WriteProjectTables(Database& database, CAEProject& project, Console& console) {
    for (const char* const text :
         {"DELETE FROM view_item", "DELETE FROM metadata", "DELETE FROM attached_file", "DELETE FROM file",
          "DELETE FROM project", "DELETE FROM object", "DELETE FROM numbering"}) {
        database.Run(text);
    }
    Writer(database, console).Write(project);
    Statement(database, "INSERT INTO numbering VALUES (?)").Run(korvane::GetNextIdentifier(project));
    WriteChecksum(database, kProjectFileKind);
    console.ClearProgress();
}

}  // namespace host
