#include "ServerReferences.h"

#include <sqlite3.h>

#include <algorithm>
#include <iterator>

namespace host {
namespace {

// The columns of the tables (ServerTables.cpp).
constexpr std::size_t kNumber = 0;
constexpr std::size_t kObject = 1;
constexpr std::size_t kAbove = 2;
constexpr std::size_t kShown = 5;

std::int64_t NumberOf(const ColumnValue& value) {
    return static_cast<std::int64_t>(value.number);
}

bool IsNumber(const ColumnValue& value) {
    return value.type == SQLITE_INTEGER;
}

bool IsNull(const ColumnValue& value) {
    return value.type == SQLITE_NULL;
}

}  // namespace

void ReferenceReader::Numbers::Add(std::int64_t number) {
    if (!ranges_.empty() && number > ranges_.back().second && number - 1 == ranges_.back().second) {
        ranges_.back().second = number;
    } else {
        ranges_.emplace_back(number, number);
    }
}

bool ReferenceReader::Numbers::Has(std::int64_t number) const {
    // Most numbers are near those that were added last.
    if (!ranges_.empty() && ranges_.back().first <= number) {
        return number <= ranges_.back().second;
    }
    const auto after = std::ranges::upper_bound(ranges_, number, {}, &Range::first);
    return after != ranges_.begin() && number <= std::prev(after)->second;
}

void ReferenceReader::Read(std::string_view table, const Row& row) {
    if (table == "node") {
        ReadNode(row);
    } else if (table == "object") {
        objects_.Add(NumberOf(row[kNumber]));
    }
}

void ReferenceReader::ReadNode(const Row& row) {
    const std::int64_t number = NumberOf(row[kNumber]);
    const ColumnValue& object = row[kObject];
    const ColumnValue& above = row[kAbove];
    const ColumnValue& shown = row[kShown];
    const bool hasObject = IsNumber(object) && objects_.Has(NumberOf(object));
    const bool hasShown = IsNull(shown) || (IsNumber(shown) && objects_.Has(NumberOf(shown)));
    // The rows come in the order of their numbers.
    const bool hasAbove =
        IsNull(above) || (IsNumber(above) && NumberOf(above) < number && nodes_.Has(NumberOf(above)));
    isSound_ = isSound_ && hasObject && hasShown && hasAbove;
    nodes_.Add(number);
}

}  // namespace host
