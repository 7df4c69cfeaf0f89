#pragma once

#include <libjson.h>

#include <cstddef>
#include <string>

#include "Export.h"
#include "Progress.h"
#include "Report.h"

class CAEObject;

class CAEObject;

namespace korvane::exchange {

struct CompareOptions {
    /// Whether dates of creation are left out.
    bool ignoreDates = false;
    ProgressCallback progress = {};
};

/// What differs: entries with kAdded (only the second has it), kRemoved (only the first), kMoved and
/// kChanged. Pointers lead into the second document, those of kRemoved into the first. `subject` is the path
/// of names from the root.
struct CompareReport : Report {
    /// Objects and files of the first that were compared with one of the second.
    std::size_t objects = 0;
    std::size_t files = 0;

    bool IsSame() const {
        return Count(Reason::kAdded) + Count(Reason::kRemoved) + Count(Reason::kMoved) +
                   Count(Reason::kChanged) ==
               0;
    }
};

/// Compares what the format carries of two objects with everything below them, or of an object and a
/// document, or of two documents. Objects are aligned by database key, else by the path of names and kinds,
/// else by position among those of their kind under one parent. Throws std::bad_alloc, and what the object
/// model or the callback throws.
KORVANEEXCHANGE_API CompareReport Compare(CAEObject& first, CAEObject& second,
                                          const CompareOptions& options = {});
KORVANEEXCHANGE_API CompareReport Compare(CAEObject& first, const JSONNode& second,
                                          const CompareOptions& options = {});
KORVANEEXCHANGE_API CompareReport Compare(const JSONNode& first, const JSONNode& second,
                                          const CompareOptions& options = {});

/// The report as JSON, as docs/report.schema.json says.
KORVANEEXCHANGE_API std::string ToJson(const CompareReport& report);

}  // namespace korvane::exchange
