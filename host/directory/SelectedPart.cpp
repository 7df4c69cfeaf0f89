#include "SelectedPart.h"

#include <EmbeddedModel.h>
#include <EmbeddedRestore.h>

#include <cstddef>
#include <optional>
#include <unordered_set>
#include <vector>

#include "ObjectOrigins.h"
#include "ProjectMatching.h"
#include "RelativePath.h"
#include "ScannedObjects.h"
#include "host/document/ObjectTexts.h"

namespace host {
namespace {

class SelectedPart {
public:
    SelectedPart(CAEProject& project, CAEProject& reading, const Exclusion& exclusion)
        : project_(project), origins_(project, numbers_), readOrigins_(reading, numbers_) {
        FindFiles(exclusion);
        FindObjects();
    }

    void Keep() {
        if (!files_.empty()) {
            TakeCounts();
            RemoveObjects();
            RemoveFiles();
        }
    }

private:
    void FindFiles(const Exclusion& exclusion) {
        const OuString directory = DirectoryOf(project_);
        for (const FileOrigin& origin : origins_.Files()) {
            if (origin.isFromDirectory &&
                exclusion.LeavesOutFile(RelativePath(PathOf(*origin.file), directory).value_or(""))) {
                files_.insert(origin.file->getID());
            }
        }
    }
    /// Which objects have files that are left out or kept, or something below them that has.
    void FindObjects() {
        hasLeftOut_.assign(origins_.Objects().size(), false);
        hasKept_.assign(origins_.Objects().size(), false);
        // Everything comes after what it is below, so the last comes first here.
        for (std::size_t place = origins_.Objects().size(); place-- > 0;) {
            const ObjectOrigin& origin = origins_.Objects()[place];
            for (const int file : korvane::GetFileRoles(*origin.object).files) {
                (files_.contains(file) ? hasLeftOut_ : hasKept_)[place] = true;
            }
            hasLeftOut_[origin.above] = hasLeftOut_[origin.above] || hasLeftOut_[place];
            hasKept_[origin.above] = hasKept_[origin.above] || hasKept_[place];
        }
    }
    bool IsRemoved(std::size_t place) const { return place > 0 && hasLeftOut_[place] && !hasKept_[place]; }
    void TakeCounts() {
        const ProjectMatching matching(origins_, readOrigins_);
        for (std::size_t read = 0; read < readOrigins_.Objects().size(); ++read) {
            const std::optional<std::size_t> place = matching.Objects()[read];
            // The project counts files that are no object's.
            if (place && (*place == 0 || hasLeftOut_[*place])) {
                UpdateTotals(*origins_.Objects()[*place].object, *readOrigins_.Objects()[read].object);
            }
        }
    }
    void RemoveObjects() {
        std::vector<CAEObject*> topmost;
        for (std::size_t place = 1; place < origins_.Objects().size(); ++place) {
            const ObjectOrigin& origin = origins_.Objects()[place];
            if (IsRemoved(place) && !IsRemoved(origin.above)) {
                topmost.push_back(origin.object);
            } else if (!IsRemoved(place)) {
                Detach(*origin.object);
            }
        }
        Detach(project_);
        for (CAEObject* object : topmost) {
            object->getParent()->detachChild(object, true);
        }
    }
    void Detach(CAEObject& object) const {
        korvane::FileRoles roles = korvane::GetFileRoles(object);
        if (std::erase_if(roles.files, [&](int file) { return files_.contains(file); }) > 0) {
            korvane::SetFileRoles(object, roles);
        }
    }
    /// Those among the children of the project. The others are attached to nothing now.
    void RemoveFiles() {
        for (const FileOrigin& origin : origins_.Files()) {
            CAEObject* file = origin.file;
            if (origin.isChild && files_.contains(file->getID())) {
                project_.detachChild(file, true);
            }
        }
    }

    CAEProject& project_;
    PathNumbers numbers_;
    ProjectOrigins origins_;
    ProjectOrigins readOrigins_;
    std::unordered_set<int> files_;
    std::vector<bool> hasLeftOut_;
    std::vector<bool> hasKept_;
};

}  // namespace

void KeepSelectedPart(CAEProject& project, CAEProject& reading, const Exclusion& exclusion) {
    SelectedPart(project, reading, exclusion).Keep();
}

}  // namespace host
