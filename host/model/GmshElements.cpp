#include "GmshElements.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace host {
namespace {

// The corners are in the usual order. Gmsh has the middles of edges in the order of the lower corner of each,
// and those of curves behind both ends; here they are in the order of Abaqus: around the bottom, around the
// top and up the sides.
constexpr std::array<std::uint8_t, 3> kCurve = {0, 2, 1};
constexpr std::array<std::uint8_t, 10> kTetrahedron = {0, 1, 2, 3, 4, 5, 6, 7, 9, 8};
constexpr std::array<std::uint8_t, 13> kPyramid = {0, 1, 2, 3, 4, 5, 8, 10, 6, 7, 9, 11, 12};
constexpr std::array<std::uint8_t, 15> kWedge = {0, 1, 2, 3, 4, 5, 6, 9, 7, 12, 14, 13, 8, 10, 11};
constexpr std::array<std::uint8_t, 20> kHexahedron = {0,  1, 2,  3,  4,  5,  6,  7,  8,  11,
                                                      13, 9, 16, 18, 19, 17, 10, 12, 14, 15};

// Elements with more nodes than a quadratic one has in the middles of its faces, or in three and more places
// on an edge, are drawn by their corners, which come first.
constexpr GmshElement kElements[] = {
    {1, "1", ElementShape::Line, 1, 2, {}},
    {2, "2", ElementShape::Triangle, 1, 3, {}},
    {3, "3", ElementShape::Quadrilateral, 1, 4, {}},
    {4, "4", ElementShape::Tetrahedron, 1, 4, {}},
    {5, "5", ElementShape::Hexahedron, 1, 8, {}},
    {6, "6", ElementShape::Wedge, 1, 6, {}},
    {7, "7", ElementShape::Pyramid, 1, 5, {}},
    {8, "8", ElementShape::Line, 2, 3, kCurve},
    {9, "9", ElementShape::Triangle, 2, 6, {}},
    {10, "10", ElementShape::Quadrilateral, 2, 9, {}},
    {11, "11", ElementShape::Tetrahedron, 2, 10, kTetrahedron},
    {12, "12", ElementShape::Hexahedron, 2, 27, kHexahedron},
    {13, "13", ElementShape::Wedge, 2, 18, kWedge},
    {14, "14", ElementShape::Pyramid, 2, 14, kPyramid},
    {15, "15", ElementShape::Other, 1, 1, {}},
    {16, "16", ElementShape::Quadrilateral, 2, 8, {}},
    {17, "17", ElementShape::Hexahedron, 2, 20, kHexahedron},
    {18, "18", ElementShape::Wedge, 2, 15, kWedge},
    {19, "19", ElementShape::Pyramid, 2, 13, kPyramid},
    {20, "20", ElementShape::Triangle, 2, 9, {}},
    {21, "21", ElementShape::Triangle, 2, 10, {}},
    {23, "23", ElementShape::Triangle, 2, 15, {}},
    {25, "25", ElementShape::Triangle, 2, 21, {}},
    {26, "26", ElementShape::Line, 2, 4, {}},
    {27, "27", ElementShape::Line, 2, 5, {}},
    {28, "28", ElementShape::Line, 2, 6, {}},
    {29, "29", ElementShape::Tetrahedron, 2, 20, {}},
    {30, "30", ElementShape::Tetrahedron, 2, 35, {}},
    {31, "31", ElementShape::Tetrahedron, 2, 56, {}},
    {36, "36", ElementShape::Quadrilateral, 2, 16, {}},
    {37, "37", ElementShape::Quadrilateral, 2, 25, {}},
    {92, "92", ElementShape::Hexahedron, 2, 64, {}},
    {93, "93", ElementShape::Hexahedron, 2, 125, {}},
};

}  // namespace

const GmshElement* FindGmshElement(std::int64_t type) {
    const auto* const found = std::ranges::find(kElements, type, &GmshElement::type);
    return found == std::end(kElements) ? nullptr : found;
}

}  // namespace host
