#pragma once

#include <CAEObject.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "FileFacts.h"

namespace host {

/// What of a tree is shown.
struct TreeContent {
    /// The levels below the root; all if there is no number. Files are a level below their object.
    std::optional<std::size_t> depth = {};
    FilesShown files = FilesShown::All;
};

/// A line of a printed tree, in its parts.
struct TreeRow {
    std::string strokes;
    std::string name;
    std::string kind;
    std::string identifier;
    std::string type;
    std::string format;
    std::string size;
    std::string note;
    bool isObject = false;
    /// A line of metadata: `name` is all of it.
    bool isMetadata = false;
};

struct TreeRows {
    std::vector<TreeRow> rows;
    /// The totals.
    std::string summary;
};

/// The rows of the object and what is to be shown below it; the totals are those of everything. With `isUtf8`
/// the lines are drawn with characters beyond ASCII. The depth of nesting needs no stack; very deep rows have
/// their depth as a number instead of lines.
TreeRows ListTreeRows(CAEObject& root, bool isUtf8, const TreeContent& content);

}  // namespace host
