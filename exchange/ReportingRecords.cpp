#include <korvaneexchange/PrintableText.h>

#include <utility>

#include "NodeText.h"
#include "ReportingImport.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;

namespace korvane::exchange {

ImportPolicy::EntrySetting ReportingImport::EnterRecord(const ImportTarget& target, const JSONNode& record,
                                                        const OuString& name, const OuString&,
                                                        const OuString&) {
    Frame& frame = frames_.back();
    const std::string utf8 = Utf8Of(name);
    recordComponent_ = PointerTo(member::kMetaData.View());
    recordComponent_ += frame.isOpenSectionNamed ? ComponentOf(record) : "/" + std::to_string(nextRecord_++);
    const std::string& component = recordComponent_;
    ++report_.membersTaken;
    if (frame.metEntries == nullptr) {
        frame.metEntries = std::make_unique<std::unordered_set<std::string>>();
    }
    if (!frame.metEntries->insert(ComparedName(name)).second) {
        Tell(Reason::kMerged, component, 0, [&] {
            const std::string subject = Excerpt(utf8) + " of " + Describe(*frame.node);
            return std::pair(subject,
                             "the metadata entry " + subject +
                                 " takes the place of an earlier one, because their names differ at most "
                                 "in letter case");
        });
    }
    TellOfRecordMembers(record, component, utf8);
    const bool isSet = target.object != nullptr && (!options_.dryRun || frame.isFileRecord);
    return {isSet, isSet};
}

void ReportingImport::TellOfRecordMembers(const JSONNode& record, const std::string& component,
                                          const std::string& name) {
    const JSONNode& node = *frames_.back().node;
    bool hasValue = false;
    bool hasType = false;
    for (ChildWalk members = record.type() == JSON_NODE ? ChildWalk(record) : ChildWalk();
         const JSONNode* const value = members.Next();) {
        const NodeText text = NodeName(*value);
        const std::string memberName = Utf8OfAnsi(text);
        const bool isValue = member::kValue == text;
        const bool isType = member::kMetaDataType == text;
        const std::string place = component + ComponentOf(*value);
        const std::string whole = std::string(name).append(".").append(memberName);
        if (!isValue && !isType) {
            Tell(Reason::kUnknownMember, place, 0, [&] {
                return std::pair(Excerpt(memberName), Excerpt(memberName) + " of the metadata entry " +
                                                          Excerpt(name) + " of " + Describe(node) +
                                                          " is not recognised");
            });
        } else if (std::exchange(isValue ? hasValue : hasType, true)) {
            Tell(Reason::kRepeatedMember, place, 0, [&] {
                const std::string subject = Excerpt(whole) + " of " + Describe(node);
                return std::pair(subject, subject + " occurs again; the first one counts");
            });
        } else {
            ++report_.membersTaken;
            TellOfText(*value, place, whole);
        }
    }
    if (!hasValue || !hasType) {
        Tell(Reason::kIncomplete, component, 0, [&] {
            const std::string subject = Excerpt(name) + " of " + Describe(node);
            return std::pair(subject, "the metadata entry " + subject +
                                          " has no \"value\" or no \"metaDataType\", which is read as empty");
        });
    }
}

}  // namespace korvane::exchange
