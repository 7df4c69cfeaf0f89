#pragma once

#include <string>
#include <vector>

#include "FileFacts.h"
#include "ObjectWalk.h"
#include "host/system/JsonText.h"

namespace host {

/// Writes what programs are told of an object: kind, name, path, identifier, key, metadata and the files that
/// are to be shown, as docs/objects.schema.json says.
void WriteObject(const WalkedObject& walked, FilesShown files, JsonText& json);

/// The list of objects that WriteObject wrote, each on a line of its own.
std::string ObjectListJson(const std::vector<std::string>& objects);

}  // namespace host
