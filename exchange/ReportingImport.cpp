#include "ReportingImport.h"

#include <korvaneexchange/PrintableText.h>

#include <algorithm>
#include <utility>

#include "NodeText.h"
#include "StepsBetweenCalls.h"
#include "TreeIndex.h"
#include "format/MemberNames.h"
#include "format/Nodes.h"
#include "objectjson/NodeReading.h"
#include "objectjson/Sections.h"

namespace member = format::member;
using format::Effect;
using format::Kind;
using format::MemberEffect;
using format::Shape;

namespace korvane::exchange {
namespace {

/// Whether every document that an export writes has the member in such a node.
bool IsAlwaysWritten(const MemberEffect& known, bool isFileRecord) {
    const auto isIt = [&](const format::NodeMember& written) { return written.name == known.name; };
    return std::ranges::any_of(format::kObjectNode, isIt) ||
           (isFileRecord && std::ranges::any_of(format::kFileRecord, isIt));
}

/// Whether an import reads the first member of the name and no later one.
bool IsReadOnce(const MemberEffect& known) {
    return known.inObject == Effect::kUnknown || known.name == member::kType;
}

std::uint32_t BitOf(const MemberEffect& known) {
    static_assert(std::size(format::kMemberEffects) <= 32);
    return std::uint32_t{1} << static_cast<std::size_t>(&known - std::begin(format::kMemberEffects));
}

std::string Of(const JSONNode& node) {
    return " of " + Describe(node);
}

}  // namespace

ReportingImport::ReportingImport(const ImportOptions& options, ImportReport& report, std::size_t total)
    : options_(options), report_(report), builder_(report), total_(total) {}

ReportingImport::~ReportingImport() = default;

// Places

ReportingImport::Frame& ReportingImport::Enter(const JSONNode& element, bool isFileRecord) {
    Frame entered;
    entered.node = &element;
    entered.isFileRecord = isFileRecord;
    if (!frames_.empty()) {
        Frame& above = frames_.back();
        entered.section = above.openSection;
        entered.isNamed = above.isOpenSectionNamed;
        entered.index = above.next++;
    }
    return frames_.emplace_back(std::move(entered));
}

std::string ReportingImport::Pointer() const {
    std::string pointer;
    for (const Frame& frame : frames_) {
        if (frame.section.empty()) {
            continue;
        }
        pointer += '/';
        pointer += frame.section;
        pointer += frame.isNamed ? ComponentOf(*frame.node) : "/" + std::to_string(frame.index);
    }
    return pointer;
}

std::string ReportingImport::ComponentOf(const JSONNode& member) {
    const NodeText name = NodeName(member);
    return PointerTo(Utf8OfAnsi(name));
}

const std::string& ReportingImport::Component() {
    if (component_.empty() && member_ != nullptr) {
        component_ = ComponentOf(*member_);
    }
    return component_;
}

void ReportingImport::Tell(Reason reason, const std::string& component, int identifier,
                           const std::string& subject, const std::string& sentence) {
    const int told = identifier == 0 ? frames_.back().identifier : identifier;
    builder_.Add(reason, Pointer() + component, told, subject, sentence);
}

void ReportingImport::CountStep() {
    if (options_.progress && steps_ % kStepsBetweenCalls == 0 &&
        !options_.progress({.objects = steps_, .total = total_})) {
        throw StopImport();
    }
    ++steps_;
}

// The root

bool ReportingImport::EnterRoot(const ImportTarget& target, const JSONNode& node) {
    Frame& frame = Enter(node, false);
    frame.isNew = true;
    if (!HasType(node)) {
        return false;
    }
    frame.identifier = target.object->getID();
    report_.root = frame.identifier;
    report_.hasRoot = true;
    return true;
}

void ReportingImport::RefuseRoot(const JSONNode& node) {
    Enter(node, false);
    if (HasType(node)) {
        Tell(Reason::kRefused, {}, 0, [&] {
            return std::pair(Describe(node),
                             Describe(node) +
                                 " is left out with everything below it, because the target of "
                                 "the import belongs to no project");
        });
    }
}

void ReportingImport::EnterParentOfRoot(const ImportTarget&) {
    frames_.emplace_back();
}

// Members

void ReportingImport::EnterMember(const ImportTarget&, const JSONNode& member) {
    Frame& frame = frames_.back();
    const NodeText name = NodeName(member);
    const MemberEffect* const known = format::FindEffect(name);
    member_ = &member;
    component_.clear();
    nextRecord_ = 0;
    const Effect effect = known == nullptr     ? Effect::kUnknown
                          : frame.isFileRecord ? known->inRecord
                                               : known->inObject;
    if (effect != Effect::kTaken) {
        TellOf(member, effect == Effect::kUnknown ? nullptr : known);
        return;
    }
    const bool isAgain = (frame.metMembers & BitOf(*known)) != 0;
    isNullKey_ = known->name == member::kDatabaseKey && member.type() == JSON_NULL;
    if (!isNullKey_) {
        frame.metMembers |= BitOf(*known);
    }
    if (isAgain && !isNullKey_ && known->shape == Shape::kText) {
        Tell(Reason::kRepeatedMember, Component(), 0, [&] {
            const std::string subject = Excerpt(known->name.View()) + Of(*frame.node);
            return std::pair(subject, subject + " occurs again; the " +
                                          (IsReadOnce(*known) ? "first" : "last") + " one counts");
        });
        return;
    }
    TellOfTaken(member, *known);
}

void ReportingImport::TellOf(const JSONNode& value, const MemberEffect* known) {
    const Frame& frame = frames_.back();
    const NodeText text = NodeName(value);
    const std::string name = Utf8OfAnsi(text);
    if (known == nullptr) {
        Tell(Reason::kUnknownMember, Component(), 0, [&] {
            return std::pair(Excerpt(name), Excerpt(name) + Of(*frame.node) + " is not recognised");
        });
    } else if (known->shape == Shape::kNodes && IsContainer(value) && !value.empty()) {
        Tell(Reason::kBelowFileRecord, Component(), 0, [&] {
            const std::string subject = Excerpt(name) + Of(*frame.node);
            return std::pair(subject, subject + ": nothing is imported below a file record");
        });
    } else if (IsAlwaysWritten(*known, frame.isFileRecord)) {
        if (!options_.listFixed) {
            builder_.Count(Reason::kFixed);
            return;
        }
        Tell(Reason::kFixed, Component(), 0, [&] {
            return std::pair(Excerpt(name),
                             Excerpt(name) + Of(*frame.node) + " changes nothing: every document has it");
        });
    } else {
        Tell(Reason::kWithoutEffect, Component(), 0,
             [&] { return std::pair(Excerpt(name), Excerpt(name) + Of(*frame.node) + " has no effect"); });
    }
}

void ReportingImport::TellOfTaken(const JSONNode& value, const MemberEffect& known) {
    Frame& frame = frames_.back();
    const std::string name(known.name.View());
    if (known.shape == Shape::kText) {
        if (isNullKey_) {
            Tell(Reason::kNullKey, Component(), 0, [&] {
                return std::pair(Describe(*frame.node),
                                 "the key" + Of(*frame.node) + " is null, and is left out");
            });
            return;
        }
        ++report_.membersTaken;
        TellOfText(value, Component(), name);
        return;
    }
    if (!IsContainer(value)) {
        // What is not a section may have been meant as one; null says that there is nothing.
        report_.elements += known.shape == Shape::kNodes && value.type() != JSON_NULL ? 1 : 0;
        Tell(Reason::kWrongKind, Component(), 0, [&] {
            const std::string subject = Excerpt(name) + Of(*frame.node);
            return std::pair(subject, subject + " is neither an array nor an object");
        });
        return;
    }
    ++report_.membersTaken;
    frame.openSection = known.name.View();
    frame.isOpenSectionNamed = value.type() == JSON_NODE;
    frame.next = 0;
    frame.hasMetadata = frame.hasMetadata || known.shape == Shape::kRecords;
    frame.hasChildren = frame.hasChildren || known.name == member::kChildren;
    frame.hasFiles = frame.hasFiles || known.name == member::kFiles;
}

void ReportingImport::TellOfText(const JSONNode& value, const std::string& component,
                                 const std::string& name) {
    const JSONNode& node = *frames_.back().node;
    const auto tell = [&](Reason reason, const char* what) {
        Tell(reason, component, 0, [&] {
            const std::string subject = Excerpt(name) + Of(node);
            return std::pair(subject, subject + what);
        });
    };
    if (IsContainer(value)) {
        tell(Reason::kReadAsEmpty, " is an object or an array, and is read as an empty text");
    } else if (value.type() == JSON_NULL) {
        tell(Reason::kReadAsNull, " is null, and is read as the text 'null'");
    } else if (const NodeText text = NodeValue(value);
               std::string_view(text).find('\0') != std::string_view::npos) {
        tell(Reason::kCutAtNul, " is cut at its NUL character");
    }
}

bool ReportingImport::SetsMember(const ImportTarget& target, format::MemberName member,
                                 const OuString& value) {
    if (member == format::member::kDatabaseKey && isNullKey_) {
        return false;
    }
    CountKey(target, member, value);
    return Sets(target, member, value);
}

void ReportingImport::CountKey(const ImportTarget& target, format::MemberName member, const OuString& value) {
    // A view item gets the key of what it shows and none of its own.
    const bool isOwn = frames_.back().isFileRecord || target.Kind() != Kind::kViewItem;
    report_.keys += member == format::member::kDatabaseKey && isOwn && !IsEmpty(value) ? 1 : 0;
}

bool ReportingImport::Sets(const ImportTarget& target, format::MemberName member, const OuString& value) {
    Frame& frame = frames_.back();
    if (options_.dryRun && member == format::member::kDatabaseKey && !frame.isFileRecord) {
        if (target.Kind() == Kind::kViewItem) {
            frame.linkKey = value;
        } else if (IsAssembly(target.Kind())) {
            assemblyKeys_.insert(AnsiFormOf(value));
            assembliesWithOtherKeys_.insert(frame.identifier);
        }
    }
    return target.object != nullptr && (!options_.dryRun || frame.isFileRecord);
}

}  // namespace korvane::exchange
