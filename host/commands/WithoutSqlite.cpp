#include <CLI/CLI.hpp>
#include <string>

#include "Command.h"
#include "ProjectFileCommands.h"
#include "host/projectfile/ProjectFile.h"

// What stands in for project files and the server where SQLite is missing.

namespace host {
namespace {

constexpr const char* kLacking = "was built without SQLite";

void AddLackingCommand(CLI::App& program, const char* name, Console& console, int& status) {
    CLI::App& command = *program.add_subcommand(name, "Not in this build, which has no SQLite");
    command.allow_extras();
    command.callback([name, &console, &status] {
        console.Say(std::string("there is no '") + name + "' here, because this korvane-json " + kLacking +
                    ". Use one that was built with it");
        status = kNothingDone;
    });
}

}  // namespace

std::unique_ptr<CAEProject> ReadProjectFile(const std::filesystem::path&, Console&) {
    throw ProjectFileError(std::string("cannot be read as a project file: this korvane-json ") + kLacking);
}

void AddNewCommand(CLI::App& program, Console& console, int& status) {
    AddLackingCommand(program, "new", console, status);
}

void AddStoreCommand(CLI::App& program, Console& console, int& status) {
    AddLackingCommand(program, "store", console, status);
}

void AddApplyCommand(CLI::App& program, Console& console, int& status) {
    AddLackingCommand(program, "apply", console, status);
}

void AddFetchCommand(CLI::App& program, Console& console, int& status) {
    AddLackingCommand(program, "fetch", console, status);
}

void AddImportCommand(CLI::App& program, Console& console, int& status) {
    AddLackingCommand(program, "import", console, status);
}

}  // namespace host
