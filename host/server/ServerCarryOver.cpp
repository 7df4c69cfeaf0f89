#include "ServerCarryOver.h"

#include <cstdint>
#include <optional>
#include <string>

#include "ServerDocument.h"
#include "ServerTables.h"

namespace host {
namespace {

constexpr const char* kSetAside = R"(
ALTER TABLE node RENAME TO older_node;
ALTER TABLE object RENAME TO older_object;
)";
constexpr const char* kCopyObjects = "INSERT INTO object SELECT number, key, type, project FROM older_object";
/// Siblings one after another, in their order.
constexpr const char* kOlderNodes =
    "SELECT node.number, node.object, node.above, node.section, node.position, node.shown, holder.object,"
    " object.type, node.members FROM older_node AS node"
    " JOIN older_object AS object ON object.number = node.object"
    " LEFT JOIN older_node AS holder ON holder.number = node.above"
    " ORDER BY node.above, node.section, node.position";
constexpr const char* kDropOlder = "DROP TABLE older_node; DROP TABLE older_object";

void CopyNodes(Database& database) {
    Statement older(database, kOlderNodes);
    Statement insert(database, "INSERT INTO node VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    std::optional<std::int64_t> lastAbove;
    SiblingCounts counts;
    older.Begin();
    while (older.Next()) {
        const std::optional<std::int64_t> above = OptionalNumber(older, 2);
        if (above != lastAbove) {
            counts = {};
            lastAbove = above;
        }
        const std::string members = older.Text(8);
        const NodeName name = NameOf(ParseKeptMembers(members), older.Text(7));
        const std::int64_t ordinal = above ? counts.Count(name.Text()) : kUnknownPlace;
        insert.Run(older.Number(0), older.Number(1), above, older.Number(3), older.Number(4),
                   OptionalNumber(older, 5), OptionalNumber(older, 6), name.name, name.fileType, ordinal,
                   members);
    }
}

}  // namespace

void CarryOver(Database& database) {
    database.Run(kSetAside);
    CreateTablesWithPaths(database);
    database.Run(kCopyObjects);
    CopyNodes(database);
    database.Run(kDropOlder);
    CreateServerIndexes(database);
    database.SetKind(kServerKind);
}

}  // namespace host
