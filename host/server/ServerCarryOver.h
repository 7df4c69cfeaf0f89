#pragma once

#include "host/system/Database.h"

namespace host {

/// Gives a database of format 1 or 2, which has been checked, the tables of today's format. Objects keep
/// their keys, and nodes their places; the path of a node follows from what the old tables have: the object
/// of the node above, the kind, the name, and the order. Of a node that is below no other, the old tables do
/// not know whether it is a root or was detached (kUnknownPlace). Throws DatabaseError if the members of a
/// node cannot be read. The caller has begun a transaction, and writes the checksum.
void CarryOver(Database& database);

}  // namespace host
