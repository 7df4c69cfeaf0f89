#pragma once

#include <functional>
#include <string>

#include "host/system/Console.h"

/// What the commands that change a project file or the server's database share.
namespace host {

/// Runs the work of a command on the database in the file, and returns the exit status that the work gives.
/// If a DatabaseError is thrown, it is reported with the name of the file, and the status is kFailure.
int ChangeDatabase(const std::string& file, Console& console, const std::function<int()>& work);

/// Says that nothing was changed, if this is a dry run.
void SayDryRun(bool isDryRun, Console& console);

}  // namespace host
