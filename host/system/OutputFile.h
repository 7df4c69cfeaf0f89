#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace host {

/// Writes the whole text to a path, or nothing.
///
/// A file is written without a name, or under a temporary one in the same folder, and then replaces the old
/// one, so that the old or the new one is there at any time. It keeps its permissions, and its owner where
/// that can be set; before it is complete it never has wider ones. A signal removes it, and so does the
/// system, or the next run that writes in the folder, if the program is killed. If the path is a link, its
/// target is written. A write-protected file is not changed, which is an error, and so is a directory.
/// Devices and pipes (`/dev/null`, `/dev/stdout`, `NUL`) are written to directly.
std::error_code WriteOutputFile(const std::filesystem::path& target, std::string_view text);

}  // namespace host
