#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "SolverModel.h"

/// The cards of Nastran and OptiStruct that make elements and materials.
namespace host {

/// A card that makes an element.
struct NastranElement {
    std::string_view name;
    ElementShape shape;
    /// The field of the first node, counted from that of the identifier.
    std::size_t first;
    std::size_t mostNodes;
};

// Rigid elements and PLOTEL are no elements of the mesh, as the solver counts them.
inline constexpr std::array kNastranElements = {
    NastranElement{"CTETRA", ElementShape::Tetrahedron, 2, 10},
    NastranElement{"CHEXA", ElementShape::Hexahedron, 2, 20},
    NastranElement{"CPENTA", ElementShape::Wedge, 2, 15},
    NastranElement{"CPYRAM", ElementShape::Pyramid, 2, 13},
    NastranElement{"CPYRA", ElementShape::Pyramid, 2, 13},
    NastranElement{"CQUAD4", ElementShape::Quadrilateral, 2, 4},
    NastranElement{"CQUADR", ElementShape::Quadrilateral, 2, 4},
    NastranElement{"CQUAD8", ElementShape::Quadrilateral, 2, 8},
    NastranElement{"CQUAD", ElementShape::Quadrilateral, 2, 9},
    NastranElement{"CSHEAR", ElementShape::Quadrilateral, 2, 4},
    NastranElement{"CTRIA3", ElementShape::Triangle, 2, 3},
    NastranElement{"CTRIAR", ElementShape::Triangle, 2, 3},
    NastranElement{"CTRIA6", ElementShape::Triangle, 2, 6},
    NastranElement{"CBAR", ElementShape::Line, 2, 2},
    NastranElement{"CBEAM", ElementShape::Line, 2, 2},
    NastranElement{"CBEND", ElementShape::Line, 2, 2},
    NastranElement{"CROD", ElementShape::Line, 2, 2},
    NastranElement{"CTUBE", ElementShape::Line, 2, 2},
    NastranElement{"CONROD", ElementShape::Line, 1, 2},
    NastranElement{"CVISC", ElementShape::Line, 2, 2},
    NastranElement{"CGAP", ElementShape::Line, 2, 2},
    NastranElement{"CBUSH", ElementShape::Other, 2, 2},
    NastranElement{"CBUSH1D", ElementShape::Other, 2, 2},
    NastranElement{"CELAS1", ElementShape::Other, 0, 0},
    NastranElement{"CELAS2", ElementShape::Other, 0, 0},
    NastranElement{"CELAS3", ElementShape::Other, 0, 0},
    NastranElement{"CELAS4", ElementShape::Other, 0, 0},
    NastranElement{"CDAMP1", ElementShape::Other, 0, 0},
    NastranElement{"CDAMP2", ElementShape::Other, 0, 0},
    NastranElement{"CMASS1", ElementShape::Other, 0, 0},
    NastranElement{"CMASS2", ElementShape::Other, 0, 0},
    NastranElement{"CONM1", ElementShape::Other, 0, 0},
    NastranElement{"CONM2", ElementShape::Other, 0, 0},
    NastranElement{"CTRIAX", ElementShape::Other, 0, 0},
    NastranElement{"CTRIAX6", ElementShape::Other, 0, 0},
    NastranElement{"CQUADX", ElementShape::Other, 0, 0},
    NastranElement{"CWELD", ElementShape::Other, 0, 0},
    NastranElement{"CFAST", ElementShape::Other, 0, 0},
    NastranElement{"CSEAM", ElementShape::Other, 0, 0},
    NastranElement{"CHBDYG", ElementShape::Other, 0, 0},
};

// MATS1, MATT1 and their like add to one of these.
inline constexpr std::array<std::string_view, 12> kNastranMaterials = {
    "MAT1", "MAT2", "MAT3", "MAT4", "MAT5", "MAT8", "MAT9", "MAT10", "MAT11", "MATHP", "MATHE", "MAT10C"};

}  // namespace host
