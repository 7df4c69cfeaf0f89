#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "SolverModel.h"

namespace host {

/// What can be seen of a model.
struct SurfaceMesh {
    /// Three coordinates for each point.
    std::vector<float> points;
    /// Three points, by their places in the list, for each triangle. From the outside of solids they go
    /// around against the clock.
    std::vector<std::uint32_t> triangles;
    /// Two points for each line: the edges of elements that can be seen, each once, and beams.
    std::vector<std::uint32_t> lines;
};

/// Collects a model, and gives its surface: the faces that belong to one solid only, shells that are not on
/// solids, and lines. Nodes between corners do not bend it.
class SurfaceBuilder : public SolverModelSink {
public:
    SurfaceBuilder() = default;
    SurfaceBuilder(const SurfaceBuilder&) = delete;
    SurfaceBuilder& operator=(const SurfaceBuilder&) = delete;

    void AddNode(std::int64_t id, const Position& position) override;
    void AddElement(const ModelElement& element) override;
    void BeginPart(std::string_view name) override;
    void EndPart() override;
    void BeginInstance(std::string_view part, const Placement& placement) override;
    void EndInstance() override;

    /// Sets the surface. If it has more triangles than that, or more lines than three times as many, it is
    /// left empty, and false is returned. Elements without all of their corners are left out. The time is
    /// linear in the number of elements.
    bool Build(std::size_t mostTriangles, SurfaceMesh& surface) const;

private:
    struct Cell {
        ElementShape shape;
        /// Where its corners begin.
        std::size_t first;
    };
    /// Nodes that share their numbers, and the elements between them.
    struct Body {
        std::vector<Position> points;
        std::unordered_map<std::int64_t, std::uint32_t> pointOfNode;
        std::vector<Cell> cells;
        /// By the identifiers of nodes, which may come behind the elements.
        std::vector<std::int64_t> corners;
    };
    class Surface;

    void EndBody();

    Body whole_;
    std::unordered_map<std::string, Body> parts_;
    std::vector<Body> instances_;
    Body* current_ = &whole_;
    Placement placement_;
};

}  // namespace host
