#pragma once

#include <libjson.h>

#include <cstdint>
#include <string>

#include "host/system/Database.h"

/// The tables of the server's database.
namespace host {

/// "KvSv" as a number.
inline constexpr DatabaseKind kServerKind = {0x4B765376, 1, "database of the server"};

/// Where a node stands in the one that it belongs to.
enum class Section : int { Children = 0, Files = 1 };

/// The key of an object: its kind, its number in the database, and what tells the database from others.
std::string MakeKey(const std::string& type, std::int64_t number, const std::string& origin);

/// Makes the tables, empty, and what tells this database from others.
void CreateServerTables(Database& database);

}  // namespace host
