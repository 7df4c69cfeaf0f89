#pragma once

#include <libjson.h>

#include <string>
#include <string_view>
#include <vector>

#include "host/system/Console.h"

/// What commands write: to files that the command line names, - being the standard output.
namespace host {

/// The node as compact text, with the line feed that ends a text file.
std::string CompactText(const JSONNode& document);

/// Whether a document may take the place of what lies under the name. Not that of a file that the command
/// reads or works on (`inputs`), of a file without a document in a directory that it reads, or of a database:
/// then the message says so.
bool IsReplaceable(const std::string& file, const std::vector<std::string>& inputs, Console& console);

/// Writes the text to the file, all of it or nothing. False, after a message, where that fails; a reader of
/// the standard output that has gone away has what it wanted.
bool WriteOutput(const std::string& file, std::string_view text, Console& console);

/// The same for the standard output alone.
bool WriteToStandardOutput(std::string_view text, Console& console);

}  // namespace host
