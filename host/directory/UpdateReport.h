#pragma once

#include <CAEFile.h>
#include <CAEProject.h>

#include <cstddef>
#include <string>
#include <unordered_set>

#include "host/system/Notes.h"

namespace host {

/// What an update of a project from its directory did. Of what is below each other, the topmost is listed.
struct UpdateReport {
    struct Count {
        std::size_t objects = 0;
        std::size_t files = 0;
        bool IsZero() const { return objects == 0 && files == 0; }
    };
    Count added;
    Count changed;
    Count removed;
    /// What is not in the directory any more and stays in the project.
    Count missing;
    /// The directory of the project, if it is another one now; otherwise empty.
    OuString directory;
    /// Whether the project has to be saved.
    bool isChanged = false;
    Notes notes;

    /// Says it, one thing on a line. `project` is the name of the project file, as messages have it.
    void Say(const std::string& project, bool isRemoving, Console& console) const;
};

struct ProjectUpdate {
    UpdateReport report;
    /// Files that are removed, but still in the project's list, from which the object model cannot remove
    /// them. No object has them attached.
    std::unordered_set<int> removedFiles;
};

/// An object in a report: where it is in the project, its kind and its identifier.
std::string DescribeObject(const CAEObject& object);
/// A file in a report: its path in the directory, if it is there, otherwise its name.
std::string DescribeFile(const CAEFile& file, const OuString& directory);

}  // namespace host
