#pragma once

#include <CAEProject.h>

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

#include "DirectoryTree.h"

/// Common to all objects that are created from scanned files and directories.
namespace host {

/// What the metadata say about a study or the project.
struct Totals {
    std::size_t files = 0;
    std::uint64_t bytes = 0;
    std::set<std::string> solvers;

    void Add(const ScannedFile& file);
};

/// Sets the metadata of a study or the project. An empty description is left out.
void SetTotals(CAEObject& object, const std::string& description, const Totals& totals);

/// Gives an object the date and the user of its file or directory.
void SetOrigin(CAEObject& object, const ScannedFile& file);
void SetOrigin(CAEObject& object, const ScannedDirectory& directory);

/// Creates a file in the project, attached to nothing, and returns its identifier.
int AddFile(CAEProject& project, const ScannedDirectory& directory, const ScannedFile& file,
            _tagFileType type);

}  // namespace host
