#pragma once

#include <string>

namespace CLI {
class App;
}

namespace host {

/// The help of a command of the program, or of the program itself if `command` is null. Throws
/// std::bad_alloc.
std::string HelpText(const CLI::App& program, const CLI::App* command);

}  // namespace host
