#include "ObjectTree.h"

#include "Access.h"
#include "Creation.h"
#include "ObjectData.h"

namespace korvane {
namespace {

bool IsMasterAssembly(const ObjectData& data) noexcept {
    return data.type == CAE_SUBASSEMBLY || data.type == CAE_ITERATION_MODEL;
}

void LinkBehind(CAEObject*& first, CAEObject*& last, CAEObject& object) noexcept {
    Access::Data(object).previousSibling = last;
    (last != nullptr ? Access::Data(*last).nextSibling : first) = &object;
    last = &object;
}

void Unlink(CAEObject*& first, CAEObject*& last, CAEObject& object) noexcept {
    ObjectData& data = Access::Data(object);
    (data.previousSibling != nullptr ? Access::Data(*data.previousSibling).nextSibling : first) =
        data.nextSibling;
    (data.nextSibling != nullptr ? Access::Data(*data.nextSibling).previousSibling : last) =
        data.previousSibling;
    data.previousSibling = nullptr;
    data.nextSibling = nullptr;
}

/// What getProject returns for an object at its present place.
CAEProject* ProjectAt(CAEObject& object) noexcept {
    if (CAEProject* const project = AsProject(object)) {
        return project;
    }
    const ObjectData& data = Access::Data(object);
    // A file that hangs on its project has no parent and keeps the project that it has.
    return data.parent != nullptr ? Access::Data(*data.parent).project : data.project;
}

}  // namespace

OwnedObjects::~OwnedObjects() {
    while (first_ != nullptr) {
        const std::unique_ptr<CAEObject> object(first_);
        first_ = Access::Data(*object).nextOwned;
    }
}

CAEObject& OwnedObjects::Append(std::unique_ptr<CAEObject> object) noexcept {
    CAEObject& appended = *object.release();
    Link(appended);
    return appended;
}

void OwnedObjects::Link(CAEObject& object) noexcept {
    ObjectData& data = Access::Data(object);
    data.previousOwned = last_;
    data.nextOwned = nullptr;
    (last_ != nullptr ? Access::Data(*last_).nextOwned : first_) = &object;
    last_ = &object;
}

void OwnedObjects::Take(OwnedObjects& from, CAEObject& object) noexcept {
    const ObjectData& data = Access::Data(object);
    (data.previousOwned != nullptr ? Access::Data(*data.previousOwned).nextOwned : from.first_) =
        data.nextOwned;
    (data.nextOwned != nullptr ? Access::Data(*data.nextOwned).previousOwned : from.last_) =
        data.previousOwned;
    Link(object);
}

void OwnedObjects::TakeAll(OwnedObjects& from) noexcept {
    if (from.first_ == nullptr) {
        return;
    }
    Access::Data(*from.first_).previousOwned = last_;
    (last_ != nullptr ? Access::Data(*last_).nextOwned : first_) = from.first_;
    last_ = from.last_;
    from.first_ = nullptr;
    from.last_ = nullptr;
}

ObjectTree::ObjectTree(CAEProject& root) {
    ObjectData& data = Access::Data(root);
    data.tree = this;
    Access::SetId(root, identifiers_.TakeNext());
    StampCreation(root);
    Enter(root);
}

int ObjectTree::FindMasterAssembly(const OuString& key) const {
    const auto found = masterAssemblies_.lower_bound({key, 0});
    return found != masterAssemblies_.end() && found->first == key ? found->second : 0;
}

void ObjectTree::SetKey(CAEObject& object, const OuString& key) {
    const ObjectData& data = Access::Data(object);
    if (data.registeredId != 0 && IsMasterAssembly(data) && !(Access::Key(object) == key)) {
        if (!key.IsEmpty()) {
            masterAssemblies_.insert({key, data.registeredId});
        }
        masterAssemblies_.erase({Access::Key(object), data.registeredId});
    }
    Access::Key(object) = key;
}

CAEObject& ObjectTree::Own(std::unique_ptr<CAEObject> object) noexcept {
    Access::Data(*object).tree = this;
    return objects_.Append(std::move(object));
}

void ObjectTree::OwnAll(OwnedObjects& objects) noexcept {
    objects_.TakeAll(objects);
}

void ObjectTree::HangChild(CAEObject& parent, CAEObject& child) {
    ObjectData& above = Access::Data(parent);
    Access::Data(child).parent = &parent;
    LinkBehind(above.firstChild, above.lastChild, child);
    Enter(child);
}

void ObjectTree::HangFile(CAEProject& project, CAEFile& file) {
    ProjectData& projectData = Access::Project(project);
    Access::Data(file).project = &project;
    LinkBehind(projectData.firstFile, projectData.lastFile, file);
    Enter(file);
}

CAEObject& ObjectTree::HangNewChild(CAEObject& parent, std::unique_ptr<CAEObject> child) {
    Access::Data(*child).tree = this;
    HangChild(parent, *child);
    return Own(std::move(child));
}

CAEFile& ObjectTree::HangNewFile(CAEProject& project, std::unique_ptr<CAEObject> file) {
    Access::Data(*file).tree = this;
    HangFile(project, static_cast<CAEFile&>(*file));
    return static_cast<CAEFile&>(Own(std::move(file)));
}

void ObjectTree::Enter(CAEObject& top) {
    const CAEObject* const above = HangsOn(top);
    const bool isInTree = above == nullptr || Access::Data(*above).isInTree;
    if (Access::Data(top).isInTree == isInTree && Access::Data(top).project == ProjectAt(top)) {
        // Below an object that hangs nowhere itself nothing changes.
        return;
    }
    try {
        for (CAEObject* object = &top; object != nullptr; object = NextUnder(*object, top)) {
            ObjectData& data = Access::Data(*object);
            data.project = ProjectAt(*object);
            data.isInTree = isInTree;
            if (isInTree) {
                Register(*object);
            }
        }
    } catch (...) {
        Unhang(top);
        throw;
    }
}

void ObjectTree::Unhang(CAEObject& object) noexcept {
    ObjectData& data = Access::Data(object);
    if (data.parent != nullptr) {
        ObjectData& above = Access::Data(*data.parent);
        Unlink(above.firstChild, above.lastChild, object);
        data.parent = nullptr;
    } else if (HangsOn(object) != nullptr) {
        ProjectData& above = Access::Project(*data.project);
        Unlink(above.firstFile, above.lastFile, object);
    }
    data.project = nullptr;
    Leave(object);
    PartFromObjectWithin(object);
}

void ObjectTree::Leave(CAEObject& top) noexcept {
    for (CAEObject* object = &top; object != nullptr; object = NextUnder(*object, top)) {
        ObjectData& data = Access::Data(*object);
        data.project = ProjectAt(*object);
        data.isInTree = false;
        Unregister(*object);
    }
}

void ObjectTree::Register(CAEObject& object) {
    ObjectData& data = Access::Data(object);
    const int id = Access::Id(object);
    if (!identifiers_.Insert(id, object)) {
        return;
    }
    data.registeredId = id;
    if (IsMasterAssembly(data) && !Access::Key(object).IsEmpty()) {
        masterAssemblies_.insert({Access::Key(object), id});
    }
}

void ObjectTree::Unregister(CAEObject& object) noexcept {
    ObjectData& data = Access::Data(object);
    if (data.registeredId == 0) {
        return;
    }
    if (IsMasterAssembly(data)) {
        masterAssemblies_.erase({Access::Key(object), data.registeredId});
    }
    identifiers_.Erase(data.registeredId);
    data.registeredId = 0;
}

bool ObjectTree::Renumber(CAEObject& object, int id) {
    if (id <= 0 || (Find(id) != nullptr && Find(id) != &object)) {
        return false;
    }
    if (Find(id) == &object) {
        Access::SetId(object, id);
        return true;
    }
    ObjectData& data = Access::Data(object);
    const int idBefore = Access::Id(object);
    const int registeredBefore = std::exchange(data.registeredId, 0);
    Access::SetId(object, id);
    // It stays under the old number until it is under the new one, which may need memory.
    try {
        Register(object);
    } catch (...) {
        Unregister(object);
        Access::SetId(object, idBefore);
        data.registeredId = registeredBefore;
        throw;
    }
    const int registeredNow = std::exchange(data.registeredId, registeredBefore);
    Unregister(object);
    data.registeredId = registeredNow;
    return true;
}

void ObjectTree::Destroy(CAEObject& object) noexcept {
    OwnedObjects doomed;
    doomed.Take(objects_, object);
    for (CAEObject* next = &object; next != nullptr; next = Access::Data(*next).nextOwned) {
        for (CAEObject* child = Access::Data(*next).firstChild; child != nullptr;
             child = Access::Data(*child).nextSibling) {
            doomed.Take(objects_, *child);
        }
        for (CAEObject* file = FirstFileOf(*next); file != nullptr; file = Access::Data(*file).nextSibling) {
            doomed.Take(objects_, *file);
        }
        DissolveVersions(*next, objects_, doomed);
    }
}

void ObjectTree::StampCreation(CAEObject& object) {
    ObjectData& data = Access::Data(object);
    if (fixedDate_.IsEmpty()) {
        const std::time_t now = std::time(nullptr);
        if (now != presentSecond_) {
            presentDate_ = FormatDate(now);
            presentSecond_ = now;
        }
        data.createdDate = presentDate_;
    } else {
        data.createdDate = fixedDate_;
    }
    data.createdUserName = fixedUserName_.IsEmpty() ? PresentUserName() : fixedUserName_;
}

void ObjectTree::SetCreation(const OuString& date, const OuString& userName) noexcept {
    fixedDate_ = date;
    fixedUserName_ = userName;
}

CAEObject* HangsOn(const CAEObject& object) noexcept {
    const ObjectData& data = Access::Data(object);
    if (data.parent != nullptr) {
        return data.parent;
    }
    // Without a parent only a file has another object for its project.
    return data.type == CAE_FILE ? data.project : nullptr;
}

bool IsWithin(const CAEObject& inner, const CAEObject& outer) noexcept {
    const CAEObject* object = &inner;
    while (object != nullptr && object != &outer) {
        const CAEObject* const above = HangsOn(*object);
        const Versions* const versions = Access::Data(*object).versions.get();
        object = above == nullptr && versions != nullptr ? versions->versionOf : above;
    }
    return object != nullptr;
}

CAEObject* NextUnder(const CAEObject& object, const CAEObject& top) noexcept {
    if (CAEObject* const child = Access::Data(object).firstChild) {
        return child;
    }
    if (CAEObject* const file = FirstFileOf(object)) {
        return file;
    }
    for (const CAEObject* left = &object; left != &top;) {
        const ObjectData& data = Access::Data(*left);
        if (data.nextSibling != nullptr) {
            return data.nextSibling;
        }
        const bool isChild = data.parent != nullptr;
        left = HangsOn(*left);
        // The files of a project come after its last child.
        if (CAEObject* const file = isChild ? FirstFileOf(*left) : nullptr) {
            return file;
        }
    }
    return nullptr;
}

CAEObject* FirstFileOf(const CAEObject& object) noexcept {
    return Access::Data(object).type == CAE_PROJECT
               ? Access::Project(static_cast<const CAEProject&>(object)).firstFile
               : nullptr;
}

CAEProject* AsProject(CAEObject& object) noexcept {
    return Access::Data(object).type == CAE_PROJECT ? static_cast<CAEProject*>(&object) : nullptr;
}

}  // namespace korvane
