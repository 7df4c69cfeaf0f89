#pragma once

#include <libjson.h>

#include <cstddef>
#include <string>

#include "Export.h"
#include "Progress.h"
#include "Report.h"

class CAEObject;

namespace korvane::exchange {

/// Which keys of an answer are set.
///
/// An answer finds its objects by their identifiers alone, and these are numbers of one export. An answer to
/// another export sets keys on objects that they were not given to. Such an answer has conflicts:
///
/// - An object has another key already (Reason::kOtherKey).
/// - Another object of the project has the key, or gets it from the answer (Reason::kKeyInUse).
/// - A node is below another one, and its object is neither a child of that one's object nor a file that is
///   attached to it, as the section says (Reason::kOtherParent). Everything below it is left out as well. A
///   node that is below one without "id" can be below any object.
///
/// An answer without conflicts can still be that to another export of a similar project.
enum class KeyChoice {
    /// All keys are set, as caerest::json::ApplyJsonResponseOnObject does.
    kAll,
    /// Keys with a conflict are left out and reported, and so is the name if there is a conflict. A host that
    /// wants all or nothing begins with a dry run, or does not save the project.
    kWithoutConflict,
    /// The same, but it is no conflict if an object has another key: the project goes to another server.
    kReplacing,
};

struct AnswerOptions {
    /// Nothing is changed, and the report says what would be.
    bool dryRun = false;
    ProgressCallback progress = {};
    KeyChoice keys = KeyChoice::kAll;
};

/// What an answer did. Entries with kChanged are keys that were set.
struct AnswerReport : Report {
    /// Whether the answer fitted any object. If not, nothing was changed, not even the display name;
    /// `whyUseless` says what it seems to be.
    bool hasFitted = false;
    std::string whyUseless;
    /// Objects and files whose key has changed, and those that had the same key before.
    std::size_t keysSet = 0;
    std::size_t keysKept = 0;
    /// Whether the answer has a name that became the display name of the project.
    bool hasName = false;

    /// Nodes that were left out because of a conflict, without those below them. None with KeyChoice::kAll.
    std::size_t Conflicts() const {
        return Count(Reason::kOtherKey) + Count(Reason::kKeyInUse) + Count(Reason::kOtherParent);
    }
};

/// Sets the keys of a server's answer on the objects of the object's project, with a report. Unless the
/// options say something else, it sets those that caerest::json::ApplyJsonResponseOnObject sets. Keys that
/// are null are left out. An answer that fits no object at all changes nothing. What was done when something
/// is thrown stays done.
KORVANEEXCHANGE_API AnswerReport ApplyAnswer(const JSONNode& answer, CAEObject& object,
                                             const AnswerOptions& options = {});

/// The report as JSON, as docs/report.schema.json says.
KORVANEEXCHANGE_API std::string ToJson(const AnswerReport& report);

}  // namespace korvane::exchange
