#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace host {

/// Writes a whole text to a path, all of it or nothing.
///
/// A file takes the text through a temporary one in the same folder that replaces it at the end, so that it
/// is either the old one or the new one whatever happens; it keeps its permissions, and its owner where that
/// can be set. A link stays, and the file that it leads to is written. A write-protected file stays as it is,
/// which is an error, as is a directory. A device or a pipe (`/dev/null`, `/dev/stdout`, `NUL`) is written to
/// directly.
std::error_code WriteOutputFile(const std::filesystem::path& target, std::string_view text);

}  // namespace host
