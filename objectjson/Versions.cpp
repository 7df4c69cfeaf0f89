#include <cstdint>
#include <stdexcept>
#include <utility>

#include "CAEObjectJson.h"
#include "MajorMinor.h"
#include "NodeReading.h"
#include "NodeWriter.h"
#include "format/MemberNames.h"

namespace member = format::member;

namespace {

int SlotNumber(OuArray& numbers, int index) {
    return index < SizeOf(numbers) ? static_cast<int>(static_cast<std::uint32_t>(SlotAt(numbers, index))) : 0;
}

/// The current object's own list of files, which all of its versions are written with.
JSONNode FileList(const JSONNode& node) {
    const JSONNode* const found = FindMember(node, member::kFiles);
    JSONNode files = found == nullptr ? JSONNode(JSON_ARRAY) : found->as_array();
    files.set_name(member::kFiles.c_str());
    return files;
}

void RemoveMember(JSONNode& node, format::MemberName name) {
    if (FindMember(node, name) == nullptr) {
        throw std::out_of_range("the node of a version has no such member");
    }
    node.pop_back(name.c_str());
}

/// Asks the object model for a version; its status comes back, and the pointer stays as it was unless it is
/// given.
int FindVersion(CAEObject& object, MajorMinor number, CAEObject*& version) {
    const CAEObject* found = version;
    const int status = object.getPointerToVersion(number.majorNumber, number.minorNumber, found);
    // Versions are handed out as constant, yet to convert one is to ask it things that are not and to write
    // to it.
    version = const_cast<CAEObject*>(found);
    return status;
}

/// The number that every version is imported under, whatever its record says.
MajorMinor ImportedNumber(OuString label) {
    const MajorMinor number;
    OuString major;
    OuString minor;
    static_cast<void>(label.Split(L".", major, minor));
    // The numbers are read and dropped: the server expects that whatever it sends becomes version 0.0.
    static_cast<void>(major.ToInt(number.majorNumber));
    if (!IsEmpty(minor)) {
        static_cast<void>(minor.ToInt(number.minorNumber));
    }
    return number;
}

}  // namespace

MajorMinor MajorMinor::At(OuArray& majors, OuArray& minors, int index) {
    return {SlotNumber(majors, index), SlotNumber(minors, index)};
}

OuString MajorMinor::Label() const {
    OuString label;
    label.Format(L"%d.%d", majorNumber, minorNumber);
    return label;
}

JSONNode CAEObjectJson::ExportVersions() {
    return ExportVersions([](CAEObject* version) { return CAEObjectJson(version).GetJsonNode(); });
}

JSONNode CAEObjectJson::ExportVersions(VersionNodeWriter nodeOf) {
    JSONNode section(JSON_ARRAY);
    section.set_name(member::kVersions.c_str());
    if (object_ == nullptr) {
        return section;
    }
    OuArray majors(0);
    OuArray minors(0);
    object_->getAvailableVersions(majors, minors);
    if (SizeOf(majors) == 0) {
        return section;
    }
    const JSONNode files = FileList(node_);
    for (int index = 0; index < SizeOf(majors); ++index) {
        const MajorMinor number = MajorMinor::At(majors, minors, index);
        CAEObject* version = nullptr;
        if (FindVersion(*object_, number, version) != 0) {
            continue;
        }
        JSONNode record = nodeOf(version);
        // The format gives every record the current object's files, not the version's own.
        RemoveMember(record, member::kFiles);
        record.push_back(files);
        // Throws for a node as Export writes it, which has no such member: a driver gives its nodes one
        // first.
        RemoveMember(record, member::kVersions);
        NodeWriter(record).Text(member::kVersion, number.Label());
        section.push_back(record);
    }
    return section;
}

void CAEObjectJson::ImportVersions(JSONNode section) {
    if (object_ == nullptr || !IsContainer(section)) {
        return;
    }
    for (const JSONNode& record : std::as_const(section)) {
        ImportVersion(record);
    }
}

void CAEObjectJson::ImportVersion(const JSONNode& record) {
    if (IsEmpty(ReadTypeField(record))) {
        return;
    }
    const JSONNode* const label = FindMember(record, member::kVersion);
    if (label == nullptr) {
        return;
    }
    const MajorMinor number = ImportedNumber(WideValue(*label));
    if (object_->createNewVersion(number.majorNumber, number.minorNumber, true, false) != 0) {
        return;
    }
    CAEObject* version = nullptr;
    FindVersion(*object_, number, version);
    CAEObject* parent = version == nullptr ? nullptr : object_->getParent();
    if (parent == nullptr) {
        return;
    }
    // While it is read, the version stands in the object's place and has the object's identifier, which it
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
