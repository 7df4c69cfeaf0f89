#pragma once

namespace CLI {
class App;
}

namespace host {

class Console;

/// Adds the command `tree`, which prints the objects of a project. When it is called, `status` becomes the
/// program's exit status.
void AddTreeCommand(CLI::App& program, Console& console, int& status);

}  // namespace host
