#include "CompareText.h"

#include <EmbeddedModel.h>
#include <korvaneexchange/Text.h>

#include <cstddef>
#include <string_view>

#include "FileFacts.h"
#include "host/system/Text.h"

namespace host {
namespace {

using korvane::exchange::Reason;

struct ShownReason {
    Reason reason;
    char mark;
    const char* name;
};

/// The differences, in the order in which their numbers are shown.
constexpr ShownReason kShownReasons[] = {
    {Reason::kAdded, '+', "added"},
    {Reason::kRemoved, '-', "removed"},
    {Reason::kMoved, '>', "moved"},
    {Reason::kChanged, '~', "changed"},
};

}  // namespace

char MarkOf(Reason reason) {
    for (const ShownReason& shown : kShownReasons) {
        if (shown.reason == reason) {
            return shown.mark;
        }
    }
    return '?';
}

std::string SummaryOf(const korvane::exchange::CompareReport& report) {
    std::size_t total = 0;
    std::string numbers;
    for (const ShownReason& shown : kShownReasons) {
        const std::size_t count = report.Count(shown.reason);
        total += count;
        if (count > 0) {
            numbers += (numbers.empty() ? ": " : ", ") + std::to_string(count) + " " + shown.name;
        }
    }
    return FormatCount(total, "difference", "differences") + numbers;
}

korvane::exchange::CompareOptions UsualComparison() {
    korvane::exchange::CompareOptions options;
    options.displayNameOf = [](CAEProject& project) {
        return korvane::exchange::ToUtf8(korvane::GetDisplayName(project));
    };
    options.shownValue = [](std::string_view value, std::string_view unit) {
        return ShownValue(value, unit);
    };
    return options;
}

}  // namespace host
