#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Database.h"
#include "RowHash.h"

namespace host {

/// Inserts whole rows into a table, and adds them to a sum as ChecksumOf does, so that they need not be read
/// again for the checksum. Numbers belong into columns of numbers and texts into columns of texts, so that
/// SQLite stores them as they are.
class CheckedInsert {
public:
    /// `isIndexed`: whether the table of the complete database has indexes besides its primary key.
    CheckedInsert(Database& database, std::string_view table, std::size_t columns, bool isIndexed,
                  RowSum& sum);

    /// The values are those of all columns, in their order.
    template <typename... Values>
    void Run(const Values&... values) {
        statement_.Run(values...);
        sum_.Begin(table_);
        (Add(values), ...);
        if (isIndexed_) {
            AddRowid();
        }
        sum_.End();
    }

private:
    void Add(std::int64_t value) { sum_.Add(value); }
    void Add(int value) { sum_.Add(std::int64_t{value}); }
    void Add(bool value) { sum_.Add(std::int64_t{value ? 1 : 0}); }
    void Add(std::string_view value) { sum_.Add(value); }
    void Add(const std::string& value) { sum_.Add(std::string_view(value)); }
    void Add(const char* value) { sum_.Add(std::string_view(value)); }
    void Add(const std::optional<std::int64_t>& value);
    void AddRowid();

    Database& database_;
    Statement statement_;
    std::string table_;
    bool isIndexed_;
    RowSum& sum_;
};

}  // namespace host
