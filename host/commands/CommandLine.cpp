#include "CommandLine.h"

#include <korvanejson/Module.h>

#include <CLI/CLI.hpp>
#include <new>

#include "Commands.h"
#include "Complaint.h"
#include "ExitStatus.h"
#include "HelpText.h"
#include "Output.h"
#include "Verbosity.h"
#include "host/system/ServerPath.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr const char* kPurpose =
    "Reads directories of simulation files as projects of studies, keeps projects in files, and\n"
    "turns them into the JSON documents of the data-management server and back.";

constexpr const char* kNotes =
    "How a directory is read:\n"
    "  A directory with solver decks is a study with one iteration for each deck; geometry and\n"
    "  meshes in it are parts, pictures named like a part belong to it, and everything else is a\n"
    "  file of the study. Other directories with files are assembly folders. Hidden entries are\n"
    "  left out, and so are project files and databases of this program. A link to a file in the\n"
    "  directory counts as a file; links to directories and links out of the directory are not\n"
    "  followed.\n"
    "\n"
    "The round trip:\n"
    "  new creates a project file, export writes its document, store gives the document to a stand-in\n"
    "  for the server and writes its answer, apply sets the keys from the answer on the project's\n"
    "  objects, fetch gets a document back from the server, and import rebuilds its objects. When the\n"
    "  directory has changed, update reads it again, and what is still there keeps its keys.\n"
    "\n"
    "Exit status:\n"
    "  0 success; 1 failure, or an entry left out (with --strict); 2 bad usage; 3 the change was made,\n"
    "  but the report or the answer about it could not be written\n"
    "  compare: 0 the same; 1 different; 2 failure or bad usage\n"
    "\n"
    "Examples:\n"
    "  korvane-json tree projects/bracket\n"
    "  korvane-json page projects/bracket -o bracket.html\n"
    "  korvane-json export projects/bracket -o bracket.json\n"
    "  korvane-json new projects/bracket bracket.kvp\n"
    "  korvane-json update projects/bracket bracket.kvp\n"
    "  korvane-json import bracket.json rebuilt.kvp\n"
    "  korvane-json compare bracket.kvp rebuilt.kvp\n"
    "  korvane-json help export\n";

using CommandAdder = void (*)(CLI::App& program, Console& console, int& status);
/// The commands, in the order in which the help lists them.
constexpr CommandAdder kCommands[] = {
    AddTreeCommand,   AddFindCommand,    AddPlotCommand,       AddPageCommand,  AddExportCommand,
    AddNewCommand,    AddUpdateCommand,  AddStoreCommand,      AddApplyCommand, AddFetchCommand,
    AddImportCommand, AddCompareCommand, AddCompletionCommand, AddHelpCommand,
};

/// The version in the form that scripts read, and the banner of the library.
std::string VersionText() {
    return std::string("korvane-json ") + KorvaneJson_get_module_info(KORVANEJSON_MODULE_VERSION) + '\n' +
           KorvaneJson_get_module_info(KORVANEJSON_MODULE_BANNER);
}

void DescribeProgram(CLI::App& program) {
    program.get_formatter()->column_width(26);
    program.get_formatter()->label("SUBCOMMAND", "COMMAND");
    program.get_formatter()->label("Subcommands", "Commands");
    // Options are the same on every platform: a slash begins a path.
    program.allow_windows_style_options(false);
    program.require_subcommand(0, 1);
    program.set_help_flag("-h,--help", "Print this help; after a command, the help of the command");
    program.set_version_flag("--version", VersionText(),
                             "Print the version of the library, and where and when it was built");
    program.footer(kNotes);
}

/// The user may work on a server, and name others: as an argument, or behind a switch as in --db=FILE.
void AllowServersOf(const std::vector<std::string>& arguments) {
    AllowServerOf(".");
    for (const std::string& argument : arguments) {
        AllowServerOf(PathFromUtf8(argument));
        AllowServerOf(PathFromUtf8(argument.substr(argument.find('=') + 1)));
    }
}

/// Prints the text that the user asked for.
int Print(const std::string& text, Console& console) {
    return WriteToStandardOutput(text, console) ? kSuccess : kFailure;
}

}  // namespace

int FailureStatus(std::string_view command) {
    return command == kCompareName ? kTrouble : kFailure;
}

int RunCommandLine(std::vector<std::string> arguments, Console& console) {
    AllowServersOf(arguments);
    CLI::App program(kPurpose, "korvane-json");
    DescribeProgram(program);
    constexpr int kNotRun = -1;
    int status = kNotRun;
    for (const CommandAdder addCommand : kCommands) {
        addCommand(program, console, status);
    }
    AddVerbosity(program, console);

    try {
        // The parser expects the arguments in reverse order.
        program.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
        const std::vector<CLI::App*> chosen = program.get_subcommands();
        return Print(HelpText(program, chosen.empty() ? nullptr : chosen.front()), console);
    } catch (const CLI::CallForVersion& version) {
        return Print(std::string(version.what()) + '\n', console);
    } catch (const CLI::ParseError& error) {
        console.Say(ComplaintOf(error, program, arguments));
        return kBadUsage;
    } catch (const std::bad_alloc&) {
        // The parser needs memory even after it has run the command, whose end counts.
        if (status == kNotRun) {
            throw;
        }
    }
    if (status == kNotRun) {
        console.Say("give a command, like 'korvane-json tree DIR'. 'korvane-json --help' lists them");
        return kBadUsage;
    }
    return status;
}

}  // namespace host
