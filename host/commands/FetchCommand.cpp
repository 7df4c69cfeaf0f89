#include <CLI/CLI.hpp>
#include <memory>
#include <optional>

#include "Commands.h"
#include "ExitStatus.h"
#include "Options.h"
#include "Output.h"
#include "host/server/Server.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace host {
namespace {

struct FetchOptions {
    std::string key;
    std::string database;
    std::string output = kStandardStream;
};

int FetchToOutput(const FetchOptions& options, Console& console) {
    if (!IsReplaceable(options.output, {options.database}, console)) {
        return kFailure;
    }
    const std::string name = Quoted(options.database);
    try {
        Server server = Server::OpenForFetching(PathFromUtf8(options.database));
        const std::optional<FetchedRoot> root = server.Find(options.key);
        if (!root) {
            console.Say("there is no object with the key " + Quoted(options.key) + " in " + name +
                        "; the answer from 'korvane-json store' lists the keys");
            return kFailure;
        }
        const auto writeLine = [&](const WritePiece& write) {
            const std::error_code error = server.Fetch(*root, write, console);
            return error ? error : write("\n");
        };
        return WriteOutput(options.output, writeLine, console) ? kSuccess : kFailure;
    } catch (const DatabaseError& error) {
        console.Say(name + " " + error.what());
        return kFailure;
    }
}

}  // namespace

void AddFetchCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<FetchOptions>();
    CLI::App& command = *program.add_subcommand(
        "fetch", "Act as a data-management server: write a stored object as a document");
    command
        .add_option("KEY", options->key,
                    "The database key of the object, from the answer of 'korvane-json store'")
        ->required()
        ->type_name("");
    command.add_option("--db", options->database, "The server's database: --db server.db")
        ->required()
        ->type_name("FILE");
    command
        .add_option("-o,--output", options->output,
                    "The file for the document; - is the standard output (the default):\n"
                    "-o bracket.json")
        ->type_name("FILE");
    AddExamples(command, "  korvane-json fetch PRJ-1-3f9a20 --db server.db -o bracket.json\n");
    command.callback([options, &console, &status] { status = FetchToOutput(*options, console); });
}

}  // namespace host
