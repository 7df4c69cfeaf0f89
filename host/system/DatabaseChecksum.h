#pragma once

#include <cstdint>
#include <string>

#include "Database.h"

namespace host {

/// A sum over the hashes of all rows of all tables, except the table "checksum"; the order of the rows does
/// not matter. Throws DatabaseError if the entries of an index do not have the same sum as its table, or if
/// all texts together have more than `mostText` bytes, unless that is 0. The tables are those of this
/// program.
std::int64_t ChecksumOf(Database& database, std::int64_t mostText);

}  // namespace host
