#pragma once

#include <vector>

#include "MarkdownTables.h"

/// The tables of docs/document.md: what format/ says of members, kinds and values, and the names of file
/// types in the object model.
std::vector<Table> FormatTables();
