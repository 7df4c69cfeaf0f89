#pragma once

namespace CLI {
class App;
}

namespace host {

class Console;

/// Adds the command `compare`, which tells whether two projects or documents are the same but for what the
/// format does not carry. When it is called, `status` becomes the program's exit status.
void AddCompareCommand(CLI::App& program, Console& console, int& status);

}  // namespace host
