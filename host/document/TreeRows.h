#pragma once

#include <CAEObject.h>

#include <string>
#include <vector>

namespace host {

/// A line of a printed tree, in pieces.
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
    /// A line of metadata: the name is the whole text.
    bool isMetadata = false;
};

struct TreeRows {
    std::vector<TreeRow> rows;
    /// What there is in all.
    std::string summary;
};

/// The rows of the object and everything under it; `isUtf8` draws their strokes with characters beyond ASCII.
/// Needs no stack in proportion to the nesting; very deep rows give their depth as a number instead of
/// strokes.
TreeRows ListTreeRows(CAEObject& root, bool isUtf8);

}  // namespace host
