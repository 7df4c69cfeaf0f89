#include "StrictChange.h"

#include "host/document/DocumentFile.h"
#include "host/document/ReportText.h"
#include "host/system/Text.h"

using ReportEntry = korvane::exchange::Entry;
using korvane::exchange::IsLeftOut;
using korvane::exchange::Reason;

namespace host {

void AddStrictChange(const Command& command, bool& isStrict) {
    command.AddFlag("--strict", isStrict,
                    "Change nothing and end with status 1 if anything of the input cannot be used.\n"
                    "Members that every document has are no such thing");
}

bool IsAllowed(const korvane::exchange::Report& report, const StrictInput& input, Console& console) {
    const std::size_t skipped = CountSkipped(report);
    if (!input.isStrict || skipped == 0) {
        return true;
    }
    std::string first;
    for (const ReportEntry& entry : report.entries) {
        if (IsLeftOut(entry.reason) && entry.reason != Reason::kFixed) {
            first = ", the first at '" + Printable(std::string_view(entry.pointer)) + "': " + entry.sentence;
            break;
        }
    }
    console.Say(FormatCount(skipped, "value", "values") + " of " + InputName(input.file) +
                " cannot be used, which --strict does not allow" + first +
                ". Nothing was changed; without --strict the rest is taken");
    return false;
}

}  // namespace host
