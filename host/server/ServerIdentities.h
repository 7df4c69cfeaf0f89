#pragma once

#include <string>
#include <vector>

#include "ServerDocument.h"
#include "StoreReport.h"
#include "host/system/Database.h"

namespace host {

/// Gives every node of a document its object and its key: the object that the database has for it (Server.h
/// says which one that is), or a new one, which is counted in the report. `project` is the name that
/// identifiers belong to. The caller has begun a transaction.
void IdentifyNodes(Database& database, const std::string& project, std::vector<StoredNode>& nodes,
                   StoreReport& report);

}  // namespace host
