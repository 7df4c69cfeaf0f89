#pragma once

#include <CAEProject.h>

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

#include "DirectoryTree.h"

/// What objects of scanned files and directories have in common.
namespace host {

/// What the metadata tell of a study or of the project.
struct Totals {
    std::size_t files = 0;
    std::uint64_t bytes = 0;
    std::set<std::string> solvers;

    void Add(const ScannedFile& file);
};

/// Sets the metadata of a study or of the project; an empty description is left out.
void SetTotals(CAEObject& object, const std::string& description, const Totals& totals);

/// Gives an object the date and the user of the file or directory that it stands for.
void SetOrigin(CAEObject& object, const ScannedFile& file);
void SetOrigin(CAEObject& object, const ScannedDirectory& directory);

/// Makes a file of the project for the scanned one, attached to nothing, and returns its identifier.
int AddFile(CAEProject& project, const ScannedDirectory& directory, const ScannedFile& file,
            _tagFileType type);

}  // namespace host
