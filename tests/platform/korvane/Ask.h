#pragma once

#include <CAEFunctions.h>
#include <EmbeddedModel.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// What the object model fills in, as values that tests compare and GoogleTest prints. The tests of the
/// product walk lists here alone: they also run with a suite whose lists are walked in another way.

inline std::string TextOf(const OuString& text) {
    return text.GetAnsiBuffer();
}

inline std::string NameOf(const CAEObject& object) {
    OuString name;
    object.getName(name);
    return TextOf(name);
}

inline std::string CreatedDateOf(const CAEObject& object) {
    OuString date;
    object.getCreatedDate(date);
    return TextOf(date);
}

inline std::string CreatedUserNameOf(const CAEObject& object) {
    OuString userName;
    object.getCreatedUserName(userName);
    return TextOf(userName);
}

inline std::string PathOf(const CAEFile& file) {
    OuString path(L"(untouched)");
    file.getFullPathName(path);
    return TextOf(path);
}

inline std::string DirectoryOf(const CAEProject& project) {
    OuString directory;
    project.getDirectory(directory);
    return TextOf(directory);
}

inline std::vector<CAEObject*> ChildrenOf(const CAEObject& object) {
    OuList list;
    object.getChildrenList(list);
    std::vector<CAEObject*> children;
    for (OuListPosition* position = list.GetHeadPosition(); position != nullptr;) {
        children.push_back(static_cast<CAEObject*>(list.GetNext(position)));
    }
    return children;
}

inline std::vector<int> ChildIdsOf(const CAEObject& object) {
    std::vector<int> ids;
    for (const CAEObject* const child : ChildrenOf(object)) {
        ids.push_back(child->getID());
    }
    return ids;
}

inline std::vector<int> FileIdsOf(CAEObject& object) {
    const OuList list = object.GetFiles();
    std::vector<int> ids;
    for (OuListPosition* position = list.GetHeadPosition(); position != nullptr;) {
        ids.push_back(list.GetNextID(position));
    }
    return ids;
}

inline std::string MetadataValueOf(const CAEObject& object, const OuString& name) {
    OuString value(L"(none)");
    object.getMetadataValue(name, value);
    return TextOf(value);
}

/// The number in the low half of a slot.
inline int NumberIn(void* slot) {
    return static_cast<int>(static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(slot)));
}

using Numbers = std::vector<std::pair<int, int>>;

inline Numbers VersionsOf(const CAEObject& object) {
    OuArray majors;
    OuArray minors;
    object.getAvailableVersions(majors, minors);
    Numbers numbers;
    for (int i = 0; i < majors.GetSize() && i < minors.GetSize(); ++i) {
        numbers.emplace_back(NumberIn(majors.GetAt(i)), NumberIn(minors.GetAt(i)));
    }
    return numbers;
}

/// The version with the number; null when there is none. Versions are returned as const and written to.
inline CAEObject* VersionOf(const CAEObject& object, int majorNumber, int minorNumber) {
    const CAEObject* version = nullptr;
    object.getPointerToVersion(majorNumber, minorNumber, version);
    return const_cast<CAEObject*>(version);
}

/// Detaches the child; the caller's pointer stays.
inline int Detach(CAEObject& parent, CAEObject& child, bool destroy = false) {
    CAEObject* pointer = &child;
    return parent.detachChild(pointer, destroy);
}
