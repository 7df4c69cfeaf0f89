#include "MemberNotes.h"

#include <array>
#include <cstddef>
#include <iterator>
#include <string>
#include <unordered_set>
#include <utility>

#include "DocumentNode.h"
#include "format/Effects.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;
using format::Effect;
using format::MemberEffect;
using format::Shape;

namespace host {
namespace {

constexpr std::string_view kUnknown = "members that are not recognised";
constexpr std::string_view kWithoutEffect = "members without effect";
constexpr std::string_view kContainerForText = "object or array read as an empty text";
constexpr std::string_view kNullForText = "null read as the text 'null'";
constexpr std::string_view kCut = "text cut at a NUL character";
constexpr std::string_view kNoContainer = "ignored, because it is neither an array nor an object";
constexpr std::string_view kTwice = "member that occurs more than once";
constexpr std::string_view kBelowRecord = "nothing imported below a file record";
constexpr std::string_view kNoRecord = "file record that is not an object: a file without a name was created";
constexpr std::string_view kMerged =
    "metadata entry merged with an earlier one, because their names differ at most in letter case";
constexpr std::string_view kIncompleteEntry =
    "metadata entry without \"value\" or \"metaDataType\", which is read as empty";

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

/// The names of the metadata entries of a node so far, as the object model compares them.
using NamesOfEntries = std::unordered_set<std::string>;

void NoteMetadata(const JSONNode& node, const JSONNode& section, NamesOfEntries& names, Notes& notes) {
    if (!IsContainer(section)) {
        return;
    }
    for (const JSONNode& record : section) {
        // The elements of an array have no names.
        const std::string name = section.type() == JSON_NODE ? NameOfMember(record) : std::string();
        if (!names.insert(ComparedName(name)).second) {
            notes.Add(kMerged, [&] { return Excerpt(name) + " of " + Describe(node); });
        }
        if (FindMember(record, member::kValue) == nullptr ||
            FindMember(record, member::kMetaDataType) == nullptr) {
            notes.Add(kIncompleteEntry, [&] { return Excerpt(name) + " of " + Describe(node); });
        }
        if (record.type() != JSON_NODE) {
            continue;
        }
        for (const JSONNode& value : record) {
            const std::string memberName = NameOfMember(value);
            if (memberName == member::kValue || memberName == member::kMetaDataType) {
                NoteText(node, value, std::string(name).append(".").append(memberName), notes);
            } else {
                notes.AddName(kUnknown, memberName);
            }
        }
    }
}

/// Notes a member whose value is applied.
void NoteTaken(const JSONNode& node, const JSONNode& value, const MemberEffect& known, NamesOfEntries& names,
               Notes& notes) {
    const std::string name = known.name.c_str();
    if (known.shape == Shape::kText) {
        NoteText(node, value, name, notes);
        return;
    }
    if (!IsContainer(value)) {
        notes.Add(kNoContainer, [&] { return Excerpt(name) + " of " + Describe(node); });
    }
    if (known.shape == Shape::kRecords) {
        NoteMetadata(node, value, names, notes);
    }
}

/// Notes a member that an import knows and ignores.
void NoteWithoutEffect(const JSONNode& node, const JSONNode& value, const MemberEffect& known, Notes& notes) {
    const std::string name = known.name.c_str();
    if (known.shape != Shape::kNodes) {
        notes.AddName(kWithoutEffect, name);
    } else if (!value.empty()) {
        notes.Add(kBelowRecord, [&] { return Excerpt(name) + " of " + Describe(node); });
    }
}

}  // namespace

void NoteMembers(const JSONNode& node, NodePlace place, Notes& notes) {
    if (node.type() != JSON_NODE) {
        if (place == NodePlace::FileRecord) {
            notes.Add(kNoRecord, [&] { return Describe(node); });
        }
        return;
    }
    std::array<bool, std::size(format::kMemberEffects)> isMet{};
    NamesOfEntries names;
    for (const JSONNode& value : node) {
        const std::string name = NameOfMember(value);
        const MemberEffect* const known = format::FindEffect(name);
        const Effect effect = known == nullptr                 ? Effect::kUnknown
                              : place == NodePlace::FileRecord ? known->inRecord
                                                               : known->inObject;
        if (effect == Effect::kUnknown) {
            notes.AddName(kUnknown, name);
        } else if (effect == Effect::kWithoutEffect) {
            NoteWithoutEffect(node, value, *known, notes);
        } else {
            if (std::exchange(isMet[static_cast<std::size_t>(known - std::begin(format::kMemberEffects))],
                              true)) {
                notes.Add(kTwice, [&] { return Excerpt(name) + " of " + Describe(node); });
            }
            NoteTaken(node, value, *known, names, notes);
        }
    }
}

}  // namespace host
