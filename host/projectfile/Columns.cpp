#include "Columns.h"

#include <cstdint>
#include <limits>

#include "host/system/DatabaseError.h"

namespace host {

int Integer(const Statement& row, int column) {
    if (!row.IsNumber(column)) {
        RefuseDamaged("a value is not a number");
    }
    const std::int64_t number = row.Number(column);
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max()) {
        RefuseDamaged("the number " + std::to_string(number) + " is too large");
    }
    return static_cast<int>(number);
}

bool Flag(const Statement& row, int column) {
    const int number = Integer(row, column);
    if (number != 0 && number != 1) {
        RefuseDamaged("a value is " + std::to_string(number) + " and not 0 or 1");
    }
    return number == 1;
}

std::string_view NarrowText(const Statement& row, int column) {
    if (!row.IsText(column)) {
        RefuseDamaged("a value is not a text");
    }
    return row.TextView(column);
}

OuString Text(const Statement& row, int column) {
    const std::string_view text = NarrowText(row, column);
    return text.empty() ? OuString() : OuString(text.data(), 0);
}

}  // namespace host
