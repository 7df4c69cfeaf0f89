#pragma once

#include <libjson.h>

#include "NodeWalker.h"
#include "host/system/Notes.h"

namespace host {

/// Notes what an import does not take from the members of one node, what is below "children" and "files" of
/// an object aside: members that are not recognised or have no effect, values of another kind than expected,
/// and members that come twice.
void NoteMembers(const JSONNode& node, NodePlace place, Notes& notes);

}  // namespace host
