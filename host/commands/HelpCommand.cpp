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
        command = CommandNamed(name, program);
        if (command == nullptr) {
            console.Say(UsageMessage(NoSuchCommand(name, program)));
            return kBadUsage;
        }
    }
    return WriteToStandardOutput(HelpText(program, command), console) ? kSuccess : kFailure;
}

}  // namespace

void AddHelpCommand(CLI::App& program, Console& console, int& status) {
    const auto name = std::make_shared<std::string>();
    const Command command =
        AddCommand(program, "help", "Print the help of a command, or of the program, as --help does");
    command.AddOption("COMMAND", *name, "The command; without one it is the help of the program").Type("");
    AddExamples(command,
                "  korvane-json help\n"
                "  korvane-json help export\n");
    command.Call([name, &program, &console, &status] { status = PrintHelp(program, *name, console); });
}

}  // namespace host
