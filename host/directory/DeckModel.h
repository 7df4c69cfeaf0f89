#pragma once

#include <filesystem>
#include <optional>

#include "DirectoryTree.h"
#include "host/system/Console.h"

namespace host {

/// The syntax in which models of a solver are read; nothing if none is.
std::optional<ModelSyntax> ModelSyntaxOf(Solver solver);

/// The syntax of a file, by its name and its beginning; nothing if it is not solver input with a syntax in
/// which models are read, or if it cannot be read.
std::optional<ModelSyntax> ModelSyntaxOf(const std::filesystem::path& file);

/// Reads the models of the decks of a tree. Files that they include are read if they are below its root, also
/// those that are not in the tree, but not the file `leftOut`.
void ReadDeckModels(DirectoryTree& tree, const std::optional<std::filesystem::path>& leftOut,
                    Console& console);

}  // namespace host
