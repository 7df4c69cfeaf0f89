#include <CAEFunctions.h>
#include <CAEObject.h>
#include <CAEProject.h>

#include <bit>
#include <cstdint>

#include "CAEObjectJson.h"
#include "Members.h"
#include "VersionNumber.h"

namespace {

constexpr const char* kVersions = "versions";
constexpr const char* kVersion = "version";
constexpr const char* kFiles = "files";

int SlotNumber(const OuArray& numbers, int index) noexcept {
    if (index >= numbers.GetSize()) {
        return 0;
    }
    return static_cast<int>(static_cast<std::uint32_t>(std::bit_cast<std::uintptr_t>(numbers.GetAt(index))));
}

/// The current object's own list of files, which all of its versions are written with.
JSONNode FileList(const JSONNode& node) {
    const auto found = node.find(kFiles);
    JSONNode files = found == node.end() ? JSONNode(JSON_ARRAY) : found->as_array();
    files.set_name(kFiles);
    return files;
}

/// Asks the object model for a version; its status comes back, and the pointer stays as it was unless it is
/// given.
int FindVersion(const CAEObject& object, VersionNumber number, CAEObject*& version) {
    const CAEObject* found = version;
    const int status = object.getPointerToVersion(number.majorNumber, number.minorNumber, found);
    // Versions are handed out as constant, yet to convert one is to ask it things that are not and to write
    // to it.
    version = const_cast<CAEObject*>(found);
    return status;
}

/// The number that every version is imported under, whatever its record says.
VersionNumber ImportedNumber(const OuString& label) {
    const VersionNumber number;
    OuString major;
    OuString minor;
    static_cast<void>(label.Split(L".", major, minor));
    // The numbers are read and dropped, so that every version is created, fetched and made current as 0.0.
    // This is meant.
    static_cast<void>(major.ToInt(number.majorNumber));
    if (!minor.IsEmpty()) {
        static_cast<void>(minor.ToInt(number.minorNumber));
    }
    return number;
}

}  // namespace

VersionNumber VersionNumber::At(const OuArray& majors, const OuArray& minors, int index) noexcept {
    return {SlotNumber(majors, index), SlotNumber(minors, index)};
}

OuString VersionNumber::Label() const {
    OuString label;
    label.Format(L"%d.%d", majorNumber, minorNumber);
    return label;
}

JSONNode CAEObjectJson::ExportVersions() {
    return ExportVersions([](CAEObject* version) { return CAEObjectJson(version).GetJsonNode(); });
}

JSONNode CAEObjectJson::ExportVersions(VersionNodeWriter nodeOf) {
    JSONNode section = NamedContainer(kVersions, JSON_ARRAY);
    if (object_ == nullptr) {
        return section;
    }
    OuArray majors(0);
    OuArray minors(0);
    object_->getAvailableVersions(majors, minors);
    if (majors.GetSize() == 0) {
        return section;
    }
    const JSONNode files = FileList(Node());
    for (int index = 0; index < majors.GetSize(); ++index) {
        const VersionNumber number = VersionNumber::At(majors, minors, index);
        CAEObject* version = nullptr;
        if (FindVersion(*object_, number, version) != 0) {
            continue;
        }
        JSONNode record = nodeOf(version);
        // Not the version's own files but the current object's, in every record. This is meant.
        record.pop_back(kFiles);
        record.push_back(files);
        // Throws for a node as the export writes it, which has no such member. This is meant: a driver gives
        // its nodes one first.
        record.pop_back(kVersions);
        record.push_back(StringMember(kVersion, number.Label()));
        section.push_back(record);
    }
    return section;
}

void CAEObjectJson::ImportVersions(JSONNode section) {
    if (object_ == nullptr) {
        return;
    }
    const JSONNode& records = section;
    for (const JSONNode& record : records) {
        ImportVersion(record);
    }
}

void CAEObjectJson::ImportVersion(const JSONNode& record) {
    if (ReadTypeField(record).IsEmpty()) {
        return;
    }
    const auto label = record.find(kVersion);
    if (label == record.end()) {
        return;
    }
    const VersionNumber number = ImportedNumber(TextOf(*label));
    if (object_->createNewVersion(number.majorNumber, number.minorNumber, true, false) != 0) {
        return;
    }
    CAEObject* version = nullptr;
    FindVersion(*object_, number, version);
    CAEObject* parent = version == nullptr ? nullptr : object_->getParent();
    if (parent == nullptr) {
        return;
    }
    // While it is read, the version stands in the object's place and bears the object's identifier, which it
    // keeps. The parent may clear the pointers that it is handed.
    CAEObject* leaving = object_;
    parent->detachChild(leaving, false);
    version->setID(object_->getID());
    parent->addChild(version);

    CAEObjectJson(record, version).Import();

    leaving = version;
    parent->detachChild(leaving, false);
    parent->addChild(object_);
    CAEProject* project = object_->getProject();
    overwriteCurrentVersionWithVersion(project, object_->getID(), number.majorNumber, number.minorNumber);
}
