#include "MissingObjects.h"

#include <EmbeddedRestore.h>

#include <algorithm>

#include "RelativePath.h"
#include "host/document/ObjectLists.h"
#include "host/document/ObjectTexts.h"
#include "host/document/ProjectObjects.h"

namespace host {
namespace {

using Change = UpdateReport::Change;

/// The object with its files in all their roles, but without these.
void DetachFiles(CAEObject& object, const std::unordered_set<int>& files) {
    korvane::FileRoles roles = korvane::GetFileRoles(object);
    if (std::erase_if(roles.files, [&](int file) { return files.contains(file); }) > 0) {
        korvane::SetFileRoles(object, roles);
    }
}

/// Which of the objects have a file that is left out, or something below them that has one.
std::vector<bool> FindLeftOut(const ProjectOrigins& origins, const std::unordered_set<int>& files) {
    std::vector<bool> isLeftOut(origins.Objects().size());
    // Everything comes after what it is below, so the last comes first here.
    for (std::size_t place = isLeftOut.size(); !files.empty() && place-- > 1;) {
        const ObjectOrigin& origin = origins.Objects()[place];
        isLeftOut[place] =
            isLeftOut[place] || std::ranges::any_of(korvane::GetFileRoles(*origin.object).files,
                                                    [&](int file) { return files.contains(file); });
        isLeftOut[origin.above] = isLeftOut[origin.above] || isLeftOut[place];
    }
    return isLeftOut;
}

}  // namespace

MissingObjects::MissingObjects(CAEProject& project, const ProjectOrigins& origins,
                               const ProjectMatching& matching, const Exclusion& exclusion)
    : project_(project), directory_(DirectoryOf(project)), origins_(origins), matching_(matching) {
    FindMissing(exclusion);
    FindUses();
}

void MissingObjects::FindMissing(const Exclusion& exclusion) {
    std::unordered_set<int> isFileLeftOut;
    for (std::size_t place = 0; place < origins_.Files().size(); ++place) {
        const FileOrigin& origin = origins_.Files()[place];
        if (!origin.isFromDirectory || matching_.IsFileMatched(place)) {
            continue;
        }
        const bool isLeftOut =
            !exclusion.IsEmpty() &&
            exclusion.LeavesOutFile(RelativePath(PathOf(*origin.file), directory_).value_or(""));
        if (isLeftOut) {
            isFileLeftOut.insert(origin.file->getID());
        } else {
            files_.push_back(origin.file);
            isFileMissing_.insert(origin.file->getID());
        }
    }
    const std::vector<bool> isLeftOut = FindLeftOut(origins_, isFileLeftOut);
    for (std::size_t place = 0; place < origins_.Objects().size(); ++place) {
        const ObjectOrigin& origin = origins_.Objects()[place];
        if (origin.isFromDirectory && !matching_.IsObjectMatched(place) && !isLeftOut[place]) {
            objects_.push_back(origin.object);
            isMissing_.insert(origin.object);
        }
    }
}

void MissingObjects::FindUses() {
    std::unordered_set<const CAEObject*> isOfDirectory = isMissing_;
    for (std::size_t place = 0; place < origins_.Objects().size(); ++place) {
        if (matching_.IsObjectMatched(place)) {
            isOfDirectory.insert(origins_.Objects()[place].object);
        }
    }
    VisitProject(project_, [&](const CAEObject& object, const ObjectPlace&) {
        if (const auto* const item = dynamic_cast<const CAEViewItem*>(&object)) {
            isUsed_.insert(korvane::GetReferencedObject(*item));
        }
        for (const int file : korvane::GetFileRoles(object).files) {
            if (!isOfDirectory.contains(&object)) {
                isUsed_.insert(file);
            } else if (isMissing_.contains(&object)) {
                isOfMissing_.insert(file);
            }
        }
    });
}

void MissingObjects::ReportObject(const CAEObject& object, UpdateReport& report) const {
    ++report.missing.objects;
    report.Note(Change::Missing, object, !isMissing_.contains(object.getParent()));
}

void MissingObjects::ReportFile(const CAEFile& file, UpdateReport& report) const {
    ++report.missing.files;
    report.Note(Change::Missing, file, directory_, !isOfMissing_.contains(file.getID()));
}

void MissingObjects::Report(UpdateReport& report) const {
    for (const CAEObject* const object : objects_) {
        ReportObject(*object, report);
    }
    for (const CAEFile* const file : files_) {
        ReportFile(*file, report);
    }
}

bool MissingObjects::IsRemovable(const CAEFile& file) const {
    return !isUsed_.contains(file.getID()) && ChildrenOf(file).empty() &&
           korvane::GetFileRoles(file).files.empty();
}

bool MissingObjects::IsRemovable(const CAEObject& object) const {
    const std::vector<CAEObject*> children = ChildrenOf(object);
    const std::vector<int> files = korvane::GetFileRoles(object).files;
    return !isUsed_.contains(object.getID()) && std::ranges::all_of(children, [&](const CAEObject* child) {
        return isRemovable_.contains(child);
    }) && std::ranges::all_of(files, [&](int id) {
        const FileOrigin* const file = origins_.FileOf(id);
        return file == nullptr || file->isFromDirectory;
    });
}

void MissingObjects::FindRemovable() {
    // Everything comes after what it is below, so the last comes first here.
    for (std::size_t index = objects_.size(); index-- > 0;) {
        if (IsRemovable(*objects_[index])) {
            isRemovable_.insert(objects_[index]);
        }
    }
}

void MissingObjects::RemoveObjects(UpdateReport& report) {
    std::vector<CAEObject*> topmost;
    for (CAEObject* const object : objects_) {
        if (!isRemovable_.contains(object)) {
            ++report.missing.objects;
            report.Note(Change::InUse, *object, !isMissing_.contains(object->getParent()));
            continue;
        }
        ++report.removed.objects;
        const bool isTopmost = !isRemovable_.contains(object->getParent());
        report.Note(Change::Removed, *object, isTopmost);
        if (isTopmost) {
            topmost.push_back(object);
        }
    }
    for (CAEObject* object : topmost) {
        object->getParent()->detachChild(object, true);
    }
}

void MissingObjects::RemoveFiles(ProjectUpdate& update) {
    std::unordered_set<int> removed;
    for (CAEFile* const file : files_) {
        if (!IsRemovable(*file)) {
            ++update.report.missing.files;
            update.report.Note(Change::InUse, *file, directory_);
            continue;
        }
        ++update.report.removed.files;
        update.report.Note(Change::Removed, *file, directory_, !isOfMissing_.contains(file->getID()));
        removed.insert(file->getID());
    }
    if (removed.empty()) {
        return;
    }
    VisitProject(project_, [&](CAEObject& object, const ObjectPlace&) { DetachFiles(object, removed); });
    for (CAEFile* const file : files_) {
        const int id = file->getID();
        CAEObject* child = file;
        if (!removed.contains(id)) {
            continue;
        }
        if (CAEObject* const parent = file->getParent()) {
            parent->detachChild(child, true);
        } else {
            update.removedFiles.insert(id);
        }
    }
}

void MissingObjects::Remove(ProjectUpdate& update) {
    FindRemovable();
    RemoveObjects(update.report);
    RemoveFiles(update);
    update.report.isChanged = update.report.isChanged || !update.report.removed.IsZero();
}

}  // namespace host
