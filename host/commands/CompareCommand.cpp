#include <EmbeddedModel.h>
#include <korvaneexchange/Compare.h>
#include <korvaneexchange/Text.h>

#include <CLI/CLI.hpp>
#include <memory>

#include "Commands.h"
#include "Complaint.h"
#include "ExitStatus.h"
#include "KeepUntilExit.h"
#include "Options.h"
#include "Output.h"
#include "ProjectInput.h"
#include "host/document/DocumentFile.h"
#include "host/system/Phase.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace host {
namespace {

using korvane::exchange::CompareReport;
using korvane::exchange::Entry;
using korvane::exchange::Reason;

/// How many differences are shown without --all.
constexpr std::size_t kMostShown = 20;
constexpr const char* kDates = "dates";

struct CompareOptions {
    std::string first;
    std::string second;
    bool isAllShown = false;
    ReportFormat format = ReportFormat::Text;
    std::string ignored;
};

/// What is compared: a project in memory, or a document.
struct Input {
    std::unique_ptr<CAEProject> project;
    std::optional<JSONNode> document;
};

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

bool OpenInput(const std::string& name, Input& input, Console& console) {
    if (KindOfInput(name) == InputKind::Document) {
        input.document = ReadJson(name, console);
        return input.document && IsImportable(*input.document, name, console);
    }
    std::optional<OpenedProject> reading = OpenProject({name, false}, std::nullopt, console);
    if (!reading) {
        return false;
    }
    input.project = std::move(reading->project);
    return true;
}

CompareReport CompareInputs(Input& first, Input& second, const korvane::exchange::CompareOptions& options) {
    const auto with = [&](auto& left) {
        return second.project != nullptr ? korvane::exchange::Compare(left, *second.project, options)
                                         : korvane::exchange::Compare(left, *second.document, options);
    };
    return first.project != nullptr ? with(*first.project) : with(*first.document);
}

char MarkOf(Reason reason) {
    for (const ShownReason& shown : kShownReasons) {
        if (shown.reason == reason) {
            return shown.mark;
        }
    }
    return '?';
}

/// `3 differences: 1 added, 2 changed`
std::string Summary(const CompareReport& report) {
    std::size_t total = 0;
    std::string numbers;
    for (const ShownReason& shown : kShownReasons) {
        const std::size_t count = report.Count(shown.reason);
        total += count;
        if (count > 0) {
            numbers += (numbers.empty() ? ": " : ", ") + std::to_string(count) + " " + shown.name;
        }
    }
    return FormatCount(total, "difference", "differences") + numbers + "\n";
}

std::string TextOf(const CompareReport& report, bool isAllShown) {
    if (report.IsSame()) {
        return "the same, apart from what the format does not carry: " +
               FormatCount(report.objects, "object", "objects") + " and " +
               FormatCount(report.files, "file", "files") + " compared\n";
    }
    std::string text;
    std::size_t shown = 0;
    for (const Entry& entry : report.entries) {
        if (!isAllShown && shown == kMostShown) {
            break;
        }
        text += std::string(1, MarkOf(entry.reason)) + " " + entry.sentence + "\n";
        ++shown;
    }
    const std::size_t left = report.entries.size() + report.unlisted - shown;
    if (left > 0) {
        text += "and " + std::to_string(left) + " more" +
                (isAllShown ? ", which are too many to list" : "; --all lists them") + "\n";
    }
    return text + Summary(report);
}

int Compare(const CompareOptions& options, Console& console) {
    Input first;
    Input second;
    if (!OpenInput(options.first, first, console) || !OpenInput(options.second, second, console)) {
        return kTrouble;
    }
    korvane::exchange::CompareOptions comparing;
    comparing.ignoreDates = options.ignored == kDates;
    comparing.displayNameOf = [](CAEProject& project) {
        return korvane::exchange::ToUtf8(korvane::GetDisplayName(project));
    };
    comparing.progress = [&](const korvane::exchange::Progress& progress) {
        console.ShowProgress("Comparing", progress.objects, progress.total);
        return true;
    };
    const CompareReport report = [&] {
        const Phase phase(console, "comparing");
        return CompareInputs(first, second, comparing);
    }();
    console.ClearProgress();
    const bool isWritten =
        WriteToStandardOutput(options.format == ReportFormat::Json ? korvane::exchange::ToJson(report) + '\n'
                                                                   : TextOf(report, options.isAllShown),
                              console);
    KeepUntilExit(std::move(first));
    KeepUntilExit(std::move(second));
    if (!isWritten) {
        return kTrouble;
    }
    return report.IsSame() ? kSuccess : kDifferent;
}

/// What is wrong with the two names; empty if nothing is.
std::string NamesComplaint(const CompareOptions& options) {
    if (options.first.empty()) {
        return "give two projects or documents to compare";
    }
    if (options.second.empty()) {
        return "give another project or document to compare " + InputName(options.first) + " with";
    }
    if (options.first == kStandardStream && options.second == kStandardStream) {
        return "only one of the two can be the standard input (-)";
    }
    return {};
}

}  // namespace

void AddCompareCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<CompareOptions>();
    CLI::App& command = *program.add_subcommand(
        kCompareName, "Say how two projects differ, apart from what documents do not carry");
    command
        .add_option("FIRST", options->first,
                    "A directory, a project file or a document (- is the standard input)")
        ->type_name("");
    command.add_option("SECOND", options->second, "Another one")->type_name("");
    command.add_flag("--all", options->isAllShown,
                     "Show all differences, not only the first " + std::to_string(kMostShown));
    const auto check = [](const std::string& text) -> std::string {
        return text == kDates ? "" : Quoted(text) + " is not dates, which is all that can be ignored";
    };
    command.add_option("--ignore", options->ignored, "Leave out dates of creation")
        ->type_name("WHAT")
        ->check(CLI::Validator(check, "{dates}"));
    AddFormat(command, options->format,
              "text (the default) is for people, json for scripts, with all differences:\n--format json");
    AddExamples(command,
                "  korvane-json compare bracket.kvp rebuilt.kvp\n"
                "  korvane-json compare --ignore dates projects/bracket bracket.json\n",
                "Each line is a difference:\n"
                "  + only the second has it    ~ a member has changed\n"
                "  - only the first has it     > it was moved\n"
                "Objects are compared by database key, else by names and kinds, else by position.\n"
                "Exit status: 0 the same, 1 different, 2 trouble");
    command.callback([options, &console, &status] {
        if (const std::string complaint = NamesComplaint(*options); !complaint.empty()) {
            console.Say(UsageMessage(complaint, kCompareName));
            status = kBadUsage;
            return;
        }
        status = Compare(*options, console);
    });
}

}  // namespace host
