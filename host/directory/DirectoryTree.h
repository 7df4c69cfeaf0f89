#pragma once

#include <CAETypes.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "FileKinds.h"

namespace host {

/// One file below the root, with its kind settled.
struct ScannedFile {
    std::filesystem::path name;
    std::uint64_t size = 0;
    std::int64_t modified = 0;
    std::optional<std::uint32_t> owner;
    /// The file lies elsewhere below the root and has its bytes counted there.
    bool isLink = false;
    _tagFileType type = CAE_FILE_OTHER;
    _tagFileFormat format = CAE_FORMAT_UNKNOWN;
    Solver solver = Solver::None;
};

/// One directory below the root, or the root itself.
struct ScannedDirectory {
    std::filesystem::path name;
    /// Its whole path, the root's in front.
    std::filesystem::path path;
    std::int64_t modified = 0;
    std::optional<std::uint32_t> owner;
    /// Ordered by name, as the files are.
    std::vector<std::size_t> directories;
    std::vector<ScannedFile> files;
    /// What the directory itself and everything under it holds.
    bool hasDecks = false;
    bool hasDecksInTree = false;
    bool hasFilesInTree = false;
};

/// What lies below a root directory; the root is the first, and every directory comes behind the one that it
/// is in.
struct DirectoryTree {
    std::vector<ScannedDirectory> directories;
    /// Entries that could not be read, each named on the console.
    std::size_t unreadableCount = 0;
};

}  // namespace host
