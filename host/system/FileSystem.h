#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

/// The file system: the entries of directories, and the beginnings and ends of files. Nothing here throws
/// except std::bad_alloc. Links are not followed unless a function says so.
namespace host {

enum class EntryType { File, Directory, Link, Other };

/// What the file system says about an entry.
struct Entry {
    /// The last component of its path.
    std::filesystem::path name;
    EntryType type = EntryType::Other;
    /// Its name begins with a dot, or the file system marks it as hidden.
    bool isHidden = false;
    /// The size of a file in bytes.
    std::uint64_t size = 0;
    /// The last change, in seconds since 1970.
    std::int64_t modified = 0;
    /// The number of the owner, if the file system has one.
    std::optional<std::uint32_t> owner;
};

/// An entry that the file system says nothing about.
struct UnreadableEntry {
    std::filesystem::path name;
    std::error_code reason;
};

struct Listing {
    std::vector<Entry> entries;
    std::vector<UnreadableEntry> unreadable;
};

/// Lists a directory without "." and "..", in no particular order. An error means that it was not read to its
/// end; the listing has what was read before.
std::error_code ListDirectory(const std::filesystem::path& directory, Listing& listing);

/// Fills in the entry that a path leads to. Links are followed.
std::error_code InspectTarget(const std::filesystem::path& path, Entry& entry);

/// Throws std::bad_alloc if the error is that there was no memory: nothing else may be concluded from it.
void ThrowIfOutOfMemory(const std::error_code& error);

/// The full path, without links, of what a path leads to.
std::filesystem::path ResolvePath(const std::filesystem::path& path, std::error_code& error);

/// Whether a path is the root or leads into it. Both must be full paths without links.
bool IsBelow(const std::filesystem::path& root, const std::filesystem::path& candidate);

/// The folder of a file that may not exist yet, as a full path without links where it exists.
std::filesystem::path FolderOf(const std::filesystem::path& file);

/// The file that a link to a missing file leads to, through further links; the path itself if it is not a
/// link.
std::filesystem::path FollowToNewFile(std::filesystem::path path);

/// The size of the machine's memory in bytes.
std::uint64_t SizeOfMemory();

/// Whether the standard input is a device, which may have no end.
bool IsInputDevice();

/// Whether two paths to files that do not exist yet lead to the same file. Case counts only where the file
/// system distinguishes names by it.
bool WouldBeSameFile(const std::filesystem::path& left, const std::filesystem::path& right);

/// The size of the longest name that a file in the folder can have, in characters of its paths.
std::size_t LongestName(const std::filesystem::path& folder);

/// Gives a file another name in the same folder. If the name exists, nothing is changed, and the error is
/// std::errc::file_exists.
std::error_code MoveToNewName(const std::filesystem::path& from, const std::filesystem::path& to);

/// The name of the user with the number, or the number itself if the user has no name. Each number is looked
/// up once.
std::string OwnerName(std::uint32_t owner);

/// The path of the file that the standard output is written to; nothing if it is not a file.
std::optional<std::filesystem::path> PathOfStandardOutput();

/// The beginning of a file and, if that is not all of it, the end.
struct FileSample {
    std::string head;
    /// Empty if the head is the whole file. It may begin in the middle of a line or a character.
    std::string tail;
};

/// Reads up to `headSize` bytes from the beginning and, of a longer file, up to `tailSize` bytes from the
/// end.
std::error_code ReadSample(const std::filesystem::path& file, std::size_t headSize, std::size_t tailSize,
                           FileSample& sample);

}  // namespace host
