#pragma once

#include <CAEFile.h>
#include <CAEObject.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "PageModel.h"
#include "PageRoom.h"
#include "host/system/ReadableDirectories.h"

namespace host {

/// What a page shows of the object and everything below it.
struct PageObject {
    CAEObject* object = nullptr;
    /// The place of the object above in the list; -1 for the root.
    std::int64_t parent = -1;
    /// The place of the file among the files, if the object is one; -1 otherwise.
    std::int64_t file = -1;
};

struct PageFile {
    CAEFile* file = nullptr;
    /// The path relative to the project's directory if it lies there, otherwise the whole path.
    std::string place;
    /// Whether it was not looked at, because its path leads out of the directories that may be read.
    bool isOutside = false;
    /// The full path without links; empty if the file is not there, or outside.
    std::filesystem::path resolved;
    /// Nothing if the file is not there, or outside.
    std::optional<std::uint64_t> size;
    /// The media type; empty for a file that is not a picture.
    std::string_view pictureType;
    /// Whether the picture is in the page itself.
    bool isEmbedded = false;
    /// What a deck, a mesh or geometry has to be drawn.
    std::optional<PageModel> model;
};

struct PageContent {
    /// An object comes before what is below it, and siblings are in their order.
    std::vector<PageObject> objects;
    /// Every file once, in the order of the tree, whether it is an object or attached to some.
    std::vector<PageFile> files;
    /// The place in `files` of a file by its identifier.
    std::unordered_map<int, std::int64_t> fileOfIdentifier;
};

/// How much of a page pictures and models may take.
struct PageRooms {
    PageRoom pictures;
    PageRoom models;
};

/// Lists what the page shows, and looks at the files where they lie, if that is in the readable directories.
/// Pictures and models take their room in the order of the tree; one that does not fit is left out, and a
/// smaller one behind it may fit. The depth of nesting needs no stack.
PageContent ListPageContent(CAEObject& root, const ReadableDirectories& readable, PageRooms& rooms);

}  // namespace host
