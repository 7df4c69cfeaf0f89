#pragma once

#include <libjson.h>

#include <optional>
#include <string>

#include "host/system/Console.h"

/// Reading documents and answers from files that the command line names.
namespace host {

/// A file name from the command line as messages show it: quoted, or "the standard input" for -.
std::string InputName(const std::string& file);

/// The document in the file. Returns nothing if the file cannot be read or is not JSON, after a message with
/// the file, the line, the column and the reason.
std::optional<JSONNode> ReadJson(const std::string& file, Console& console);

/// Whether the document can be imported: an object with a "type". If not, a message says why, because an
/// import would do nothing without a word.
bool IsImportable(const JSONNode& document, const std::string& file, Console& console);

}  // namespace host
