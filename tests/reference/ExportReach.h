#pragma once

#include <CAEObject.h>

/// Whether an export of the first object comes to the second, or takes too long to find out. Files have
/// children and files of their own: where an object led back to itself, an export would never end.
bool MayReach(CAEObject& from, const CAEObject& to);
