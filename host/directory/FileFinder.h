#pragma once

#include <filesystem>
#include <optional>
#include <system_error>

#include "DirectoryTree.h"
#include "LeftOutEntries.h"
#include "Selection.h"
#include "host/system/Console.h"

namespace host {

/// Finds the directories and files below a root, and opens none of them but the files .korvaneignore, which
/// are added to `exclusion`; without it nothing is excluded. `ownFile` is the one that the command works on.
/// Returns an error for the root itself only.
std::error_code FindFiles(const std::filesystem::path& root,
                          const std::optional<std::filesystem::path>& ownFile, Exclusion* exclusion,
                          Console& console, LeftOutEntries& leftOut, DirectoryTree& tree);

}  // namespace host
