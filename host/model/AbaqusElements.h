#pragma once

#include <string_view>

#include "SolverModel.h"

namespace host {

/// How many nodes an element has, and what it looks like.
struct ElementKind {
    ElementShape shape = ElementShape::Other;
    int order = 1;
    /// Some may have nodes beyond those that they need; 0 stands for any number.
    std::size_t fewestNodes = 0;
    std::size_t mostNodes = 0;
};

/// The element of an Abaqus or CalculiX type, in upper case (`C3D20R`). Types that are not known, such as
/// those of users, have any number of nodes and no shape.
ElementKind AbaqusElement(std::string_view type);

}  // namespace host
