#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace host {

/// Writes the whole text to a path, or nothing.
///
/// A file is written under a temporary name in the same folder and then replaces the old one, so that the old
/// or the new one is there at any time. It keeps its permissions, and its owner where that can be set. If the
/// path is a link, its target is written. A write-protected file is not changed, which is an error, and so is
/// a directory. Devices and pipes (`/dev/null`, `/dev/stdout`, `NUL`) are written to directly.
std::error_code WriteOutputFile(const std::filesystem::path& target, std::string_view text);

}  // namespace host
