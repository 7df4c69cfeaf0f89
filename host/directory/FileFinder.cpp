#include "FileFinder.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "DescriptionFile.h"
#include "RelativePath.h"
#include "host/system/FileSystem.h"
#include "host/system/InputFile.h"
#include "host/system/Text.h"

namespace host {
namespace {

using std::filesystem::path;

/// Whether the name has a backslash. On Linux it may be a part of a name, but paths in documents and project
/// files are parted at both slashes on every platform, because they travel between them.
bool HasSeparator(const path& name) {
    return name.native().find('\\') != path::string_type::npos;
}

/// The file that the command works on, by whatever name it is found.
class OwnFile {
public:
    explicit OwnFile(const std::optional<path>& file) : file_(file) {
        std::error_code error;
        size_ = file_ ? std::filesystem::file_size(*file_, error) : 0;
        ThrowIfOutOfMemory(error);
    }

    /// The file may have another name too, by a link. It must not be opened under any: closing it would end
    /// the locks that this program holds on it.
    bool Is(const path& file, std::uint64_t size) const {
        if (!file_ || (size != size_ &&
                       ToOuString(file.filename()).CompareNoCase(ToOuString(file_->filename())) != 0)) {
            return false;
        }
        std::error_code error;
        const bool isSame = std::filesystem::equivalent(file, *file_, error);
        ThrowIfOutOfMemory(error);
        return isSame && !error;
    }

private:
    const std::optional<path>& file_;
    std::uintmax_t size_ = 0;
};

/// What the user excludes, by options and by files .korvaneignore.
class IgnoredEntries {
public:
    IgnoredEntries(Exclusion* exclusion, LeftOutEntries& leftOut, const DirectoryTree& tree)
        : exclusion_(exclusion), leftOut_(leftOut), tree_(tree) {}

    void ReadFile(std::size_t directory, const Listing& listing);
    bool Has(std::size_t directory, const Entry& entry) const;

private:
    /// The path from the root, with slashes.
    std::string RelativeToRoot(const path& whole) const {
        return RelativePath(ToOuString(whole), ToOuString(tree_.directories.front().path)).value_or("");
    }

    Exclusion* exclusion_;
    LeftOutEntries& leftOut_;
    const DirectoryTree& tree_;
};

void IgnoredEntries::ReadFile(std::size_t directory, const Listing& listing) {
    const auto found = std::ranges::find_if(listing.entries, [](const Entry& entry) {
        return entry.type == EntryType::File && entry.name == kIgnoreFile;
    });
    if (found == listing.entries.end() || exclusion_ == nullptr) {
        return;
    }
    constexpr std::uint64_t kMost = std::uint64_t{1} << 20U;
    const path whole = tree_.directories[directory].path / found->name;
    std::string text;
    const std::error_code error = ReadInputFile(whole, text, {kMost, kMost});
    ThrowIfOutOfMemory(error);
    if (error) {
        leftOut_.AddUnreadable(whole, IsOverLimit(error) ? "it is longer than a megabyte" : error.message());
        return;
    }
    exclusion_->AddFile(RelativeToRoot(tree_.directories[directory].path), text);
}

bool IgnoredEntries::Has(std::size_t directory, const Entry& entry) const {
    return exclusion_ != nullptr && !exclusion_->IsEmpty() &&
           exclusion_->LeavesOut(RelativeToRoot(tree_.directories[directory].path / entry.name),
                                 entry.type == EntryType::Directory);
}

class Finder {
public:
    Finder(const std::optional<path>& ownFile, Exclusion* exclusion, Console& console,
           LeftOutEntries& leftOut, DirectoryTree& tree)
        : ownFile_(ownFile),
          ignored_(exclusion, leftOut, tree),
          console_(console),
          leftOut_(leftOut),
          tree_(tree) {}

    std::error_code Find(const path& root);

private:
    void AddEntries(std::size_t directory, Listing listing);
    void AddEntry(std::size_t directory, Entry entry, std::vector<std::size_t>& directories,
                  std::vector<ScannedFile>& files);
    bool FollowLink(const path& link, Entry& entry);

    OwnFile ownFile_;
    IgnoredEntries ignored_;
    Console& console_;
    LeftOutEntries& leftOut_;
    DirectoryTree& tree_;
    std::uint64_t fileCount_ = 0;
};

/// Replaces a link by its target. Returns false if the link is left out.
bool Finder::FollowLink(const path& link, Entry& entry) {
    std::error_code error;
    const path target = ResolvePath(link, error);
    if (error) {
        leftOut_.AddUnreadable(link, "it is a broken link (" + error.message() + ")");
        return false;
    }
    if (!IsBelow(tree_.directories.front().path, target)) {
        leftOut_.AddLinkOut(link, target);
        return false;
    }
    Entry found;
    if ((error = InspectTarget(target, found))) {
        leftOut_.AddUnreadable(link, error.message());
        return false;
    }
    if (found.type == EntryType::Directory) {
        leftOut_.AddMeant(link, "it is a link to a directory of the project, which is read in its own place");
        return false;
    }
    found.name = entry.name;
    entry = std::move(found);
    return true;
}

void Finder::AddEntry(std::size_t directory, Entry entry, std::vector<std::size_t>& directories,
                      std::vector<ScannedFile>& files) {
    const path whole = tree_.directories[directory].path / entry.name;
    const bool isLink = entry.type == EntryType::Link;
    if (isLink && !FollowLink(whole, entry)) {
        return;
    }
    if (entry.type == EntryType::Directory) {
        directories.push_back(tree_.directories.size());
        ScannedDirectory& added = tree_.directories.emplace_back();
        added.name = std::move(entry.name);
        added.path = whole;
        added.modified = entry.modified;
        added.owner = entry.owner;
    } else if (entry.type == EntryType::Other) {
        leftOut_.AddUnreadable(whole, "it is neither a file nor a directory");
    } else if (entry.name == kDescriptionFile) {
        tree_.directories[directory].hasDescription = true;
    } else if (!ownFile_.Is(whole, entry.size)) {
        ScannedFile& added = files.emplace_back();
        added.name = std::move(entry.name);
        added.size = entry.size;
        added.modified = entry.modified;
        added.owner = entry.owner;
        added.isLink = isLink;
        ++fileCount_;
    } else {
        leftOut_.AddMeant(whole, "the command works on it");
    }
}

void Finder::AddEntries(std::size_t directory, Listing listing) {
    const auto byName = [](const auto& left, const auto& right) {
        return CompareNames(left.name, right.name) < 0;
    };
    std::ranges::sort(listing.unreadable, byName);
    for (const UnreadableEntry& entry : listing.unreadable) {
        leftOut_.AddUnreadable(tree_.directories[directory].path / entry.name, entry.reason.message());
    }
    std::ranges::sort(listing.entries, byName);
    // Adding a directory may move the list of directories in memory, so these two are stored at the end.
    std::vector<std::size_t> directories;
    std::vector<ScannedFile> files;
    ignored_.ReadFile(directory, listing);
    for (Entry& entry : listing.entries) {
        if (entry.isHidden) {
            leftOut_.AddMeant(tree_.directories[directory].path / entry.name, "it is hidden");
        } else if (ignored_.Has(directory, entry)) {
            leftOut_.AddMeant(tree_.directories[directory].path / entry.name, "a pattern says so");
        } else if (HasSeparator(entry.name)) {
            leftOut_.AddUnwritable(tree_.directories[directory].path / entry.name);
        } else {
            AddEntry(directory, std::move(entry), directories, files);
        }
    }
    tree_.directories[directory].directories = std::move(directories);
    tree_.directories[directory].files = std::move(files);
}

std::error_code Finder::Find(const path& root) {
    Entry rootEntry;
    if (const std::error_code error = InspectTarget(root, rootEntry)) {
        return error;
    }
    ScannedDirectory& first = tree_.directories.emplace_back();
    first.path = root;
    first.name = root.filename().empty() ? root : root.filename();
    first.modified = rootEntry.modified;
    first.owner = rootEntry.owner;
    for (std::size_t index = 0; index < tree_.directories.size(); ++index) {
        Listing listing;
        if (const std::error_code error = ListDirectory(tree_.directories[index].path, listing)) {
            if (index == 0) {
                return error;
            }
            leftOut_.AddUnreadable(tree_.directories[index].path, error.message());
            continue;
        }
        AddEntries(index, std::move(listing));
        console_.ShowProgress("Looking for files", fileCount_, 0);
    }
    return {};
}

}  // namespace

std::error_code FindFiles(const path& root, const std::optional<path>& ownFile, Exclusion* exclusion,
                          Console& console, LeftOutEntries& leftOut, DirectoryTree& tree) {
    return Finder(ownFile, exclusion, console, leftOut, tree).Find(root);
}

}  // namespace host
