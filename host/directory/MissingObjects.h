#pragma once

#include <CAEProject.h>

#include <unordered_set>
#include <vector>

#include "ProjectMatching.h"
#include "Selection.h"
#include "UpdateReport.h"

namespace host {

/// What came from the directory of a project and is not there any more (ProjectUpdate.h). What the user has
/// left out is not missing, and neither is what it belongs to.
class MissingObjects {
public:
    /// To be created when everything that is still there has its place.
    MissingObjects(CAEProject& project, const ProjectOrigins& origins, const ProjectMatching& matching,
                   const Exclusion& exclusion);

    /// Counts and lists it.
    void Report(UpdateReport& report) const;
    /// Removes what can be removed, and reports that, and the rest as missing.
    void Remove(ProjectUpdate& update);

private:
    void FindMissing(const Exclusion& exclusion);
    void FindUses();
    bool IsRemovable(const CAEFile& file) const;
    bool IsRemovable(const CAEObject& object) const;
    void FindRemovable();
    void RemoveObjects(UpdateReport& report);
    void RemoveFiles(ProjectUpdate& update);
    void ReportObject(const CAEObject& object, UpdateReport& report) const;
    void ReportFile(const CAEFile& file, UpdateReport& report) const;

    CAEProject& project_;
    OuString directory_;
    const ProjectOrigins& origins_;
    const ProjectMatching& matching_;
    /// In the order of the origins.
    std::vector<CAEObject*> objects_;
    std::unordered_set<const CAEObject*> isMissing_;
    std::vector<CAEFile*> files_;
    std::unordered_set<int> isFileMissing_;
    std::unordered_set<const CAEObject*> isRemovable_;
    /// Files attached to objects that did not come from the directory, objects that view items show, and
    /// files attached to missing objects.
    std::unordered_set<int> isUsed_;
    std::unordered_set<int> isOfMissing_;
};

}  // namespace host
