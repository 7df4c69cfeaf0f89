#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3_stmt;

namespace host {

/// The powers of a number, from the one that is 1 on.
template <std::size_t Count>
constexpr std::array<std::uint64_t, Count> FirstPowers(std::uint64_t number) {
    std::array<std::uint64_t, Count> powers{1};
    for (std::size_t index = 1; index < Count; ++index) {
        powers[index] = powers[index - 1] * number;
    }
    return powers;
}

/// The hash of a row in the checksum of a database: FNV-1a in 64 bits over the name of the table and the
/// values of the row, each with its type before it, and with its size if it is a text.
class RowHash {
public:
    static constexpr std::uint64_t kPrime = 0x100000001B3;

    void AddBytes(std::string_view bytes) {
        for (const char byte : bytes) {
            hash_ = Step(hash_, byte);
        }
    }
    /// The eight bytes of the number, the lowest first.
    void AddNumber(std::uint64_t number) {
        // A byte of zero only multiplies, and nearly all numbers end in such bytes: the last step takes them
        // all. Measured: a third of the time of the checksum.
        std::size_t left = sizeof(number);
        for (; number > 0xFF; number >>= 8U, --left) {
            hash_ = Step(hash_, static_cast<char>(number));
        }
        hash_ = (hash_ ^ number) * kPowers[left];
    }
    /// The hash with all bits mixed, because hashes of rows are added.
    std::uint64_t Value() const {
        std::uint64_t value = hash_;
        value = (value ^ (value >> 32U)) * kPrime;
        value = (value ^ (value >> 29U)) * kPrime;
        return value ^ (value >> 32U);
    }

private:
    friend class RowSum;

    static constexpr std::uint64_t Step(std::uint64_t hash, char byte) {
        return (hash ^ static_cast<unsigned char>(byte)) * kPrime;
    }
    /// The powers of the prime: what so many bytes of zero multiply with.
    static constexpr auto kPowers = FirstPowers<9>(kPrime);

    std::uint64_t hash_ = 0xCBF29CE484222325;
};

/// A value of a row as SQLite has it.
struct ColumnValue {
    /// SQLite's number of the type.
    int type = 0;
    /// A number; the bits of one with a fraction.
    std::uint64_t number = 0;
    /// A text or blob, until the next row.
    std::string_view bytes;

    bool HasBytes() const { return bytes.data() != nullptr; }
    void Read(sqlite3_stmt* row, int column);
};

/// A sum of hashes of rows, in which their order does not matter. The values of a row are added one after
/// another, between Begin and End.
class RowSum {
public:
    void Begin(std::string_view table);
    void Add(std::nullptr_t);
    void Add(std::int64_t value);
    void Add(std::string_view text);
    void Add(const ColumnValue& value);
    void AddColumn(sqlite3_stmt* row, int column) {
        ColumnValue value;
        value.Read(row, column);
        Add(value);
    }
    void End();
    /// The sum of the rows that have ended.
    std::uint64_t Value();

private:
    /// A row whose hash has its first bytes only; the others are in `rests_`.
    struct Waiting {
        RowHash row;
        std::size_t begin;
        std::size_t end;
    };
    void AddNumber(std::uint64_t number) {
        if (hasRest_) {
            AddToRest(number);
        } else {
            row_.AddNumber(number);
        }
    }
    void AddToRest(std::uint64_t number);
    void AddBytes(std::string_view bytes);
    void AddRest();
    void AddWaiting();

    std::uint64_t sum_ = 0;
    RowHash row_;
    // A byte after the other takes as long as a multiplication does, and several rows at once hardly longer.
    // Measured: a third of the time for the long texts of a server's database.
    bool hasRest_ = false;
    std::size_t beginOfRest_ = 0;
    std::vector<Waiting> waiting_;
    std::string rests_;
};

}  // namespace host
