#include <memory>

#include "Commands.h"
#include "Complaint.h"
#include "DatabaseCommand.h"
#include "Done.h"
#include "ExitStatus.h"
#include "KeepUntilExit.h"
#include "Options.h"
#include "Output.h"
#include "ReportJson.h"
#include "format/MemberNames.h"
#include "host/document/DocumentFile.h"
#include "host/document/DocumentNode.h"
#include "host/server/Server.h"
#include "host/system/Phase.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace host {
namespace {

struct StoreOptions {
    std::string document;
    std::string database;
    StoreRequest request;
    std::string output = kStandardStream;
    bool isDryRun = false;
    ReportFormat format = ReportFormat::Text;
};

int StoreFromFile(const StoreOptions& options, Console& console) {
    if (!IsReplaceable(options.output, {options.document, options.database}, console)) {
        return kFailure;
    }
    const std::optional<JSONNode> document = ReadJson(options.document, console);
    if (!document || !IsImportable(*document, options.document, console)) {
        return kFailure;
    }
    const bool hasName =
        !options.request.project.empty() || !MemberText(*document, format::member::kName).empty();
    if (!hasName && MemberText(*document, format::member::kDatabaseKey).empty()) {
        console.Say("the root of " + InputName(options.document) +
                    " has no name: give the name of the project with --project. Nothing was changed");
        return kFailure;
    }
    return ChangeDatabase(options.database, console, [&] {
        StoreReport report;
        Server server = Server::OpenForStoring(PathFromUtf8(options.database), options.isDryRun);
        const JSONNode answer = [&] {
            const Phase phase(console, "storing in " + Quoted(options.database));
            return server.Store(*document, options.request, report, console);
        }();
        constexpr std::string_view kStoredWithoutAnswer =
            "the document was stored: store it again with --again to get the answer, which will be the same";
        const auto answerAndReport = [&] {
            const bool isJson = options.format == ReportFormat::Json;
            if (!isJson) {
                report.Say(Quoted(options.database), console);
                SayDryRun(options.isDryRun, console);
            }
            if (!options.isDryRun && !WriteOutput(options.output, CompactText(answer), console)) {
                console.Say(kStoredWithoutAnswer);
                return kNotReported;
            }
            return isJson ? WriteReport(ToJson(report, options.isDryRun), options.isDryRun, console)
                          : kSuccess;
        };
        const int status = ReportDone(options.isDryRun, console, answerAndReport, kStoredWithoutAnswer);
        KeepUntilExit(*document);
        KeepUntilExit(answer);
        return status;
    });
}

}  // namespace

void AddStoreCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<StoreOptions>();
    const Command command = AddCommand(
        program, "store", "Act as a data-management server: store a document and answer with its keys");
    command.AddOption("DOCUMENT.json", options->document, "The document; - is the standard input")
        .Required()
        .Type("");
    command
        .AddOption("--db", options->database,
                   "The server's database; created if there is none: --db server.db")
        .Required()
        .Type("FILE");
    command
        .AddOption("--project", options->request.project,
                   "The name of the document's project, if the document's root has another name:\n"
                   "--project bracket")
        .Type("NAME");
    command.AddFlag("--again", options->request.isAgain,
                    "The document is of the project of this name that the database has already.\n"
                    "Needed if the document's root has no key");
    command
        .AddOption("-o,--output", options->output,
                   "The file for the answer; - is the standard output (the default):\n"
                   "-o answer.json")
        .Type("FILE");
    AddDryRun(command, options->isDryRun);
    AddFormat(command, options->format,
              "text (the default) reports what was done in messages, json as one JSON document\n"
              "on the standard output; the answer then needs a file of its own (-o):\n"
              "--format json");
    AddExamples(
        command,
        "  korvane-json store bracket.json --db server.db -o answer.json\n"
        "  korvane-json store bracket.json --db server.db --again -o answer.json\n"
        "  korvane-json store study.json --db server.db --project bracket --again -o answer.json\n",
        "An object that has a key of the database is stored under it again, except if the key is of\n"
        "another project: no project takes an object from another. Any other object is stored under the\n"
        "key of the object at the same path: the names and kinds on the way from the root of the project,\n"
        "and the order of equal names; for files also their type. Objects at other paths get new keys.\n"
        "Identifiers do not count.\n"
        "Projects of the same name can be different projects, so a document whose root has no key is\n"
        "refused if the database has a project of its name, except with --again. The document of a single\n"
        "object is recognised if the project has only one of its kind and name.\n"
        "Children and files that the document no longer has are detached from their object; they can still\n"
        "be fetched, and are recognised if they come back.");
    command.Call([options, &console, &status] {
        const bool isReportOnOutput = options->format == ReportFormat::Json && !options->isDryRun;
        if (isReportOnOutput && options->output == kStandardStream) {
            console.Say(UsageMessage(
                "with --format json the report is on the standard output: give a file for the answer with -o",
                "store"));
            status = kBadUsage;
            return;
        }
        status = StoreFromFile(*options, console);
    });
}

}  // namespace host
