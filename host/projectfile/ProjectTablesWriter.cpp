#include <EmbeddedRestore.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "ProjectPlace.h"
#include "ProjectTables.h"
#include "host/document/ProjectObjects.h"
#include "host/system/CheckedInsert.h"

namespace host {
namespace {

/// The text as bytes, which live as long as the text.
std::string_view Bytes(const OuString& text) {
    return text.GetAnsiBuffer();
}

class Writer {
public:
    Writer(Database& database, const ProjectWriting& writing, Console& console)
        : writing_(writing),
          console_(console),
          object_(database, "object", 10, true, sum_),
          project_(database, "project", 5, false, sum_),
          place_(database, "place", 2, false, sum_),
          file_(database, "file", 8, false, sum_),
          attachedFile_(database, "attached_file", 9, false, sum_),
          metadata_(database, "metadata", 6, false, sum_),
          viewItem_(database, "view_item", 2, false, sum_),
          numbering_(database, "numbering", 1, false, sum_) {}

    /// Returns the checksum of all tables.
    std::int64_t Write();

private:
    void WriteObject(const CAEObject& object, const ObjectPlace& place);
    void WriteDetails(const CAEObject& object);
    void WriteProject(const CAEProject& project);
    void WriteFile(const CAEFile& file);
    void WriteAttachedFiles(const CAEObject& object);
    void WriteMetadata(const CAEObject& object);

    const ProjectWriting& writing_;
    Console& console_;
    RowSum sum_;
    CheckedInsert object_;
    CheckedInsert project_;
    CheckedInsert place_;
    CheckedInsert file_;
    CheckedInsert attachedFile_;
    CheckedInsert metadata_;
    CheckedInsert viewItem_;
    CheckedInsert numbering_;
    std::int64_t objectCount_ = 0;
};

std::int64_t Writer::Write() {
    CAEProject& root = writing_.project;
    // The tables that are ordered by identifiers are written in that order, so that SQLite only appends to
    // them.
    std::vector<std::pair<int, const CAEObject*>> objects;
    VisitProject(root, [&](const CAEObject& object, const ObjectPlace& place) {
        if (!place.isProjectFile || !writing_.leftOut.contains(object.getID())) {
            WriteObject(object, place);
            objects.emplace_back(object.getID(), &object);
        }
    });
    std::ranges::sort(objects);
    for (const auto& [id, object] : objects) {
        WriteDetails(*object);
    }
    numbering_.Run(korvane::GetNextIdentifier(root));
    return static_cast<std::int64_t>(sum_.Value());
}

void Writer::WriteObject(const CAEObject& object, const ObjectPlace& place) {
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
    object_.Run(++objectCount_, object.getID(), above, place.isProjectFile,
                static_cast<int>(object.getType()), Bytes(name), Bytes(key), Bytes(linkKey),
                Bytes(createdDate), Bytes(createdBy));
    console_.ShowProgress("Writing the project", static_cast<std::uint64_t>(objectCount_), 0);
}

void Writer::WriteDetails(const CAEObject& object) {
    if (const auto* const project = dynamic_cast<const CAEProject*>(&object)) {
        WriteProject(*project);
    } else if (const auto* const file = dynamic_cast<const CAEFile*>(&object)) {
        WriteFile(*file);
    } else if (const auto* const item = dynamic_cast<const CAEViewItem*>(&object)) {
        viewItem_.Run(item->getID(), korvane::GetReferencedObject(*item));
    }
    WriteAttachedFiles(object);
    WriteMetadata(object);
}

void Writer::WriteProject(const CAEProject& project) {
    OuString directory;
    project.getDirectory(directory);
    const OuString displayName = korvane::GetDisplayName(project);
    const OuString additionalType = project.getAdditionalType();
    project_.Run(project.getID(), Bytes(displayName), Bytes(additionalType), Bytes(directory),
                 korvane::GetProgramReference(project));
    place_.Run(project.getID(), DirectoryFrom(writing_.file, directory));
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
    for (const korvane::MetadataValues& entry : korvane::GetMetadata(object)) {
        metadata_.Run(object.getID(), position++, Bytes(entry.name), Bytes(entry.value), Bytes(entry.type),
                      Bytes(entry.unit));
    }
}

}  // namespace

void WriteProjectTables(Database& database, const ProjectWriting& writing, Console& console) {
    if (!HasPlaces(database)) {
        CreatePlaceTable(database);
        database.SetKind(kProjectFileKind);
    }
    for (const char* const text :
         {"DELETE FROM place", "DELETE FROM view_item", "DELETE FROM metadata", "DELETE FROM attached_file",
          "DELETE FROM file", "DELETE FROM project", "DELETE FROM object", "DELETE FROM numbering"}) {
        database.Run(text);
    }
    const std::int64_t sum = Writer(database, writing, console).Write();
    WriteChecksum(database, kProjectFileKind, sum);
    console.ClearProgress();
}

}  // namespace host
