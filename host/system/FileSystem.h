#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

/// What the host asks of the file system: what lies in a directory and the first and last bytes of files.
/// Nothing here throws but std::bad_alloc; links are never followed unless a function says so.
namespace host {

enum class EntryType { File, Directory, Link, Other };

/// What the file system tells about an entry.
struct Entry {
    /// The last component of its path.
    std::filesystem::path name;
    EntryType type = EntryType::Other;
    /// Named with a dot in front, or marked as hidden where the file system has such a mark.
    bool isHidden = false;
    /// Bytes of a file.
    std::uint64_t size = 0;
    /// The last change, in seconds since 1970.
    std::int64_t modified = 0;
    /// The owner's number, where the file system has one.
    std::optional<std::uint32_t> owner;
};

/// An entry that the file system would not tell about.
struct UnreadableEntry {
    std::filesystem::path name;
    std::error_code reason;
};

struct Listing {
    std::vector<Entry> entries;
    std::vector<UnreadableEntry> unreadable;
};

/// Lists a directory, in no order, without "." and "..". An error means that the directory could not be read
/// to its end; the listing then holds what came before.
std::error_code ListDirectory(const std::filesystem::path& directory, Listing& listing);

/// Fills in the entry that a path leads to; links are followed.
std::error_code InspectTarget(const std::filesystem::path& path, Entry& entry);

/// The whole path, without links, of what a path leads to.
std::filesystem::path ResolvePath(const std::filesystem::path& path, std::error_code& error);

/// Whether files that are not there yet would be one file if both paths were written to. Case counts only
/// where the system tells names apart by it.
bool WouldBeSameFile(const std::filesystem::path& left, const std::filesystem::path& right);

/// Gives a file another name in the same folder. std::errc::file_exists means that the name is taken, and
/// what has it is left alone.
std::error_code MoveToNewName(const std::filesystem::path& from, const std::filesystem::path& to);

/// The name of the user with the number, the number itself where it has no name; asked once for each number.
std::string OwnerName(std::uint32_t owner);

/// The path of the file that the standard output is written to; nothing when it is none.
std::optional<std::filesystem::path> PathOfStandardOutput();

/// The beginning of a file and, where that is not all of it, its end.
struct FileSample {
    std::string head;
    /// Empty when the head is the whole file; begins at any byte.
    std::string tail;
};

/// Reads up to `headSize` bytes from the beginning and, of a longer file, up to `tailSize` bytes from the
/// end.
std::error_code ReadSample(const std::filesystem::path& file, std::size_t headSize, std::size_t tailSize,
                           FileSample& sample);

}  // namespace host
