#include "ProjectTables.h"

#include <string>

namespace host {
namespace {

// Objects are in the order in which they can be created again: an object comes after what it is below, and
// siblings in their order. "above" is the parent or, if is_project_file is set, the project that has the file
// besides its children. Kinds and types are the numbers of the object model.
constexpr const char* kTables = R"(
CREATE TABLE numbering (next_id INTEGER NOT NULL);
CREATE TABLE object (
    place INTEGER PRIMARY KEY,
    id INTEGER NOT NULL UNIQUE,
    above INTEGER REFERENCES object (id),
    is_project_file INTEGER NOT NULL,
    kind INTEGER NOT NULL,
    name TEXT NOT NULL,
    database_key TEXT NOT NULL,
    link_database_key TEXT NOT NULL,
    created_date TEXT NOT NULL,
    created_by TEXT NOT NULL
);
CREATE TABLE project (
    object INTEGER PRIMARY KEY REFERENCES object (id),
    display_name TEXT NOT NULL,
    additional_type TEXT NOT NULL,
    directory TEXT NOT NULL,
    program_reference INTEGER NOT NULL
);
CREATE TABLE file (
    object INTEGER PRIMARY KEY REFERENCES object (id),
    path TEXT NOT NULL,
    path_at_first TEXT NOT NULL,
    location_type TEXT NOT NULL,
    type INTEGER NOT NULL,
    format INTEGER NOT NULL,
    is_in_global_frame INTEGER NOT NULL,
    is_downloaded INTEGER NOT NULL
);
CREATE TABLE attached_file (
    object INTEGER NOT NULL REFERENCES object (id),
    position INTEGER NOT NULL,
    file INTEGER NOT NULL,
    is_cad_file INTEGER NOT NULL,
    is_graphic_file INTEGER NOT NULL,
    is_mesh INTEGER NOT NULL,
    is_active_mesh INTEGER NOT NULL,
    is_fe_representation INTEGER NOT NULL,
    is_custom INTEGER NOT NULL,
    PRIMARY KEY (object, position)
) WITHOUT ROWID;
CREATE TABLE metadata (
    object INTEGER NOT NULL REFERENCES object (id),
    position INTEGER NOT NULL,
    name TEXT NOT NULL,
    value TEXT NOT NULL,
    type TEXT NOT NULL,
    unit TEXT NOT NULL,
    PRIMARY KEY (object, position)
) WITHOUT ROWID;
CREATE TABLE view_item (
    object INTEGER PRIMARY KEY REFERENCES object (id),
    shown INTEGER NOT NULL
);
)";

// Where the directories of projects are, seen from the folder of the project file; empty where the two have
// no folder in common.
constexpr const char* kPlaceTable = R"(
CREATE TABLE place (
    object INTEGER PRIMARY KEY REFERENCES project (object),
    directory_from_here TEXT NOT NULL
);
)";

}  // namespace

bool HasPlaces(Database& database) {
    Statement format(database, "PRAGMA user_version");
    return format.Begin().Next() && format.Number(0) >= kFirstFormatWithPlaces;
}

void CreatePlaceTable(Database& database) {
    database.Run(kPlaceTable);
}

void CreateProjectTables(Database& database) {
    database.SetKind(kProjectFileKind);
    database.Run(kTables);
    CreatePlaceTable(database);
}

void CheckProjectTables(Database& database, CheckDepth depth) {
    const std::string tables = std::string(kTables) + (HasPlaces(database) ? kPlaceTable : "");
    CheckDatabase(database, tables.c_str(), depth);
}

}  // namespace host
