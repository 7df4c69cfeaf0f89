#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "SolverModel.h"

/// The elements of Gmsh.
namespace host {

struct GmshElement {
    int type;
    /// The type again, for messages.
    std::string_view name;
    ElementShape shape;
    int order;
    std::size_t nodes;
    /// Where the nodes of a ModelElement are in the file, as far as they are elsewhere than in the file's own
    /// order; empty if they are in that order.
    std::span<const std::uint8_t> places;
};

/// Null if the type is not known.
const GmshElement* FindGmshElement(std::int64_t type);

}  // namespace host
