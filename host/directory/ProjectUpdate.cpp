#include "ProjectUpdate.h"

#include <EmbeddedRestore.h>

#include <algorithm>
#include <map>
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
#include "host/document/FileFacts.h"
#include "host/document/ObjectLists.h"
#include "host/document/ObjectTexts.h"

namespace host {
namespace {

/// Whether a reading may have given the object its name: that of its file, with or without the extension.
bool IsNameOfReading(const OuString& name, const std::string& fileName) {
    const std::string text = name.GetAnsiBuffer();
    return text == fileName || text == fileName.substr(0, fileName.rfind('.'));
}

void GiveName(CAEObject& object, const OuString& name, ValueChanges& changes) {
    const OuString before = NameOf(object);
    if (before == name) {
        return;
    }
    changes.push_back({ValueChange::Value::Name, {}, before.GetAnsiBuffer(), name.GetAnsiBuffer()});
    object.setName(name);
    if (auto* const project = dynamic_cast<CAEProject*>(&object)) {
        project->SetDisplayName(name);
    }
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
    void UpdateName(CAEObject& object, const CAEObject& read, ValueChanges& changes) const;
    void UpdateFiles(CAEObject& object, const CAEObject& read, const FileUpdate& files,
                     ValueChanges& changes) const;
    void AddRoleChanges(const std::map<int, FileRole>& before, const std::map<int, FileRole>& now,
                        ValueChanges& changes) const;
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
    /// Where objects were that are below another one now.
    std::unordered_map<const CAEObject*, std::string> movedFrom_;
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
    update_.report.Note(UpdateReport::Change::Added, object, !isAdded_.contains(&parent));
    return object;
}

void Updater::MoveBelow(CAEObject& parent, CAEObject& object) {
    if (object.getParent() == &parent) {
        return;
    }
    movedFrom_.emplace(&object, update_.report.isListing ? WholePathOf(object) : "");
    // Everything above the parent has its place already, so the parent is not below the object.
    CAEObject* moving = &object;
    object.getParent()->detachChild(moving, false);
    parent.addChild(&object);
}

void Updater::UpdateObjects(const FileUpdate& files) {
    for (const ObjectOrigin& read : readOrigins_.Objects()) {
        CAEObject& object = *objectOf_.at(read.object);
        ValueChanges changes = UpdateMetadata(object, *read.object);
        UpdateFiles(object, *read.object, files, changes);
        const bool isReordered = UpdateOrder(object, *read.object, files);
        if (isAdded_.contains(&object)) {
            continue;
        }
        UpdateName(object, *read.object, changes);
        const auto moved = movedFrom_.find(&object);
        if (moved != movedFrom_.end()) {
            changes.push_back({ValueChange::Value::Place,
                               {},
                               moved->second,
                               update_.report.isListing ? WholePathOf(object) : ""});
        }
        update_.report.isChanged = update_.report.isChanged || !changes.empty() || isReordered;
        if (!changes.empty()) {
            ++update_.report.changed.objects;
            update_.report.Note(
                moved != movedFrom_.end() ? UpdateReport::Change::Moved : UpdateReport::Change::Changed,
                object, true, std::move(changes));
        }
    }
}

/// The name of a part or an iteration is that of its file, with the extension only if two would have the
/// same.
void Updater::UpdateName(CAEObject& object, const CAEObject& read, ValueChanges& changes) const {
    const OuString name = NameOf(read);
    if (notes_.named.contains(&read)) {
        GiveName(object, name, changes);
        return;
    }
    const korvane::FileRoles roles =
        korvane::GetFileRoles(read.getType() == CAE_ITERATION ? *ChildrenOf(read).front() : read);
    const int id = roles.cadFile != 0      ? roles.cadFile
                   : roles.activeMesh != 0 ? roles.activeMesh
                                           : roles.feRepresentation;
    const FileOrigin* const file = readOrigins_.FileOf(id);
    if (file != nullptr && IsNameOfReading(NameOf(object), NameOf(*file->file).GetAnsiBuffer())) {
        GiveName(object, name, changes);
    }
}

void Updater::UpdateFiles(CAEObject& object, const CAEObject& read, const FileUpdate& files,
                          ValueChanges& changes) const {
    const korvane::FileRoles before = korvane::GetFileRoles(object);
    const korvane::FileRoles reading =
        TranslateRoles(korvane::GetFileRoles(read), [&](int id) { return files.IdentifierOf(id); });
    const korvane::FileRoles roles = MergeRoles(before, reading, [&](int id) { return files.IsThere(id); });
    if (AreSame(roles, before)) {
        return;
    }
    const std::map<int, FileRole> rolesBefore = RolesOfFiles(object);
    korvane::SetFileRoles(object, roles);
    const std::size_t count = changes.size();
    AddRoleChanges(rolesBefore, RolesOfFiles(object), changes);
    if (changes.size() == count) {
        changes.push_back({ValueChange::Value::FileOrder, {}, std::nullopt, std::nullopt});
    }
}

/// What files are to an object now, where they were something else to it or nothing.
void Updater::AddRoleChanges(const std::map<int, FileRole>& before, const std::map<int, FileRole>& now,
                             ValueChanges& changes) const {
    const auto roleIn = [](const std::map<int, FileRole>& roles, int id) -> std::optional<std::string> {
        const auto found = roles.find(id);
        return found == roles.end() ? std::nullopt : std::optional<std::string>(NameOfRole(found->second));
    };
    const auto add = [&](int id) {
        const CAEFile* const file = project_.getFile(id);
        changes.push_back({ValueChange::Value::File,
                           file == nullptr ? "" : PathInDirectory(*file, DirectoryOf(project_)),
                           roleIn(before, id), roleIn(now, id)});
    };
    for (const auto& [id, role] : now) {
        if (roleIn(before, id) != NameOfRole(role)) {
            add(id);
        }
    }
    for (const auto& [id, role] : before) {
        if (!now.contains(id)) {
            add(id);
        }
    }
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
