#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "SolverModel.h"

/// The elements of LS-DYNA.
namespace host {

struct LsDynaElement {
    std::string_view name;
    ElementShape shape;
    /// The most nodes, those of an element whose middles have nodes.
    std::size_t mostNodes;
    std::size_t numbering;
    /// The field of the first node.
    std::size_t first;
};

/// The elements of a keyword without its star (`ELEMENT_SHELL_THICKNESS`), and how many lines behind each
/// have no nodes. Null if the lines below the keyword are not known.
const LsDynaElement* FindLsDynaElement(std::string_view keyword, std::size_t& linesOfOptions);

/// The shape and the order of an element with these nodes, which become those of that shape.
ElementShape ShapeOf(const LsDynaElement& element, std::vector<std::int64_t>& nodes, int& order);

}  // namespace host
