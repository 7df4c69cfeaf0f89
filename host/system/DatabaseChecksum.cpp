#include "DatabaseChecksum.h"

#include <sqlite3.h>

#include <string>
#include <string_view>
#include <vector>

#include "RowHash.h"
#include "Text.h"

namespace host {
namespace {

/// An index of a table, and the sum over what its entries should be.
struct IndexSum {
    std::string name;
    /// The numbers of its columns in the table.
    std::vector<int> columns;
    RowSum expected;
};

/// Adds up all rows, in whatever order they are, and compares them with the indexes.
class ContentSum {
public:
    /// `mostText` is the size that all texts together can have; 0 if there is no limit.
    ContentSum(Database& database, std::int64_t mostText) : database_(database), mostText_(mostText) {}

    std::uint64_t Run();

private:
    std::vector<std::string> NamesOfTables();
    std::vector<IndexSum> IndexesOf(const std::string& table);
    void AddTable(const std::string& table);
    void CheckIndex(const std::string& table, IndexSum& index);
    void CountText(std::int64_t size);

    Database& database_;
    std::int64_t mostText_;
    std::int64_t texts_ = 0;
    RowSum sum_;
};

std::uint64_t ContentSum::Run() {
    for (const std::string& table : NamesOfTables()) {
        AddTable(table);
    }
    return sum_.Value();
}

std::vector<std::string> ContentSum::NamesOfTables() {
    std::vector<std::string> names;
    Statement tables(database_,
                     "SELECT name FROM sqlite_schema WHERE type = 'table' AND name <> 'checksum'"
                     " ORDER BY name");
    tables.Begin();
    while (tables.Next()) {
        names.push_back(tables.Text(0));
    }
    return names;
}

std::vector<IndexSum> ContentSum::IndexesOf(const std::string& table) {
    std::vector<IndexSum> indexes;
    Statement list(database_, ("PRAGMA index_list(" + table + ")").c_str());
    list.Begin();
    while (list.Next()) {
        // The index of a primary key is the table itself: these tables have no rowid.
        if (list.Text(3) != "pk") {
            indexes.push_back({list.Text(1), {}, {}});
        }
    }
    for (IndexSum& index : indexes) {
        Statement columns(database_, ("PRAGMA index_info(" + index.name + ")").c_str());
        columns.Begin();
        while (columns.Next()) {
            index.columns.push_back(static_cast<int>(columns.Number(1)));
        }
    }
    return indexes;
}

/// Pages that are used in several places make a small file hold texts without an end.
void ContentSum::CountText(std::int64_t size) {
    texts_ += size;
    if (mostText_ != 0 && texts_ > mostText_) {
        RefuseDamaged("it seems to hold more than its size");
    }
}

void ContentSum::AddTable(const std::string& table) {
    std::vector<IndexSum> indexes = IndexesOf(table);
    // A rowid stands last in the entries of an index. Tables that have none have no other indexes either.
    const std::string rowid = indexes.empty() ? "" : ", rowid";
    Statement rows(database_, ("SELECT *" + rowid + " FROM " + table + " NOT INDEXED").c_str());
    const int columnCount = sqlite3_column_count(rows.Handle());
    rows.Begin();
    while (rows.Next()) {
        sum_.Begin(table);
        std::int64_t texts = 0;
        for (int column = 0; column < columnCount; ++column) {
            texts += sum_.AddColumn(rows.Handle(), column);
        }
        CountText(texts);
        sum_.End();
        for (IndexSum& index : indexes) {
            index.expected.Begin({});
            for (const int column : index.columns) {
                index.expected.AddColumn(rows.Handle(), column);
            }
            index.expected.AddColumn(rows.Handle(), columnCount - 1);
            index.expected.End();
        }
    }
    for (IndexSum& index : indexes) {
        CheckIndex(table, index);
    }
}

void ContentSum::CheckIndex(const std::string& table, IndexSum& index) {
    std::string names;
    Statement columns(database_, ("PRAGMA index_info(" + index.name + ")").c_str());
    columns.Begin();
    while (columns.Next()) {
        names += columns.Text(2) + ", ";
    }
    Statement entries(database_,
                      ("SELECT " + names + "rowid FROM " + table + " INDEXED BY " + index.name).c_str());
    const int columnCount = sqlite3_column_count(entries.Handle());
    RowSum sum;
    std::int64_t texts = 0;
    entries.Begin();
    while (entries.Next()) {
        sum.Begin({});
        for (int column = 0; column < columnCount; ++column) {
            texts += sum.AddColumn(entries.Handle(), column);
        }
        if (mostText_ != 0 && texts > mostText_) {
            break;
        }
        sum.End();
    }
    if (sum.Value() != index.expected.Value()) {
        RefuseDamaged("the index " + Quoted(index.name) + " does not fit its table");
    }
}

}  // namespace

std::int64_t ChecksumOf(Database& database, std::int64_t mostText) {
    return static_cast<std::int64_t>(ContentSum(database, mostText).Run());
}

}  // namespace host
