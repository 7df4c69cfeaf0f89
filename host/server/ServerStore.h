#pragma once

#include <libjson.h>

#include <string>

#include "StoreReport.h"
#include "host/system/Console.h"
#include "host/system/Database.h"

namespace host {

/// Puts the document into the database and gives the answer, as Server::Store does. The caller has begun a
/// transaction.
JSONNode StoreDocument(Database& database, const JSONNode& document, const std::string& project,
                       StoreReport& report, Console& console);

}  // namespace host
