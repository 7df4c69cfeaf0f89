#include "OwnFiles.h"

#include <algorithm>
#include <cstddef>

namespace host {

using namespace std::string_view_literals;

bool IsOwnDatabase(std::string_view head) {
    constexpr std::string_view kBeginning = "SQLite format 3\0"sv;
    // The number of the application is in the header of the file, four bytes with the highest one first.
    constexpr std::size_t kApplication = 68;
    if (!head.starts_with(kBeginning) || head.size() < kApplication + 4) {
        return false;
    }
    std::uint32_t number = 0;
    for (const char byte : head.substr(kApplication, 4)) {
        number = (number << 8U) | static_cast<unsigned char>(byte);
    }
    return std::ranges::find(kOwnApplications, static_cast<std::int32_t>(number)) !=
           std::end(kOwnApplications);
}

bool IsBesideDatabase(const std::filesystem::path& name,
                      const std::vector<std::filesystem::path>& databases) {
    return std::ranges::any_of(databases, [&](const std::filesystem::path& database) {
        return std::ranges::any_of(std::initializer_list<const char*>{"-journal", "-wal", "-shm"},
                                   [&](const char* ending) {
                                       std::filesystem::path beside = database;
                                       beside += ending;
                                       return name == beside;
                                   });
    });
}

}  // namespace host
