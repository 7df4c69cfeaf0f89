#include <cstdint>

#include "SecondReading.h"

namespace reference {
namespace {

void ImportVersion(const JSONNode& element, CAEObject& object) {
    if (object.createNewVersion(0, 0, true, false) != 0) {
        return;
    }
    const CAEObject* found = nullptr;
    object.getPointerToVersion(0, 0, found);
    // Versions are handed out as const and written to all the same.
    auto* const version = const_cast<CAEObject*>(found);
    CAEObject* const parent = version != nullptr ? object.getParent() : nullptr;
    if (parent == nullptr) {
        return;
    }
    CAEObject* swappedOut = &object;
    parent->detachChild(swappedOut, false);
    version->setID(object.getID());
    parent->addChild(version);

    Target target = PrepareTarget(element, version);
    target.project = version->getProject();
    if (target.project != nullptr) {
        ImportMembers(element, target);
    }

    swappedOut = version;
    parent->detachChild(swappedOut, false);
    parent->addChild(&object);
    CAEProject* const project = object.getProject();
    const int id = object.getID();
    overwriteCurrentVersionWithVersion(project, id, 0, 0);
}

}  // namespace

JSONNode ExportVersions(const CAEObject& object, const JSONNode& node, const VersionNode& nodeOf) {
    JSONNode section = MakeContainer(JSON_ARRAY, L"versions");
    OuArray majors;
    OuArray minors;
    object.getAvailableVersions(majors, minors);
    if (majors.GetSize() == 0) {
        return section;
    }
    const JSONNode* const member = FindMember(node, "files");
    JSONNode files = member != nullptr ? member->as_array() : JSONNode(JSON_ARRAY);
    files.set_name("files");
    for (int i = 0; i < majors.GetSize(); ++i) {
        const int major = static_cast<int>(reinterpret_cast<std::intptr_t>(majors.GetAt(i)));
        const int minor = static_cast<int>(reinterpret_cast<std::intptr_t>(minors.GetAt(i)));
        const CAEObject* version = nullptr;
        if (object.getPointerToVersion(major, minor, version) != 0) {
            continue;
        }
        // Versions are handed out as const, and an export asks what is not.
        JSONNode record = nodeOf(const_cast<CAEObject*>(version));
        record.pop_back(json_string("files"));
        record.push_back(files);
        // No export writes this member, and the record that lacks it ends everything.
        record.pop_back(json_string("versions"));
        const std::string label = std::to_string(major) + "." + std::to_string(minor);
        record.push_back(MakeString(L"version", Widen(label)));
        section.push_back(record);
    }
    return section;
}

void ImportVersions(const JSONNode& section, const Target& target) {
    if (!IsContainer(section) || target.object == nullptr) {
        return;
    }
    for (const JSONNode& element : section) {
        // The number in "version" has to be there and is not used: every imported version is 0.0.
        if (!ReadTypeField(element).IsEmpty() && FindMember(element, "version") != nullptr) {
            ImportVersion(element, *target.object);
        }
    }
}

}  // namespace reference
