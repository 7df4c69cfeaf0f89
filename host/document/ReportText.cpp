#include "ReportText.h"

#include <array>

#include "host/system/Notes.h"
#include "host/system/Text.h"

using korvane::exchange::Entry;
using korvane::exchange::IsLeftOut;
using korvane::exchange::kReasonCount;
using korvane::exchange::Reason;
using korvane::exchange::Report;

namespace host {
namespace {

// The members are in the order of the columns of the table, which is read more often than it is stored.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct Heading {
    Reason reason;
    std::string_view text;
    /// Whether equal subjects are counted together: they are names of members.
    bool isOfNames = false;
};

constexpr Heading kHeadings[] = {
    {Reason::kUnknownMember, "members that are not recognised", true},
    {Reason::kWithoutEffect, "members without effect", true},
    {Reason::kRepeatedMember, "member that occurs more than once"},
    {Reason::kWrongKind, "ignored, because it is neither an array nor an object"},
    {Reason::kNotAnObject, "ignored, because it is not an object"},
    {Reason::kNoType, "left out with everything below it, because it has no \"type\""},
    {Reason::kUnknownType, "left out with everything below it, because its \"type\" is not known"},
    {Reason::kRefused, "left out with everything below it, because the object was not created"},
    {Reason::kBelowFileRecord, "nothing imported below a file record"},
    {Reason::kLeadsOut, "file left out, because its name leads out of the project's directory"},
    {Reason::kNoRole, "file left out, because its type has no role there"},
    {Reason::kNullKey, "\"dbkey\" ignored, because it is null"},
    {Reason::kConflict, "in conflict"},
    {Reason::kOtherRoot, "left out with everything below it, because it may be of another project"},
    {Reason::kNotComparable, "left as it is, because what the object has cannot be read back"},
    {Reason::kNoSuchObject, "key not set, because no object has the identifier"},
    {Reason::kNoIdentifier, "key not set, because there is no \"id\""},
    {Reason::kNoKey, "key not set, because there is no \"dbkey\""},
    {Reason::kLaterKey, "key not set, because an earlier node with the identifier has another key"},
    {Reason::kOtherKey, "key not set, because the object has another key"},
    {Reason::kKeyInUse, "key not set, because another object has it"},
    {Reason::kOtherParent, "left out with everything below it, because its object is in another place"},
    {Reason::kReadAsEmpty, "object or array read as an empty text"},
    {Reason::kNamelessFile, "file record that is not an object: a file without a name was created"},
    {Reason::kReadAsNull, "null read as the text 'null'"},
    {Reason::kCutAtNul, "text cut at a NUL character"},
    {Reason::kMerged,
     "metadata entry merged with an earlier one, because their names differ at most in letter case"},
    {Reason::kIncomplete, "metadata entry without \"value\" or \"metaDataType\", which is read as empty"},
    {Reason::kUnattached, "file that is attached to no object, because its type has no role there"},
    {Reason::kNoMasterAssembly,
     "view item that shows nothing, because no assembly with its key came before it"},
    {Reason::kNoNumber, "identifier that is not a number, read as the number that it begins with"},
    {Reason::kKeyRemoved, "key removed, because \"dbkey\" is empty"},
    {Reason::kAdded, "added"},
    {Reason::kChanged, "changed"},
    {Reason::kMoved, "moved"},
    {Reason::kRemoved, "removed"},
    {Reason::kKept, "not in the document, and kept"},
};

const Heading* FindHeading(Reason reason) {
    for (const Heading& heading : kHeadings) {
        if (heading.reason == reason) {
            return &heading;
        }
    }
    return nullptr;
}

/// What stands behind the heading: in a list of changes, the change.
const std::string& ShownOf(const Entry& entry) {
    const bool isChange = entry.reason == Reason::kChanged || entry.reason == Reason::kMoved ||
                          entry.reason == Reason::kConflict;
    return isChange ? entry.sentence : entry.subject;
}

/// The entries by their reasons. `isSaid` chooses among the reasons.
template <typename IsSaid>
void SayEntries(const Report& report, const std::string& what, Console& console, const IsSaid& isSaid) {
    Notes notes;
    std::array<std::size_t, kReasonCount> unlisted = report.counts;
    for (const Entry& entry : report.entries) {
        --unlisted[static_cast<std::size_t>(entry.reason)];
        const Heading* const heading = FindHeading(entry.reason);
        if (heading == nullptr || !isSaid(*heading)) {
            continue;
        }
        if (heading->isOfNames) {
            notes.AddQuoted(heading->text, entry.subject);
        } else {
            notes.Add(heading->text, [&] { return ShownOf(entry); });
        }
    }
    notes.Say(what, console);
    std::size_t more = 0;
    for (const Heading& heading : kHeadings) {
        more += isSaid(heading) ? unlisted[static_cast<std::size_t>(heading.reason)] : 0;
    }
    if (report.unlisted != 0 && more != 0) {
        console.Note(what + ": " + FormatCount(more, "more thing", "more things") + ", too many to list");
    }
}

std::string SayOfViewItems(const ImportReport& report) {
    return report.viewItems == 0 ? std::string()
                                 : ", " + std::to_string(report.viewItemsLinked) + " of " +
                                       FormatCount(report.viewItems, "view item", "view items") + " linked";
}

}  // namespace

void SayImport(const ImportReport& report, const std::string& what, Console& console) {
    std::string line = what + ": " + FormatCount(report.objectsAdded, "object", "objects") + " and " +
                       FormatCount(report.filesAdded, "file", "files") + " created, " +
                       std::to_string(report.filesAttached) + " of the files attached";
    if (report.filesAsChildren > 0) {
        line += " and " + std::to_string(report.filesAsChildren) + " as children";
    }
    console.Note(line + ", " + FormatCount(report.keys, "key", "keys") + " set" + SayOfViewItems(report));
    SayEntries(report, what, console,
               [](const Heading& heading) { return heading.reason != Reason::kAdded; });
}

void SayUpdate(const ImportReport& report, const std::string& what, Console& console) {
    if (!report.HasChanged()) {
        console.Note(what + ": nothing has changed");
    } else {
        console.Note(what + ": " + FormatCount(report.objectsAdded, "object", "objects") + " and " +
                     FormatCount(report.filesAdded, "file", "files") + " added, " +
                     FormatCount(report.Count(Reason::kChanged), "value", "values") + " changed, " +
                     FormatCount(report.objectsMoved, "object", "objects") + " moved, " +
                     std::to_string(report.objectsRemoved) + " removed" + SayOfViewItems(report));
    }
    SayEntries(report, what, console, [](const Heading&) { return true; });
}

void SayLeftOut(const ImportReport& report, const std::string& what, Console& console) {
    SayEntries(report, what, console,
               [](const Heading& heading) { return !heading.isOfNames && heading.reason != Reason::kAdded; });
}

void SayAnswer(const AnswerReport& report, const std::string& what, Console& console) {
    console.Note(what + ": " + FormatCount(report.keysSet, "key", "keys") + " set, " +
                 std::to_string(report.keysKept) + " unchanged" +
                 (report.hasName ? ", and the display name taken from the answer" : ""));
    SayEntries(report, what, console,
               [](const Heading& heading) { return heading.reason != Reason::kChanged; });
}

std::size_t CountSkipped(const Report& report) {
    std::size_t count = 0;
    for (std::size_t index = 0; index < kReasonCount; ++index) {
        const auto reason = static_cast<Reason>(index);
        count += IsLeftOut(reason) && reason != Reason::kFixed ? report.counts[index] : 0;
    }
    return count;
}

}  // namespace host
