#include "SurfaceFaces.h"

namespace host {
namespace {

constexpr std::array kTetrahedron = {LocalFace{{0, 2, 1}, 3}, LocalFace{{0, 1, 3}, 3},
                                     LocalFace{{1, 2, 3}, 3}, LocalFace{{2, 0, 3}, 3}};
constexpr std::array kPyramid = {LocalFace{{0, 3, 2, 1}, 4}, LocalFace{{0, 1, 4}, 3}, LocalFace{{1, 2, 4}, 3},
                                 LocalFace{{2, 3, 4}, 3}, LocalFace{{3, 0, 4}, 3}};
constexpr std::array kWedge = {LocalFace{{0, 2, 1}, 3}, LocalFace{{3, 4, 5}, 3}, LocalFace{{0, 1, 4, 3}, 4},
                               LocalFace{{1, 2, 5, 4}, 4}, LocalFace{{2, 0, 3, 5}, 4}};
constexpr std::array kHexahedron = {LocalFace{{0, 3, 2, 1}, 4}, LocalFace{{4, 5, 6, 7}, 4},
                                    LocalFace{{0, 1, 5, 4}, 4}, LocalFace{{1, 2, 6, 5}, 4},
                                    LocalFace{{2, 3, 7, 6}, 4}, LocalFace{{3, 0, 4, 7}, 4}};

constexpr std::uint64_t kMix = 0xD6E8FEB86659FD93U;

}  // namespace

std::span<const LocalFace> FacesOf(ElementShape shape) {
    switch (shape) {
        case ElementShape::Tetrahedron:
            return kTetrahedron;
        case ElementShape::Pyramid:
            return kPyramid;
        case ElementShape::Wedge:
            return kWedge;
        case ElementShape::Hexahedron:
            return kHexahedron;
        case ElementShape::Other:
        case ElementShape::Line:
        case ElementShape::Triangle:
        case ElementShape::Quadrilateral:
            break;
    }
    return {};
}

Face MakeFace(const std::array<std::uint32_t, 8>& corners, std::span<const std::size_t> local) {
    Face face;
    for (const std::size_t corner : local) {
        const std::uint32_t point = corners.at(corner);
        const auto end = face.corners.begin() + static_cast<std::ptrdiff_t>(face.count);
        if (std::find(face.corners.begin(), end, point) == end) {
            face.corners.at(face.count++) = point;
        }
    }
    return face;
}

FaceTable::Key FaceTable::KeyOf(const Face& face) {
    Key key = face.corners;
    // Triangles repeat a corner, which no quadrilateral does.
    key[3] = face.count == 3 ? key[0] : key[3];
    std::ranges::sort(key);
    return key;
}

std::uint64_t FaceTable::HashOf(const Key& key) {
    std::uint64_t hash = 0;
    for (const std::uint32_t corner : key) {
        hash = (hash ^ corner) * kMix;
        hash ^= hash >> 32U;
    }
    return hash;
}

bool FaceTable::Has(const Face& face) const {
    const Key key = KeyOf(face);
    return face.count >= 3 &&
           table_.Has(HashOf(key), [&](std::uint32_t known) { return keys_[known] == key; });
}

void FaceTable::Add(const Face& face) {
    if (face.count < 3) {
        return;
    }
    const Key key = KeyOf(face);
    const auto next = static_cast<std::uint32_t>(faces_.size());
    const std::uint32_t place =
        table_.FindOrAdd(HashOf(key), next, [&](std::uint32_t known) { return keys_[known] == key; });
    if (place == next) {
        faces_.push_back(face);
        keys_.push_back(key);
    }
    ++faces_[place].uses;
}

bool EdgeTable::Add(std::uint32_t begin, std::uint32_t end) {
    const std::uint64_t edge = (std::uint64_t{std::min(begin, end)} << 32U) | std::max(begin, end);
    const auto next = static_cast<std::uint32_t>(edges_.size());
    const std::uint64_t hash = edge * kMix;
    const std::uint32_t place = table_.FindOrAdd(hash ^ hash >> 32U, next,
                                                 [&](std::uint32_t known) { return edges_[known] == edge; });
    if (place == next) {
        edges_.push_back(edge);
    }
    return place == next;
}

}  // namespace host
