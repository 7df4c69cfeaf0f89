#include <korvaneexchange/Compare.h>

#include <memory>

#include "Commands.h"
#include "Complaint.h"
#include "ExitStatus.h"
#include "KeepUntilExit.h"
#include "Options.h"
#include "Output.h"
#include "ProjectInput.h"
#include "host/document/CompareText.h"
#include "host/document/DocumentFile.h"
#include "host/system/Phase.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace host {
namespace {

using korvane::exchange::CompareReport;
using ReportEntry = korvane::exchange::Entry;

/// How many differences are shown without --all.
constexpr std::size_t kMostShown = 20;

struct CompareOptions {
    std::string first;
    std::string second;
    bool isAllShown = false;
    ReportFormat format = ReportFormat::Text;
    Ignored ignored;
    /// For those of the two that are directories.
    Selection selection;
};

/// What is compared: a project in memory, or a document.
struct Input {
    std::unique_ptr<CAEProject> project;
    std::optional<JSONNode> document;
    /// What was left out of a directory.
    Exclusion exclusion;
};

bool OpenInput(const std::string& name, const Selection& selection, Input& input, Console& console) {
    const InputKind kind = KindOfInput(name);
    if (kind == InputKind::Document) {
        input.document = ReadJson(name, console);
        return input.document && IsImportable(*input.document, name, console);
    }
    std::optional<OpenedProject> reading =
        OpenProject({name, false, SelectionFor(name, selection)}, std::nullopt, console);
    if (!reading) {
        return false;
    }
    input.project = std::move(reading->project);
    input.exclusion = std::move(reading->exclusion);
    return true;
}

CompareReport CompareInputs(Input& first, Input& second, const korvane::exchange::CompareOptions& options) {
    const auto with = [&](auto& left) {
        return second.project != nullptr ? korvane::exchange::Compare(left, *second.project, options)
                                         : korvane::exchange::Compare(left, *second.document, options);
    };
    return first.project != nullptr ? with(*first.project) : with(*first.document);
}

std::string TextOf(const CompareReport& report, bool isAllShown) {
    if (report.IsSame()) {
        return "the same, apart from what the format does not carry: " +
               FormatCount(report.objects, "object", "objects") + " and " +
               FormatCount(report.files, "file", "files") + " compared\n";
    }
    std::string text;
    std::size_t shown = 0;
    for (const ReportEntry& entry : report.entries) {
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
    return text + SummaryOf(report) + "\n";
}

int Compare(const CompareOptions& options, Console& console) {
    Input first;
    Input second;
    if (!OpenInput(options.first, options.selection, first, console) ||
        !OpenInput(options.second, options.selection, second, console)) {
        return kTrouble;
    }
    KeepComparedPart(options.selection, {options.first, first.project.get(), first.exclusion},
                     {options.second, second.project.get(), second.exclusion});
    korvane::exchange::CompareOptions comparing = UsualComparison();
    comparing.ignoreDates = options.ignored.dates;
    comparing.ignoreKeys = options.ignored.keys || KindOfInput(options.first) == InputKind::Directory ||
                           KindOfInput(options.second) == InputKind::Directory;
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
    return SelectionComplaint(options.selection, options.first, options.second);
}

}  // namespace

void AddCompareCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<CompareOptions>();
    const Command command = AddCommand(program, kCompareName,
                                       "Say how two projects differ, apart from what documents do not carry");
    command
        .AddOption("FIRST", options->first,
                   "A directory, a project file or a document (- is the standard input)")
        .Type("");
    command.AddOption("SECOND", options->second, "Another one").Type("");
    command.AddFlag("--all", options->isAllShown,
                    "Show all differences, not only the first " + std::to_string(kMostShown));
    AddIgnore(command, options->ignored);
    AddSelection(command, options->selection);
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
    command.Call([options, &console, &status] {
        if (const std::string complaint = NamesComplaint(*options); !complaint.empty()) {
            console.Say(UsageMessage(complaint, kCompareName));
            status = kBadUsage;
            return;
        }
        status = Compare(*options, console);
    });
}

}  // namespace host
