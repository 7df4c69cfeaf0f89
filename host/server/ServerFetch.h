#pragma once

#include <libjson.h>

#include <string>

#include "host/system/Console.h"
#include "host/system/Database.h"

namespace host {

/// Writes the object with the key as a document; see Server::Fetch.
bool FetchDocument(Database& database, const std::string& key, JSONNode& document, Console& console);

}  // namespace host
