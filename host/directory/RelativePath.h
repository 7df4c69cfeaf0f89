#pragma once

#include <OuString.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// Paths of files relative to the directory of their project, by which they are recognised.
namespace host {

/// The path relative to the directory, with slashes between names; nothing if it does not lead into the
/// directory. Both are texts of the object model, written as on Windows or as on Linux.
std::optional<std::string> RelativePath(const OuString& path, const OuString& directory);

/// A text that two relative paths, or two names, share if they mean the same file: on Windows letter case
/// does not count.
std::string PathKey(std::string_view relative);

/// A relative path, or a name in one, as the file system has it.
std::filesystem::path PathOfRelative(std::string_view relative);

/// The last component of a relative path, and the path without it.
std::string_view NameIn(std::string_view relative);
std::string_view DirectoryIn(std::string_view relative);

}  // namespace host
