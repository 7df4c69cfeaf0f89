#pragma once

#include <CAEProject.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

#include "host/system/Console.h"

namespace host {

struct DirectoryReading {
    /// Null when the root could not be read; `error` tells why.
    std::unique_ptr<CAEProject> project;
    std::error_code error;
    /// Entries below the root that could not be read.
    std::size_t unreadableCount = 0;
};

/// Reads a directory of simulation files as a project.
///
/// - The root is the project: its name the directory's, its additional type "Simulation", its directory the
/// root's
///   path. Files in the root are file children of it.
/// - Any other directory with solver decks of its own is a study: a model with an iteration folder that
/// holds, for
///   each deck, an iteration with an iteration model whose FE representation is the deck. A root that holds
///   decks gets one study named after it, which the root's files are attached to as well as being file
///   children of the project (one object each, one identifier).
/// - In a study every geometry file makes a part with it as its CAD file. A mesh file belongs to the part of
/// its
///   stem, or makes a part of its own; a picture with a part's stem is that part's graphic file. Every other
///   file is a custom file of the study. Stems are compared without regard to letter case.
/// - A directory below a study that holds no decks anywhere adds its files to the study. Every other
/// directory with
///   files in its tree is an assembly folder, its own files custom files of it. Geometry and meshes among
///   them have the type Other, because the types for those hang on nothing but parts, sub-assemblies and run
///   assemblies.
/// - Metadata: of a study "Description", "Files", "Size" (unit B) and "Solver"; of the project the same of
/// everything
///   in it and "Studies". The bytes of a file that a link stands for are counted where the file itself lies.
/// - Dates are the times of the last change, in UTC; users are the owners in the file system where it names
/// them.
///
/// `leftOut` is a file that is not read, because the document is written to it. What is left out is said on
/// the console.
DirectoryReading ReadDirectory(const std::filesystem::path& root,
                               const std::optional<std::filesystem::path>& leftOut, Console& console);

}  // namespace host
