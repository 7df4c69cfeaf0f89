#include <EmbeddedRestore.h>

#include <limits>
#include <map>
#include <optional>
#include <string>

#include "FileNesting.h"
#include "ProjectTables.h"
#include "host/system/Notes.h"

namespace host {
namespace {

/// A column that holds an int. Anything else is reported as damage.
int Integer(const Statement& row, int column) {
    if (!row.IsNumber(column)) {
        RefuseDamaged("a value is not a number");
    }
    const std::int64_t number = row.Number(column);
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max()) {
        RefuseDamaged("the number " + std::to_string(number) + " is too large");
    }
    return static_cast<int>(number);
}

bool Flag(const Statement& row, int column) {
    const int number = Integer(row, column);
    if (number != 0 && number != 1) {
        RefuseDamaged("a value is " + std::to_string(number) + " and not 0 or 1");
    }
    return number == 1;
}

OuString Text(const Statement& row, int column) {
    if (!row.IsText(column)) {
        RefuseDamaged("a value is not a text");
    }
    const std::string text = row.Text(column);
    // The object model would keep only what is before it.
    if (text.find('\0') != std::string::npos) {
        RefuseDamaged("a text has a NUL character: " + Excerpt(text));
    }
    return OuString(text.c_str(), 0);
}

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
    Reader(Database& database, Console& console) : database_(database), console_(console) {}

    std::unique_ptr<CAEProject> Read();

private:
    void ReadObjects();
    CAEObject& MakeObject(const Statement& row, int id, _tagCAEObjectType kind);
    void ReadProjects();
    void ReadFiles();
    void ReadAttachedFiles();
    void ReadMetadata();
    void ReadViewItems();

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
    Console& console_;
    std::unique_ptr<CAEProject> project_;
    std::map<int, std::size_t> countOfKind_;
};

std::unique_ptr<CAEProject> Reader::Read() {
    ReadObjects();
    ReadProjects();
    ReadFiles();
    ReadAttachedFiles();
    ReadMetadata();
    ReadViewItems();
    Statement numbering(database_, "SELECT next_id FROM numbering");
    if (!numbering.Begin().Next()) {
        RefuseDamaged("it does not say which identifier comes next");
    }
    korvane::SetNextIdentifier(*project_, Integer(numbering, 0));
    CheckFileNesting(*project_);
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
        object.setCreatedDate(Text(rows, 7));
        korvane::SetCreatedUserName(object, Text(rows, 8));
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
        file.m_locationType = Text(rows, 3);
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
    rows.Begin();
    while (rows.Next()) {
        numbers.Next(rows);
        CAEObject& object = ObjectOf(rows);
        const OuString name = Text(rows, 2);
        object.setMetadataValue(name, Text(rows, 3));
        object.setMetadataType(name, Text(rows, 4));
        korvane::SetMetadataUnit(object, name, Text(rows, 5));
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

std::unique_ptr<CAEProject> ReadProjectTables(Database& database, Console& console) {
    return Reader(database, console).Read();
}

}  // namespace host
