#pragma once

#include <CAETypes.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "PageRoom.h"
#include "host/system/ReadableDirectories.h"

namespace host {

/// What a page shows of the model in a file of solver input, or of a mesh.
struct PageModel {
    std::optional<std::uint64_t> nodes;
    std::optional<std::uint64_t> elements;
    /// What is missing or may stand elsewhere, as a sentence; empty if nothing.
    std::string gap;
    std::size_t points = 0;
    std::size_t triangles = 0;
    std::size_t lines = 0;
    /// The corners of the box around the points.
    std::array<float, 3> low{};
    std::array<float, 3> high{};
    /// Three numbers of 16 bits for each point, from 0 at `low` to 65535 at `high`; padding to a multiple of
    /// four; then three numbers of 32 bits for each triangle and two for each line: the places of their
    /// points. The lowest byte of a number comes first. Empty if there was no room.
    std::string bytes;
};

/// Reads the model in the file and takes room for its surface. Returns nothing if the file has no model that
/// can be read, or nothing of it can be drawn. Decks are read in the syntaxes of solvers, with the files that
/// they include if these are both in the directory, which is the project's, and in a readable one; meshes and
/// geometry in those of meshes, because what a deck includes is shown with the deck.
std::optional<PageModel> ReadPageModel(const std::filesystem::path& file, _tagFileType type,
                                       const std::filesystem::path& directory,
                                       const ReadableDirectories& readable, PageRoom& room);

}  // namespace host
