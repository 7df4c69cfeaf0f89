#pragma once

#include <CAEFile.h>
#include <CAEProject.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "ValueChange.h"
#include "host/system/Notes.h"

namespace host {

/// What an update of a project from its directory did.
struct UpdateReport {
    enum class Change { Added, Changed, Moved, Removed, Missing, InUse, Unreadable };
    /// An object or a file with what became of it.
    struct Listed {
        Change change;
        /// The name of its kind.
        std::string kind;
        int identifier;
        /// Of an object the names from the root, of a file its path in the directory, or its name if it is
        /// elsewhere.
        std::string path;
        /// What has changed of it.
        ValueChanges values;
    };
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
    /// The first of each change, for messages. Of what is below each other, the topmost is named.
    Notes notes;
    /// All of them, if they are asked for.
    bool isListing = false;
    std::vector<Listed> listed;

    void Note(Change change, const CAEObject& object, bool isTopmost = true, ValueChanges values = {});
    void Note(Change change, const CAEFile& file, const OuString& projectDirectory, bool isTopmost = true,
              ValueChanges values = {});

    /// Says it, one thing on a line. `project` is the name of the project file, as messages have it.
    void Say(const std::string& project, bool isRemoving, Console& console) const;

private:
    /// Says as details which values have changed, of what is listed.
    void SayValues(const std::string& project, Console& console) const;
};

/// The names from the root to the object, with slashes between them; of the root its own.
std::string WholePathOf(const CAEObject& object);
/// The path of a file in the directory, or its name if it is elsewhere.
std::string PathInDirectory(const CAEFile& file, const OuString& directory);

/// The word for a change in reports for scripts.
std::string_view WordOf(UpdateReport::Change change);

struct ProjectUpdate {
    UpdateReport report;
    /// Files that are removed, but still in the project's list, from which the object model cannot remove
    /// them. No object has them attached.
    std::unordered_set<int> removedFiles;
    /// The files of the project that had come from its directory before.
    std::size_t filesBefore = 0;
};

}  // namespace host
