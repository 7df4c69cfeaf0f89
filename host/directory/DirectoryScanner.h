#pragma once

#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

#include "DirectoryTree.h"
#include "KnownFiles.h"
#include "Selection.h"
#include "host/system/Console.h"

namespace host {

struct ScanOptions {
    /// A file that is not read: the one that the document is written to.
    std::optional<std::filesystem::path> leftOut;
    /// What an earlier reading found, for entries that cannot be read now; may be null.
    const KnownFiles* known = nullptr;
    /// Directories with studies, by full paths, whose files alone are wanted; empty for all.
    std::vector<std::filesystem::path> studies = {};
    /// What else is left out. The files .korvaneignore are added to it.
    Exclusion* exclusion = nullptr;
    /// One of `studies` that has no decks, if the scan ends with an error because of it.
    std::filesystem::path* withoutDecks = nullptr;
};

/// Reads everything below a root, which must be a full path without links, and settles the kinds of the
/// files.
///
/// What `options.exclusion` and files .korvaneignore leave out is left out without a word.
///
/// Hidden entries are left out, and so are databases of this program, whatever their names are, with the
/// journals beside them. A link to a file below the root counts as a file of the directory that has the link,
/// because a deck includes it from there. A link to a directory below the root is not followed: its target is
/// read in its own place. Links out of the root are left out, and the console says so. Entries that cannot be
/// read, those that are neither files nor directories nor links, and on Linux those that have a backslash in
/// their names, are reported on the console, counted and left out, unless they are known. The depth of
/// nesting needs no stack. Returns an error for the root itself only.
std::error_code ScanDirectory(const std::filesystem::path& root, const ScanOptions& options, Console& console,
                              DirectoryTree& tree);

}  // namespace host
