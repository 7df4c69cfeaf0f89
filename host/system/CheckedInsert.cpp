#include "CheckedInsert.h"

#include <sqlite3.h>

namespace host {
namespace {

std::string InsertText(std::string_view table, std::size_t columns) {
    std::string text = "INSERT INTO " + std::string(table) + " VALUES (?";
    for (std::size_t column = 1; column < columns; ++column) {
        text += ", ?";
    }
    return text + ")";
}

}  // namespace

CheckedInsert::CheckedInsert(Database& database, std::string_view table, std::size_t columns, bool isIndexed,
                             RowSum& sum)
    : database_(database),
      statement_(database, InsertText(table, columns).c_str()),
      table_(table),
      isIndexed_(isIndexed),
      sum_(sum) {}

void CheckedInsert::Add(const std::optional<std::int64_t>& value) {
    if (value) {
        sum_.Add(*value);
    } else {
        sum_.Add(nullptr);
    }
}

void CheckedInsert::AddRowid() {
    sum_.Add(std::int64_t{sqlite3_last_insert_rowid(database_.Handle())});
}

}  // namespace host
