#include "SurfaceMesh.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <span>
#include <utility>

#include "SurfaceFaces.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

Position Cross(const Position& left, const Position& right) {
    return {left[1] * right[2] - left[2] * right[1], left[2] * right[0] - left[0] * right[2],
            left[0] * right[1] - left[1] * right[0]};
}

double Dot(const Position& left, const Position& right) {
    return left[0] * right[0] + left[1] * right[1] + left[2] * right[2];
}

Position Sum(const Position& left, double factor, const Position& right) {
    return {left[0] + factor * right[0], left[1] + factor * right[1], left[2] + factor * right[2]};
}

/// The point turned about the axis (Rodrigues), after it was moved.
Position Placed(const Position& point, const Placement& placement) {
    const Position moved = Sum(point, 1, placement.shift);
    Position axis = Sum(placement.to, -1, placement.from);
    const double length = std::sqrt(Dot(axis, axis));
    if (placement.degrees == 0 || length == 0) {
        return moved;
    }
    axis = {axis[0] / length, axis[1] / length, axis[2] / length};
    const double angle = placement.degrees * std::numbers::pi / 180;
    const Position arm = Sum(moved, -1, placement.from);
    Position turned = Sum(placement.from, std::cos(angle), arm);
    turned = Sum(turned, std::sin(angle), Cross(axis, arm));
    return Sum(turned, Dot(axis, arm) * (1 - std::cos(angle)), axis);
}

}  // namespace

void SurfaceBuilder::AddNode(std::int64_t id, const Position& position) {
    const auto [found, isNew] =
        current_->pointOfNode.try_emplace(id, static_cast<std::uint32_t>(current_->points.size()));
    if (isNew) {
        current_->points.push_back(position);
    } else {
        current_->points[found->second] = position;
    }
}

void SurfaceBuilder::AddElement(const ModelElement& element) {
    const auto corners = static_cast<std::size_t>(CornersOf(element.shape));
    if (corners == 0 || element.nodes.size() < corners) {
        return;
    }
    current_->cells.push_back({element.shape, current_->corners.size()});
    std::array<std::int64_t, 8> nodes{};
    std::copy_n(element.nodes.begin(), corners, nodes.begin());
    // The second of the three nodes of a curve is its middle.
    if (element.shape == ElementShape::Line && element.order == 2 && element.nodes.size() == 3) {
        nodes[1] = element.nodes[2];
    }
    current_->corners.insert(current_->corners.end(), nodes.begin(),
                             nodes.begin() + static_cast<std::ptrdiff_t>(corners));
}

void SurfaceBuilder::BeginPart(std::string_view name) {
    current_ = &parts_[ToUpperAscii(name)];
}

void SurfaceBuilder::EndPart() {
    current_ = &whole_;
}

void SurfaceBuilder::BeginInstance(std::string_view part, const Placement& placement) {
    instances_.push_back(parts_[ToUpperAscii(part)]);
    current_ = &instances_.back();
    placement_ = placement;
}

void SurfaceBuilder::EndInstance() {
    for (Position& point : current_->points) {
        point = Placed(point, placement_);
    }
    current_ = &whole_;
}

/// The surface of several bodies, one after another.
class SurfaceBuilder::Surface {
public:
    Surface(std::size_t mostTriangles, SurfaceMesh& mesh) : mostTriangles_(mostTriangles), mesh_(mesh) {}

    bool Add(const Body& body);

private:
    std::optional<std::array<std::uint32_t, 8>> CornersOfCell(const Body& body, const Cell& cell) const;
    void CollectFaces(const Body& body, FaceTable& faces, std::vector<Face>& shells) const;
    void AddFace(const Face& face, EdgeTable& edges);
    std::uint32_t PointOf(const Body& body, std::uint32_t point);
    bool IsWithin() const {
        return mesh_.triangles.size() <= 3 * mostTriangles_ && mesh_.lines.size() <= 6 * mostTriangles_;
    }

    std::size_t mostTriangles_;
    SurfaceMesh& mesh_;
    const Body* body_ = nullptr;
    std::vector<std::uint32_t> places_;
};

std::optional<std::array<std::uint32_t, 8>> SurfaceBuilder::Surface::CornersOfCell(const Body& body,
                                                                                   const Cell& cell) const {
    std::array<std::uint32_t, 8> corners{};
    for (std::size_t index = 0; index < static_cast<std::size_t>(CornersOf(cell.shape)); ++index) {
        const auto found = body.pointOfNode.find(body.corners[cell.first + index]);
        if (found == body.pointOfNode.end()) {
            return std::nullopt;
        }
        corners.at(index) = found->second;
    }
    return corners;
}

void SurfaceBuilder::Surface::CollectFaces(const Body& body, FaceTable& faces,
                                           std::vector<Face>& shells) const {
    for (const Cell& cell : body.cells) {
        const auto corners = CornersOfCell(body, cell);
        if (!corners) {
            continue;
        }
        if (cell.shape == ElementShape::Line) {
            shells.push_back({{(*corners)[0], (*corners)[1]}, 2});
        } else if (cell.shape == ElementShape::Triangle || cell.shape == ElementShape::Quadrilateral) {
            shells.push_back(
                MakeFace(*corners, std::span(kRound).first(static_cast<std::size_t>(CornersOf(cell.shape)))));
        } else {
            for (const LocalFace& local : FacesOf(cell.shape)) {
                faces.Add(MakeFace(*corners, std::span(local.corners).first(local.count)));
            }
        }
    }
}

bool SurfaceBuilder::Surface::Add(const Body& body) {
    std::size_t count = 0;
    for (const Cell& cell : body.cells) {
        count += FacesOf(cell.shape).size();
    }
    FaceTable faces(count);
    std::vector<Face> visible;
    CollectFaces(body, faces, visible);
    // A skin of shells shows nothing that the solids below do not show.
    std::erase_if(visible, [&](const Face& shell) { return faces.Has(shell); });
    for (const Face& face : faces.Faces()) {
        if (face.uses == 1) {
            visible.push_back(face);
        }
    }
    EdgeTable edges(visible.size() * 4);
    body_ = &body;
    places_.assign(body.points.size(), kNone);
    for (const Face& face : visible) {
        AddFace(face, edges);
        if (!IsWithin()) {
            return false;
        }
    }
    return true;
}

void SurfaceBuilder::Surface::AddFace(const Face& face, EdgeTable& edges) {
    std::array<std::uint32_t, 4> points{};
    for (std::size_t corner = 0; corner < face.count; ++corner) {
        points.at(corner) = PointOf(*body_, face.corners.at(corner));
    }
    for (std::size_t corner = 2; corner < face.count; ++corner) {
        mesh_.triangles.insert(mesh_.triangles.end(), {points[0], points.at(corner - 1), points.at(corner)});
    }
    const std::size_t sides = face.count == 2 ? 1 : face.count;
    for (std::size_t side = 0; side < sides; ++side) {
        const std::uint32_t begin = points.at(side);
        const std::uint32_t end = points.at((side + 1) % face.count);
        if (edges.Add(begin, end)) {
            mesh_.lines.insert(mesh_.lines.end(), {begin, end});
        }
    }
}

/// The place in the list of points that have something to show.
std::uint32_t SurfaceBuilder::Surface::PointOf(const Body& body, std::uint32_t point) {
    std::uint32_t& place = places_[point];
    if (place == kNone) {
        place = static_cast<std::uint32_t>(mesh_.points.size() / 3);
        for (const double coordinate : body.points[point]) {
            mesh_.points.push_back(static_cast<float>(coordinate));
        }
    }
    return place;
}

bool SurfaceBuilder::Build(std::size_t mostTriangles, SurfaceMesh& surface) const {
    surface = {};
    Surface builder(mostTriangles, surface);
    bool isWithin = builder.Add(whole_);
    for (const Body& instance : instances_) {
        isWithin = isWithin && builder.Add(instance);
    }
    // A file with parts alone is one that an assembly includes.
    for (auto part = parts_.begin(); instances_.empty() && part != parts_.end(); ++part) {
        isWithin = isWithin && builder.Add(part->second);
    }
    if (!isWithin) {
        surface = {};
    }
    return isWithin;
}

}  // namespace host
