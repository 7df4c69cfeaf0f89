#include "LsDynaElements.h"

#include <algorithm>
#include <array>
#include <utility>

namespace host {
namespace {

constexpr std::array kElements = {
    LsDynaElement{"ELEMENT_SOLID", ElementShape::Hexahedron, 10, 0, 2},
    LsDynaElement{"ELEMENT_TSHELL", ElementShape::Hexahedron, 8, 1, 2},
    LsDynaElement{"ELEMENT_SHELL", ElementShape::Quadrilateral, 8, 2, 2},
    LsDynaElement{"ELEMENT_BEAM", ElementShape::Line, 2, 3, 2},
    LsDynaElement{"ELEMENT_DISCRETE", ElementShape::Line, 2, 4, 2},
    LsDynaElement{"ELEMENT_SEATBELT", ElementShape::Line, 2, 5, 2},
    LsDynaElement{"ELEMENT_MASS", ElementShape::Other, 1, 6, 1},
    LsDynaElement{"ELEMENT_SPH", ElementShape::Other, 1, 7, 0},
};

/// Options of shells and beams that add one line to each element.
constexpr std::array<std::string_view, 10> kOneLineOptions = {
    "THICKNESS", "BETA", "MCID", "OFFSET", "SECTION", "SCALAR", "PID", "ORIENTATION", "WARPAGE", "SCALR"};

/// The shape of a solid is what its repeated nodes leave of a hexahedron.
ElementShape ShapeOfSolid(std::vector<std::int64_t>& nodes, int& order) {
    nodes.resize(std::max<std::size_t>(nodes.size(), 8));
    if (nodes.size() >= 10 && nodes[8] > 0 && nodes[9] > 0) {
        order = 2;
        return ElementShape::Tetrahedron;
    }
    nodes.resize(8);
    const auto same = [&](std::size_t from, std::size_t to) {
        return std::all_of(nodes.begin() + static_cast<std::ptrdiff_t>(from),
                           nodes.begin() + static_cast<std::ptrdiff_t>(to),
                           [&](std::int64_t node) { return node == nodes[from] || node == 0; });
    };
    if (same(3, 8)) {
        nodes.resize(4);
        return ElementShape::Tetrahedron;
    }
    if (same(4, 8)) {
        nodes.resize(5);
        return ElementShape::Pyramid;
    }
    if (same(4, 6) && same(6, 8)) {
        // The edges 1-4 and 2-3 are those of the triangles at both ends.
        std::swap(nodes[2], nodes[4]);
        nodes[5] = nodes[6];
        nodes.resize(6);
        return ElementShape::Wedge;
    }
    return ElementShape::Hexahedron;
}

}  // namespace

const LsDynaElement* FindLsDynaElement(std::string_view keyword, std::size_t& linesOfOptions) {
    const auto* const found = std::ranges::find_if(kElements, [&](const LsDynaElement& element) {
        return keyword.starts_with(element.name) &&
               (keyword.size() == element.name.size() || keyword[element.name.size()] == '_');
    });
    linesOfOptions = 0;
    if (found == kElements.end()) {
        return nullptr;
    }
    const bool mayHaveOptions =
        found->shape == ElementShape::Quadrilateral || found->shape == ElementShape::Line;
    std::string_view options = keyword.substr(found->name.size());
    while (options.starts_with('_')) {
        options.remove_prefix(1);
        const std::string_view option = options.substr(0, std::min(options.find('_'), options.size()));
        if (!mayHaveOptions || std::ranges::find(kOneLineOptions, option) == kOneLineOptions.end()) {
            return nullptr;
        }
        // The angle stands on the line of the thicknesses.
        const bool sharesLine = option == "BETA" || option == "MCID";
        linesOfOptions += sharesLine && linesOfOptions > 0 ? 0 : 1;
        options.remove_prefix(option.size());
    }
    return found;
}

ElementShape ShapeOf(const LsDynaElement& element, std::vector<std::int64_t>& nodes, int& order) {
    ElementShape shape = element.shape;
    order = 1;
    if (shape == ElementShape::Hexahedron) {
        shape = ShapeOfSolid(nodes, order);
    } else if (shape == ElementShape::Quadrilateral) {
        nodes.resize(8);
        order = nodes[4] > 0 ? 2 : 1;
        nodes.resize(order == 2 ? 8 : 4);
        if (order == 1 && (nodes[3] == 0 || nodes[3] == nodes[2])) {
            shape = ElementShape::Triangle;
            nodes.resize(3);
        }
    } else if (shape == ElementShape::Line) {
        nodes.resize(2);
        // A spring to the ground has one node.
        shape = nodes[1] == 0 ? ElementShape::Other : shape;
    }
    return shape;
}

}  // namespace host
