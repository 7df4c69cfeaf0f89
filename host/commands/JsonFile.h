#pragma once

#include <libjson.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/system/Console.h"

/// JSON from and to files that the command line names, - being a standard stream.
namespace host {

/// A name from the command line as messages give it: quoted, or "the standard input" for -.
std::string InputName(const std::string& file);

/// The document in the file. Nothing, after a message with the file, the line, the column and the reason,
/// where it cannot be read or is no JSON.
std::optional<JSONNode> ReadJson(const std::string& file, Console& console);

/// Whether the document can be imported: an object node with a "type". Where it is not, the message says why,
/// because an import would pass over it in silence.
bool IsImportable(const JSONNode& document, const std::string& file, Console& console);

/// The node as compact text, with the line feed that ends a text file.
std::string CompactText(const JSONNode& document);

/// Whether a document may take the place of what lies under the name. Not that of a file that the command
/// reads or works on (`inputs`), of a file without a document in a directory that it reads, or of a database:
/// then the message says so.
bool IsReplaceable(const std::string& file, const std::vector<std::string>& inputs, Console& console);

/// Writes the text to the file, all of it or nothing. False, after a message, where that fails; a reader of
/// the standard output that has gone away has what it wanted.
bool WriteOutput(const std::string& file, std::string_view text, Console& console);

}  // namespace host
