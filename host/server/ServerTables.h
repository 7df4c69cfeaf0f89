#pragma once

#include <cstdint>
#include <string>

#include "host/document/NodeWalker.h"
#include "host/system/Database.h"

/// The tables of the server's database.
namespace host {

/// "KvSv" as a number.
inline constexpr DatabaseKind kServerKind = {0x4B765376, 1, "server database"};

/// The number of the section that holds a node, as the tables have it.
constexpr int NumberOfSection(NodePlace place) {
    return place == NodePlace::FileRecord ? 1 : 0;
}
constexpr NodePlace PlaceOfSection(std::int64_t number) {
    return number == 1 ? NodePlace::FileRecord : NodePlace::Child;
}

/// The key of an object: its kind, its number in the database, and what tells the database from others.
std::string MakeKey(const std::string& type, std::int64_t number, const std::string& origin);

/// Makes the tables, empty, and what tells this database from others.
void CreateServerTables(Database& database);

}  // namespace host
