#pragma once

namespace CLI {
class App;
}

/// The commands of the program. A command is one source file (`AddTreeCommand` is in TreeCommand.cpp), one
/// line here, and one line in the table of CommandLine.cpp.
///
/// Each function adds one command to the program. If the user gives that command, it runs, and `status` is
/// set to the exit status of the program (ExitStatus.h).
namespace host {

class Console;

/// Adds `tree`, which prints the objects of a project.
void AddTreeCommand(CLI::App& program, Console& console, int& status);

/// Adds `find`, which lists the objects that meet conditions.
void AddFindCommand(CLI::App& program, Console& console, int& status);
/// Adds `page`, which writes a page for the browser that shows a project.
void AddPageCommand(CLI::App& program, Console& console, int& status);

/// Adds `plot`, which draws two numbers of objects as points.
void AddPlotCommand(CLI::App& program, Console& console, int& status);

/// Adds `export`, which writes the document of a project or of one object in it.
void AddExportCommand(CLI::App& program, Console& console, int& status);

/// Adds `new`, which creates a project file from a directory, or one without objects.
void AddNewCommand(CLI::App& program, Console& console, int& status);

/// Adds `update`, which reads a directory again into its project file.
void AddUpdateCommand(CLI::App& program, Console& console, int& status);

/// Adds `store`, which acts as a data-management server: it stores a document and answers with its keys.
void AddStoreCommand(CLI::App& program, Console& console, int& status);

/// Adds `apply`, which sets the keys from a server's answer on the objects of a project file.
void AddApplyCommand(CLI::App& program, Console& console, int& status);

/// Adds `fetch`, which acts as a data-management server: it writes a stored object as a document.
void AddFetchCommand(CLI::App& program, Console& console, int& status);

/// Adds `import`, which rebuilds the objects of a document in a project file.
void AddImportCommand(CLI::App& program, Console& console, int& status);

inline constexpr const char* kCompareName = "compare";
/// Adds `compare`, which says how two projects or documents differ, apart from what documents do not carry.
void AddCompareCommand(CLI::App& program, Console& console, int& status);

/// Adds `completion`, which prints the scripts by which shells complete the program's arguments.
void AddCompletionCommand(CLI::App& program, Console& console, int& status);

/// Adds `help`, which prints the help of a command.
void AddHelpCommand(CLI::App& program, Console& console, int& status);

}  // namespace host
