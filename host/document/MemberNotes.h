#pragma once

#include <libjson.h>

#include "NodeWalker.h"
#include "host/system/Notes.h"

namespace host {

/// Notes which members of a node an import does not use: members that it does not know, that have no effect,
/// that have a value of another type than expected, or that occur more than once. The elements of "children"
/// and "files" are not looked at.
void NoteMembers(const JSONNode& node, NodePlace place, Notes& notes);

}  // namespace host
