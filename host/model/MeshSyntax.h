#pragma once

#include <filesystem>
#include <optional>

#include "SolverModel.h"

namespace host {

/// The syntax of a mesh or of geometry that is not input of a solver, by the name of the file or its
/// beginning; nothing if no such file is read, or this one cannot be.
std::optional<ModelSyntax> MeshSyntaxOf(const std::filesystem::path& file);

}  // namespace host
