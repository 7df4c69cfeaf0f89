#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "exchange/NodeWalker.h"
#include "host/system/Database.h"
#include "host/system/DatabaseCheck.h"
#include "host/system/RowHash.h"

/// The tables of the server's database.
namespace host {

using korvane::exchange::NodePlace;

/// "KvSv" as a number.
///
/// Formats are
///
/// - 1: objects are recognised by their identifiers; there is no checksum.
/// - 2: the same with a checksum (see ProjectFile.h).
/// - 3: objects are recognised by their paths (Server.h). Databases of older formats are read as they are;
/// the
///   first store into one carries it over (ServerCarryOver.h).
inline constexpr DatabaseKind kServerKind = {0x4B765376, 3, "server database"};
inline constexpr std::int64_t kFirstFormatWithPaths = 3;

/// The ordinal of a node that an older format has below no other: it is a root, or was detached from an
/// object that is no longer known.
inline constexpr std::int64_t kUnknownPlace = -1;

/// How the tables number the sections that nodes are in.
constexpr int NumberOfSection(NodePlace place) {
    return place == NodePlace::FileRecord ? 1 : 0;
}
constexpr NodePlace PlaceOfSection(std::int64_t number) {
    return number == 1 ? NodePlace::FileRecord : NodePlace::Child;
}

/// The number in a column of the current row; nothing if it is NULL.
inline std::optional<std::int64_t> OptionalNumber(const Statement& row, int column) {
    return row.IsNull(column) ? std::nullopt : std::optional(row.Number(column));
}

/// What the keys of a kind begin with, which is the same for every type of project.
std::string_view KeyPrefix(std::string_view type);

/// The key of an object: its kind, its number in the database, and the text that is different in every
/// database.
std::string MakeKey(const std::string& type, std::int64_t number, const std::string& origin);

/// The number for the first of `count` new rows. Throws DatabaseError if the numbers in the table ("object"
/// or "node") leave no room for them.
std::int64_t NextNumber(Database& database, const std::string& table, std::size_t count);

/// Creates the tables, empty, and the text that is different in every database, which is added to the
/// checksum. The tables have their indexes only after CreateServerIndexes, so that these need not follow
/// every row.
void CreateServerTables(Database& database, RowSum& sum);
void CreateServerIndexes(Database& database);
/// Creates only the tables that older formats have in another form.
void CreateTablesWithPaths(Database& database);

/// Whether the tables were created. A database that has a kind and no tables is damaged.
bool HasTables(Database& database);
/// Whether they are those of a format without paths.
bool HasOlderTables(Database& database);

/// Throws DatabaseError unless the database has exactly the tables of its format, undamaged.
void CheckServerTables(Database& database, CheckDepth depth);

}  // namespace host
