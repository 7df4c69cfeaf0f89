#pragma once

#include <CAEProject.h>

#include <functional>
#include <unordered_map>
#include <unordered_set>

#include "ProjectMatching.h"
#include "UpdateReport.h"

namespace host {

/// Gives every file of a new reading its file in the project (ProjectUpdate.h).
class FileUpdate {
public:
    FileUpdate(CAEProject& project, const ProjectOrigins& origins, const ProjectOrigins& reading,
               const ProjectMatching& matching, UpdateReport& report);

    /// Lists the files that were added, without those of objects of the reading that were added themselves.
    void ReportAdded(const std::function<bool(const CAEObject& read)>& isAdded);

    /// The identifier in the project of the file that has this one in the reading.
    int IdentifierOf(int read) const { return identifiers_.at(read); }
    /// Whether the directory has the file with the identifier in the project.
    bool IsThere(int identifier) const { return isThere_.contains(identifier); }

private:
    void Add(const FileOrigin& read);
    void Update(CAEFile& file, const CAEFile& read);

    CAEProject& project_;
    const ProjectOrigins& reading_;
    UpdateReport& report_;
    std::unordered_map<int, int> identifiers_;
    std::unordered_set<int> isThere_;
    std::unordered_set<int> isAdded_;
};

}  // namespace host
