#pragma once

#include <korvaneexchange/Report.h>

#include <string>

#include "Command.h"
#include "host/system/Console.h"

/// --strict of the commands that read a document or an answer onto a project file.
namespace host {

void AddStrictChange(const Command& command, bool& isStrict);

struct StrictInput {
    /// The file that was read.
    const std::string& file;
    bool isStrict;
};
/// Whether the change may be saved. If not, because something was skipped, a message says so.
bool IsAllowed(const korvane::exchange::Report& report, const StrictInput& input, Console& console);

}  // namespace host
