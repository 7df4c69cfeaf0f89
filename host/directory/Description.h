#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "DirectoryTree.h"

namespace host {

/// The first heading of a text, or its first line where it has none; without the marks that make it a heading
/// in Markdown, reStructuredText or AsciiDoc. Empty for a text without words. Front matter, comments and code
/// blocks are passed over. The bytes come out as they stand, whatever their encoding.
std::string FirstHeading(std::string_view text);

/// What the directory is about: the first heading or line of its README, or else of its notes. Of several
/// files the first by name that says something counts. Empty when there is none.
std::string DescribeDirectory(const ScannedDirectory& directory);

}  // namespace host
