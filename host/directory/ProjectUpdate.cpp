#include "ProjectUpdate.h"

#include <EmbeddedRestore.h>

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "FileUpdate.h"
#include "MergedOrder.h"
#include "MergedRoles.h"
#include "MissingObjects.h"
#include "ProjectMatching.h"
#include "ScannedObjects.h"
#include "host/document/ObjectLists.h"
#include "host/document/ObjectTexts.h"

namespace host {
namespace {

/// Whether a reading may have given the object its name: that of its file, with or without the extension.
bool IsNameOfReading(const OuString& name, const std::string& fileName) {
    const std::string text = name.GetAnsiBuffer();
    return text == fileName || text == fileName.substr(0, fileName.rfind('.'));
}

/// Returns whether the object had another name.
bool GiveName(CAEObject& object, const OuString& name) {
    if (NameOf(object) == name) {
        return false;
    }
    object.setName(name);
    if (auto* const project = dynamic_cast<CAEProject*>(&object)) {
        project->SetDisplayName(name);
    }
    return true;
}

class Updater {
public:
    Updater(CAEProject& project, CAEProject& reading, bool isListing, const ReadingNotes& notes)
        : project_(project),
          reading_(reading),
          notes_(notes),
          origins_(project, numbers_),
          readOrigins_(reading, numbers_),
          matching_(origins_, readOrigins_) {
        update_.report.isListing = isListing;
    }

    ProjectUpdate Run(bool isRemoving);

private:
    void SetDirectory();
    void PlaceObjects();
    CAEObject& AddObject(CAEObject& parent, const CAEObject& read);
    void MoveBelow(CAEObject& parent, CAEObject& object);
    void UpdateObjects(const FileUpdate& files);
    bool UpdateName(CAEObject& object, const CAEObject& read) const;
    static bool UpdateFiles(CAEObject& object, const CAEObject& read, const FileUpdate& files);
    bool UpdateOrder(CAEObject& object, const CAEObject& read, const FileUpdate& files);
    bool IsAdded(const CAEObject& read) const { return isAdded_.contains(objectOf_.at(&read)); }

    CAEProject& project_;
    CAEProject& reading_;
    const ReadingNotes& notes_;
    PathNumbers numbers_;
    ProjectOrigins origins_;
    ProjectOrigins readOrigins_;
    ProjectMatching matching_;
    ProjectUpdate update_;
    /// What the objects of the reading are in the project.
    std::unordered_map<const CAEObject*, CAEObject*> objectOf_;
    std::unordered_set<const CAEObject*> isAdded_;
    std::unordered_set<const CAEObject*> isMoved_;
};

ProjectUpdate Updater::Run(bool isRemoving) {
    SetDirectory();
    PlaceObjects();
    FileUpdate files(project_, origins_, readOrigins_, matching_, update_.report);
    files.ReportAdded([&](const CAEObject& read) { return IsAdded(read); });
    MissingObjects missing(project_, origins_, matching_, notes_.exclusion);
    update_.filesBefore =
        static_cast<std::size_t>(std::ranges::count(origins_.Files(), true, &FileOrigin::isFromDirectory));
    if (isRemoving) {
        missing.Remove(update_);
    } else {
        missing.Report(update_.report);
    }
    UpdateObjects(files);
    return std::move(update_);
}

void Updater::SetDirectory() {
    const OuString directory = DirectoryOf(reading_);
    if (!(DirectoryOf(project_) == directory)) {
        korvane::SetDirectory(project_, directory);
        update_.report.directory = directory;
        update_.report.isChanged = true;
    }
}

/// Gives every object of the reading its object in the project, below the right parent.
void Updater::PlaceObjects() {
    const std::vector<ObjectOrigin>& read = readOrigins_.Objects();
    objectOf_.emplace(&reading_, &project_);
    for (std::size_t place = 1; place < read.size(); ++place) {
        CAEObject& parent = *objectOf_.at(read[read[place].above].object);
        const std::optional<std::size_t> matched = matching_.Objects()[place];
        CAEObject* object = matched ? origins_.Objects()[*matched].object : nullptr;
        if (object != nullptr) {
            MoveBelow(parent, *object);
        } else {
            object = &AddObject(parent, *read[place].object);
        }
        objectOf_.emplace(read[place].object, object);
    }
}

CAEObject& Updater::AddObject(CAEObject& parent, const CAEObject& read) {
    CAEObject& object = *korvane::CreateObject(parent, read.getType(), NameOf(read));
    object.setCreatedDate(DateOf(read));
    korvane::SetCreatedUserName(object, CreatorOf(read));
    isAdded_.insert(&object);
    ++update_.report.added.objects;
    update_.report.isChanged = true;
    if (!isAdded_.contains(&parent)) {
        update_.report.Note(UpdateReport::Change::Added, object);
    }
    return object;
}

void Updater::MoveBelow(CAEObject& parent, CAEObject& object) {
    if (object.getParent() == &parent) {
        return;
    }
    // Everything above the parent has its place already, so the parent is not below the object.
    CAEObject* moving = &object;
    object.getParent()->detachChild(moving, false);
    parent.addChild(&object);
    isMoved_.insert(&object);
}

void Updater::UpdateObjects(const FileUpdate& files) {
    for (const ObjectOrigin& read : readOrigins_.Objects()) {
        CAEObject& object = *objectOf_.at(read.object);
        const bool areMetadataChanged = UpdateMetadata(object, *read.object);
        const bool areFilesChanged = UpdateFiles(object, *read.object, files);
        const bool isReordered = UpdateOrder(object, *read.object, files);
        if (isAdded_.contains(&object)) {
            continue;
        }
        const bool isMoved = isMoved_.contains(&object);
        const bool isRenamed = UpdateName(object, *read.object);
        if (areMetadataChanged || areFilesChanged || isRenamed || isMoved) {
            ++update_.report.changed.objects;
            update_.report.Note(isMoved ? UpdateReport::Change::Moved : UpdateReport::Change::Changed,
                                object);
        }
        update_.report.isChanged = update_.report.isChanged || areMetadataChanged || areFilesChanged ||
                                   isRenamed || isMoved || isReordered;
    }
}

/// The name of a part or an iteration is that of its file, with the extension only if two would have the
/// same.
bool Updater::UpdateName(CAEObject& object, const CAEObject& read) const {
    const OuString name = NameOf(read);
    if (notes_.named.contains(&read)) {
        return GiveName(object, name);
    }
    const korvane::FileRoles roles =
        korvane::GetFileRoles(read.getType() == CAE_ITERATION ? *ChildrenOf(read).front() : read);
    const int id = roles.cadFile != 0      ? roles.cadFile
                   : roles.activeMesh != 0 ? roles.activeMesh
                                           : roles.feRepresentation;
    const FileOrigin* const file = readOrigins_.FileOf(id);
    if (file == nullptr || NameOf(object) == name ||
        !IsNameOfReading(NameOf(object), NameOf(*file->file).GetAnsiBuffer())) {
        return false;
    }
    object.setName(name);
    return true;
}

bool Updater::UpdateFiles(CAEObject& object, const CAEObject& read, const FileUpdate& files) {
    const korvane::FileRoles before = korvane::GetFileRoles(object);
    const korvane::FileRoles reading =
        TranslateRoles(korvane::GetFileRoles(read), [&](int id) { return files.IdentifierOf(id); });
    const korvane::FileRoles roles = MergeRoles(before, reading, [&](int id) { return files.IsThere(id); });
    if (AreSame(roles, before)) {
        return false;
    }
    korvane::SetFileRoles(object, roles);
    return true;
}

bool Updater::UpdateOrder(CAEObject& object, const CAEObject& read, const FileUpdate& files) {
    std::vector<CAEObject*> wanted;
    for (const CAEObject* const child : ChildrenOf(read)) {
        wanted.push_back(child->getType() == CAE_FILE ? project_.getFile(files.IdentifierOf(child->getID()))
                                                      : objectOf_.at(child));
    }
    const std::vector<CAEObject*> present = ChildrenOf(object);
    const std::vector<CAEObject*> merged = MergedOrder(present, wanted);
    const auto same = std::ranges::mismatch(present, merged).in1 - present.begin();
    // Behind the first difference, each one is taken out and put back in its turn.
    for (auto child = present.begin() + same; child != present.end(); ++child) {
        CAEObject* moving = *child;
        object.detachChild(moving, false);
    }
    for (auto child = merged.begin() + same; child != merged.end(); ++child) {
        object.addChild(*child);
    }
    return static_cast<std::size_t>(same) != present.size();
}

}  // namespace

ProjectUpdate UpdateProject(CAEProject& project, CAEProject& reading, bool isRemoving, bool isListing,
                            const ReadingNotes& notes) {
    return Updater(project, reading, isListing, notes).Run(isRemoving);
}

}  // namespace host
