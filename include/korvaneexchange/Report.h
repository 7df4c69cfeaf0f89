#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Export.h"

namespace korvane::exchange {

/// What an entry of a report says. The names (NameOf) and their meaning stay from version to version; new
/// ones may be added. docs/reports.md has a table of them.
enum class Reason {
    // Left out: this has no effect.

    /// A member that the format does not know at this place.
    kUnknownMember,
    /// A member that the format knows and that changes nothing, as servers send it.
    kWithoutEffect,
    /// A member that every document has and that changes nothing: "id" and "createdBy" among them.
    kFixed,
    /// A member that is read once and occurs again.
    kRepeatedMember,
    /// A value of another kind than the member has.
    kWrongKind,
    /// An element of an answer that is not an object.
    kNotAnObject,
    /// An element without "type", or with an empty one.
    kNoType,
    /// An element whose "type" is not known.
    kUnknownType,
    /// An element for which the object model made no object, or a document for an object without a project.
    kRefused,
    /// "children" or "files" in a file record.
    kBelowFileRecord,
    /// A file name that leads out of the project's directory.
    kLeadsOut,
    /// In an update, a file whose type has no role at its object, so that nothing would show that it is
    /// there.
    kNoRole,
    /// A key that is null.
    kNullKey,
    /// A key that occurs twice, or belongs to an object of another kind or place; a second record of a file
    /// that says something else.
    kConflict,
    /// A root that is not recognised as the object that an update would read it onto, so that it may be of
    /// another one.
    kOtherRoot,
    /// A value that the object model takes but does not show, so that it is set on new objects only.
    kNotComparable,
    /// The key of an answer for which there is no object.
    kNoSuchObject,
    /// A node of an answer without "id" or without "dbkey".
    kNoIdentifier,
    kNoKey,
    /// A node of an answer whose object gets another key from another node.
    kLaterKey,
    /// A key of an answer for an object that has another one, which stays (KeyChoice).
    kOtherKey,
    /// A key of an answer that another object of the project has.
    kKeyInUse,
    /// A node of an answer that is not where its object is in the project, with everything below it.
    kOtherParent,

    // Taken, and not as it stands.

    /// An object or array that is read as an empty text.
    kReadAsEmpty,
    /// A file record that is not an object, for which a file without a name is made.
    kNamelessFile,
    /// A null that is read as the text "null".
    kReadAsNull,
    /// A text that ends at its NUL character.
    kCutAtNul,
    /// A metadata entry that replaced an earlier one of the document, because their names are the same but
    /// for letter case.
    kMerged,
    /// A metadata record without "value" or "metaDataType".
    kIncomplete,
    /// A file that is attached to no object, because its type has no role there.
    kUnattached,
    /// A view item that shows nothing, because no assembly with its key came before it.
    kNoMasterAssembly,
    /// An identifier that is no number, read as the number that it begins with.
    kNoNumber,
    /// An empty key of an answer, which removes the object's key.
    kKeyRemoved,

    // Done, or to be done, or found by a comparison.

    kAdded,
    kChanged,
    kMoved,
    kRemoved,
    /// What the document lacks and the tree keeps.
    kKept,
};

constexpr std::size_t kReasonCount = static_cast<std::size_t>(Reason::kKept) + 1;

/// The name of the reason in reports: kUnknownMember is "unknown-member".
KORVANEEXCHANGE_API std::string_view NameOf(Reason reason);

/// Whether the reason says that something of the document had no effect.
constexpr bool IsLeftOut(Reason reason) {
    return reason <= Reason::kOtherParent;
}

/// Whether the reason says that something was changed.
constexpr bool IsChange(Reason reason) {
    return reason >= Reason::kAdded && reason <= Reason::kRemoved;
}

struct Entry {
    /// Where it stands in the document: a JSON Pointer, empty for the root.
    std::string pointer;
    /// The identifier of the object in the tree; 0 where there is none.
    int identifier = 0;
    Reason reason = Reason::kUnknownMember;
    /// What it is about, as messages show it: 'bracket' (id '12').
    std::string subject;
    /// All of it, for people, in UTF-8 and on one line.
    std::string sentence;
};

/// What every report has.
struct Report {
    /// In the order in which they were met. The texts of the entries take at most 256 MB; what comes then is
    /// counted and not listed.
    std::vector<Entry> entries;
    std::size_t unlisted = 0;
    /// How many there are of each reason, unlisted ones among them.
    std::array<std::size_t, kReasonCount> counts{};
    /// Whether the callback stopped the work. What was done before stays.
    bool isStopped = false;

    std::size_t Count(Reason reason) const { return counts[static_cast<std::size_t>(reason)]; }
};

}  // namespace korvane::exchange
