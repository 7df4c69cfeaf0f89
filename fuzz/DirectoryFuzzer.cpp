// Makes a directory of the names that the lines of the input are and reads it as a project. Every file gets
// its own line and those behind it as its content, so that decks include files.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "Expect.h"
#include "FuzzedFiles.h"
#include "Trip.h"
#include "host/directory/DirectoryReader.h"
#include "host/document/TreePrinter.h"

namespace {

constexpr int kMostFiles = 12;

/// Where in the root a name lies; empty for one that leads out of it.
std::filesystem::path PlaceOf(std::string_view line) {
    if (line.find('\0') != std::string_view::npos) {
        return {};
    }
    std::filesystem::path place = std::filesystem::path(line).relative_path().lexically_normal();
    const bool leadsOut = !place.empty() && *place.begin() == "..";
    return leadsOut || !place.has_filename() ? std::filesystem::path() : place;
}

void Fill(const std::filesystem::path& root, std::string_view text) {
    for (int count = 0; count < kMostFiles && !text.empty(); ++count) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::filesystem::path place = PlaceOf(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (place.empty()) {
            continue;
        }
        // Names that are too long or taken are left out.
        std::error_code ignored;
        std::filesystem::create_directories((root / place).parent_path(), ignored);
        std::ofstream(root / place, std::ios::binary) << text;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::filesystem::path root = PlaceInMemory("directory");
    std::filesystem::remove_all(root);
    std::filesystem::create_directory(root);
    Fill(root, {reinterpret_cast<const char*>(data), size});
    const host::DirectoryReading reading = host::ReadDirectory(root, std::nullopt, Silent());
    Expect(reading.project != nullptr && !reading.error, "a directory is read");
    Expect(!host::PrintTree(*reading.project, {}).empty(), "a project is printed");
    ExpectTrip(*reading.project);
    std::filesystem::remove_all(root);
    return 0;
}
