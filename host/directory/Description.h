#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "DirectoryTree.h"

namespace host {

/// The first heading of a text, or its first line if it has none, without the marks that make it a heading in
/// Markdown, reStructuredText or AsciiDoc. Empty for a text without words. Front matter, comments and code
/// blocks are skipped. The bytes are returned as they are, in any encoding.
std::string FirstHeading(std::string_view text);

/// What the directory is about: the first heading or line of its README, or of its notes. If there are
/// several such files, the first by name that has words is used. Empty if there is none, or if the one that
/// may have them cannot be read now.
std::string DescribeDirectory(const ScannedDirectory& directory);

}  // namespace host
