#pragma once

#include <CAEProject.h>

#include "Selection.h"

namespace host {

/// Leaves of a project what a reading of its directory with a selection has too, so that the two can be
/// compared: what the exclusion of the reading leaves out is removed, files by their path in the directory,
/// and objects that have no other files at any depth. What counts the files of an object that has lost some
/// is then as in the reading. Nothing is saved.
void KeepSelectedPart(CAEProject& project, CAEProject& reading, const Exclusion& exclusion);

}  // namespace host
