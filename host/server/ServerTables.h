#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/document/NodeWalker.h"
#include "host/system/Database.h"
#include "host/system/DatabaseCheck.h"
#include "host/system/RowHash.h"

/// The tables of the server's database.
namespace host {

/// "KvSv" as a number.
///
/// Format 1 has no checksum; the first store into such a database makes it one of format 2 (see
/// ProjectFile.h).
inline constexpr DatabaseKind kServerKind = {0x4B765376, 2, "server database"};

/// How the tables number the sections that nodes are in.
constexpr int NumberOfSection(NodePlace place) {
    return place == NodePlace::FileRecord ? 1 : 0;
}
constexpr NodePlace PlaceOfSection(std::int64_t number) {
    return number == 1 ? NodePlace::FileRecord : NodePlace::Child;
}

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

/// Whether the tables were created. A database that has a kind and no tables is damaged.
bool HasTables(Database& database);

/// Throws DatabaseError unless the database has exactly these tables, undamaged.
void CheckServerTables(Database& database, CheckDepth depth);

}  // namespace host
