#pragma once

#include <cstddef>
#include <string>

#include "host/directory/UpdateReport.h"
#include "host/document/ProjectObjects.h"
#include "host/server/StoreReport.h"
#include "host/system/Console.h"

/// Reports for scripts: one JSON document on the standard output, as docs/program-report.schema.json says, or
/// docs/report.schema.json for those of KorvaneExchange.
namespace host {

/// What `new` has done.
struct NewReport {
    ObjectCounts counts;
    bool isReplacing = false;
    std::size_t leftOut = 0;
};

/// The reports as JSON. `leftOut` entries of the directory could not be read or named in a document.
std::string ToJson(const NewReport& report, bool isDryRun);
std::string ToJson(const UpdateReport& report, std::size_t leftOut, bool isDryRun);
std::string ToJson(const StoreReport& report, bool isDryRun);

/// Writes the report, with a line feed at its end. If that fails after the work was done, a message says so,
/// and the result is kNotReported; in a dry run, where there was no work, kFailure. Otherwise it is kSuccess.
int WriteReport(const std::string& json, bool isDryRun, Console& console);

}  // namespace host
