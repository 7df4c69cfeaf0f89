#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

namespace host {

/// Takes the next piece of a text.
using WritePiece = std::function<std::error_code(std::string_view)>;
/// Writes a text, piece by piece, and ends with the error of a piece. It may be called more than once, and
/// writes the same text each time.
using WriteText = std::function<std::error_code(const WritePiece&)>;

/// Writes the whole text to a path, or nothing.
///
/// A file is written without a name, or under a temporary one in the same folder, and then replaces the old
/// one, so that the old or the new one is there at any time. It keeps its permissions, and its owner where
/// that can be set; before it is complete it never has wider ones. A signal removes it, and so does the
/// system, or the next run that writes in the folder, if the program is killed. If the path is a link, its
/// target is written. A write-protected file is not changed, which is an error, and so is a directory.
/// Devices and pipes (`/dev/null`, `/dev/stdout`, `NUL`) are written to directly.
///
/// What `write` throws reaches the caller, and then nothing is written. The text is in memory as a whole only
/// for devices and pipes.
std::error_code WriteOutputFile(const std::filesystem::path& target, const WriteText& write);
std::error_code WriteOutputFile(const std::filesystem::path& target, std::string_view text);

/// The whole text, or the error of `write`.
std::error_code CollectText(const WriteText& write, std::string& text);

}  // namespace host
