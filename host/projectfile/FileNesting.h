#pragma once

#include <CAEProject.h>

namespace host {

/// Sees that the document of every object comes to an end. A file can have files and objects of its own, so
/// it could be attached below itself, or so many times below files that are below files that no disk holds
/// the document. The program makes no such projects, but a project file from elsewhere may hold one.
///
/// Throws DatabaseError and names an object whose document has no end, or more than a hundred million nodes.
/// The depth of nesting needs no stack.
void CheckFileNesting(CAEProject& project);

}  // namespace host
