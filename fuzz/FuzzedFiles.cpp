#include "FuzzedFiles.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <system_error>

namespace {

constexpr std::size_t kLongestText = 60;

/// The bytes as a text of SQL, whatever they are.
std::string TextOf(std::string_view bytes) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string text = "CAST(X'";
    for (const char byte : bytes) {
        text += kDigits[static_cast<unsigned char>(byte) >> 4U];
        text += kDigits[static_cast<unsigned char>(byte) & 15U];
    }
    return text + "' AS TEXT)";
}

std::string Value(FuzzedDataProvider& bytes, std::span<const char* const> values) {
    switch (bytes.ConsumeIntegralInRange(0, 7)) {
        case 0:
            return "NULL";
        case 1:
            return std::to_string(bytes.ConsumeIntegral<std::int64_t>());
        case 2:
            return TextOf(bytes.ConsumeRandomLengthString(kLongestText));
        case 3:
            if (!values.empty()) {
                return values[bytes.ConsumeIntegralInRange<std::size_t>(0, values.size() - 1)];
            }
            [[fallthrough]];
        default:
            return std::to_string(bytes.ConsumeIntegralInRange(-1, 12));
    }
}

}  // namespace

host::Console& Silent() {
    static host::Console console([](std::string_view) {}, false, &host::Console::Clock::now);
    return console;
}

std::filesystem::path PlaceInMemory(const std::string& name) {
    static const std::filesystem::path folder =
        std::filesystem::canonical(std::filesystem::exists("/dev/shm") ? "/dev/shm" : "/tmp");
    return folder / ("fuzz-" + std::to_string(::getpid()) + "-" + name);
}

void WriteBytes(const std::filesystem::path& file, std::string_view bytes) {
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string BytesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void RemoveDatabase(const std::filesystem::path& file) {
    std::error_code ignored;
    for (const char* const ending : {"", "-journal", "-wal", "-shm"}) {
        std::filesystem::remove(file.string() + ending, ignored);
    }
}

std::string ChangeOfRow(FuzzedDataProvider& bytes, std::span<const TableColumns> tables,
                        std::span<const char* const> values) {
    const TableColumns& table = tables[bytes.ConsumeIntegralInRange<std::size_t>(0, tables.size() - 1)];
    const auto end = std::ranges::find(table.columns, nullptr);
    const auto count = static_cast<std::size_t>(end - table.columns.begin());
    const int kind = bytes.ConsumeIntegralInRange(0, 9);
    const std::string row = " WHERE " + std::string(table.columns[0]) + " = " + Value(bytes, values);
    if (kind == 0) {
        return "DELETE FROM " + std::string(table.name) + row;
    }
    if (kind <= 3) {
        std::string names;
        std::string contents;
        for (std::size_t column = 0; column < count; ++column) {
            names += (column > 0 ? "," : "") + std::string(table.columns[column]);
            contents += (column > 0 ? "," : "") + Value(bytes, values);
        }
        return "INSERT OR REPLACE INTO " + std::string(table.name) + " (" + names + ") VALUES (" + contents +
               ")";
    }
    const auto column = bytes.ConsumeIntegralInRange<std::size_t>(0, count - 1);
    return "UPDATE OR IGNORE " + std::string(table.name) + " SET " + table.columns[column] + " = " +
           Value(bytes, values) + row;
}
