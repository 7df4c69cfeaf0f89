#pragma once

#include <CAEObject.h>

#include <string>

namespace host {

struct TreeStyle {
    /// Lines between the objects are drawn with characters beyond ASCII.
    bool isUtf8 = true;
    bool isColoured = false;
};

/// The object and everything under it as a table for people: a line for each object with its name, its kind
/// and its identifier, for each attached file its role, type, format and size, the metadata below their
/// object, and what there is in all on the last line. Every line ends with a line feed. Needs no stack in
/// proportion to the nesting; very deep lines give their depth as a number instead of drawing it.
std::string PrintTree(CAEObject& object, const TreeStyle& style);

}  // namespace host
