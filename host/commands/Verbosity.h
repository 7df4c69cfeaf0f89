#pragma once

namespace CLI {
class App;
}

namespace host {

class Console;

/// Adds --quiet and --verbose to the program and to all its commands, so that they may stand before the
/// command and behind it. They set what the console says before any command runs.
void AddVerbosity(CLI::App& program, Console& console);

}  // namespace host
