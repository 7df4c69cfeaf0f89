#include "MemberNotes.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "DocumentNode.h"

namespace host {
namespace {

constexpr std::string_view kUnknown = "members that are not recognised";
constexpr std::string_view kWithoutEffect = "members without effect";
constexpr std::string_view kContainerForText = "object or array taken for an empty text";
constexpr std::string_view kNullForText = "null taken for the text 'null'";
constexpr std::string_view kCut = "text cut at a NUL character";
constexpr std::string_view kNoContainer = "neither array nor object, and so without effect";
constexpr std::string_view kTwice = "member that comes more than once";
constexpr std::string_view kBelowRecord = "nothing imported below a file record";
constexpr std::string_view kNoRecord = "file record that is no object: a file without a name was made";
constexpr std::string_view kIncompleteEntry =
    "metadata entry without \"value\" or \"metaDataType\", taken for empty";

/// What becomes of a member.
enum class Effect { Text, Section, None };

struct KnownMember {
    std::string_view name;
    Effect inObject;
    Effect inRecord;
};

constexpr KnownMember kMembers[] = {
    {"name", Effect::Text, Effect::Text},
    {"displayName", Effect::Text, Effect::Text},
    {"createdDate", Effect::Text, Effect::Text},
    {"type", Effect::Text, Effect::None},
    {"dbkey", Effect::Text, Effect::Text},
    {"metaData", Effect::Section, Effect::Section},
    {"children", Effect::Section, Effect::None},
    {"files", Effect::Section, Effect::None},
    // New objects get identifiers, creators and paths of their own.
    {"id", Effect::None, Effect::None},
    {"createdBy", Effect::None, Effect::None},
    {"projectId", Effect::None, Effect::None},
    {"status", Effect::None, Effect::None},
    {"checkOut", Effect::None, Effect::None},
    {"subType", Effect::None, Effect::None},
    {"startDate", Effect::None, Effect::None},
    {"objectName", Effect::None, Effect::None},
    {"isBaseObject", Effect::None, Effect::None},
    {"projectType", Effect::None, Effect::None},
    {"category", Effect::None, Effect::None},
    {"models", Effect::None, Effect::None},
    {"versions", Effect::None, Effect::None},
    {"version", Effect::None, Effect::None},
    {"studyTypeName", Effect::None, Effect::None},
};

constexpr KnownMember kRecordMembers[] = {
    {"fileType", Effect::Text, Effect::Text},
    {"fileFormat", Effect::Text, Effect::Text},
    {"locationType", Effect::Text, Effect::Text},
    {"isInCoordinateGlobalFrame", Effect::Text, Effect::Text},
    {"isFileDownloaded", Effect::Text, Effect::Text},
    {"filePath", Effect::None, Effect::None},
};

constexpr std::size_t kCount = std::size(kMembers);

/// The member's place in the two tables, one behind the other; their length for an unknown one.
std::size_t PlaceOf(std::string_view name, NodeKind kind) {
    const auto* const found = std::ranges::find(kMembers, name, &KnownMember::name);
    if (found != std::end(kMembers)) {
        return static_cast<std::size_t>(found - std::begin(kMembers));
    }
    const auto* const ofRecord = kind == NodeKind::FileRecord
                                     ? std::ranges::find(kRecordMembers, name, &KnownMember::name)
                                     : std::end(kRecordMembers);
    return kCount + static_cast<std::size_t>(ofRecord - std::begin(kRecordMembers));
}

bool IsContainer(const JSONNode& value) {
    return value.type() == JSON_NODE || value.type() == JSON_ARRAY;
}

void NoteText(const JSONNode& node, const JSONNode& value, const std::string& name, Notes& notes) {
    const auto describe = [&] { return Excerpt(name) + " of " + Describe(node); };
    if (IsContainer(value)) {
        notes.Add(kContainerForText, describe);
    } else if (value.type() == JSON_NULL) {
        notes.Add(kNullForText, describe);
    } else if (const json_string text = value.as_string(); text.find('\0') != json_string::npos) {
        notes.Add(kCut, describe);
    }
}

void NoteMetadata(const JSONNode& node, const JSONNode& section, Notes& notes) {
    if (!IsContainer(section)) {
        notes.Add(kNoContainer, [&] { return "'metaData' of " + Describe(node); });
        return;
    }
    for (const JSONNode& entry : section) {
        const JSONNode record = entry.as_node();
        const JSONNode& members = record;
        if (members.find("value") == members.end() || members.find("metaDataType") == members.end()) {
            notes.Add(kIncompleteEntry,
                      [&] { return Excerpt(NameOfMember(entry)) + " of " + Describe(node); });
        }
        for (const JSONNode& value : members) {
            const std::string name = NameOfMember(value);
            if (name == "value" || name == "metaDataType") {
                NoteText(node, value, NameOfMember(entry) + "." + name, notes);
            } else {
                notes.AddName(kUnknown, name);
            }
        }
    }
}

}  // namespace

void NoteMembers(const JSONNode& node, NodeKind kind, Notes& notes) {
    if (node.type() != JSON_NODE) {
        if (kind == NodeKind::FileRecord) {
            notes.Add(kNoRecord, [&] { return Describe(node); });
        }
        return;
    }
    std::uint64_t met = 0;
    for (const JSONNode& value : node) {
        const std::string name = NameOfMember(value);
        const std::size_t place = PlaceOf(name, kind);
        if (place == kCount + std::size(kRecordMembers)) {
            notes.AddName(kUnknown, name);
            continue;
        }
        const KnownMember& known = place < kCount ? kMembers[place] : kRecordMembers[place - kCount];
        const Effect effect = kind == NodeKind::Object ? known.inObject : known.inRecord;
        const std::uint64_t bit = std::uint64_t{1} << place;
        if (effect != Effect::None && (met & bit) != 0) {
            notes.Add(kTwice, [&] { return Excerpt(name) + " of " + Describe(node); });
        }
        met |= bit;
        const bool isSection = name == member::kChildren || name == member::kFiles;
        if (effect == Effect::Text) {
            NoteText(node, value, name, notes);
        } else if (effect == Effect::Section && name == member::kMetaData) {
            NoteMetadata(node, value, notes);
        } else if (effect == Effect::Section && !IsContainer(value)) {
            notes.Add(kNoContainer, [&] { return Excerpt(name) + " of " + Describe(node); });
        } else if (effect == Effect::None && isSection) {
            if (IsContainer(value) && !value.empty()) {
                notes.Add(kBelowRecord, [&] { return Excerpt(name) + " of " + Describe(node); });
            }
        } else if (effect == Effect::None) {
            notes.AddName(kWithoutEffect, name);
        }
    }
}

}  // namespace host
