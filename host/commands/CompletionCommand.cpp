#include <memory>

#include "CommandTable.h"
#include "Commands.h"
#include "CompletionScripts.h"
#include "ExitStatus.h"
#include "Options.h"
#include "Output.h"

namespace host {
namespace {

int PrintScript(const CLI::App& program, const std::string& shell, Console& console) {
    const std::vector<CommandEntry> table = CommandTableOf(program);
    const std::string script = shell == "bash"  ? BashCompletion(table)
                               : shell == "zsh" ? ZshCompletion(table)
                                                : FishCompletion(table);
    return WriteToStandardOutput(script, console) ? kSuccess : kFailure;
}

}  // namespace

void AddCompletionCommand(CLI::App& program, Console& console, int& status) {
    const auto shell = std::make_shared<std::string>();
    const Command command =
        AddCommand(program, "completion", "Print the script that lets a shell complete commands and options");
    AddChoice(command, "SHELL", *shell, {"bash", "zsh", "fish"}, "", "The shell").Required();
    AddExamples(command,
                "  korvane-json completion bash > ~/.local/share/bash-completion/completions/korvane-json\n"
                "  korvane-json completion zsh > ~/.zfunc/_korvane-json\n"
                "  korvane-json completion fish > ~/.config/fish/completions/korvane-json.fish\n",
                "The packages for Linux install the scripts where the shells look for them.");
    command.Call([shell, &program, &console, &status] { status = PrintScript(program, *shell, console); });
}

}  // namespace host
