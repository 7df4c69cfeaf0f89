#include "SolverModel.h"

namespace host {

int CornersOf(ElementShape shape) {
    switch (shape) {
        case ElementShape::Other:
            return 0;
        case ElementShape::Line:
            return 2;
        case ElementShape::Triangle:
            return 3;
        case ElementShape::Quadrilateral:
        case ElementShape::Tetrahedron:
            return 4;
        case ElementShape::Pyramid:
            return 5;
        case ElementShape::Wedge:
            return 6;
        case ElementShape::Hexahedron:
            return 8;
    }
    return 0;
}

}  // namespace host
