#include <EmbeddedRestore.h>

#include <map>
#include <optional>
#include <string>

#include "Columns.h"
#include "FileNesting.h"
#include "ProjectPlace.h"
#include "ProjectTables.h"
#include "host/system/DatabaseError.h"
#include "objectjson/RepeatedTexts.h"

namespace host {
namespace {

/// The entries of the objects have to be numbered from 0 for each object.
class EntryNumbers {
public:
    explicit EntryNumbers(const char* what) : what_(what) {}
    /// Takes the next row, which has the object and the position in its first columns. Returns whether the
    /// object is another one than before.
    bool Next(const Statement& row) {
        const int object = Integer(row, 0);
        const bool isNew = !object_ || *object_ != object;
        position_ = isNew ? 0 : position_ + 1;
        object_ = object;
        if (Integer(row, 1) != position_) {
            RefuseDamaged("a " + std::string(what_) + " of the object " + std::to_string(object) +
                          " is missing");
        }
        return isNew;
    }

private:
    const char* what_;
    std::optional<int> object_;
    int position_ = 0;
};

class Reader {
public:
    Reader(Database& database, const std::filesystem::path& file, Console& console)
        : database_(database), file_(file), console_(console) {}

    std::unique_ptr<CAEProject> Read();

private:
    void ReadObjects();
    CAEObject& MakeObject(const Statement& row, int id, _tagCAEObjectType kind);
    void ReadProjects();
    void ReadPlaces();
    void ReadFiles();
    void ReadAttachedFiles();
    void ReadMetadata();
    void ReadViewItems();

    /// A text that many objects have.
    OuString RepeatedText(const Statement& row, int column) {
        return repeatedTexts_.Of(NarrowText(row, column));
    }
    /// The object that the first column of the row names.
    CAEObject& ObjectOf(const Statement& row) { return Find(Integer(row, 0)); }
    CAEObject& Find(int id);
    /// Every object of the kind has one row in the table of its kind.
    void CheckCount(_tagCAEObjectType kind, std::size_t rows, const char* what) const;
    template <typename Class>
    Class& Find(const Statement& row, const char* what) {
        auto* const object = dynamic_cast<Class*>(&ObjectOf(row));
        if (object == nullptr) {
            RefuseDamaged("the object " + std::to_string(row.Number(0)) + " is not a " + what);
        }
        return *object;
    }

    Database& database_;
    const std::filesystem::path& file_;
    Console& console_;
    std::unique_ptr<CAEProject> project_;
    std::map<int, std::size_t> countOfKind_;
    RepeatedTexts repeatedTexts_;
    /// Whether a file has files or objects of its own.
    bool isAnythingBelowAFile_ = false;
};

std::unique_ptr<CAEProject> Reader::Read() {
    ReadObjects();
    ReadProjects();
    ReadFiles();
    ReadAttachedFiles();
    ReadMetadata();
    ReadViewItems();
    if (HasPlaces(database_)) {
        ReadPlaces();
    }
    Statement numbering(database_, "SELECT next_id FROM numbering");
    if (!numbering.Begin().Next()) {
        RefuseDamaged("it does not say which identifier comes next");
    }
    korvane::SetNextIdentifier(*project_, Integer(numbering, 0));
    if (isAnythingBelowAFile_) {
        CheckFileNesting(*project_);
    }
    console_.ClearProgress();
    return std::move(project_);
}

CAEObject& Reader::Find(int id) {
    CAEObject* const object = project_->getCAEObject(id);
    if (object == nullptr) {
        RefuseDamaged("there is no object " + std::to_string(id));
    }
    return *object;
}

void Reader::CheckCount(_tagCAEObjectType kind, std::size_t rows, const char* what) const {
    const auto found = countOfKind_.find(kind);
    if (const std::size_t count = found != countOfKind_.end() ? found->second : 0; rows != count) {
        RefuseDamaged("it has " + std::to_string(rows) + " entries for " + what + " instead of " +
                      std::to_string(count));
    }
}

void Reader::ReadObjects() {
    Statement rows(database_,
                   "SELECT id, above, is_project_file, kind, name, database_key, link_database_key,"
                   " created_date, created_by, place FROM object ORDER BY place");
    std::uint64_t count = 0;
    rows.Begin();
    while (rows.Next()) {
        const int id = Integer(rows, 0);
        if (rows.Number(9) != static_cast<std::int64_t>(count + 1)) {
            RefuseDamaged("the object before the object " + std::to_string(id) + " is missing");
        }
        const int kind = Integer(rows, 3);
        CAEObject& object = MakeObject(rows, id, static_cast<_tagCAEObjectType>(kind));
        ++countOfKind_[kind];
        object.setDBKey(Text(rows, 5));
        object.setLinkDBKey(Text(rows, 6));
        object.setCreatedDate(RepeatedText(rows, 7));
        korvane::SetCreatedUserName(object, RepeatedText(rows, 8));
        console_.ShowProgress("Reading the project", ++count, 0);
    }
    if (project_ == nullptr) {
        RefuseDamaged("it has no project");
    }
}

CAEObject& Reader::MakeObject(const Statement& row, int id, _tagCAEObjectType kind) {
    CAEObject* object = nullptr;
    if (project_ == nullptr) {
        if (kind != CAE_PROJECT || !row.IsNull(1)) {
            RefuseDamaged("its first object is not a project");
        }
        project_ = korvane::CreateProject(Text(row, 4), OuString());
        object = korvane::Renumber(*project_, id) ? project_.get() : nullptr;
    } else {
        CAEObject& above = Find(Integer(row, 1));
        isAnythingBelowAFile_ = isAnythingBelowAFile_ || above.getType() == CAE_FILE;
        if (!Flag(row, 2)) {
            object = korvane::RestoreObject(above, kind, Text(row, 4), id);
        } else if (auto* const project = dynamic_cast<CAEProject*>(&above);
                   project != nullptr && kind == CAE_FILE) {
            object = korvane::RestoreFile(*project, Text(row, 4), id);
        }
    }
    if (object == nullptr) {
        RefuseDamaged("an object of the kind " + std::to_string(kind) + " with the identifier " +
                      std::to_string(id) + " cannot be created");
    }
    return *object;
}

void Reader::ReadProjects() {
    Statement rows(database_,
                   "SELECT object, display_name, additional_type, directory, program_reference FROM project");
    std::size_t count = 0;
    rows.Begin();
    while (rows.Next()) {
        auto& project = Find<CAEProject>(rows, "project");
        ++count;
        project.SetDisplayName(Text(rows, 1));
        project.setAdditionalType(Text(rows, 2));
        korvane::SetDirectory(project, Text(rows, 3));
        project.SetProgramReference(Flag(rows, 4));
    }
    CheckCount(CAE_PROJECT, count, "projects");
}

/// Directories that have moved together with the file are where they are now, and so are their files.
void Reader::ReadPlaces() {
    Statement rows(database_, "SELECT object, directory_from_here FROM place");
    std::vector<ProjectPlace> places;
    rows.Begin();
    while (rows.Next()) {
        places.push_back({&Find<CAEProject>(rows, "project"), std::string(NarrowText(rows, 1))});
    }
    CheckCount(CAE_PROJECT, places.size(), "places of projects");
    MoveToPlaces(*project_, places, file_);
}

void Reader::ReadFiles() {
    Statement rows(database_,
                   "SELECT object, path, path_at_first, location_type, type, format, is_in_global_frame,"
                   " is_downloaded FROM file");
    std::size_t count = 0;
    rows.Begin();
    while (rows.Next()) {
        auto& file = Find<CAEFile>(rows, "file");
        ++count;
        file.setFullPathName(Text(rows, 1));
        file.m_fullPathCopy = Text(rows, 2);
        file.m_locationType = RepeatedText(rows, 3);
        file.setFileType(static_cast<_tagFileType>(Integer(rows, 4)));
        file.setFileFormat(static_cast<_tagFileFormat>(Integer(rows, 5)));
        file.setGlobalFrameCoordinate(Flag(rows, 6));
        file.SetFileDownloadFlag(Flag(rows, 7));
    }
    CheckCount(CAE_FILE, count, "files");
}

void Reader::ReadAttachedFiles() {
    Statement rows(database_,
                   "SELECT object, position, file, is_cad_file, is_graphic_file, is_mesh, is_active_mesh,"
                   " is_fe_representation, is_custom FROM attached_file ORDER BY object, position");
    EntryNumbers numbers("file");
    CAEObject* object = nullptr;
    korvane::FileRoles roles;
    const auto finish = [&] {
        if (object != nullptr) {
            korvane::SetFileRoles(*object, roles);
        }
    };
    rows.Begin();
    while (rows.Next()) {
        if (numbers.Next(rows)) {
            finish();
            object = &ObjectOf(rows);
            isAnythingBelowAFile_ = isAnythingBelowAFile_ || object->getType() == CAE_FILE;
            roles = {};
        }
        const int file = Integer(rows, 2);
        const auto set = [&](int column, int& role) { role = Flag(rows, column) ? file : role; };
        roles.files.push_back(file);
        set(3, roles.cadFile);
        set(4, roles.graphicFile);
        set(6, roles.activeMesh);
        set(7, roles.feRepresentation);
        if (Flag(rows, 5)) {
            roles.meshes.push_back(file);
        }
        if (Flag(rows, 8)) {
            roles.customFiles.push_back(file);
        }
    }
    finish();
}

void Reader::ReadMetadata() {
    Statement rows(database_,
                   "SELECT object, position, name, value, type, unit FROM metadata"
                   " ORDER BY object, position");
    EntryNumbers numbers("metadata entry");
    CAEObject* object = nullptr;
    rows.Begin();
    while (rows.Next()) {
        if (numbers.Next(rows)) {
            object = &ObjectOf(rows);
        }
        korvane::SetMetadata(*object, {RepeatedText(rows, 2), RepeatedText(rows, 3), RepeatedText(rows, 4),
                                       RepeatedText(rows, 5)});
    }
}

void Reader::ReadViewItems() {
    Statement rows(database_, "SELECT object, shown FROM view_item");
    std::size_t count = 0;
    rows.Begin();
    while (rows.Next()) {
        Find<CAEViewItem>(rows, "view item").setReferencedCAEObject(Integer(rows, 1));
        ++count;
    }
    CheckCount(CAE_VIEW_ITEM, count, "view items");
}

}  // namespace

std::unique_ptr<CAEProject> ReadProjectTables(Database& database, const std::filesystem::path& file,
                                              Console& console) {
    return Reader(database, file, console).Read();
}

}  // namespace host
