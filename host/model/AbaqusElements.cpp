#include "AbaqusElements.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace host {
namespace {

constexpr ElementKind kPoint = {ElementShape::Other, 1, 1, 1};
constexpr ElementKind kLine = {ElementShape::Line, 1, 2, 2};
constexpr ElementKind kCurve = {ElementShape::Line, 2, 3, 3};
constexpr ElementKind kTriangle = {ElementShape::Triangle, 1, 3, 3};

/// The second node of a curve is its middle.
enum class Family { Solid, Surface };

struct NamedFamily {
    std::string_view prefix;
    Family family;
};

/// The number behind these is that of the nodes.
constexpr std::array kFamilies = {
    NamedFamily{"C3D", Family::Solid},     NamedFamily{"DC3D", Family::Solid},
    NamedFamily{"DCC3D", Family::Solid},   NamedFamily{"AC3D", Family::Solid},
    NamedFamily{"EC3D", Family::Solid},    NamedFamily{"Q3D", Family::Solid},
    NamedFamily{"FC3D", Family::Solid},    NamedFamily{"COH3D", Family::Solid},
    NamedFamily{"SC", Family::Solid},      NamedFamily{"CSS", Family::Solid},
    NamedFamily{"S", Family::Surface},     NamedFamily{"DS", Family::Surface},
    NamedFamily{"STRI", Family::Surface},  NamedFamily{"M3D", Family::Surface},
    NamedFamily{"SFM3D", Family::Surface}, NamedFamily{"R3D", Family::Surface},
    NamedFamily{"F3D", Family::Surface},   NamedFamily{"CPS", Family::Surface},
    NamedFamily{"CPE", Family::Surface},   NamedFamily{"CPEG", Family::Surface},
    NamedFamily{"CAX", Family::Surface},   NamedFamily{"CGAX", Family::Surface},
    NamedFamily{"DC2D", Family::Surface},  NamedFamily{"DCC2D", Family::Surface},
    NamedFamily{"DCAX", Family::Surface},  NamedFamily{"DCCAX", Family::Surface},
    NamedFamily{"AC2D", Family::Surface},  NamedFamily{"ACAX", Family::Surface},
    NamedFamily{"COH2D", Family::Surface}, NamedFamily{"COHAX", Family::Surface},
};

struct NamedElement {
    std::string_view type;
    ElementKind element;
};

/// Their numbers say other things. The longest beginning of a type that is here counts.
constexpr std::array kOthers = {
    NamedElement{"STRI65", {ElementShape::Triangle, 2, 6, 6}},
    NamedElement{"B21", kLine},
    NamedElement{"B22", kCurve},
    NamedElement{"B23", kLine},
    NamedElement{"B31", kLine},
    NamedElement{"B32", kCurve},
    NamedElement{"B33", kLine},
    NamedElement{"T2D2", kLine},
    NamedElement{"T2D3", kCurve},
    NamedElement{"T3D2", kLine},
    NamedElement{"T3D3", kCurve},
    NamedElement{"DC1D2", kLine},
    NamedElement{"DC1D3", kCurve},
    NamedElement{"PIPE21", kLine},
    NamedElement{"PIPE22", kCurve},
    NamedElement{"PIPE31", kLine},
    NamedElement{"PIPE32", kCurve},
    NamedElement{"ELBOW31", kLine},
    NamedElement{"ELBOW32", kCurve},
    NamedElement{"FRAME2D", kLine},
    NamedElement{"FRAME3D", kLine},
    NamedElement{"SAX1", kLine},
    NamedElement{"SAX2", kCurve},
    NamedElement{"MAX1", kLine},
    NamedElement{"MAX2", kCurve},
    NamedElement{"R2D2", kLine},
    NamedElement{"RAX2", kLine},
    NamedElement{"RB2D2", kLine},
    NamedElement{"RB3D2", kLine},
    NamedElement{"CONN2D2", kLine},
    NamedElement{"CONN3D2", kLine},
    NamedElement{"GAPUNI", kLine},
    NamedElement{"SPRINGA", kLine},
    NamedElement{"SPRING2", kLine},
    NamedElement{"SPRING1", kPoint},
    NamedElement{"DASHPOTA", kLine},
    NamedElement{"DASHPOT2", kLine},
    NamedElement{"DASHPOT1", kPoint},
    NamedElement{"MASS", kPoint},
    NamedElement{"ROTARYI", kPoint},
    NamedElement{"HEATCAP", kPoint},
    NamedElement{"DCOUP3D", kPoint},
    NamedElement{"US3", kTriangle},
};

ElementKind SolidOf(std::size_t nodes, std::string_view suffix) {
    switch (nodes) {
        case 4:
            return {ElementShape::Tetrahedron, 1, 4, 4};
        case 5:
            return {ElementShape::Pyramid, 1, 5, 5};
        case 6:
            return {ElementShape::Wedge, 1, 6, 6};
        case 8:
            return {ElementShape::Hexahedron, 1, 8, 8};
        case 10:
            return {ElementShape::Tetrahedron, 2, 10, 10};
        case 13:
            return {ElementShape::Pyramid, 2, 13, 13};
        case 15:
            // With V there can be three more on the faces.
            return {ElementShape::Wedge, 2, 15, suffix.starts_with('V') ? std::size_t{18} : 15};
        case 20:
            return {ElementShape::Hexahedron, 2, 20, 20};
        case 27:
            return {ElementShape::Hexahedron, 2, 21, 27};
        default:
            return {};
    }
}

ElementKind SurfaceOf(std::size_t nodes) {
    switch (nodes) {
        case 3:
            return kTriangle;
        case 4:
            return {ElementShape::Quadrilateral, 1, 4, 4};
        case 6:
            return {ElementShape::Triangle, 2, 6, 6};
        case 8:
        case 9:
            return {ElementShape::Quadrilateral, 2, nodes, nodes};
        default:
            return {};
    }
}

}  // namespace

ElementKind AbaqusElement(std::string_view type) {
    const NamedElement* longest = nullptr;
    for (const NamedElement& other : kOthers) {
        if (type.starts_with(other.type) &&
            (longest == nullptr || longest->type.size() < other.type.size())) {
            longest = &other;
        }
    }
    if (longest != nullptr) {
        return longest->element;
    }
    const auto* const family = std::ranges::find_if(kFamilies, [&](const NamedFamily& named) {
        return type.starts_with(named.prefix) && type.size() > named.prefix.size() &&
               type[named.prefix.size()] >= '0' && type[named.prefix.size()] <= '9';
    });
    if (family == kFamilies.end()) {
        return {};
    }
    const std::string_view numbers = type.substr(family->prefix.size());
    std::size_t nodes = 0;
    const char* const end = numbers.data() + numbers.size();
    const std::string_view suffix(std::from_chars(numbers.data(), end, nodes).ptr, end);
    return family->family == Family::Solid ? SolidOf(nodes, suffix) : SurfaceOf(nodes);
}

}  // namespace host
