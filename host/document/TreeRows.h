#pragma once

#include <CAEObject.h>

#include <string>
#include <vector>

namespace host {

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

/// The rows of the object and everything below it; with `isUtf8` their lines are drawn with characters beyond
/// ASCII. The depth of nesting needs no stack; very deep rows have their depth as a number instead of lines.
TreeRows ListTreeRows(CAEObject& root, bool isUtf8);

}  // namespace host
