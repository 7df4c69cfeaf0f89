#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/document/NodeWalker.h"
#include "host/system/Database.h"

/// The tables of the server's database.
namespace host {

/// "KvSv" as a number.
inline constexpr DatabaseKind kServerKind = {0x4B765376, 1, "server database"};

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

/// Creates the tables, empty, and the text that is different in every database.
void CreateServerTables(Database& database);

}  // namespace host
