#pragma once

namespace CLI {
class App;
}

namespace host {

class Console;

/// Adds the command `export`, which writes the document of a project or of one object in it. When it is
/// called, `status` becomes the program's exit status.
void AddExportCommand(CLI::App& program, Console& console, int& status);

}  // namespace host
