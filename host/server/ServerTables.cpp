#include "ServerTables.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <limits>
#include <random>

#include "ServerReferences.h"
#include "format/Kinds.h"
#include "host/system/CheckedInsert.h"

using format::Kind;

namespace host {
namespace {

constexpr const char* kCommonTables = R"(
CREATE TABLE origin (text TEXT NOT NULL);
CREATE TABLE project (
    number INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE
);
)";
// An object is what a key stands for; its type is the one with which it was stored first. A node is an object
// at one place of a document; a file can have several. Its members are JSON, with empty "children" and
// "files"; "shown" is what a view item shows. Nodes without "above" are not part of another node. The path of
// a node is the object that owns it, the kind of its own object, its name, the type of a file, and the
// ordinal among equal siblings when it was stored. A node that was detached keeps its owner, and the root of
// a document has none.
constexpr const char* kTablesWithPaths = R"(
CREATE TABLE object (
    number INTEGER PRIMARY KEY,
    key TEXT NOT NULL UNIQUE,
    type TEXT NOT NULL,
    project INTEGER NOT NULL REFERENCES project (number)
);
CREATE TABLE node (
    number INTEGER PRIMARY KEY,
    object INTEGER NOT NULL REFERENCES object (number),
    above INTEGER REFERENCES node (number),
    section INTEGER NOT NULL,
    position INTEGER NOT NULL,
    shown INTEGER REFERENCES object (number),
    owner INTEGER REFERENCES object (number),
    name TEXT NOT NULL,
    file_type TEXT NOT NULL,
    ordinal INTEGER NOT NULL,
    members TEXT NOT NULL
);
)";
constexpr const char* kIndexes = R"(
CREATE INDEX node_of_object ON node (object);
CREATE INDEX node_below ON node (above, section, position);
CREATE INDEX node_of_owner ON node (owner, above, section, position);
)";

// Formats 1 and 2 identify an object by the name of its project, its identifier (or its place, if it has
// none), and its number among the objects with that identifier.
constexpr const char* kOlderTables = R"(
CREATE TABLE object (
    number INTEGER PRIMARY KEY,
    key TEXT NOT NULL UNIQUE,
    type TEXT NOT NULL,
    project INTEGER NOT NULL REFERENCES project (number),
    identifier TEXT NOT NULL,
    occurrence INTEGER NOT NULL,
    UNIQUE (project, identifier, occurrence)
);
CREATE TABLE node (
    number INTEGER PRIMARY KEY,
    object INTEGER NOT NULL REFERENCES object (number),
    above INTEGER REFERENCES node (number),
    section INTEGER NOT NULL,
    position INTEGER NOT NULL,
    shown INTEGER REFERENCES object (number),
    members TEXT NOT NULL
);
CREATE INDEX node_of_object ON node (object);
CREATE INDEX node_below ON node (above, section, position);
)";

struct Prefix {
    Kind kind;
    const char* prefix;
};
constexpr Prefix kPrefixes[] = {
    {Kind::kPart, "PRT"},           {Kind::kSubAssembly, "SUB"},    {Kind::kFile, "FIL"},
    {Kind::kModel, "MOD"},          {Kind::kIteration, "ITR"},      {Kind::kIterationFolder, "ITF"},
    {Kind::kIterationModel, "RUN"}, {Kind::kAssemblyFolder, "ASF"}, {Kind::kLoadCaseViewFolder, "LVF"},
    {Kind::kLoadCaseView, "LCV"},   {Kind::kViewItem, "ITM"},       {Kind::kTag, "TAG"},
};
static_assert(std::ranges::all_of(format::kKindNames,
                                  [](const format::KindName& known) {
                                      return known.kind == Kind::kProject ||
                                             std::ranges::find(kPrefixes, known.kind, &Prefix::kind) !=
                                                 std::end(kPrefixes);
                                  }),
              "every kind has a prefix; without one its keys would be those of a project");
/// Any other type is the additional type of a project.
constexpr const char* kProjectPrefix = "PRJ";
constexpr const char* kPrefixWithoutType = "OBJ";

/// What a node stands for or shows, and the node above it, have to be there. A node is always stored after
/// the one above it, so no node can be below itself.
void CheckReferences(Database& database) {
    Statement lost(database,
                   "SELECT node.number FROM node LEFT JOIN object ON object.number = node.object"
                   " LEFT JOIN object AS assembly ON assembly.number = node.shown"
                   " LEFT JOIN node AS holder ON holder.number = node.above"
                   " WHERE object.number IS NULL OR (node.shown IS NOT NULL AND assembly.number IS NULL)"
                   " OR (node.above IS NOT NULL AND holder.number IS NULL)"
                   " OR node.above >= node.number LIMIT 1");
    if (lost.Begin().Next()) {
        RefuseDamaged("something that the node " + std::to_string(lost.Number(0)) +
                      " refers to is missing, or is below it");
    }
}

void CheckOrigin(Database& database) {
    Statement origin(database, "SELECT count(*) FROM origin");
    origin.Begin().Next();
    if (origin.Number(0) != 1) {
        RefuseDamaged("it does not have one text for its keys");
    }
}

/// A node that is below another one is owned by that one's object.
void CheckOwners(Database& database) {
    Statement wrong(database,
                    "SELECT node.number FROM node LEFT JOIN object ON object.number = node.owner"
                    " LEFT JOIN node AS holder ON holder.number = node.above"
                    " WHERE (node.owner IS NOT NULL AND object.number IS NULL)"
                    " OR (node.above IS NOT NULL AND node.owner IS NOT holder.object) LIMIT 1");
    if (wrong.Begin().Next()) {
        RefuseDamaged("the node " + std::to_string(wrong.Number(0)) +
                      " is not owned by the object that it is below");
    }
}

}  // namespace

std::string_view KeyPrefix(std::string_view type) {
    if (type.empty()) {
        return kPrefixWithoutType;
    }
    const auto* const found = std::ranges::find(kPrefixes, format::KindOfType(type), &Prefix::kind);
    return found == std::end(kPrefixes) ? kProjectPrefix : found->prefix;
}

std::string MakeKey(const std::string& type, std::int64_t number, const std::string& origin) {
    return std::string(KeyPrefix(type)) + "-" + std::to_string(number) + "-" + origin;
}

std::int64_t NextNumber(Database& database, const std::string& table, std::size_t count) {
    Statement largest(database, ("SELECT coalesce(max(number), 0) FROM " + table).c_str());
    largest.Begin().Next();
    const std::int64_t number = largest.Number(0);
    if (number < 0 ||
        static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max() - number) <= count) {
        RefuseDamaged("there is no number left after " + std::to_string(number));
    }
    return number + 1;
}

bool HasTables(Database& database) {
    Statement application(database, "PRAGMA application_id");
    return application.Begin().Next() && application.Number(0) != 0;
}

bool HasOlderTables(Database& database) {
    Statement format(database, "PRAGMA user_version");
    return format.Begin().Next() && format.Number(0) < kFirstFormatWithPaths;
}

void CheckServerTables(Database& database, CheckDepth depth) {
    const ReadingLimits limits(database);
    const bool isOlder = HasOlderTables(database);
    const std::string own = isOlder ? kOlderTables : std::string(kTablesWithPaths) + kIndexes;
    ReferenceReader references;
    CheckDatabase(database, (kCommonTables + own).c_str(), depth, &references);
    if (!references.IsSound()) {
        CheckReferences(database);
    }
    CheckOrigin(database);
    if (!isOlder) {
        CheckOwners(database);
    }
}

void CreateServerTables(Database& database, RowSum& sum) {
    database.SetKind(kServerKind);
    database.Run(kCommonTables);
    CreateTablesWithPaths(database);
    std::random_device random;
    std::array<char, 16> origin{};
    std::snprintf(origin.data(), origin.size(), "%06x", static_cast<unsigned>(random()) & 0xFFFFFFU);
    CheckedInsert(database, "origin", 1, false, sum).Run(origin.data());
}

void CreateTablesWithPaths(Database& database) {
    database.Run(kTablesWithPaths);
}

void CreateServerIndexes(Database& database) {
    database.Run(kIndexes);
}

}  // namespace host
