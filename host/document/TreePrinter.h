#pragma once

#include <CAEObject.h>

#include <string>

#include "TreeRows.h"

namespace host {

struct TreeStyle {
    /// The lines of the tree are drawn with characters beyond ASCII.
    bool isUtf8 = true;
    bool isColoured = false;
};

/// The object and everything below it as a table: a line for each object with its name, kind and identifier;
/// a line for each attached file with its role, type, format and size, where it is listed for the first time;
/// the metadata of an object below it; and the totals on the last line. Every line ends with a line feed. The
/// depth of nesting needs no stack; very deep lines show their depth as a number instead of drawing it.
std::string PrintTree(CAEObject& object, const TreeStyle& style, const TreeContent& content = {});

}  // namespace host
