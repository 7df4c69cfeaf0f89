#pragma once

#include <CAEProject.h>

#include <cstddef>
#include <unordered_set>

#include "DirectoryTree.h"
#include "host/system/Console.h"

namespace host {

/// What the descriptions in a directory did.
struct Described {
    /// Objects that got their names from a description.
    std::unordered_set<const CAEObject*> named;
    /// Entries that were left out; the console has named each.
    std::size_t problems = 0;
};

/// Gives an object what the description in its directory says, and if it is a study, its iterations and parts
/// too. What it says replaces what the reading has found. A directory without a description changes nothing.
/// An assembly folder keeps the name of its directory.
void ApplyDescription(CAEObject& object, const ScannedDirectory& directory, Console& console,
                      Described& described);

/// Names a description that belongs to no object.
void RefuseDescription(const ScannedDirectory& directory, Console& console, Described& described);

}  // namespace host
