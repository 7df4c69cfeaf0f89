#include "ObjectTable.h"

#include <CAEObject.h>
#include <korvaneexchange/Text.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "host/system/Columns.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr std::array<std::string_view, 4> kColumns = {"kind", "path", "id", "key"};
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
    std::vector<std::vector<std::string>> lines;
    for (const Row& row : rows) {
        std::vector<std::string> line;
        std::ranges::transform(row, std::back_inserter(line), &Cell::text);
        lines.push_back(std::move(line));
    }
    return AlignColumns(lines);
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
