#include <CAEObject.h>
#include <CAEProject.h>

#include "CAEObjectJson.h"
#include "Members.h"

namespace {

constexpr const char* kMetaData = "metaData";
constexpr const char* kValue = "value";
constexpr const char* kMetaDataType = "metaDataType";

constexpr const wchar_t* kDescriptionEntry = L"Description";
constexpr const wchar_t* kDescriptionMember = L"description";

constexpr const wchar_t* kProgramReferenceEntry = L"Reference To Program";
constexpr const wchar_t* kNo = L"No";

JSONNode MetadataRecord(const CAEObject& object, const OuString& name) {
    JSONNode record = NamedContainer(name.GetAnsiBuffer(), JSON_NODE);
    OuString type;
    OuString unit;
    OuString value;
    // The type is asked for and written nowhere: "metaDataType" carries the unit. Both are meant.
    object.getMetadataType(name, type);
    object.getMetadataUnitString(name, unit);
    object.getMetadataValue(name, value);
    record.push_back(StringMember(kValue, value));
    record.push_back(StringMember(kMetaDataType, unit));
    return record;
}

/// A member of a record as text; empty where the record has none.
OuString RecordText(const JSONNode& record, const char* name) {
    const auto member = record.find(name);
    return member == record.end() ? OuString() : TextOf(*member);
}

}  // namespace

JSONNode CAEObjectJson::ExportMetadata() {
    JSONNode section = NamedContainer(kMetaData, JSON_NODE);
    if (object_ == nullptr) {
        return section;
    }
    OuTemplateArray<OuString, OuCRTAllocator<>> names;
    OuTemplateArray<OuString, OuCRTAllocator<>> values;
    object_->getAllMetadata(names, values);
    for (int index = 0; index < names.GetSize(); ++index) {
        OuString name = names[index];
        if (name == kDescriptionEntry) {
            // Renamed before the entry is looked up, so the object model is asked for "description". This is
            // meant.
            name = kDescriptionMember;
        }
        section.push_back(MetadataRecord(*object_, name));
    }
    return section;
}

void CAEObjectJson::ImportMetadata(JSONNode section) {
    if (object_ == nullptr) {
        return;
    }
    const JSONNode& entries = section;
    for (const JSONNode& entry : entries) {
        const OuString name(entry.name().c_str(), 0);
        const JSONNode record = entry.as_node();
        const OuString value = RecordText(record, kValue);
        const OuString type = RecordText(record, kMetaDataType);
        if (name == kProgramReferenceEntry && value.CompareNoCase(kNo) == 0 && project_ != nullptr) {
            // Only ever cleared: no value sets the reference.
            project_->SetProgramReference(false);
        }
        // Names stand as they are: the writer's renaming of "Description" is not undone. And what the writer
        // took from the unit goes to the type. Both are meant.
        object_->setMetadataType(name, type);
        object_->setMetadataValue(name, value);
    }
}
