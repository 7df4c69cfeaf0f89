#include "Copies.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "Access.h"
#include "ObjectData.h"

namespace korvane {
namespace {

/// A version that waits to be copied, and the copy that is to have it.
struct WaitingVersion {
    Versions::Version version;
    CAEObject* owner;
};

template <typename Content>
std::unique_ptr<Content> CopyOf(const std::unique_ptr<Content>& original) {
    return original ? std::make_unique<Content>(*original) : nullptr;
}

/// What the class of the object adds to the content.
void CopyClassContent(const CAEObject& from, CAEObject& to) {
    switch (Access::Data(from).type) {
        case CAE_PROJECT: {
            const ProjectData& source = Access::Project(static_cast<const CAEProject&>(from));
            ProjectData& target = Access::Project(static_cast<CAEProject&>(to));
            target.displayName = source.displayName;
            target.additionalType = source.additionalType;
            target.directory = source.directory;
            target.programReference = source.programReference;
            break;
        }
        case CAE_FILE: {
            const auto& source = static_cast<const CAEFile&>(from);
            auto& target = static_cast<CAEFile&>(to);
            Access::File(target) = Access::File(source);
            target.m_locationType = source.m_locationType;
            target.m_fullPathCopy = source.m_fullPathCopy;
            break;
        }
        case CAE_VIEW_ITEM:
            Access::ReferencedId(static_cast<CAEViewItem&>(to)) =
                Access::ReferencedId(static_cast<const CAEViewItem&>(from));
            break;
        default:
            break;
    }
}

CAEObject& CopyAlone(const CAEObject& original, OwnedObjects& copies) {
    const ObjectData& from = Access::Data(original);
    std::unique_ptr<CAEObject> copy = Access::MakeObject(from.type);
    ObjectData& to = Access::Data(*copy);
    Access::SetId(*copy, Access::Id(original));
    Access::Name(*copy) = Access::Name(original);
    Access::Key(*copy) = Access::Key(original);
    Access::LinkKey(*copy) = Access::LinkKey(original);
    to.tree = from.tree;
    to.project = AsProject(*copy);
    to.createdDate = from.createdDate;
    to.createdUserName = from.createdUserName;
    to.metadata = CopyOf(from.metadata);
    to.files = CopyOf(from.files);
    CopyClassContent(original, *copy);
    return copies.Append(std::move(copy));
}

/// Notes the versions of the original that its copy is to have.
void CopyVersionList(const CAEObject& original, CAEObject& copy, std::vector<WaitingVersion>& waiting) {
    const Versions* const from = Access::Data(original).versions.get();
    if (from == nullptr) {
        return;
    }
    auto to = std::make_unique<Versions>();
    to->currentMajor = from->currentMajor;
    to->currentMinor = from->currentMinor;
    Access::Data(copy).versions = std::move(to);
    for (const Versions::Version& version : from->list) {
        // A version that hangs somewhere belongs to that place.
        if (HangsOn(*version.object) == nullptr) {
            waiting.push_back({version, &copy});
        }
    }
}

/// Copies everything under the original, walking original and copy in step.
CAEObject& CopyHanging(const CAEObject& original, bool withVersions, OwnedObjects& copies,
                       std::vector<WaitingVersion>& waiting) {
    CAEObject& top = CopyAlone(original, copies);
    if (withVersions) {
        CopyVersionList(original, top, waiting);
    }
    const CAEObject* from = &original;
    CAEObject* to = &top;
    ObjectTree& tree = *Access::Data(original).tree;
    while (const CAEObject* const next = NextUnder(*from, original)) {
        for (const CAEObject* const above = HangsOn(*next); from != above; from = HangsOn(*from)) {
            to = HangsOn(*to);
        }
        CAEObject& copy = CopyAlone(*next, copies);
        if (Access::Data(*next).parent != nullptr) {
            tree.HangChild(*to, copy);
        } else {
            tree.HangFile(static_cast<CAEProject&>(*to), static_cast<CAEFile&>(copy));
        }
        CopyVersionList(*next, copy, waiting);
        from = next;
        to = &copy;
    }
    return top;
}

}  // namespace

CAEObject& CopyTree(const CAEObject& original, OwnedObjects& copies) {
    std::vector<WaitingVersion> waiting;
    CAEObject& top = CopyHanging(original, false, copies, waiting);
    for (std::size_t i = 0; i < waiting.size(); ++i) {
        const WaitingVersion next = waiting[i];
        CAEObject& copy = CopyHanging(*next.version.object, true, copies, waiting);
        Versions& owner = *Access::Data(*next.owner).versions;
        owner.list.push_back({next.version.major, next.version.minor, &copy});
        std::unique_ptr<Versions>& versions = Access::Data(copy).versions;
        if (!versions) {
            versions = std::make_unique<Versions>();
        }
        versions->versionOf = next.owner;
    }
    return top;
}

void MoveContent(CAEObject& from, CAEObject& to) {
    ObjectData& source = Access::Data(from);
    ObjectData& target = Access::Data(to);
    target.tree->SetKey(to, Access::Key(from));
    Access::Name(to) = Access::Name(from);
    Access::LinkKey(to) = Access::LinkKey(from);
    target.createdDate = source.createdDate;
    target.createdUserName = source.createdUserName;
    target.metadata = std::move(source.metadata);
    target.files = std::move(source.files);
    CopyClassContent(from, to);
}

}  // namespace korvane
