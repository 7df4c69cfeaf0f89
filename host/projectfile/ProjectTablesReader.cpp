#include <EmbeddedRestore.h>

#include <limits>
#include <string>

#include "ProjectTables.h"

namespace host {
namespace {

[[noreturn]] void Damaged(const std::string& reason) {
    throw DatabaseError("is damaged: " + reason);
}

/// A column that holds an int. A larger number is reported as damage.
int Integer(const Statement& row, int column) {
    const std::int64_t number = row.Number(column);
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max()) {
        Damaged("the number " + std::to_string(number) + " is too large");
    }
    return static_cast<int>(number);
}

OuString Text(const Statement& row, int column) {
    return OuString(row.Text(column).c_str(), 0);
}

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
    template <typename Class>
    Class& Find(const Statement& row, const char* what) {
        auto* const object = dynamic_cast<Class*>(&ObjectOf(row));
        if (object == nullptr) {
            Damaged("the object " + std::to_string(row.Number(0)) + " is not a " + what);
        }
        return *object;
    }

    Database& database_;
    Console& console_;
    std::unique_ptr<CAEProject> project_;
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
        Damaged("it does not say which identifier comes next");
    }
    korvane::SetNextIdentifier(*project_, Integer(numbering, 0));
    console_.ClearProgress();
    return std::move(project_);
}

CAEObject& Reader::Find(int id) {
    CAEObject* const object = project_->getCAEObject(id);
    if (object == nullptr) {
        Damaged("there is no object " + std::to_string(id));
    }
    return *object;
}

void Reader::ReadObjects() {
    Statement rows(database_,
                   "SELECT id, above, is_project_file, kind, name, database_key, link_database_key,"
                   " created_date, created_by FROM object ORDER BY place");
    std::uint64_t count = 0;
    rows.Begin();
    while (rows.Next()) {
        const int id = Integer(rows, 0);
        CAEObject& object = MakeObject(rows, id, static_cast<_tagCAEObjectType>(Integer(rows, 3)));
        object.setDBKey(Text(rows, 5));
        object.setLinkDBKey(Text(rows, 6));
        object.setCreatedDate(Text(rows, 7));
        korvane::SetCreatedUserName(object, Text(rows, 8));
        console_.ShowProgress("Reading the project", ++count, 0);
    }
    if (project_ == nullptr) {
        Damaged("it has no project");
    }
}

CAEObject& Reader::MakeObject(const Statement& row, int id, _tagCAEObjectType kind) {
    CAEObject* object = nullptr;
    if (project_ == nullptr) {
        if (kind != CAE_PROJECT || !row.IsNull(1)) {
            Damaged("its first object is not a project");
        }
        project_ = korvane::CreateProject(Text(row, 4), OuString());
        object = korvane::Renumber(*project_, id) ? project_.get() : nullptr;
    } else {
        CAEObject& above = Find(Integer(row, 1));
        if (row.Number(2) == 0) {
            object = korvane::RestoreObject(above, kind, Text(row, 4), id);
        } else if (auto* const project = dynamic_cast<CAEProject*>(&above);
                   project != nullptr && kind == CAE_FILE) {
            object = korvane::RestoreFile(*project, Text(row, 4), id);
        }
    }
    if (object == nullptr) {
        Damaged("an object of the kind " + std::to_string(kind) + " with the identifier " +
                std::to_string(id) + " cannot be created");
    }
    return *object;
}

void Reader::ReadProjects() {
    Statement rows(database_,
                   "SELECT object, display_name, additional_type, directory, program_reference FROM project");
    rows.Begin();
    while (rows.Next()) {
        auto& project = Find<CAEProject>(rows, "project");
        project.SetDisplayName(Text(rows, 1));
        project.setAdditionalType(Text(rows, 2));
        korvane::SetDirectory(project, Text(rows, 3));
        project.SetProgramReference(rows.Number(4) != 0);
    }
}

void Reader::ReadFiles() {
    Statement rows(database_,
                   "SELECT object, path, path_at_first, location_type, type, format, is_in_global_frame,"
                   " is_downloaded FROM file");
    rows.Begin();
    while (rows.Next()) {
        auto& file = Find<CAEFile>(rows, "file");
        file.setFullPathName(Text(rows, 1));
        file.m_fullPathCopy = Text(rows, 2);
        file.m_locationType = Text(rows, 3);
        file.setFileType(static_cast<_tagFileType>(Integer(rows, 4)));
        file.setFileFormat(static_cast<_tagFileFormat>(Integer(rows, 5)));
        file.setGlobalFrameCoordinate(rows.Number(6) != 0);
        file.SetFileDownloadFlag(rows.Number(7) != 0);
    }
}

void Reader::ReadAttachedFiles() {
    Statement rows(database_,
                   "SELECT object, file, is_cad_file, is_graphic_file, is_mesh, is_active_mesh,"
                   " is_fe_representation, is_custom FROM attached_file ORDER BY object, position");
    CAEObject* object = nullptr;
    korvane::FileRoles roles;
    const auto finish = [&] {
        if (object != nullptr) {
            korvane::SetFileRoles(*object, roles);
        }
    };
    rows.Begin();
    while (rows.Next()) {
        if (CAEObject& next = ObjectOf(rows); &next != object) {
            finish();
            object = &next;
            roles = {};
        }
        const int file = Integer(rows, 1);
        const auto set = [&](int column, int& role) { role = rows.Number(column) != 0 ? file : role; };
        roles.files.push_back(file);
        set(2, roles.cadFile);
        set(3, roles.graphicFile);
        set(5, roles.activeMesh);
        set(6, roles.feRepresentation);
        if (rows.Number(4) != 0) {
            roles.meshes.push_back(file);
        }
        if (rows.Number(7) != 0) {
            roles.customFiles.push_back(file);
        }
    }
    finish();
}

void Reader::ReadMetadata() {
    Statement rows(database_,
                   "SELECT object, name, value, type, unit FROM metadata ORDER BY object, position");
    rows.Begin();
    while (rows.Next()) {
        CAEObject& object = ObjectOf(rows);
        const OuString name = Text(rows, 1);
        object.setMetadataValue(name, Text(rows, 2));
        object.setMetadataType(name, Text(rows, 3));
        korvane::SetMetadataUnit(object, name, Text(rows, 4));
    }
}

void Reader::ReadViewItems() {
    Statement rows(database_, "SELECT object, shown FROM view_item");
    rows.Begin();
    while (rows.Next()) {
        Find<CAEViewItem>(rows, "view item").setReferencedCAEObject(Integer(rows, 1));
    }
}

}  // namespace

std::unique_ptr<CAEProject> ReadProjectTables(Database& database, Console& console) {
    return Reader(database, console).Read();
}

}  // namespace host
