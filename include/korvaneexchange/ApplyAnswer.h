#pragma once

#include <libjson.h>

#include <cstddef>
#include <string>

#include "Export.h"
#include "Progress.h"
#include "Report.h"

class CAEObject;

namespace korvane::exchange {

struct AnswerOptions {
    /// Nothing is changed, and the report says what would be.
    bool dryRun = false;
    ProgressCallback progress = {};
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
};

/// Sets the keys of a server's answer on the objects of the object's project, as
/// caerest::json::ApplyJsonResponseOnObject does, with a report. Keys that are null are left out. An answer
/// that fits no object at all changes nothing. What was done when something is thrown stays done.
KORVANEEXCHANGE_API AnswerReport ApplyAnswer(const JSONNode& answer, CAEObject& object,
                                             const AnswerOptions& options = {});

/// The report as JSON, as docs/report.schema.json says.
KORVANEEXCHANGE_API std::string ToJson(const AnswerReport& report);

}  // namespace korvane::exchange
