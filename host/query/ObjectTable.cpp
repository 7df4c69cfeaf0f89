#include "ObjectTable.h"

#include <CAEObject.h>
#include <korvaneexchange/Text.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "host/system/Text.h"

namespace host {
namespace {

constexpr std::size_t kKeyColumn = 3;
constexpr std::array<std::string_view, 4> kColumns = {"kind", "path", "id", "key"};
constexpr std::size_t kWidestColumn = 64;
constexpr const char* kNoValue = "-";

ObjectTable::Row FixedCells(const WalkedObject& walked, const std::string& identifierMark) {
    const CAEObject& object = walked.object;
    return {{CAEObject::getTypeName(object.getType())},
            {walked.Path()},
            {identifierMark + std::to_string(object.getID())},
            {korvane::exchange::ToUtf8(object.getDBKey())}};
}

void PutCsvCell(std::string_view text, bool isFirst, std::string& csv) {
    csv += isFirst ? "" : ",";
    if (text.find_first_of("\",\r\n") == std::string_view::npos) {
        csv += text;
        return;
    }
    csv += '"';
    for (const char unit : text) {
        csv += unit;
        if (unit == '"') {
            csv += unit;
        }
    }
    csv += '"';
}

}  // namespace

ObjectTable::Row ObjectTable::RowForPeople(const WalkedObject& walked) const {
    Row row = FixedCells(walked, "#");
    for (const Field& field : shown_) {
        std::string text = ShownText(field, walked);
        row.push_back({text.empty() ? kNoValue : std::move(text)});
    }
    for (Cell& cell : row) {
        cell.text = Printable(std::string_view(cell.text));
    }
    return row;
}

ObjectTable::Row ObjectTable::RowForPrograms(const WalkedObject& walked) const {
    Row row = FixedCells(walked, "");
    for (const Field& field : shown_) {
        const std::vector<FieldValue> values = ValuesOf(field, walked);
        const bool hasUnit = values.size() == 1 && !values.front().unit.empty();
        row.push_back(hasUnit ? Cell{values.front().text, values.front().unit}
                              : Cell{ExactText(field, walked)});
    }
    return row;
}

std::string ObjectTable::Lines(const std::vector<Row>& rows) {
    const bool hasKeys =
        std::ranges::any_of(rows, [](const Row& row) { return !row[kKeyColumn].text.empty(); });
    std::vector<std::size_t> widths(rows.empty() ? 0 : rows.front().size());
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            // One long value must not move the columns of all other lines.
            widths[column] =
                std::max(widths[column], std::min(DisplayWidth(row[column].text), kWidestColumn));
        }
    }
    std::string text;
    for (const Row& row : rows) {
        std::string gap;
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (column == kKeyColumn && !hasKeys) {
                continue;
            }
            const std::string& cell = row[column].text;
            // Blanks stand before a value only, so that no line ends with them.
            text += cell.empty() ? "" : gap + cell;
            gap = cell.empty() ? gap : "";
            const std::size_t width = DisplayWidth(cell);
            gap += std::string(widths[column] > width ? widths[column] - width : 0, ' ') + "  ";
        }
        text += '\n';
    }
    return text;
}

std::string ObjectTable::Csv(const std::vector<Row>& rows) const {
    constexpr std::string_view kLineEnd = "\r\n";
    std::vector<bool> hasUnits(kColumns.size() + shown_.size());
    for (const Row& row : rows) {
        for (std::size_t column = kColumns.size(); column < row.size(); ++column) {
            hasUnits[column] = hasUnits[column] || !row[column].unit.empty();
        }
    }
    std::string csv;
    for (const std::string_view column : kColumns) {
        PutCsvCell(column, csv.empty(), csv);
    }
    for (std::size_t index = 0; index < shown_.size(); ++index) {
        PutCsvCell(shown_[index].name, false, csv);
        if (hasUnits[kColumns.size() + index]) {
            PutCsvCell(shown_[index].name + " unit", false, csv);
        }
    }
    csv += kLineEnd;
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            PutCsvCell(row[column].text, column == 0, csv);
            if (hasUnits[column]) {
                PutCsvCell(row[column].unit, false, csv);
            }
        }
        csv += kLineEnd;
    }
    return csv;
}

}  // namespace host
