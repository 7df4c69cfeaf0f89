#pragma once

#include <string>

namespace CLI {
class App;
}

namespace host {

/// The help of a command of the program, or of the program itself if `command` is null. Throws
/// std::bad_alloc.
std::string HelpText(const CLI::App& program, const CLI::App* command);

/// The command of this name; null if there is none.
const CLI::App* CommandNamed(const std::string& name, const CLI::App& program);

}  // namespace host
