#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

class Console;

/// The exit status of the command if its work fails. There may be no command of this name.
int FailureStatus(std::string_view command);

/// Runs the program and returns its exit status. The arguments are in UTF-8, without the name of the program.
int RunCommandLine(std::vector<std::string> arguments, Console& console);

}  // namespace host
