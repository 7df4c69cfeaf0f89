#pragma once

#include <filesystem>
#include <optional>
#include <system_error>

#include "DirectoryTree.h"
#include "host/system/Console.h"

namespace host {

struct ScanOptions {
    /// A file that is left out: the one that the document is written to.
    std::optional<std::filesystem::path> leftOut;
};

/// Reads everything below a root, which must be a whole path without links in it, and settles the kinds of
/// files.
///
/// Hidden entries are left out. A link to a file below the root is a file of the directory that it stands in,
/// because a deck draws it in from there. A link to a directory below the root is not entered: what it leads
/// to stands in its own place already. Links that lead out of the root are left out, which is said on the
/// console. An entry that cannot be read, and one that is neither file nor directory nor link, is named
/// there, counted and left out. No walk needs stack in proportion to the nesting. Returns an error only for
/// the root itself.
std::error_code ScanDirectory(const std::filesystem::path& root, const ScanOptions& options, Console& console,
                              DirectoryTree& tree);

}  // namespace host
