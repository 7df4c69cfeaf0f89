#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

/// Files that this program writes. A directory of simulation files may have them, but they are not simulation
/// files.
namespace host {

/// The numbers of the application in the databases of this program (DatabaseKind): project files, and
/// databases of the server.
inline constexpr std::int32_t kOwnApplications[] = {0x4B765072, 0x4B765376};

/// Whether a file that begins like this is a database of this program, whatever its name is.
bool IsOwnDatabase(std::string_view head);

/// Whether SQLite keeps a file of this name beside one of the databases: a journal.
bool IsBesideDatabase(const std::filesystem::path& name, const std::vector<std::filesystem::path>& databases);

}  // namespace host
