#pragma once

#include <CAEProject.h>

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "DirectoryTree.h"
#include "ValueChange.h"

/// Common to all objects that are created from scanned files and directories.
namespace host {

/// What the metadata say about a study or the project.
struct Totals {
    std::size_t files = 0;
    std::uint64_t bytes = 0;
    std::set<std::string> solvers;
    /// There are files that cannot be read now.
    bool isUncertain = false;

    void Add(const ScannedFile& file);
};

/// Sets the metadata of a study or the project. An empty description is left out, and so is everything else
/// if the totals are uncertain.
void SetTotals(CAEObject& object, const std::string& description, const Totals& totals);

/// Sets the metadata of the iteration of a deck. What the deck does not say is left out.
void SetModelMetadata(CAEObject& iteration, const ScannedFile& deck);

/// Gives an object the metadata that a new reading of its directory has for it, and leaves its other entries.
/// Solvers, counts and materials that the directory does not have any more become empty, because entries
/// cannot be removed. A description and units stay then, because a user may have given them. Returns what
/// was changed.
ValueChanges UpdateMetadata(CAEObject& object, const CAEObject& read);

/// Gives an object what a new reading has counted of its files, and nothing else.
void UpdateTotals(CAEObject& object, const CAEObject& read);

/// Gives an object the date and the user of its file or directory.
void SetOrigin(CAEObject& object, const ScannedFile& file);
void SetOrigin(CAEObject& object, const ScannedDirectory& directory);

/// Creates a file in the project, attached to nothing, and returns its identifier.
int AddFile(CAEProject& project, const ScannedDirectory& directory, const ScannedFile& file,
            _tagFileType type);

}  // namespace host
