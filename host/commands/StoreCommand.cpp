#include <CLI/CLI.hpp>
#include <memory>

#include "Commands.h"
#include "DatabaseCommand.h"
#include "ExitStatus.h"
#include "Options.h"
#include "Output.h"
#include "format/MemberNames.h"
#include "host/document/DocumentFile.h"
#include "host/document/DocumentNode.h"
#include "host/server/Server.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace host {
namespace {

struct StoreOptions {
    std::string document;
    std::string database;
    std::string project;
    std::string output = kStandardStream;
    bool isDryRun = false;
};

int StoreFromFile(const StoreOptions& options, Console& console) {
    if (!IsReplaceable(options.output, {options.document, options.database}, console)) {
        return kFailure;
    }
    const std::optional<JSONNode> document = ReadJson(options.document, console);
    if (!document || !IsImportable(*document, options.document, console)) {
        return kFailure;
    }
    const std::string project =
        options.project.empty() ? MemberText(*document, format::member::kName) : options.project;
    if (project.empty()) {
        console.Say("the root of " + InputName(options.document) +
                    " has no name: give the project's with --project. Nothing was changed");
        return kFailure;
    }
    return ChangeDatabase(options.database, console, [&] {
        StoreReport report;
        Server server = Server::OpenForStoring(PathFromUtf8(options.database), options.isDryRun);
        const std::string answer = CompactText(server.Store(*document, project, report, console));
        report.Say(Quoted(options.database), console);
        SayDryRun(options.isDryRun, console);
        if (!options.isDryRun && !WriteOutput(options.output, answer, console)) {
            console.Say(
                "the document is stored all the same: store it again for the answer, which will be the "
                "same");
            return kFailure;
        }
        return kSuccess;
    });
}

}  // namespace

void AddStoreCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<StoreOptions>();
    CLI::App& command = *program.add_subcommand(
        "store", "Play the data-management server: keep a document and answer with its keys");
    command.description(
        "Play the data-management server: keep a document and answer with its keys.\n"
        "\n"
        "An object that bears a key of the database is stored under it again, any other one under\n"
        "the key that its identifier got in the project of this name before. Children and files that\n"
        "the document no longer has belong to their object no longer; they can still be fetched.");
    command.add_option("DOCUMENT.json", options->document, "The document; - is the standard input")
        ->required()
        ->type_name("");
    command
        .add_option("--db", options->database,
                    "The server's database; made when there is none: --db server.db")
        ->required()
        ->type_name("FILE");
    command
        .add_option("--project", options->project,
                    "The name of the project that the identifiers belong to, where the\n"
                    "document's root bears another one: --project bracket")
        ->type_name("NAME");
    command
        .add_option("-o,--output", options->output,
                    "The file for the answer; - is the standard output (the default):\n"
                    "-o answer.json")
        ->type_name("FILE");
    AddDryRun(command, options->isDryRun);
    AddExamples(command,
                "  korvane-json store bracket.json --db server.db -o answer.json\n"
                "  korvane-json store study.json --db server.db --project bracket -o answer.json\n");
    command.callback([options, &console, &status] { status = StoreFromFile(*options, console); });
}

}  // namespace host
