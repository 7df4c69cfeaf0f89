#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "DirectoryTree.h"
#include "IgnoreRules.h"

namespace host {

/// What a user wants to have read of a directory.
struct Selection {
    /// Directories with studies; empty for all. Their paths are relative to the directory that is read, or to
    /// the working directory.
    std::vector<std::string> studies;
    /// Patterns as in a .korvaneignore in the root, which count more than those in files.
    std::vector<std::string> excluded;

    bool IsEmpty() const { return studies.empty() && excluded.empty(); }
};

/// What a reading leaves out because a user says so. Paths are relative to the root, with slashes.
class Exclusion {
public:
    Exclusion() = default;
    explicit Exclusion(const std::vector<std::string>& patterns);

    /// Adds the .korvaneignore of a directory, which is empty for the root.
    void AddFile(const std::string& directory, std::string_view text);
    /// From now on everything is left out that is not in one of these directories, and not directly in one of
    /// those.
    void KeepOnly(std::vector<std::string> whole, std::unordered_set<std::string> single);

    /// Whether any rule leaves anything out.
    bool IsEmpty() const { return patterns_.IsEmpty() && files_.empty() && !isNarrowed_; }
    /// Whether the rules leave out an entry of a directory that they do not leave out.
    bool LeavesOut(std::string_view entry, bool isDirectory) const;
    /// Whether a file is left out, or a directory that it is in.
    bool LeavesOutFile(std::string_view file) const;

private:
    bool IsKept(std::string_view file) const;

    IgnoreRules patterns_;
    std::map<std::string, IgnoreRules, std::less<>> files_;
    bool isNarrowed_ = false;
    std::vector<std::string> whole_;
    std::unordered_set<std::string> single_;
};

/// Leaves the files of these directories and of all below them in the tree, and no others but those of
/// studies that these directories are in. Returns the first directory without decks at any depth, or an empty
/// path. The directories must be full paths; `exclusion` then leaves out the same.
std::filesystem::path KeepStudies(const std::vector<std::filesystem::path>& studies, DirectoryTree& tree,
                                  Exclusion& exclusion);

}  // namespace host
