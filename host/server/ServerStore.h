#pragma once

#include <libjson.h>

#include "ServerProject.h"
#include "StoreReport.h"
#include "host/system/Console.h"
#include "host/system/Database.h"

namespace host {

/// Stores the document and returns the answer; see Server::Store. The caller has begun a transaction.
JSONNode StoreDocument(Database& database, const JSONNode& document, const StoreRequest& request,
                       StoreReport& report, Console& console);

}  // namespace host
