#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "DirectoryTree.h"
#include "InputKinds.h"
#include "LeftOutEntries.h"
#include "host/system/Console.h"

namespace host {

/// Reads the beginnings of the files of the tree, and with them types, formats and solvers. What this program
/// wrote goes from the tree, with the journals beside databases, and so do files that cannot be read.
/// `ownFile` is the database that the command works on, which is not in the tree. Returns the files that may
/// be solver input.
std::vector<InputCandidate> ReadFileContents(const std::optional<std::filesystem::path>& ownFile,
                                             Console& console, LeftOutEntries& leftOut, DirectoryTree& tree);

}  // namespace host
