#include <memory>
#include <string>

#include "Commands.h"
#include "DatabaseCommand.h"
#include "Done.h"
#include "ExitStatus.h"
#include "KeepUntilExit.h"
#include "Options.h"
#include "ReportJson.h"
#include "StrictChange.h"
#include "host/document/DocumentFile.h"
#include "host/document/DocumentImport.h"
#include "host/document/ReportText.h"
#include "host/projectfile/ProjectFile.h"
#include "host/system/Phase.h"
#include "host/system/Text.h"

namespace host {
namespace {

struct ApplyOptions {
    std::string answer;
    std::string file;
    bool isReplacing = false;
    bool isStrict = false;
    bool isDryRun = false;
    ReportFormat format = ReportFormat::Text;
};

using ReportEntry = korvane::exchange::Entry;
using korvane::exchange::KeyChoice;
using korvane::exchange::Reason;

constexpr std::size_t kShownConflicts = 3;

bool IsConflict(Reason reason) {
    return reason == Reason::kOtherKey || reason == Reason::kKeyInUse || reason == Reason::kOtherParent;
}

/// The first conflicts, one after another.
std::string FirstConflicts(const AnswerReport& report) {
    std::string text;
    std::size_t count = 0;
    for (const ReportEntry& entry : report.entries) {
        if (IsConflict(entry.reason) && count++ < kShownConflicts) {
            text += (text.empty() ? "" : "; ") + entry.sentence;
        }
    }
    return text + (count > kShownConflicts ? "; ..." : "");
}

/// An answer with a conflict has the identifiers of another export, so the keys without a conflict are likely
/// to be those of other objects as well. That is why none of them is set.
bool IsWithoutConflict(const AnswerReport& report, const ApplyOptions& options, Console& console) {
    const std::size_t count = report.Conflicts();
    if (count == 0) {
        return true;
    }
    const bool isOfOtherServer = count == report.Count(Reason::kOtherKey);
    console.Say(
        InputName(options.answer) + " does not fit " + Quoted(options.file) + ": it has " +
        FormatCount(count, "conflict", "conflicts") + " (" + FirstConflicts(report) +
        "). It seems to be the answer to another export, whose identifiers mean other objects. Nothing "
        "was changed. Store the document of the project file itself: 'korvane-json export PROJECT.kvp | "
        "korvane-json store - --db FILE | korvane-json apply - PROJECT.kvp'" +
        (isOfOtherServer ? ". If it is the answer of another server to this project, use --replace-keys"
                         : ""));
    return false;
}

int ApplyToProjectFile(const ApplyOptions& options, Console& console) {
    return ChangeDatabase(options.file, console, [&] {
        const std::optional<JSONNode> answer = ReadJson(options.answer, console);
        if (!answer) {
            return kFailure;
        }
        ProjectFile file = [&] {
            const Phase phase(console, "reading " + Quoted(options.file));
            return ProjectFile::Open(PathFromUtf8(options.file), !options.isDryRun, console);
        }();
        const AnswerReport report =
            ApplyAnswer(*answer, file.Project(), console,
                        options.isReplacing ? KeyChoice::kReplacing : KeyChoice::kWithoutConflict);
        if (!report.hasFitted) {
            SayUseless(report, options.answer, console);
            return kFailure;
        }
        if (!IsWithoutConflict(report, options, console)) {
            return kFailure;
        }
        if (!IsAllowed(report, {options.answer, options.isStrict}, console)) {
            return kFailure;
        }
        if (!options.isDryRun) {
            const Phase phase(console, "writing " + Quoted(options.file));
            file.SaveKeys(console);
        }
        const int status = ReportDone(options.isDryRun, console, [&] {
            if (options.format == ReportFormat::Json) {
                return WriteReport(korvane::exchange::ToJson(report), options.isDryRun, console);
            }
            SayAnswer(report, Quoted(options.file), console);
            SayDryRun(options.isDryRun, console);
            return kSuccess;
        });
        KeepUntilExit(file.TakeProject());
        KeepUntilExit(*answer);
        return status;
    });
}

}  // namespace

void AddApplyCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<ApplyOptions>();
    const Command command = AddCommand(
        program, "apply", "Set the database keys from the server's answer on the objects of a project file");
    command.AddOption("ANSWER.json", options->answer, "The answer; - is the standard input")
        .Required()
        .Type("");
    command.AddOption("PROJECT.kvp", options->file, "The project file").Required().Type("");
    command.AddFlag("--replace-keys", options->isReplacing,
                    "Replace the keys that objects have already: the project goes to another server");
    AddStrictChange(command, options->isStrict);
    AddDryRun(command, options->isDryRun);
    AddReportFormat(command, options->format);
    AddExamples(
        command,
        "  korvane-json apply answer.json bracket.kvp\n"
        "  korvane-json export bracket.kvp | korvane-json store - --db server.db |"
        " korvane-json apply - bracket.kvp\n"
        "  korvane-json apply --replace-keys answer.json bracket.kvp\n",
        "An answer finds its objects by their identifiers, which are numbers of one export. So an answer\n"
        "that does not fit the project is refused, and nothing is changed: if an object has another key,\n"
        "if another object has the key, or if a node is not below the same object as in the project.\n"
        "Export the project file, and not its directory, which would be numbered anew.");
    command.Call([options, &console, &status] { status = ApplyToProjectFile(*options, console); });
}

}  // namespace host
