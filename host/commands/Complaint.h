#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

/// Messages about wrong arguments.
namespace host {

/// What is wrong with the arguments that the program has parsed. It names the argument that is wrong, or all
/// that are too many in the order in which they were given.
std::string ComplaintOf(const CLI::ParseError& error, const CLI::App& program,
                        const std::vector<std::string>& arguments);

/// There is no such command, with the one that was meant, if there is one like it.
std::string NoSuchCommand(const std::string& name, const CLI::App& program);

/// The complaint, a sentence without its end, as a whole message that says where to find help: that of the
/// command, or of the program if `command` is empty.
std::string UsageMessage(const std::string& complaint, const std::string& command = {});

}  // namespace host
