#include <CLI/CLI.hpp>
#include <memory>

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
    bool isStrict = false;
    bool isDryRun = false;
    ReportFormat format = ReportFormat::Text;
};

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
        const AnswerReport report = ApplyAnswer(*answer, file.Project(), console);
        if (!report.hasFitted) {
            SayUseless(report, options.answer, console);
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
    CLI::App& command = *program.add_subcommand(
        "apply", "Set the database keys from the server's answer on the objects of a project file");
    command.add_option("ANSWER.json", options->answer, "The answer; - is the standard input")
        ->required()
        ->type_name("");
    command.add_option("PROJECT.kvp", options->file, "The project file")->required()->type_name("");
    AddStrictChange(command, options->isStrict);
    AddDryRun(command, options->isDryRun);
    AddReportFormat(command, options->format);
    AddExamples(command,
                "  korvane-json apply answer.json bracket.kvp\n"
                "  korvane-json store bracket.json --db server.db | korvane-json apply - bracket.kvp\n");
    command.callback([options, &console, &status] { status = ApplyToProjectFile(*options, console); });
}

}  // namespace host
