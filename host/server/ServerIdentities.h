#pragma once

#include <vector>

#include "ServerDocument.h"
#include "ServerProject.h"
#include "StoreReport.h"
#include "host/system/Database.h"
#include "host/system/RowHash.h"

namespace host {

/// Gives every node of a document its ordinal, its object and its key: an object of the database (Server.h
/// says which), or a new one, which the report counts. New rows are added to the checksum. Throws
/// DatabaseError if it is not certain which project the document is of (ServerProject.h). The caller has
/// begun a transaction.
void IdentifyNodes(Database& database, const StoreRequest& request, std::vector<StoredNode>& nodes,
                   RowSum& sum, StoreReport& report);

}  // namespace host
