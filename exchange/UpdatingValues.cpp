#include <korvaneexchange/PrintableText.h>

#include <string>
#include <utility>

#include "NodeText.h"
#include "UpdatingImport.h"
#include "format/MemberNames.h"
#include "format/Values.h"
#include "objectjson/Sections.h"

namespace member = format::member;
using format::Kind;

namespace korvane::exchange {
namespace {

std::string Became(const std::string& from, const std::string& to) {
    return Excerpt(from) + " becomes " + Excerpt(to);
}

/// With the unit that a document has.
std::string WithUnit(const OuString& value, const OuString& unit) {
    return IsEmpty(unit) ? Utf8Of(value) : Utf8Of(value) + " " + Utf8Of(unit);
}

OuString ExportedType(CAEProject& project) {
    OuString type = project.getAdditionalType();
    type.MakeUpper();
    return type;
}

bool IsInLineWithKey(CAEObject& object, const OuString& value, OuString& present) {
    present = object.getDBKey();
    if (IsWrittenAs(present, value)) {
        return true;
    }
    if (KindOf(object) == Kind::kViewItem) {
        // An export writes the view item's own key, an import takes it for the key of what it shows.
        present = object.getLinkDBKey();
    }
    return IsWrittenAs(present, value);
}

bool IsInLineWithRecord(CAEFile& file, format::MemberName member, const OuString& value, OuString& present) {
    const std::string text = AnsiFormOf(value);
    if (member == member::kFileType) {
        present = TextOfModel(CAEGetFileTypeName(static_cast<int>(FileTypeOf(file))));
        return GetCAEFileType(value) == file.getFileType() || IsWrittenAs(present, value);
    }
    if (member == member::kFileFormat) {
        const char* const name = format::NameOfFileFormat(FileFormatOf(file));
        present = OuString(name, 0);
        return text == name || format::FileFormatOfName(text) == FileFormatOf(file);
    }
    if (member == member::kFilePath) {
        return true;
    }
    present = file.m_locationType;
    return IsWrittenAs(present, value);
}

}  // namespace

bool IsOfType(CAEObject& object, const OuString& type) {
    auto* const project = dynamic_cast<CAEProject*>(&object);
    return project != nullptr &&
           (IsWrittenAs(project->getAdditionalType(), type) || IsWrittenAs(ExportedType(*project), type));
}

// What is set

std::string UpdatingImport::DescribeAsItWas(CAEObject& object) const {
    const auto found = describedBefore_.find(&object);
    return found == describedBefore_.end() ? Describe(object) : found->second;
}

void UpdatingImport::TellChange(CAEObject& object, const std::string& component, const std::string& what,
                                const std::string& from, const std::string& to) {
    // Listed or not: the object model is asked the same for every change.
    const std::string subject = what + " of " + DescribeAsItWas(object);
    Tell(Reason::kChanged, component, object.getID(),
         [&] { return std::pair(subject, subject + ": " + Became(from, to)); });
}

bool UpdatingImport::TellNotComparable(const std::string& component, const std::string& what) {
    Untake();
    Tell(Reason::kNotComparable, component, 0, [&] {
        const std::string subject = Excerpt(what) + " of " + Describe(*Innermost().node);
        return std::pair(subject, subject +
                                      " is left out: the object has a value that cannot be read back, so an "
                                      "update does not know whether it is another one");
    });
    return false;
}

bool UpdatingImport::IsCurrentMemberLast(const MatchedNode& match, format::MemberName member,
                                         bool isProject) const {
    const LastMembers& last = match.Last();
    const JSONNode* const counts = member == member::kDatabaseKey   ? last.key
                                   : member == member::kCreatedDate ? last.createdDate
                                   : !isProject                     ? last.anyName
                                   : member == member::kName        ? last.name
                                                                    : last.displayName;
    return counts == CurrentMember();
}

bool UpdatingImport::IsInLine(CAEObject& object, format::MemberName member, const OuString& value,
                              OuString& present) const {
    if (member == member::kName || member == member::kDisplayName) {
        present = ExportedName(object);
        return IsWrittenAs(present, value) || IsWrittenAs(NameOf(object), value);
    }
    if (member == member::kDatabaseKey) {
        return IsInLineWithKey(object, value, present);
    }
    if (member == member::kCreatedDate) {
        object.getCreatedDate(present);
        return IsWrittenAs(present, value);
    }
    if (auto* const project = member == member::kType ? dynamic_cast<CAEProject*>(&object) : nullptr) {
        present = project->getAdditionalType();
        return IsOfType(object, value);
    }
    auto* const file = dynamic_cast<CAEFile*>(&object);
    return file == nullptr || IsInLineWithRecord(*file, member, value, present);
}

bool UpdatingImport::SetsMember(const ImportTarget& target, format::MemberName member,
                                const OuString& value) {
    MatchedNode* const match = MatchOf(Innermost());
    const bool isFlag = member == member::kIsInCoordinateGlobalFrame || member == member::kIsFileDownloaded;
    if (match == nullptr) {
        if (isFlag && isMadeAlready_) {
            return TellNotComparable(PointerTo(member.View()), std::string(member.View()));
        }
        return ReportingImport::SetsMember(target, member, value);
    }
    CAEObject& object = *target.object;
    const bool isProject = KindOf(object) == Kind::kProject;
    const bool isHeader = member == member::kName || member == member::kDisplayName ||
                          member == member::kDatabaseKey || member == member::kCreatedDate;
    if (IsNullKey() && member == member::kDatabaseKey) {
        return false;
    }
    CountKey(target, member, value);
    // An earlier one would be set and overwritten in every update.
    if (isHeader && !IsCurrentMemberLast(*match, member, isProject)) {
        return false;
    }
    const std::string component = PointerTo(member.View());
    if (isFlag) {
        return TellNotComparable(component, std::string(member.View()));
    }
    OuString present;
    if (IsInLine(object, member, value, present)) {
        return false;
    }
    if (isProject && member == member::kName) {
        return TellNotComparable(component, std::string(member.View()));
    }
    TellChange(object, component, Excerpt(member.View()), Utf8Of(present), Utf8Of(value));
    if (member == member::kName || member == member::kDisplayName) {
        match->isNameChanged = true;
        describedBefore_.emplace(&object, Describe(object));
    }
    match->isTypeChanged = match->isTypeChanged || member == member::kFileType;
    match->isLinkChanged = match->isLinkChanged || member == member::kDatabaseKey;
    haveAssembliesChanged_ =
        haveAssembliesChanged_ || (member == member::kDatabaseKey && IsAssembly(KindOf(object)));
    return Sets(target, member, value) && !Options().dryRun;
}

ImportPolicy::EntrySetting UpdatingImport::EnterRecord(const ImportTarget& target, const JSONNode& record,
                                                       const OuString& name, const OuString& type,
                                                       const OuString& value) {
    const EntrySetting setting = ReportingImport::EnterRecord(target, record, name, type, value);
    MatchedNode* const match = MatchOf(Innermost());
    if (match == nullptr) {
        return setting;
    }
    MatchedNode::Entry& entry = match->Entries()[ComparedName(name)];
    if (entry.lastRecord != &record) {
        return {false, false};
    }
    CAEObject& object = *target.object;
    OuString presentType;
    OuString unit;
    if (entry.isThere) {
        object.getMetadataType(entry.name, presentType);
        object.getMetadataUnitString(entry.name, unit);
    }
    const std::string what = "the metadata entry " + Excerpt(Utf8Of(name));
    // An export writes the unit where an import reads the type.
    const bool setsType = !entry.isThere || !(IsWrittenAs(presentType, type) || IsWrittenAs(unit, type));
    const bool setsValue = !entry.isThere || !IsWrittenAs(entry.value, value);
    if (setsValue) {
        const std::string present = WithUnit(entry.value, IsEmpty(unit) ? presentType : unit);
        TellChange(object, RecordComponent(), what, present, WithUnit(value, type));
    } else if (setsType) {
        TellChange(object, RecordComponent() + PointerTo(member::kMetaDataType.View()), "the type of " + what,
                   Utf8Of(presentType), Utf8Of(type));
    }
    return {setsType && !Options().dryRun, setsValue && !Options().dryRun};
}

bool UpdatingImport::ResolvesReference(const ImportTarget& viewItem) {
    const MatchedNode* const match = MatchOf(Innermost());
    if (match == nullptr || match->isLinkChanged) {
        return ReportingImport::ResolvesReference(viewItem);
    }
    ++Result().viewItems;
    const OuString key = viewItem.object->getLinkDBKey();
    if (HasMasterAssembly(viewItem.project, key)) {
        ++Result().viewItemsLinked;
        return haveAssembliesChanged_ && !Options().dryRun;
    }
    // What an export writes is the view item's own key, and asks for nothing to be shown.
    if (!IsEmpty(key) && IsWrittenAs(TextOf(match->Last().key), key)) {
        TellNoMasterAssembly(0, key);
    }
    return false;
}

void UpdatingImport::LeaveReference(const ImportTarget& viewItem, bool isFound) {
    const MatchedNode* const match = MatchOf(Innermost());
    if (match == nullptr || match->isLinkChanged) {
        ReportingImport::LeaveReference(viewItem, isFound);
    }
}

}  // namespace korvane::exchange
