#include <sqlite3.h>

#include <algorithm>
#include <iterator>
#include <string>

#include "DamageSupport.h"
#include "support/LongRun.h"

namespace {

constexpr const char* kProject = "p.kvp";
constexpr const char* kDatabase = "s.db";

/// Statements that somebody hostile, or another program, runs on a sound file.
struct Hostility {
    const char* file;
    const char* statements;
};

constexpr Hostility kHostilities[] = {
    // Views in place of tables, which run when they are read.
    {kProject,
     "DROP TABLE metadata; CREATE VIEW metadata AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT"
     " i+1 FROM n) SELECT 2 AS object, i AS position, 'n' AS name, 'v' AS value, '' AS type, '' AS"
     " unit FROM n"},
    {kProject,
     "DROP TABLE object; CREATE VIEW object AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1"
     " FROM n) SELECT i AS place, i AS id, NULL AS above, 0 AS is_project_file, 4 AS kind, 'n' AS"
     " name, '' AS database_key, '' AS link_database_key, '' AS created_date, '' AS created_by FROM n"},
    {kProject, "ALTER TABLE object RENAME TO o; CREATE VIEW object AS SELECT * FROM o"},
    {kProject, "ALTER TABLE file RENAME TO f; CREATE VIEW file AS SELECT * FROM f"},
    {kProject, "ALTER TABLE numbering RENAME TO n; CREATE VIEW numbering AS SELECT * FROM n"},
    {kProject, "ALTER TABLE checksum RENAME TO c; CREATE VIEW checksum AS SELECT * FROM c"},
    {kProject,
     "DROP TABLE view_item; CREATE VIEW view_item AS SELECT randomblob(1000000000) AS object, 1 AS"
     " shown"},
    {kProject, "DROP TABLE project; CREATE VIEW project AS SELECT * FROM project"},
    {kProject,
     "DROP TABLE attached_file; CREATE VIEW attached_file AS SELECT a.id AS object, b.id AS position,"
     " 1 AS file, 0 AS is_cad_file, 0 AS is_graphic_file, 0 AS is_mesh, 0 AS is_active_mesh, 0 AS"
     " is_fe_representation, 0 AS is_custom FROM object a, object b, object c, object d"},
    {kDatabase,
     "DROP TABLE node; CREATE VIEW node AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM"
     " n) SELECT i AS number, 1 AS object, NULL AS above, 0 AS section, 0 AS position, NULL AS shown,"
     " '{}' AS members FROM n"},
    {kDatabase, "DROP TABLE origin; CREATE VIEW origin AS SELECT 'abcdef' AS text"},
    {kDatabase, "ALTER TABLE object RENAME TO o; CREATE VIEW object AS SELECT * FROM o"},
    {kDatabase, "ALTER TABLE project RENAME TO p; CREATE VIEW project AS SELECT * FROM p"},
    {kDatabase, "CREATE VIEW extra AS SELECT 1"},
    // Triggers, which run when something is written.
    {kProject, "CREATE TRIGGER t AFTER INSERT ON object BEGIN DELETE FROM metadata; END"},
    {kProject, "CREATE TRIGGER t AFTER DELETE ON numbering BEGIN INSERT INTO numbering VALUES (1); END"},
    {kProject, "CREATE TRIGGER t BEFORE UPDATE ON object BEGIN SELECT RAISE(ABORT, 'no'); END"},
    {kProject,
     "CREATE TRIGGER t AFTER INSERT ON metadata BEGIN INSERT INTO metadata SELECT new.object,"
     " new.position+1000, new.name, new.value, '', ''; END"},
    {kProject, "CREATE TRIGGER t AFTER INSERT ON checksum BEGIN UPDATE checksum SET value = 0; END"},
    {kDatabase,
     "CREATE TRIGGER t AFTER INSERT ON node BEGIN DELETE FROM node WHERE number = new.number; END"},
    {kDatabase, "CREATE TRIGGER t AFTER DELETE ON node BEGIN DELETE FROM object; END"},
    {kDatabase, "CREATE TRIGGER t AFTER UPDATE ON object BEGIN UPDATE origin SET text = 'x'; END"},
    {kDatabase, "CREATE TRIGGER t BEFORE INSERT ON project BEGIN SELECT RAISE(IGNORE); END"},
    // Columns and indexes that compute.
    {kProject, "ALTER TABLE metadata ADD COLUMN twice TEXT AS (value || value)"},
    {kProject, "ALTER TABLE numbering ADD COLUMN more INTEGER AS (next_id + 1)"},
    {kProject, "ALTER TABLE object ADD COLUMN more TEXT DEFAULT 'x'"},
    {kProject, "ALTER TABLE file RENAME COLUMN path TO paths"},
    {kProject, "ALTER TABLE object DROP COLUMN created_by"},
    {kProject, "CREATE INDEX i ON object (upper(name))"},
    {kProject, "CREATE INDEX i ON object (name) WHERE kind = 5"},
    {kProject, "CREATE UNIQUE INDEX i ON metadata (name, object)"},
    {kProject, "CREATE INDEX i ON metadata (value COLLATE NOCASE)"},
    {kDatabase, "CREATE INDEX i ON node (length(members))"},
    {kDatabase, "DROP INDEX node_below"},
    {kDatabase, "DROP INDEX node_of_object"},
    {kDatabase, "DROP INDEX node_below; CREATE INDEX node_below ON node (above, position, section)"},
    {kDatabase,
     "DROP INDEX node_below; CREATE INDEX node_below ON node (above, section, position) WHERE number < 9"},
    {kDatabase, "DROP INDEX node_below; CREATE INDEX node_below ON node (above DESC, section, position)"},
    {kDatabase, "DROP INDEX node_below; CREATE UNIQUE INDEX node_below ON node (above, section, position)"},
    {kDatabase, "DROP INDEX node_of_object; CREATE INDEX node_of_object ON object (number)"},
    {kDatabase, "ALTER TABLE node ADD COLUMN more TEXT AS (members || members)"},
    {kDatabase, "ALTER TABLE node RENAME COLUMN shown TO displayed"},
    // Tables of other shapes under the right names.
    {kProject, "DROP TABLE metadata"},
    {kProject, "DROP TABLE numbering"},
    {kProject, "DROP TABLE object"},
    {kProject, "DROP TABLE checksum"},
    {kProject, "DROP TABLE checksum; CREATE TABLE checksum (value TEXT)"},
    {kProject, "CREATE TABLE extra (a)"},
    {kProject, "DROP TABLE view_item; CREATE TABLE view_item (object, shown)"},
    {kProject,
     "DROP TABLE view_item; CREATE TABLE view_item (object INTEGER PRIMARY KEY CHECK (object > 0),"
     " shown INTEGER NOT NULL)"},
    {kProject,
     "DROP TABLE view_item; CREATE TABLE VIEW_ITEM (object INTEGER PRIMARY KEY REFERENCES object (id),"
     " shown INTEGER NOT NULL)"},
    {kProject, "DROP TABLE numbering; CREATE TABLE numbering (next_id INTEGER NOT NULL DEFAULT (random()))"},
    {kDatabase, "DROP TABLE node"},
    {kDatabase, "DROP TABLE object"},
    {kDatabase, "DROP TABLE origin; CREATE TABLE origin (text)"},
    {kDatabase, "DROP TABLE checksum"},
    {kDatabase,
     "DROP TABLE node; DROP TABLE object; DROP TABLE origin; DROP TABLE project; DROP TABLE checksum"},
    // Virtual tables, whose modules run.
    {kProject,
     "DROP TABLE metadata; PRAGMA writable_schema = ON; INSERT INTO sqlite_schema VALUES ('table',"
     " 'metadata', 'metadata', 0, 'CREATE VIRTUAL TABLE metadata USING fts5(object, position, name, value,"
     " type, unit)')"},
    {kProject,
     "PRAGMA writable_schema = ON; INSERT INTO sqlite_schema VALUES ('table', 'v', 'v', 0, 'CREATE VIRTUAL"
     " TABLE v USING fts5(a)')"},
    {kProject,
     "PRAGMA writable_schema = ON; INSERT INTO sqlite_schema VALUES ('table', 'v', 'v', 0, 'CREATE VIRTUAL"
     " TABLE v USING nothing(a)')"},
    {kDatabase,
     "DROP TABLE origin; PRAGMA writable_schema = ON; INSERT INTO sqlite_schema VALUES ('table', 'origin',"
     " 'origin', 0, 'CREATE VIRTUAL TABLE origin USING fts5(text)')"},
    // Tables that SQLite itself reads.
    {kProject, "ANALYZE"},
    {kDatabase, "ANALYZE; UPDATE sqlite_stat1 SET stat = '9 9 9 9 9 9 9 9'"},
    {kProject, "CREATE TABLE s (a INTEGER PRIMARY KEY AUTOINCREMENT)"},
    // The schema itself, written by hand.
    {kProject,
     "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = 'CREATE TABLE numbering (nothing)'"
     " WHERE name = 'numbering'"},
    {kProject,
     "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = 'CREATE TABLE' WHERE name = 'file'"},
    {kProject, "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = NULL WHERE name = 'file'"},
    {kProject, "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET type = 'view' WHERE name = 'file'"},
    {kProject, "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET rootpage = 1 WHERE name = 'file'"},
    {kProject,
     "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET rootpage = (SELECT rootpage FROM sqlite_schema"
     " WHERE name = 'metadata') WHERE name = 'attached_file'"},
    {kProject,
     "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET rootpage = 999999 WHERE name = 'object'"},
    {kProject,
     "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET tbl_name = 'file' WHERE name = 'object'"},
    {kProject, "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET name = 'object' WHERE name = 'file'"},
    {kProject, "PRAGMA writable_schema = ON; DELETE FROM sqlite_schema WHERE name LIKE 'sqlite_autoindex%'"},
    {kProject, "PRAGMA writable_schema = ON; DELETE FROM sqlite_schema"},
    {kProject, "PRAGMA writable_schema = ON; INSERT INTO sqlite_schema SELECT * FROM sqlite_schema"},
    {kProject,
     "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = sql || char(10) || '-- ' ||"
     " hex(zeroblob(500000)) WHERE name = 'file'"},
    {kDatabase, "PRAGMA writable_schema = ON; DELETE FROM sqlite_schema"},
    {kDatabase,
     "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET rootpage = (SELECT rootpage FROM"
     " sqlite_schema WHERE name = 'node') WHERE name = 'node_below'"},
    {kDatabase,
     "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET rootpage = (SELECT rootpage FROM"
     " sqlite_schema WHERE name = 'node_of_object') WHERE name = 'node_below'"},
    {kDatabase,
     "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = replace(sql, 'UNIQUE', 'CHECK"
     " (randomblob(1000000000))') WHERE name = 'project'"},
    {kDatabase, "PRAGMA writable_schema = ON; DELETE FROM sqlite_schema WHERE name = 'node_below'"},
    // Content that no save writes.
    {kProject, "DELETE FROM numbering; INSERT INTO numbering VALUES (-5), (7)"},
    {kProject, "UPDATE object SET above = id"},
    {kProject, "UPDATE object SET name = x'00ff00'"},
    {kProject, "UPDATE metadata SET value = value || char(0) || 'hidden'"},
    {kProject, "DELETE FROM metadata WHERE position = 0"},
    {kProject, "UPDATE object SET id = 9223372036854775807 WHERE place = 2"},
    {kDatabase, "UPDATE node SET above = number"},
    {kDatabase, "UPDATE object SET type = 'CAETAG'"},
    {kDatabase, "DELETE FROM node WHERE number > 20"},
    {kDatabase, "UPDATE node SET members = '{'"},
    // The same in files of the first format, which have no checksum.
    {kProject, "DROP TABLE checksum; DROP TABLE place; PRAGMA user_version = 1"},
    {kDatabase, "DROP TABLE checksum; PRAGMA user_version = 1"},
    {kProject,
     "DROP TABLE checksum; DROP TABLE place; PRAGMA user_version = 1; UPDATE object SET above = id"},
    {kProject,
     "DROP TABLE checksum; DROP TABLE place; PRAGMA user_version = 1; UPDATE object SET id = "
     "9223372036854775807"
     " WHERE place = 2"},
    {kProject,
     "DROP TABLE checksum; DROP TABLE place; PRAGMA user_version = 1; UPDATE metadata SET value = value || "
     "char(0) ||"
     " 'hidden'"},
    {kProject,
     "DROP TABLE checksum; DROP TABLE place; PRAGMA user_version = 1; DELETE FROM file WHERE object > 50"},
    {kDatabase, "DROP TABLE checksum; PRAGMA user_version = 1; UPDATE node SET above = number"},
    {kDatabase, "DROP TABLE checksum; PRAGMA user_version = 1; UPDATE node SET above = 30 WHERE number = 2"},
    {kDatabase, "DROP TABLE checksum; PRAGMA user_version = 1; DELETE FROM object WHERE number > 20"},
    // How the file is kept.
    {kProject, "PRAGMA journal_mode = WAL"},
    {kDatabase, "PRAGMA journal_mode = WAL"},
    {kProject, "PRAGMA auto_vacuum = FULL; VACUUM"},
    {kProject, "PRAGMA page_size = 512; VACUUM"},
    {kDatabase, "PRAGMA page_size = 65536; VACUUM"},
    {kProject, "PRAGMA user_version = 1"},
    {kProject, "PRAGMA user_version = 2"},
    {kProject, "DROP TABLE place"},
    {kProject, "DELETE FROM place"},
    {kProject, "UPDATE place SET directory_from_here = '/'"},
    {kProject, "ALTER TABLE place RENAME TO p; CREATE VIEW place AS SELECT * FROM p"},
    {kProject, "CREATE TRIGGER t AFTER INSERT ON place BEGIN DELETE FROM metadata; END"},
    {kDatabase, "PRAGMA user_version = 1"},
    {kProject, "PRAGMA schema_version = 77"},
};

/// Each test has a share of them, so that none takes long. Where programs take long to start, only some
/// shares are tried unless the test may be long: a tenth.
constexpr int kTests = kIsSample ? 2 : 8;
const int kShares = kIsSample && !IsLongRun() ? 10 * kTests : kTests;

class HostileSchema : public DamageTest, public testing::WithParamInterface<int> {
protected:
    static const FileFormat& FormatOf(const Hostility& hostility) {
        return *std::ranges::find(AllFileFormats(), std::string("work/") + hostility.file,
                                  &FileFormat::place);
    }
    /// Writes the sound file, runs the statements on it, and takes it away again.
    std::string MakeHostile(const Hostility& hostility) const {
        const std::filesystem::path file = folder.Write("hostile", BytesOf(FormatOf(hostility)));
        sqlite3* opened = nullptr;
        EXPECT_EQ(sqlite3_open(ToUtf8(file).c_str(), &opened), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(opened, hostility.statements, nullptr, nullptr, nullptr), SQLITE_OK)
            << hostility.statements << ": " << sqlite3_errmsg(opened);
        EXPECT_EQ(sqlite3_close(opened), SQLITE_OK);
        std::string bytes = ReadWholeFile(file);
        std::filesystem::remove(file);
        return bytes;
    }
};

TEST_P(HostileSchema, IsRefusedOrDoesNotMatter) {
    for (auto index = static_cast<std::size_t>(GetParam()); index < std::size(kHostilities);
         index += static_cast<std::size_t>(kShares)) {
        const Hostility& hostility = kHostilities[index];
        const std::string bytes = MakeHostile(hostility);
        EXPECT_TRUE(bytes != BytesOf(FormatOf(hostility))) << hostility.statements;
        ExpectSafe(FormatOf(hostility), bytes, hostility.statements);
    }
}

INSTANTIATE_TEST_SUITE_P(Shares, HostileSchema, testing::Range(0, kTests));

}  // namespace
