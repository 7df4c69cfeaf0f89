#pragma once

namespace CLI {
class App;
}

/// The commands of the program. Each has a source file of its own (`AddTreeCommand` stands in
/// TreeCommand.cpp), a line here, and a line in the table of CommandLine.cpp.
///
/// Every function adds one command to the program's arguments. When the user gives that command, it is run,
/// and `status` becomes the program's exit status (ExitStatus.h).
namespace host {

class Console;

/// Adds `tree`, which prints the objects of a project.
void AddTreeCommand(CLI::App& program, Console& console, int& status);

/// Adds `export`, which writes the document of a project or of one object in it.
void AddExportCommand(CLI::App& program, Console& console, int& status);

/// Adds `new`, which creates a project file from a directory, or one without objects.
void AddNewCommand(CLI::App& program, Console& console, int& status);

/// Adds `store`, which acts as a data-management server: it keeps a document and answers with its keys.
void AddStoreCommand(CLI::App& program, Console& console, int& status);

/// Adds `apply`, which writes the keys of a server's answer onto the objects of a project file.
void AddApplyCommand(CLI::App& program, Console& console, int& status);

/// Adds `fetch`, which acts as a data-management server: it writes the document of a stored object.
void AddFetchCommand(CLI::App& program, Console& console, int& status);

/// Adds `import`, which rebuilds the objects of a document in a project file.
void AddImportCommand(CLI::App& program, Console& console, int& status);

/// Adds `compare`, which says whether two projects or documents are the same, apart from what documents do
/// not carry.
void AddCompareCommand(CLI::App& program, Console& console, int& status);

}  // namespace host
