#pragma once

#include <CAEObject.h>

#include <functional>
#include <optional>
#include <string>

#include "Options.h"
#include "host/system/Console.h"

/// What commands look at: the objects of a directory, a project file or a document.
namespace host {

/// Adds the argument of such a command, and the options of directories.
void AddObjectInput(const Command& command, InputOptions& options);

/// Reads what the options name and gives its root to `work`, which says whether it could do its work. Returns
/// the exit status of the command. The file `output` of the directory is not read.
int WithObjects(const InputOptions& options, const std::optional<std::string>& output, Console& console,
                const std::function<bool(CAEObject& root)>& work);
/// The same for a work that asks what the user has left out of the directory.
int WithObjects(const InputOptions& options, const std::optional<std::string>& output, Console& console,
                const std::function<bool(CAEObject& root, const Exclusion& exclusion)>& work);

}  // namespace host
