#pragma once

#include <string>
#include <vector>

namespace host {

class Console;

/// Runs the program and returns its exit status. The arguments are in UTF-8, without the name of the program.
int RunCommandLine(std::vector<std::string> arguments, Console& console);

}  // namespace host
