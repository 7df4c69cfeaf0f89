#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Writes meshes as the programs of engineers do.
namespace host {

/// The lowest byte comes first.
inline void AppendBytes(std::string& bytes, std::uint64_t number, std::size_t size) {
    for (std::size_t index = 0; index < size; ++index) {
        bytes += static_cast<char>(number >> (8U * index) & 0xFFU);
    }
}

using Corner = std::array<float, 3>;
using Facet = std::array<Corner, 3>;

/// The tetrahedron with the edges of 1 along the axes; it looks outwards.
inline std::vector<Facet> FacetsOfTetrahedron() {
    constexpr Corner o = {0, 0, 0};
    constexpr Corner x = {1, 0, 0};
    constexpr Corner y = {0, 1, 0};
    constexpr Corner z = {0, 0, 1};
    return {{o, y, x}, {o, x, z}, {x, y, z}, {o, z, y}};
}

inline std::string BinaryStl(const std::vector<Facet>& facets, std::string_view title = "made by hand") {
    std::string bytes(title);
    bytes.resize(80, ' ');
    AppendBytes(bytes, facets.size(), 4);
    for (const Facet& facet : facets) {
        bytes.append(12, '\0');
        for (const Corner& corner : facet) {
            for (const float coordinate : corner) {
                AppendBytes(bytes, std::bit_cast<std::uint32_t>(coordinate), 4);
            }
        }
        bytes.append(2, '\0');
    }
    return bytes;
}

inline std::string TextStl(const std::vector<Facet>& facets, std::string_view name = "part") {
    std::string text = "solid " + std::string(name) + "\n";
    for (const Facet& facet : facets) {
        text += "  facet normal 0 0 0\n    outer loop\n";
        for (const Corner& corner : facet) {
            text += "      vertex";
            for (const float coordinate : corner) {
                text += ' ' + std::to_string(coordinate);
            }
            text += '\n';
        }
        text += "    endloop\n  endfacet\n";
    }
    return text + "endsolid " + std::string(name) + "\n";
}

}  // namespace host
