#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "DirectoryTree.h"
#include "host/system/Console.h"

namespace host {

/// Names the entries of a directory that a scan leaves out, each with the reason. Those that a user has to
/// know of are named whatever the console shows, and counted in the tree if they are missing from it.
class LeftOutEntries {
public:
    LeftOutEntries(Console& console, DirectoryTree& tree) : console_(console), tree_(tree) {}

    /// An entry that cannot be read: the tree counts it and keeps its path.
    void AddUnreadable(const std::filesystem::path& entry, const std::string& reason);
    /// An entry whose name a document would read as a path: the tree counts it.
    void AddUnwritable(const std::filesystem::path& entry);
    /// A link that leads out of the project.
    void AddLinkOut(const std::filesystem::path& link, const std::filesystem::path& target);
    /// An entry that is meant to be left out, which only a detailed console names.
    void AddMeant(const std::filesystem::path& entry, std::string_view reason);

private:
    Console& console_;
    DirectoryTree& tree_;
};

}  // namespace host
