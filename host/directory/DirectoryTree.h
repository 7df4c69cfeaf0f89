#pragma once

#include <CAETypes.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "FileKind.h"
#include "host/model/SolverModel.h"

namespace host {

/// A file below the root.
struct ScannedFile {
    std::filesystem::path name;
    std::uint64_t size = 0;
    std::int64_t modified = 0;
    std::optional<std::uint32_t> owner;
    /// The file is elsewhere below the root, and its bytes are counted there.
    bool isLink = false;
    /// It cannot be read now, and is as an earlier reading found it; size, time and owner are unknown.
    bool isRemembered = false;
    _tagFileType type = CAE_FILE_OTHER;
    _tagFileFormat format = CAE_FORMAT_UNKNOWN;
    Solver solver = Solver::None;
    /// What a deck says about its model; null for other files, and for decks whose syntax is not read.
    std::shared_ptr<const SolverModel> model = nullptr;
};

/// A directory below the root, or the root itself.
struct ScannedDirectory {
    std::filesystem::path name;
    /// Its path, beginning with that of the root.
    std::filesystem::path path;
    std::int64_t modified = 0;
    std::optional<std::uint32_t> owner;
    /// In the order of their names, like the files.
    std::vector<std::size_t> directories;
    std::vector<ScannedFile> files;
    /// It has a korvane.toml, which is not among the files.
    bool hasDescription = false;
    /// What the directory has itself, and what it has at any depth.
    bool hasDecks = false;
    bool hasDecksInTree = false;
    bool hasFilesInTree = false;
};

/// Everything below a root directory. The root comes first, and every directory comes after the one that it
/// is in.
struct DirectoryTree {
    std::vector<ScannedDirectory> directories;
    /// Entries that could not be read or named in a document; the console has named each.
    std::size_t unreadableCount = 0;
    /// The paths of those that could not be read, beginning with that of the root.
    std::vector<std::filesystem::path> unreadable;
};

}  // namespace host
