#pragma once

#include <filesystem>
#include <vector>

namespace host {

/// The directories below which files are read whose paths come from a project file or a document. Such a path
/// can lead to any file of the user's, and what is read can get into a page that is passed on.
class ReadableDirectories {
public:
    /// A directory that is not there adds nothing.
    void Add(const std::filesystem::path& directory);

    /// Whether a full path without links is in one of the directories.
    bool Has(const std::filesystem::path& resolved) const;

    struct Found {
        /// The path leads out of all of them. Whether anything is there is not told.
        bool isOutside = false;
        /// The full path without links; empty if it leads out, or to nothing.
        std::filesystem::path resolved = {};
    };
    /// Follows the path, with the links and `..` in it.
    Found Find(const std::filesystem::path& file) const;

private:
    /// Without links.
    std::vector<std::filesystem::path> resolved_;
    /// As they were named.
    std::vector<std::filesystem::path> named_;
};

}  // namespace host
