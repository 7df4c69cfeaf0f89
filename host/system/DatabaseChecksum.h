#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "Database.h"
#include "RowHash.h"

namespace host {

/// The values of a row, and its rowid at the end if its table has indexes.
using Row = std::vector<ColumnValue>;

/// Reads all rows on the way, so that they need not be read once more for it.
class RowReader {
public:
    /// The tables come in the order in which they were created. The row is there until the next one.
    virtual void Read(std::string_view table, const Row& row) = 0;

protected:
    ~RowReader() = default;
};

/// A sum over the hashes of all rows of all tables, except the table "checksum"; the order of the rows does
/// not matter. Throws DatabaseError if the entries of an index do not have the same sum as its table, or if
/// all texts together have more than `mostText` bytes, unless that is 0. The tables are those of this
/// program. `reader` gets every row; it may be null.
std::int64_t ChecksumOf(Database& database, std::int64_t mostText, RowReader* reader = nullptr);

}  // namespace host
