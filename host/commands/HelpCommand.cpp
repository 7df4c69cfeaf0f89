#include <CLI/CLI.hpp>
#include <memory>

#include "Commands.h"
#include "Complaint.h"
#include "ExitStatus.h"
#include "HelpText.h"
#include "Options.h"
#include "Output.h"

namespace host {
namespace {

int PrintHelp(const CLI::App& program, const std::string& name, Console& console) {
    const CLI::App* command = nullptr;
    if (!name.empty()) {
        const auto found =
            program.get_subcommands([&](const CLI::App* candidate) { return candidate->get_name() == name; });
        if (found.empty()) {
            console.Say(UsageMessage(NoSuchCommand(name, program)));
            return kBadUsage;
        }
        command = found.front();
    }
    return WriteToStandardOutput(HelpText(program, command), console) ? kSuccess : kFailure;
}

}  // namespace

void AddHelpCommand(CLI::App& program, Console& console, int& status) {
    const auto name = std::make_shared<std::string>();
    CLI::App& command =
        *program.add_subcommand("help", "Print the help of a command, or of the program, as --help does");
    command.add_option("COMMAND", *name, "The command; without one it is the help of the program")
        ->type_name("");
    AddExamples(command,
                "  korvane-json help\n"
                "  korvane-json help export\n");
    command.callback([name, &program, &console, &status] { status = PrintHelp(program, *name, console); });
}

}  // namespace host
