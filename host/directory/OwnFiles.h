#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

/// Files that this program writes. A directory of simulation files may have them, but they are not simulation
/// files, and a page about a project that became a file of it would change the project.
namespace host {

/// The numbers of the application in the databases of this program (DatabaseKind): project files, and
/// databases of the server.
inline constexpr std::int32_t kOwnApplications[] = {0x4B765072, 0x4B765376};

/// How plots begin, and what the head of a page has, before anything of a project.
inline constexpr std::string_view kPlotBeginning = "<!-- A plot by korvane-json -->\n";
inline constexpr std::string_view kPageMark = "<meta name=\"generator\" content=\"korvane-json\">";

enum class OwnFile { None, Database, Page, Plot, Document, Answer };

/// What a file that begins like this is, whatever its name is. A document is recognised by its first members,
/// if they are those that this program writes, in their order.
OwnFile OwnFileOf(std::string_view head);

/// Why such a file is left out: "it is a page of this program".
std::string_view ReasonToLeaveOut(OwnFile kind);

/// Whether SQLite keeps a file of this name beside one of the databases: a journal.
bool IsBesideDatabase(const std::filesystem::path& name, const std::vector<std::filesystem::path>& databases);

}  // namespace host
