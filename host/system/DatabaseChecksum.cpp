#include "DatabaseChecksum.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "Text.h"

namespace host {
namespace {

/// A sum over the entries of an index, in which their order does not matter. It is compared and not kept, so
/// it can be a faster one than that of the rows: it takes eight bytes at once.
class EntrySum {
public:
    void Begin() { hash_ = kStart; }
    void Add(const ColumnValue& value) {
        Mix((value.HasBytes() ? value.bytes.size() : value.number) ^
            (static_cast<std::uint64_t>(value.type) << 56U));
        for (std::string_view rest = value.bytes; !rest.empty();) {
            std::uint64_t word = 0;
            const std::size_t size = std::min(rest.size(), sizeof(word));
            std::memcpy(&word, rest.data(), size);
            Mix(word);
            rest.remove_prefix(size);
        }
    }
    void End() { sum_ += hash_ ^ (hash_ >> 32U); }
    std::uint64_t Value() const { return sum_; }

private:
    static constexpr std::uint64_t kStart = 0xCBF29CE484222325;
    static constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;

    void Mix(std::uint64_t number) {
        hash_ = (hash_ ^ number) * kFactor;
        hash_ ^= hash_ >> 29U;
    }

    std::uint64_t hash_ = kStart;
    std::uint64_t sum_ = 0;
};

/// An index of a table, and the sum over what its entries should be.
struct IndexSum {
    std::string name;
    /// The numbers of its columns in the table, the rowid at the end.
    std::vector<std::size_t> columns;
    EntrySum expected;
};

std::int64_t SizeOfTexts(const Row& row) {
    std::int64_t size = 0;
    for (const ColumnValue& value : row) {
        size += static_cast<std::int64_t>(value.bytes.size());
    }
    return size;
}

/// Adds up all rows, in whatever order they are, and compares them with the indexes.
class ContentSum {
public:
    /// `mostText` is the size that all texts together can have; 0 if there is no limit. `reader` may be null.
    ContentSum(Database& database, std::int64_t mostText, RowReader* reader)
        : database_(database), mostText_(mostText), reader_(reader) {}

    std::uint64_t Run();

private:
    std::vector<std::string> NamesOfTables();
    std::vector<IndexSum> IndexesOf(const std::string& table, std::size_t rowid);
    std::size_t CountColumns(const std::string& table);
    void AddTable(const std::string& table);
    void CheckIndex(const std::string& table, IndexSum& index);
    void CountText(std::int64_t size);
    void ReadRow(const Statement& rows);

    Database& database_;
    std::int64_t mostText_;
    RowReader* reader_;
    std::int64_t texts_ = 0;
    RowSum sum_;
    /// The row that is read now.
    Row row_;
};

std::uint64_t ContentSum::Run() {
    for (const std::string& table : NamesOfTables()) {
        AddTable(table);
    }
    return sum_.Value();
}

std::vector<std::string> ContentSum::NamesOfTables() {
    std::vector<std::string> names;
    // As they were created, so that what a row refers to comes before it.
    Statement tables(database_,
                     "SELECT name FROM sqlite_schema WHERE type = 'table' AND name <> 'checksum'"
                     " ORDER BY rowid");
    tables.Begin();
    while (tables.Next()) {
        names.push_back(tables.Text(0));
    }
    return names;
}

std::size_t ContentSum::CountColumns(const std::string& table) {
    Statement columns(database_, ("SELECT * FROM " + table).c_str());
    return static_cast<std::size_t>(sqlite3_column_count(columns.Handle()));
}

std::vector<IndexSum> ContentSum::IndexesOf(const std::string& table, std::size_t rowid) {
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
            index.columns.push_back(static_cast<std::size_t>(columns.Number(1)));
        }
        index.columns.push_back(rowid);
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

void ContentSum::ReadRow(const Statement& rows) {
    for (std::size_t column = 0; column < row_.size(); ++column) {
        row_[column].Read(rows.Handle(), static_cast<int>(column));
    }
}

void ContentSum::AddTable(const std::string& table) {
    std::vector<IndexSum> indexes = IndexesOf(table, CountColumns(table));
    // A rowid stands last in the entries of an index. Tables that have none have no other indexes either.
    const std::string rowid = indexes.empty() ? "" : ", rowid";
    Statement rows(database_, ("SELECT *" + rowid + " FROM " + table + " NOT INDEXED").c_str());
    row_.resize(static_cast<std::size_t>(sqlite3_column_count(rows.Handle())));
    rows.Begin();
    while (rows.Next()) {
        ReadRow(rows);
        CountText(SizeOfTexts(row_));
        sum_.Begin(table);
        for (const ColumnValue& value : row_) {
            sum_.Add(value);
        }
        sum_.End();
        for (IndexSum& index : indexes) {
            index.expected.Begin();
            for (const std::size_t column : index.columns) {
                index.expected.Add(row_[column]);
            }
            index.expected.End();
        }
        if (reader_ != nullptr) {
            reader_->Read(table, row_);
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
    row_.resize(static_cast<std::size_t>(sqlite3_column_count(entries.Handle())));
    EntrySum sum;
    std::int64_t texts = 0;
    entries.Begin();
    while (entries.Next()) {
        ReadRow(entries);
        texts += SizeOfTexts(row_);
        if (mostText_ != 0 && texts > mostText_) {
            break;
        }
        sum.Begin();
        for (const ColumnValue& value : row_) {
            sum.Add(value);
        }
        sum.End();
    }
    if (sum.Value() != index.expected.Value()) {
        RefuseDamaged("the index " + Quoted(index.name) + " does not fit its table");
    }
}

}  // namespace

std::int64_t ChecksumOf(Database& database, std::int64_t mostText, RowReader* reader) {
    return static_cast<std::int64_t>(ContentSum(database, mostText, reader).Run());
}

}  // namespace host
