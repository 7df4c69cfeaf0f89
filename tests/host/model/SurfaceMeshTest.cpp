#include <cmath>
#include <set>

#include "ModelSupport.h"
#include "host/model/SurfaceMesh.h"

namespace host {
namespace {

class Surface : public testing::Test {
protected:
    /// A block of bricks with edges of 1.
    void AddBricks(int width, int height, int depth) {
        const auto node = [&](int x, int y, int z) {
            return 1 + x + (width + 1) * (y + std::int64_t{height + 1} * z);
        };
        for (int z = 0; z <= depth; ++z) {
            for (int y = 0; y <= height; ++y) {
                for (int x = 0; x <= width; ++x) {
                    builder.AddNode(node(x, y, z), {double(x), double(y), double(z)});
                }
            }
        }
        for (int z = 0; z < depth; ++z) {
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    Add(ElementShape::Hexahedron,
                        {node(x, y, z), node(x + 1, y, z), node(x + 1, y + 1, z), node(x, y + 1, z),
                         node(x, y, z + 1), node(x + 1, y, z + 1), node(x + 1, y + 1, z + 1),
                         node(x, y + 1, z + 1)});
                }
            }
        }
    }
    void AddPoints(const std::vector<Position>& points) {
        for (const Position& point : points) {
            builder.AddNode(++lastNode, point);
        }
    }
    void Add(ElementShape shape, const std::vector<std::int64_t>& nodes, int order = 1) {
        builder.AddElement({++lastElement, shape, order, "X", nodes});
    }
    void Build(std::size_t most = 1000000) { EXPECT_TRUE(builder.Build(most, mesh)); }

    Position Point(std::size_t index) const {
        return {mesh.points[3 * index], mesh.points[3 * index + 1], mesh.points[3 * index + 2]};
    }
    /// The volume inside of a closed surface whose triangles all look outwards.
    double Volume() const {
        double volume = 0;
        for (std::size_t first = 0; first < mesh.triangles.size(); first += 3) {
            const Position a = Point(mesh.triangles[first]);
            const Position b = Point(mesh.triangles[first + 1]);
            const Position c = Point(mesh.triangles[first + 2]);
            volume += (a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) +
                       a[2] * (b[0] * c[1] - b[1] * c[0])) /
                      6;
        }
        return volume;
    }

    SurfaceBuilder builder;
    SurfaceMesh mesh;
    std::int64_t lastNode = 0;
    std::int64_t lastElement = 0;
};

TEST_F(Surface, HasTheOutsideOfSolidsOnly) {
    AddBricks(3, 4, 5);
    Build();
    EXPECT_EQ(mesh.triangles.size() / 3, 2U * 2 * (3 * 4 + 4 * 5 + 3 * 5));
    EXPECT_EQ(mesh.points.size() / 3, 4U * 5 * 6 - 2U * 3 * 4) << "points inside are left out";
    // Euler: each of the 94 quadrilaterals has four edges, each edge two quadrilaterals.
    EXPECT_EQ(mesh.lines.size() / 2, 2U * 94);
    EXPECT_NEAR(Volume(), 60.0, 1e-6);
}

TEST_F(Surface, LooksOutwardsOnEveryShape) {
    const std::vector<Position> points = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                          {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
    const std::vector<std::pair<ElementShape, std::vector<std::int64_t>>> shapes = {
        {ElementShape::Tetrahedron, {1, 2, 4, 5}},
        {ElementShape::Pyramid, {1, 2, 3, 4, 5}},
        {ElementShape::Wedge, {1, 2, 4, 5, 6, 8}},
        {ElementShape::Hexahedron, {1, 2, 3, 4, 5, 6, 7, 8}}};
    const double volumes[] = {1.0 / 6, 1.0 / 3, 0.5, 1};
    for (std::size_t index = 0; index < shapes.size(); ++index) {
        SurfaceBuilder one;
        for (std::size_t node = 0; node < points.size(); ++node) {
            one.AddNode(static_cast<std::int64_t>(node) + 1, points[node]);
        }
        one.AddElement({1, shapes[index].first, 1, "X", shapes[index].second});
        EXPECT_TRUE(one.Build(100, mesh));
        EXPECT_NEAR(Volume(), volumes[index], 1e-6) << index;
    }
}

TEST_F(Surface, HidesFacesBetweenSolidsOfDifferentShapes) {
    AddPoints(kBrickUnderPyramid);
    Add(ElementShape::Hexahedron, {1, 2, 3, 4, 5, 6, 7, 8});
    Add(ElementShape::Pyramid, {5, 6, 7, 8, 9});
    Build();
    EXPECT_EQ(mesh.triangles.size() / 3, 5U * 2 + 4);
    EXPECT_NEAR(Volume(), 1 + 1.0 / 3, 1e-6);
}

TEST_F(Surface, HasShellsAndBeams) {
    AddPoints({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {5, 0, 0}, {6, 0, 0}});
    Add(ElementShape::Quadrilateral, {1, 2, 3, 4});
    Add(ElementShape::Triangle, {1, 2, 5});
    Add(ElementShape::Line, {5, 6});
    Add(ElementShape::Line, {4, 1, 6}, 2);
    Build();
    EXPECT_EQ(mesh.triangles.size(), 9U);
    // The edge between the shells is there once; the curve goes to its last node.
    EXPECT_EQ(mesh.lines.size() / 2, 4U + 2 + 1 + 1);
    EXPECT_EQ(Point(mesh.lines.back()), (Position{6, 0, 0}));
}

TEST_F(Surface, HasShellsOnSolidsOnce) {
    AddBricks(2, 1, 1);
    Build();
    const std::size_t triangles = mesh.triangles.size();
    const std::size_t lines = mesh.lines.size();
    // On the outside, whatever way around, and between the bricks.
    Add(ElementShape::Quadrilateral, {1, 2, 5, 4});
    Add(ElementShape::Quadrilateral, {7, 8, 2, 1});
    Add(ElementShape::Quadrilateral, {2, 5, 11, 8});
    Build();
    EXPECT_EQ(mesh.triangles.size(), triangles);
    EXPECT_EQ(mesh.lines.size(), lines);
    Add(ElementShape::Triangle, {1, 2, 5});
    Build();
    EXPECT_EQ(mesh.triangles.size(), triangles + 3) << "half of a face is not the face";
}

TEST_F(Surface, LeavesOutElementsWithoutNodesAndFoldedFaces) {
    AddPoints({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}});
    Add(ElementShape::Triangle, {1, 2, 99});
    // A brick that is folded up to a wedge.
    Add(ElementShape::Hexahedron, {1, 2, 3, 4, 5, 6, 6, 5});
    Build();
    EXPECT_EQ(mesh.triangles.size() / 3, 2U + 2 + 2 + 1 + 1);
    EXPECT_NEAR(Volume(), 0.5, 1e-6);
}

TEST_F(Surface, IsEmptyBeyondTheLimit) {
    AddBricks(2, 2, 2);
    EXPECT_TRUE(builder.Build(48, mesh));
    EXPECT_FALSE(builder.Build(47, mesh));
    EXPECT_TRUE(mesh.points.empty());
    EXPECT_TRUE(mesh.triangles.empty());
    EXPECT_TRUE(mesh.lines.empty());
}

TEST_F(Surface, PlacesInstancesOfParts) {
    builder.BeginPart("Arm");
    AddPoints({{1, 0, 0}, {2, 0, 0}, {1, 1, 0}});
    Add(ElementShape::Triangle, {1, 2, 3});
    builder.EndPart();
    Build();
    EXPECT_EQ(mesh.triangles.size(), 3U) << "a part alone is seen";
    builder.BeginInstance("ARM", {{1, 0, 0}, {0, 0, 0}, {0, 0, 5}, 90});
    builder.EndInstance();
    builder.BeginInstance("arm", {});
    builder.EndInstance();
    Build();
    EXPECT_EQ(mesh.triangles.size(), 6U);
    EXPECT_NEAR(Point(0)[0], 0, 1e-6);
    EXPECT_NEAR(Point(0)[1], 2, 1e-6) << "moved, then turned";
    EXPECT_EQ(Point(3), (Position{1, 0, 0}));
}

TEST_F(Surface, OfManyBricksHasNoneOfTheirInsides) {
    AddBricks(40, 40, 40);
    Build();
    EXPECT_EQ(mesh.triangles.size() / 3, 2U * 6 * 40 * 40);
    EXPECT_NEAR(Volume(), 64000.0, 1e-3);
}

}  // namespace
}  // namespace host
