#pragma once

#include <string>
#include <vector>

#include "ServerDocument.h"
#include "StoreReport.h"
#include "host/system/Database.h"
#include "host/system/RowHash.h"

namespace host {

/// Gives every node of a document its object and its key: an object of the database (Server.h says which), or
/// a new one, which the report counts. New rows are added to the checksum. `project` is the name of the
/// project that the identifiers belong to. The caller has begun a transaction.
void IdentifyNodes(Database& database, const std::string& project, std::vector<StoredNode>& nodes,
                   RowSum& sum, StoreReport& report);

}  // namespace host
