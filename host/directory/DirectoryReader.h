#pragma once

#include <CAEProject.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "DescribedObjects.h"
#include "KnownFiles.h"
#include "Selection.h"
#include "host/system/Console.h"

namespace host {

struct DirectoryReading {
    /// Null if the root could not be read; `error` says why.
    std::unique_ptr<CAEProject> project;
    std::error_code error;
    /// Why the selection cannot be read, a sentence; empty if that is not the reason.
    std::string refusal;
    /// What the user has left out; the project knows nothing new about it.
    Exclusion exclusion;
    /// Entries below the root that could not be read or named in a document.
    std::size_t unreadableCount = 0;
    /// What the descriptions of users did.
    Described described;
    /// Why decks have no counts of nodes or elements, a sentence each.
    std::vector<std::string> modelGaps;
};

/// Reads a directory of simulation files as a project.
///
/// - The root is the project: it has the name of the directory, the additional type "Simulation" and the path
///   of the root as its directory. The files in the root are children of the project.
/// - Any other directory that has solver decks is a study: a model with an iteration folder. For each deck
///   the folder has an iteration, with an iteration model whose FE representation is the deck. A root that
///   has decks gets one study of its own name; the files in the root are attached to the study as well (one
///   object each, with one identifier).
/// - In a study every geometry file makes a part, which has it as its CAD file. A mesh file belongs to the
///   part with its stem, or makes a part of its own. A picture with the stem of a part is the graphic file of
///   that part. All other files are custom files of the study. Stems are compared without regard to case.
/// - A directory below a study that has no decks at any depth adds its files to the study. Any other
///   directory with files at any depth is an assembly folder, and its files are custom files of it. There,
///   geometry and meshes have the type Other, because their own types have a role on parts, sub-assemblies
///   and run assemblies only.
/// - Metadata: a study has "Description", "Files", "Size" (unit B) and "Solver"; the project has the same for
///   everything in it, and "Studies". The bytes of a file that a link leads to are counted where the file
///   itself is. An iteration has "Solver" and, as far as its deck says them for certain, "Nodes", "Elements",
///   "Materials", "Steps" and "Units".
/// - Dates are the times of the last change, in UTC. Users are the owners in the file system, where it names
///   them.
///
/// What a korvane.toml in a directory says replaces what was found about its study, folder or project
/// (DescriptionFile.h); it is not a file of the study itself.
///
/// Databases of this program and their journals are left out without a word, and so is the file `leftOut`,
/// because the command works on it. The console says what else was left out.
///
/// Of a selection with studies, everything that is not in these studies is left out, but for studies that
/// they are in. Only a reading without `known` then counts the files of the project.
///
/// Files in `known`, if it is not null, that cannot be read now are read as they were known: these are not
/// marked as downloaded, and studies that have one, or a directory with one, get no metadata that count
/// files.
DirectoryReading ReadDirectory(const std::filesystem::path& root,
                               const std::optional<std::filesystem::path>& leftOut, Console& console,
                               const KnownFiles* known = nullptr, const Selection& selection = {});

}  // namespace host
