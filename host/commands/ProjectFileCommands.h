#pragma once

namespace CLI {
class App;
}

/// The commands that need project files or the server's database. When a command is called, `status` becomes
/// the program's exit status.
namespace host {

class Console;

/// Adds `new`, which makes a project file of a directory, or one without objects.
void AddNewCommand(CLI::App& program, Console& console, int& status);
/// Adds `store`, which plays the data-management server: it takes a document and gives the keys.
void AddStoreCommand(CLI::App& program, Console& console, int& status);
/// Adds `apply`, which writes the keys of an answer onto the objects of a project file.
void AddApplyCommand(CLI::App& program, Console& console, int& status);
/// Adds `fetch`, which gives the document of an object that the server has.
void AddFetchCommand(CLI::App& program, Console& console, int& status);
/// Adds `import`, which makes objects of a document in a project file.
void AddImportCommand(CLI::App& program, Console& console, int& status);

}  // namespace host
