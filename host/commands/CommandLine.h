#pragma once

#include <string>
#include <vector>

namespace host {

class Console;

/// Runs the program with its arguments in UTF-8, the program's own name left out, and returns the exit
/// status.
int RunCommandLine(std::vector<std::string> arguments, Console& console);

}  // namespace host
