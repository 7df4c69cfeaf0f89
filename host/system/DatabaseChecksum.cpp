#include "DatabaseChecksum.h"

#include <sqlite3.h>

#include <array>
#include <bit>
#include <string>
#include <string_view>
#include <vector>

#include "Text.h"

namespace host {
namespace {

/// The hash of a row: FNV-1a in 64 bits over its values, each with its type and size before it.
class RowHash {
public:
    void Add(std::string_view bytes) {
        for (const char byte : bytes) {
            hash_ = (hash_ ^ static_cast<unsigned char>(byte)) * kPrime;
        }
    }
    void Add(std::uint64_t number) {
        std::array<char, 8> bytes{};
        for (std::size_t index = 0; index < bytes.size(); ++index) {
            bytes.at(index) = static_cast<char>(number >> (8 * index));
        }
        Add(std::string_view(bytes.data(), bytes.size()));
    }
    /// Returns the size of the value if it is a text.
    std::int64_t AddColumn(sqlite3_stmt* row, int column);
    /// The hash with all bits mixed, because hashes of rows are added.
    std::uint64_t Value() const {
        std::uint64_t value = hash_;
        value = (value ^ (value >> 32)) * kPrime;
        value = (value ^ (value >> 29)) * kPrime;
        return value ^ (value >> 32);
    }

private:
    static constexpr std::uint64_t kPrime = 0x100000001B3;
    std::uint64_t hash_ = 0xCBF29CE484222325;
};

std::int64_t RowHash::AddColumn(sqlite3_stmt* row, int column) {
    const int type = sqlite3_column_type(row, column);
    Add(static_cast<std::uint64_t>(type));
    if (type == SQLITE_INTEGER) {
        Add(static_cast<std::uint64_t>(sqlite3_column_int64(row, column)));
    } else if (type == SQLITE_FLOAT) {
        Add(std::bit_cast<std::uint64_t>(sqlite3_column_double(row, column)));
    } else if (type != SQLITE_NULL) {
        const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(row, column));
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(row, column));
        Add(std::uint64_t{size});
        if (bytes != nullptr) {
            Add(std::string_view(bytes, size));
        }
        return static_cast<std::int64_t>(size);
    }
    return 0;
}

/// An index of a table, and the sum over what its entries should be.
struct IndexSum {
    std::string name;
    /// The numbers of its columns in the table.
    std::vector<int> columns;
    std::uint64_t expected = 0;
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
    void CheckIndex(const std::string& table, const IndexSum& index);
    void CountText(std::int64_t size);

    Database& database_;
    std::int64_t mostText_;
    std::int64_t texts_ = 0;
    std::uint64_t sum_ = 0;
};

std::uint64_t ContentSum::Run() {
    for (const std::string& table : NamesOfTables()) {
        AddTable(table);
    }
    return sum_;
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
            indexes.push_back({list.Text(1), {}, 0});
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
        RowHash row;
        row.Add(table);
        std::int64_t texts = 0;
        for (int column = 0; column < columnCount; ++column) {
            texts += row.AddColumn(rows.Handle(), column);
        }
        CountText(texts);
        sum_ += row.Value();
        for (IndexSum& index : indexes) {
            RowHash entry;
            for (const int column : index.columns) {
                entry.AddColumn(rows.Handle(), column);
            }
            entry.AddColumn(rows.Handle(), columnCount - 1);
            index.expected += entry.Value();
        }
    }
    for (const IndexSum& index : indexes) {
        CheckIndex(table, index);
    }
}

void ContentSum::CheckIndex(const std::string& table, const IndexSum& index) {
    std::string names;
    Statement columns(database_, ("PRAGMA index_info(" + index.name + ")").c_str());
    columns.Begin();
    while (columns.Next()) {
        names += columns.Text(2) + ", ";
    }
    Statement entries(database_,
                      ("SELECT " + names + "rowid FROM " + table + " INDEXED BY " + index.name).c_str());
    const int columnCount = sqlite3_column_count(entries.Handle());
    std::uint64_t sum = 0;
    std::int64_t texts = 0;
    entries.Begin();
    while (entries.Next()) {
        RowHash entry;
        for (int column = 0; column < columnCount; ++column) {
            texts += entry.AddColumn(entries.Handle(), column);
        }
        if (mostText_ != 0 && texts > mostText_) {
            break;
        }
        sum += entry.Value();
    }
    if (sum != index.expected) {
        RefuseDamaged("the index " + Quoted(index.name) + " does not fit its table");
    }
}

}  // namespace

std::int64_t ChecksumOf(Database& database, std::int64_t mostText) {
    return static_cast<std::int64_t>(ContentSum(database, mostText).Run());
}

}  // namespace host
