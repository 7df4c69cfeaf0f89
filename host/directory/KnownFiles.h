#pragma once

#include <CAEProject.h>

#include <map>
#include <optional>
#include <string>

#include "DirectoryTree.h"

/// What a project knows of its directory from an earlier reading.
namespace host {

struct KnownFile {
    /// Relative to the directory, with slashes.
    std::string path;
    _tagFileType type = CAE_FILE_OTHER;
    _tagFileFormat format = CAE_FORMAT_UNKNOWN;
};

/// By PathKey of their paths.
using KnownFiles = std::map<std::string, KnownFile>;

/// The path of the file in the project's directory, if it came from there: it lies in the directory, and it
/// has a creator. A file that an import created has none, because documents do not carry creators.
std::optional<std::string> OriginOf(const CAEFile& file, const OuString& directory);

/// The files of the project that came from its directory.
KnownFiles KnownFilesOf(CAEProject& project);

/// Puts files that could not be read, and everything in directories that could not be read, back into the
/// tree as it is known. What other known files are is left as it is, too: whether a file is a deck depends on
/// files that include it, which may be among those that could not be read.
void Remember(const KnownFiles& known, DirectoryTree& tree);

}  // namespace host
