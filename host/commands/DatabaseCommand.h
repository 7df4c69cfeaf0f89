#pragma once

#include <functional>
#include <string>

#include "host/system/Console.h"

/// What the commands that change a project file or the server's database share.
namespace host {

/// Does the work of a command on the database in the file, which gives the exit status. A DatabaseError is
/// said with the file's name, and then nothing was changed.
int ChangeDatabase(const std::string& file, Console& console, const std::function<int()>& work);

/// Says that nothing was changed, if this was a dry run.
void SayDryRun(bool isDryRun, Console& console);

}  // namespace host
