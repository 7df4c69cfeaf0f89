#pragma once

#include <filesystem>

#include "FileKind.h"

namespace host {

/// The kind of a file by its extension, or by its whole name if solvers write it under a fixed name. Case
/// does not matter.
FileKind KindOfFileName(const std::filesystem::path& name);

}  // namespace host
