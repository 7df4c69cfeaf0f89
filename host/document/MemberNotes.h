#pragma once

#include <libjson.h>

#include "host/system/Notes.h"

namespace host {

enum class NodeKind { Object, FileRecord };

/// Notes what an import does not take from the members of one node, what is below "children" and "files" of
/// an object aside: members that are not recognised or have no effect, values of another kind than expected,
/// and members that come twice.
void NoteMembers(const JSONNode& node, NodeKind kind, Notes& notes);

}  // namespace host
