#include "CAEObjectJson.h"
#include "NodeReading.h"
#include "NodeWriter.h"
#include "RepeatedTexts.h"
#include "Sections.h"
#include "format/MemberNames.h"
#include "format/Values.h"

namespace member = format::member;

namespace {

void WriteRecord(CAEObject& object, const OuString& name, DocumentWriter& out) {
    OuString type;
    OuString unit;
    OuString value;
    // The type is asked for and written nowhere: the server expects the unit in "metaDataType".
    object.getMetadataType(name, type);
    object.getMetadataUnitString(name, unit);
    object.getMetadataValue(name, value);
    out.OpenObject(AnsiFormOf(name));
    out.Text(member::kValue, value);
    out.Text(member::kMetaDataType, unit);
    out.End();
}

}  // namespace

void WriteMetadata(CAEObject& object, DocumentWriter& out) {
    out.OpenObject(member::kMetaData);
    TextArray names;
    TextArray values;
    object.getAllMetadata(names, values);
    for (int index = 0; index < SizeOf(names); ++index) {
        const OuString& name = TextAt(names, index);
        // Renamed before the entry is looked up: the format fixes that "description" is what is asked for.
        if (IsText(name, format::kDescriptionEntry)) {
            WriteRecord(object, OuString(format::kDescriptionMember, 0), out);
        } else {
            WriteRecord(object, name, out);
        }
    }
    out.End();
}

JSONNode CAEObjectJson::ExportMetadata() {
    return SectionNode([this](NodeWriter& out) {
        if (object_ != nullptr) {
            WriteMetadata(*object_, out);
        } else {
            out.OpenObject(member::kMetaData);
            out.End();
        }
    });
}

void ReadMetadata(const ImportTarget& target, const JSONNode& section, RepeatedTexts& texts) {
    const bool hasNames = section.type() == JSON_NODE;
    ChildWalk records(section);
    while (const JSONNode* const record = records.Next()) {
        const NodeText wholeName = hasNames ? NodeName(*record) : NodeText();
        const std::string_view name = UpToNul(wholeName);
        const auto [valueMember, typeMember] =
            FindMembers<2>(*record, {member::kValue, member::kMetaDataType});
        const OuString value = valueMember == nullptr ? OuString() : WideValue(*valueMember);
        const OuString type = typeMember == nullptr ? OuString() : texts.OfValue(*typeMember);
        const OuString entry = texts.Of(name);
        const ImportPolicy::EntrySetting setting =
            target.policy == nullptr ? ImportPolicy::EntrySetting{true, true}
                                     : target.policy->EnterRecord(target, *record, entry, type, value);
        if (setting.value && name == format::kProgramReferenceEntry &&
            AreEqualInAnyCase(value, OuString(format::kNoProgramReference, 0)) && target.project != nullptr) {
            // Only ever cleared: the server has no value that sets the reference.
            target.project->SetProgramReference(false);
        }
        // The writer's "description" is not renamed back, and what it took from the unit becomes the type:
        // the format fixes both.
        if (setting.type) {
            target.object->setMetadataType(entry, type);
        }
        if (setting.value) {
            target.object->setMetadataValue(entry, value);
        }
    }
}

void CAEObjectJson::ImportMetadata(JSONNode section) {
    if (object_ != nullptr) {
        RepeatedTexts texts;
        ReadMetadata({object_, project_}, section, texts);
    }
}
