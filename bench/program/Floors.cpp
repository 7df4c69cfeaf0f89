#include "Floors.h"

#include <libjson.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "Process.h"
#include "Rows.h"

namespace bench {
namespace {

const std::vector<std::string> kProjectTables = {"object",   "project",   "file",  "attached_file",
                                                 "metadata", "view_item", "place", "numbering"};

using Keys = std::vector<std::pair<std::int64_t, std::string>>;

Keys LoadKeys(const std::string& file) {
    constexpr std::size_t kId = 1;
    constexpr std::size_t kKey = 6;
    const Rows rows = LoadRows(file);
    const Table& objects = *std::ranges::find(rows.tables, "object", &Table::name);
    Keys keys;
    for (std::size_t row = 0; row < objects.RowCount(); ++row) {
        const Value* const values = &objects.values[row * static_cast<std::size_t>(objects.columns)];
        keys.emplace_back(values[kId].number, objects.TextOf(values[kKey]));
    }
    return keys;
}

std::string ReadBytes(const std::string& file) {
    std::ifstream stream(file, std::ios::binary | std::ios::ate);
    std::string bytes(static_cast<std::size_t>(stream.tellg()), '\0');
    stream.seekg(0);
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

/// Reads the beginning of each file below the directory.
void ReadDirectory(const std::string& directory) {
    std::array<char, 4096> beginning{};
    std::uintmax_t size = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
        if (entry.is_regular_file()) {
            size += entry.file_size();
            size += static_cast<std::uintmax_t>(entry.last_write_time().time_since_epoch().count() % 2);
            std::filebuf file;
            file.pubsetbuf(nullptr, 0);
            file.open(entry.path(), std::ios::in | std::ios::binary);
            size += static_cast<std::uintmax_t>(file.sgetn(beginning.data(), beginning.size()));
        }
    }
    if (size == 0) {
        throw std::runtime_error("there is nothing in " + directory);
    }
}

template <typename Work>
double SecondsOf(const Work& work) {
    const double start = ProcessorSeconds();
    work();
    return ProcessorSeconds() - start;
}

}  // namespace

double RunFloor(const std::string& name, const std::vector<std::string>& files) {
    if (name == "write") {
        const Rows rows = LoadRows(files.at(0));
        return SecondsOf([&] { WriteRows(rows, files.at(1)); });
    }
    if (name == "copy") {
        const Rows rows = LoadRows(files.at(0));
        return SecondsOf([&] {
            ReadRows(files.at(0), kProjectTables);
            WriteRows(rows, files.at(1));
        });
    }
    if (name == "read") {
        return SecondsOf([&] {
            for (const std::string& file : files) {
                ReadRows(file, kProjectTables);
            }
        });
    }
    if (name == "text") {
        const std::string bytes = ReadBytes(files.at(1));
        return SecondsOf([&] {
            ReadRows(files.at(0), kProjectTables);
            std::ofstream stream(files.at(2), std::ios::binary);
            stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        });
    }
    if (name == "directory") {
        return SecondsOf([&] {
            ReadRows(files.at(0), kProjectTables);
            ReadDirectory(files.at(1));
        });
    }
    if (name == "fetch") {
        return SecondsOf([&] { ReadRows(files.at(0), {"node", "object"}); });
    }
    if (name == "keys") {
        const Keys keys = LoadKeys(files.at(1));
        return SecondsOf([&] {
            ReadRows(files.at(0), kProjectTables);
            UpdateKeys(files.at(0), keys);
        });
    }
    if (name == "parse") {
        // Both are there at once, as they are for a comparison.
        std::vector<JSONNode> documents;
        return SecondsOf([&] {
            for (const std::string& file : files) {
                documents.push_back(libjson::parse(ReadBytes(file)));
            }
        });
    }
    throw std::runtime_error("there is no floor " + name);
}

}  // namespace bench
