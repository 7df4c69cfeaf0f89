#pragma once

#include <CAEProject.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

#include "host/system/Console.h"

namespace CLI {
class App;
}

/// What the commands that change project files share.
namespace host {

/// Adds --dry-run.
void AddDryRun(CLI::App& command, bool& isDryRun);
/// Says that nothing was changed, if this was a dry run.
void SayDryRun(bool isDryRun, Console& console);

/// Does the work of a command on a project file, which gives the exit status. What the file refuses is said
/// with its name, and then nothing was done.
int DoWithProjectFile(const std::string& file, Console& console, const std::function<int()>& work);

/// The whole path of the directory that a file lies in: where the files of a project are looked for that was
/// not read from a directory.
OuString DirectoryOfFile(const std::filesystem::path& file);

struct ObjectCounts {
    /// Objects that are no files, the project itself left out.
    std::size_t objects = 0;
    /// Files, among the children and of the project.
    std::size_t files = 0;
};
ObjectCounts CountObjects(CAEProject& project);

}  // namespace host
