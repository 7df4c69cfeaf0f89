#pragma once

#include <libjson.h>

#include <optional>
#include <string>

#include "host/system/Console.h"

/// Documents and answers from files that the command line names.
namespace host {

/// A name from the command line as messages give it: quoted, or "the standard input" for -.
std::string InputName(const std::string& file);

/// The document in the file. Nothing, after a message with the file, the line, the column and the reason,
/// where it cannot be read or is no JSON.
std::optional<JSONNode> ReadJson(const std::string& file, Console& console);

/// Whether the document can be imported: an object node with a "type". Where it is not, the message says why,
/// because an import would pass over it in silence.
bool IsImportable(const JSONNode& document, const std::string& file, Console& console);

}  // namespace host
