#include "ServerList.h"

#include <cstdint>

#include "ServerDocument.h"
#include "ServerTables.h"
#include "format/Kinds.h"
#include "format/MemberNames.h"
#include "host/document/DocumentNode.h"
#include "host/system/DatabaseCheck.h"

namespace member = format::member;

namespace host {
namespace {

/// Counts what is below the node. The rows wait in a queue of the database, so the depth needs no stack.
void CountBelow(Database& database, std::int64_t node, StoredRoot& root) {
    Statement types(
        database,
        "WITH RECURSIVE below (number, object) AS (SELECT number, object FROM node WHERE number = ?"
        " UNION ALL SELECT node.number, node.object FROM below JOIN node"
        " ON node.above = below.number)"
        " SELECT type, count(*) FROM object WHERE number IN (SELECT object FROM below) GROUP BY type");
    types.Begin(node);
    while (types.Next()) {
        const bool isFile = format::KindOfType(types.TextView(0)) == format::Kind::kFile;
        (isFile ? root.files : root.objects) += static_cast<std::size_t>(types.Number(1));
    }
}

}  // namespace

std::vector<StoredRoot> ListRoots(Database& database) {
    CheckServerTables(database, CheckDepth::ForReading);
    const ReadingLimits limits(database);
    // Older formats do not say which nodes below no other were detached, nor do databases that were carried
    // over say it of these nodes. They are all listed.
    const std::string isRoot =
        std::string("node.above IS NULL") + (HasOlderTables(database) ? "" : " AND node.owner IS NULL");
    Statement rows(database,
                   ("SELECT max(node.number), object.key, object.type, project.name, node.members FROM node"
                    " JOIN object ON object.number = node.object"
                    " JOIN project ON project.number = object.project WHERE " +
                    isRoot + " GROUP BY object.number ORDER BY project.number, object.number")
                       .c_str());
    std::vector<StoredRoot> roots;
    rows.Begin();
    while (rows.Next()) {
        const JSONNode node = ParseKeptMembers(rows.Text(4));
        StoredRoot& root = roots.emplace_back();
        root.key = rows.Text(1);
        root.type = rows.Text(2);
        root.project = rows.Text(3);
        root.name = MemberText(node, member::kName);
        root.createdDate = MemberText(node, member::kCreatedDate);
        CountBelow(database, rows.Number(0), root);
    }
    return roots;
}

}  // namespace host
