#include "Versions.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "Access.h"
#include "CAEFunctions.h"
#include "Copies.h"
#include "ObjectData.h"
#include "Recorded.h"
#include "Status.h"

namespace korvane {
namespace {

/// A slot of an array that holds a number: the high half holds a value without meaning, so that nobody relies
/// on it.
void* SlotOf(int number) noexcept {
    constexpr std::uintptr_t kMeaningless = sizeof(std::uintptr_t) > 4 ? 0x5A5AC3C3 : 0;
    constexpr int kHalf = sizeof(std::uintptr_t) * 4;
    const auto low = static_cast<std::uint32_t>(number);
    return std::bit_cast<void*>((kMeaningless << kHalf) | low);
}

Versions::Version* FindVersion(const CAEObject& object, int major, int minor) noexcept {
    Versions* const versions = Access::Data(object).versions.get();
    if (versions == nullptr) {
        return nullptr;
    }
    const auto found = std::find_if(
        versions->list.begin(), versions->list.end(),
        [&](const Versions::Version& version) { return version.major == major && version.minor == minor; });
    return found != versions->list.end() ? &*found : nullptr;
}

Versions& VersionsOf(CAEObject& object) {
    std::unique_ptr<Versions>& versions = Access::Data(object).versions;
    if (!versions) {
        versions = std::make_unique<Versions>();
    }
    return *versions;
}

/// An object of the same kind and identifier, without content.
CAEObject& MakeEmpty(const CAEObject& original, OwnedObjects& objects) {
    ObjectTree& tree = *Access::Data(original).tree;
    std::unique_ptr<CAEObject> made = Access::MakeObject(Access::Data(original).type);
    Access::SetId(*made, Access::Id(original));
    Access::Data(*made).tree = &tree;
    Access::Data(*made).project = AsProject(*made);
    tree.StampCreation(*made);
    return objects.Append(std::move(made));
}

/// Destroys a version that another one replaces, unless it hangs in the tree by now.
void DropVersion(CAEObject& version) noexcept {
    Access::Data(version).versions->versionOf = nullptr;
    if (HangsOn(version) == nullptr) {
        Access::Data(version).tree->Destroy(version);
    }
}

/// The version leaves the list of the object whose version it is.
void LeaveVersionList(CAEObject& version) noexcept {
    CAEObject*& owner = Access::Data(version).versions->versionOf;
    std::vector<Versions::Version>& list = Access::Data(*owner).versions->list;
    list.erase(std::find_if(list.begin(), list.end(),
                            [&](const Versions::Version& entry) { return entry.object == &version; }));
    owner = nullptr;
}

void DestroyAllUnder(CAEObject& object, ObjectTree& tree) noexcept {
    while (CAEObject* const child = Access::Data(object).firstChild) {
        tree.Unhang(*child);
        tree.Destroy(*child);
    }
    while (CAEObject* const file = FirstFileOf(object)) {
        tree.Unhang(*file);
        tree.Destroy(*file);
    }
}

void MoveAllUnder(CAEObject& from, CAEObject& to, ObjectTree& tree) {
    while (CAEObject* const child = Access::Data(from).firstChild) {
        tree.Unhang(*child);
        tree.HangChild(to, *child);
    }
    while (CAEObject* const file = FirstFileOf(from)) {
        tree.Unhang(*file);
        tree.HangFile(static_cast<CAEProject&>(to), static_cast<CAEFile&>(*file));
    }
}

}  // namespace

void PartFromObjectWithin(CAEObject& detached) noexcept {
    const Versions* const versions = Access::Data(detached).versions.get();
    if (versions != nullptr && versions->versionOf != nullptr && IsWithin(*versions->versionOf, detached)) {
        LeaveVersionList(detached);
    }
}

void DissolveVersions(CAEObject& object, OwnedObjects& owner, OwnedObjects& doomed) noexcept {
    Versions* const versions = Access::Data(object).versions.get();
    if (versions == nullptr) {
        return;
    }
    for (const Versions::Version& version : versions->list) {
        // A version that hangs somewhere is an object of that place like any other.
        Access::Data(*version.object).versions->versionOf = nullptr;
        if (HangsOn(*version.object) == nullptr) {
            doomed.Take(owner, *version.object);
        }
    }
    versions->list.clear();
    if (versions->versionOf != nullptr) {
        LeaveVersionList(object);
    }
}

}  // namespace korvane

using korvane::Access;
using korvane::kDone;
using korvane::kFailed;
using korvane::ObjectTree;
using korvane::OwnedObjects;
using korvane::Recorded;
using korvane::Versions;

void CAEObject::getAvailableVersions(OuArray& majors, OuArray& minors) const {
    const Recorded note("CAEObject::getAvailableVersions", *this);
    if (data_->versions) {
        for (const Versions::Version& version : data_->versions->list) {
            majors.Add(korvane::SlotOf(version.major));
            minors.Add(korvane::SlotOf(version.minor));
        }
    }
}

int CAEObject::getPointerToVersion(int major, int minor, const CAEObject*& version) const {
    const Recorded note("CAEObject::getPointerToVersion", *this, major, minor);
    if (const auto* const odd = note.Odd()) {
        version = odd->object;
        return odd->status;
    }
    const Versions::Version* const found = korvane::FindVersion(*this, major, minor);
    if (found == nullptr) {
        return kFailed;
    }
    version = found->object;
    return kDone;
}

int CAEObject::createNewVersion(const int& major, const int& minor, bool content, bool makeCurrent) {
    const Recorded note("CAEObject::createNewVersion", *this, major, minor, content, makeCurrent);
    if (const auto* const odd = note.Odd()) {
        return odd->status;
    }
    if (data_->tree == nullptr || major < 0 || minor < 0) {
        return kFailed;
    }
    // The numbers may be references into what changes here.
    const Versions::Version number{major, minor, nullptr};
    OwnedObjects made;
    CAEObject& version = content ? korvane::CopyTree(*this, made) : korvane::MakeEmpty(*this, made);
    korvane::VersionsOf(version).versionOf = this;
    Versions& versions = korvane::VersionsOf(*this);
    if (Versions::Version* const older = korvane::FindVersion(*this, number.major, number.minor)) {
        CAEObject& replaced = *older->object;
        older->object = &version;
        data_->tree->OwnAll(made);
        korvane::DropVersion(replaced);
    } else {
        versions.list.push_back({number.major, number.minor, &version});
        data_->tree->OwnAll(made);
    }
    if (makeCurrent) {
        versions.currentMajor = number.major;
        versions.currentMinor = number.minor;
    }
    return kDone;
}

int overwriteCurrentVersionWithVersion(CAEProject* project, int objectId, int major, int minor) {
    const Recorded note("overwriteCurrentVersionWithVersion", project, objectId, major, minor);
    if (project == nullptr) {
        return kFailed;
    }
    ObjectTree& tree = *Access::Data(*project).tree;
    CAEObject* const current = tree.Find(objectId);
    const Versions::Version* const version =
        current != nullptr ? korvane::FindVersion(*current, major, minor) : nullptr;
    if (version == nullptr) {
        return kFailed;
    }
    // The copy comes first: the version may hang under the current object by now.
    OwnedObjects copies;
    CAEObject& content = korvane::CopyTree(*version->object, copies);
    tree.OwnAll(copies);
    korvane::DestroyAllUnder(*current, tree);
    korvane::MoveContent(content, *current);
    korvane::MoveAllUnder(content, *current, tree);
    tree.Destroy(content);
    Versions& versions = *Access::Data(*current).versions;
    versions.currentMajor = major;
    versions.currentMinor = minor;
    return kDone;
}
