#include <CLI/CLI.hpp>
#include <memory>

#include "Commands.h"
#include "DatabaseCommand.h"
#include "Done.h"
#include "ExitStatus.h"
#include "KeepUntilExit.h"
#include "Options.h"
#include "host/document/AnswerReport.h"
#include "host/document/DocumentFile.h"
#include "host/projectfile/ProjectFile.h"
#include "host/system/Text.h"

namespace host {
namespace {

struct ApplyOptions {
    std::string answer;
    std::string file;
    bool isDryRun = false;
};

int ApplyToProjectFile(const ApplyOptions& options, Console& console) {
    return ChangeDatabase(options.file, console, [&] {
        const std::optional<JSONNode> answer = ReadJson(options.answer, console);
        if (!answer || !IsAnswer(*answer, options.answer, console)) {
            return kFailure;
        }
        ProjectFile file = ProjectFile::Open(PathFromUtf8(options.file), !options.isDryRun, console);
        AnswerReport report;
        if (!ApplyAnswer(*answer, file.Project(), report, console)) {
            SayUseless(*answer, options.answer, console);
            return kFailure;
        }
        if (!options.isDryRun) {
            file.SaveKeys(console);
        }
        const int status = ReportDone(options.isDryRun, console, [&] {
            report.Say(Quoted(options.file), console);
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
    AddDryRun(command, options->isDryRun);
    AddExamples(command,
                "  korvane-json apply answer.json bracket.kvp\n"
                "  korvane-json store bracket.json --db server.db | korvane-json apply - bracket.kvp\n");
    command.callback([options, &console, &status] { status = ApplyToProjectFile(*options, console); });
}

}  // namespace host
