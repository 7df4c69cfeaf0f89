#pragma once

#include <CAEProject.h>
#include <libjson.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/system/Console.h"
#include "host/system/OutputFile.h"

/// Writing to files that the command line names; - is the standard output.
namespace host {

/// The node as compact text that ends with a line feed.
std::string CompactText(const JSONNode& document);

/// Whether the file may be replaced by a command's output. A file that the command works on (`inputs`), a
/// database, and a file in a directory that it reads may not, unless that one is empty or an output of this
/// program: then a message says why.
bool IsReplaceable(const std::string& file, const std::vector<std::string>& inputs, Console& console);

/// Whether the file is not one of the files of the project, or it is empty or an output of this program. If
/// it may not be replaced, a message says why.
bool IsReplaceableIn(CAEProject& project, const std::string& file, Console& console);

/// The path of the file that a command writes to, if it exists.
std::optional<std::filesystem::path> PathOfOutput(const std::string& file);

/// Writes the whole text to the file, or nothing. If that fails, it says why and returns false. A reader of
/// the standard output that stops reading is not a failure.
bool WriteOutput(const std::string& file, std::string_view text, Console& console);
/// The same for a text that comes in pieces. What `write` throws reaches the caller, and then nothing is
/// written.
bool WriteOutput(const std::string& file, const WriteText& write, Console& console);

/// The same for the standard output.
bool WriteToStandardOutput(std::string_view text, Console& console);

}  // namespace host
