#include "RowHash.h"

#include <sqlite3.h>

#include <algorithm>
#include <bit>

namespace host {
namespace {

constexpr std::size_t kAtOnce = 4;
constexpr std::size_t kMostWaiting = 32;
// Copying a text costs more than it gains if the text is short, and too much memory if it is very long.
constexpr std::size_t kShortestWaiting = 64;
constexpr std::size_t kLongestWaiting = 65'536;

}  // namespace

void ColumnValue::Read(sqlite3_stmt* row, int column) {
    type = sqlite3_column_type(row, column);
    number = 0;
    bytes = {};
    if (type == SQLITE_INTEGER) {
        number = static_cast<std::uint64_t>(sqlite3_column_int64(row, column));
    } else if (type == SQLITE_FLOAT) {
        number = std::bit_cast<std::uint64_t>(sqlite3_column_double(row, column));
    } else if (type != SQLITE_NULL) {
        const auto* const first = static_cast<const char*>(sqlite3_column_blob(row, column));
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(row, column));
        // SQLite has no address for an empty value.
        bytes = first != nullptr ? std::string_view(first, size) : std::string_view("");
    }
}

void RowSum::Begin(std::string_view table) {
    row_ = RowHash();
    row_.AddBytes(table);
    hasRest_ = false;
}

void RowSum::AddToRest(std::uint64_t number) {
    std::array<char, sizeof(number)> bytes{};
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        bytes.at(index) = static_cast<char>(number >> (8 * index));
    }
    rests_.append(bytes.data(), bytes.size());
}

void RowSum::AddBytes(std::string_view bytes) {
    if (bytes.size() > kLongestWaiting) {
        AddRest();
    } else if (!hasRest_ && bytes.size() >= kShortestWaiting) {
        hasRest_ = true;
        beginOfRest_ = rests_.size();
    }
    if (hasRest_) {
        rests_ += bytes;
    } else {
        row_.AddBytes(bytes);
    }
}

void RowSum::Add(std::nullptr_t) {
    AddNumber(SQLITE_NULL);
}

void RowSum::Add(std::int64_t value) {
    AddNumber(SQLITE_INTEGER);
    AddNumber(static_cast<std::uint64_t>(value));
}

void RowSum::Add(std::string_view text) {
    AddNumber(SQLITE_TEXT);
    AddNumber(text.size());
    AddBytes(text);
}

void RowSum::Add(const ColumnValue& value) {
    AddNumber(static_cast<std::uint64_t>(value.type));
    if (value.HasBytes()) {
        AddNumber(value.bytes.size());
        AddBytes(value.bytes);
    } else if (value.type != SQLITE_NULL) {
        AddNumber(value.number);
    }
}

void RowSum::End() {
    if (!hasRest_) {
        sum_ += row_.Value();
        return;
    }
    waiting_.push_back({row_, beginOfRest_, rests_.size()});
    if (waiting_.size() == kMostWaiting) {
        AddWaiting();
    }
}

std::uint64_t RowSum::Value() {
    AddWaiting();
    return sum_;
}

/// Hashes the rest of the current row now.
void RowSum::AddRest() {
    if (hasRest_) {
        row_.AddBytes(std::string_view(rests_).substr(beginOfRest_));
        rests_.resize(beginOfRest_);
        hasRest_ = false;
    }
}

void RowSum::AddWaiting() {
    // Rows of about the same length are hashed together.
    std::ranges::sort(waiting_, {}, [](const Waiting& row) { return row.end - row.begin; });
    std::size_t first = 0;
    for (; first + kAtOnce <= waiting_.size(); first += kAtOnce) {
        Waiting* const rows = &waiting_[first];
        const std::size_t size = rows[0].end - rows[0].begin;
        const char* const texts[] = {&rests_[rows[0].begin], &rests_[rows[1].begin], &rests_[rows[2].begin],
                                     &rests_[rows[3].begin]};
        std::uint64_t hashes[] = {rows[0].row.hash_, rows[1].row.hash_, rows[2].row.hash_, rows[3].row.hash_};
        static_assert(std::size(hashes) == kAtOnce);
        for (std::size_t index = 0; index < size; ++index) {
            hashes[0] = RowHash::Step(hashes[0], texts[0][index]);
            hashes[1] = RowHash::Step(hashes[1], texts[1][index]);
            hashes[2] = RowHash::Step(hashes[2], texts[2][index]);
            hashes[3] = RowHash::Step(hashes[3], texts[3][index]);
        }
        for (std::size_t lane = 0; lane < kAtOnce; ++lane) {
            rows[lane].row.hash_ = hashes[lane];
            rows[lane].begin += size;
        }
    }
    for (Waiting& waiting : waiting_) {
        waiting.row.AddBytes(std::string_view(rests_).substr(waiting.begin, waiting.end - waiting.begin));
        sum_ += waiting.row.Value();
    }
    waiting_.clear();
    rests_.clear();
}

}  // namespace host
