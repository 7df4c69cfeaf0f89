#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What a reading of solver input or a mesh gives: counts, and for those who want to draw it, nodes and
/// elements.
namespace host {

/// The syntaxes that models are read from.
enum class ModelSyntax {
    /// Abaqus and CalculiX.
    Abaqus,
    /// Nastran and OptiStruct.
    Nastran,
    LsDyna,
    /// Triangles, as text or as bytes.
    Stl,
    /// Meshes of Gmsh, as text or as bytes.
    Gmsh,
};

enum class ElementShape {
    /// Masses, springs to the ground, and whatever has no known shape.
    Other,
    Line,
    Triangle,
    Quadrilateral,
    Tetrahedron,
    Pyramid,
    Wedge,
    Hexahedron,
};
/// The number of corners; 0 for ElementShape::Other.
int CornersOf(ElementShape shape);

using Position = std::array<double, 3>;

struct ModelElement {
    std::int64_t id = 0;
    ElementShape shape = ElementShape::Other;
    /// 1 with nodes at the corners only, 2 with nodes between them.
    int order = 1;
    /// As the file names it: `C3D8R`, `CTETRA`, `ELEMENT_SHELL`, `facet`; Gmsh has
    /// numbers: `5`.
    std::string_view type;
    /// The corners first, in the order of the usual hexahedron: four around the bottom, four around the top
    /// above them. Zeros stand for nodes that the file leaves out.
    std::span<const std::int64_t> nodes;
};

/// Where an instance of a part stands: turned about the axis from `from` to `to` by `degrees`, after it was
/// moved by `shift`.
struct Placement {
    Position shift{};
    Position from{};
    Position to{};
    double degrees = 0;
};

/// Takes what a model has, in the order of the file.
///
/// Nodes between BeginPart and EndPart belong to the part; their identifiers mean nothing outside of it. An
/// instance has the nodes and elements of its part, and those that come before EndInstance. Only files of
/// Abaqus have parts. A node that comes twice is moved by the second time; no element comes twice.
class SolverModelSink {
public:
    SolverModelSink() = default;
    SolverModelSink(const SolverModelSink&) = delete;
    SolverModelSink& operator=(const SolverModelSink&) = delete;
    virtual ~SolverModelSink() = default;

    virtual void AddNode(std::int64_t id, const Position& position) = 0;
    virtual void AddElement(const ModelElement& element) = 0;
    virtual void BeginPart(std::string_view name) = 0;
    virtual void EndPart() = 0;
    virtual void BeginInstance(std::string_view part, const Placement& placement) = 0;
    virtual void EndInstance() = 0;
};

struct SolverModel {
    /// Nothing where the files do not say it for certain: a file that they include is missing, the solver
    /// makes nodes itself, a line is damaged. Never 0.
    std::optional<std::uint64_t> nodes;
    std::optional<std::uint64_t> elements;
    /// Steps of Abaqus and CalculiX, subcases of Nastran.
    std::optional<std::uint64_t> steps;
    /// The names of the materials, each once, in the order of the files. Nastran has only kinds and numbers:
    /// `MAT1 12`.
    std::vector<std::string> materials;
    /// The units, where a file says them: `mm, N, t, s`.
    std::string units;
    /// Why counts are missing, a sentence with file and line; empty if none is.
    std::string gap;
    /// Why positions may be others than those that the sink got; empty if they are not.
    std::string placeGap;
};

struct ModelLimits {
    using Clock = std::chrono::steady_clock;

    /// Files that are included are read in this directory only. Empty is the directory of the file.
    std::filesystem::path root = {};
    /// Is asked before an included file is opened; may be empty.
    std::function<bool(const std::filesystem::path& file)> mayRead = {};
    /// The time that a file may take, with all that it includes.
    std::chrono::milliseconds budget{500};
    std::function<Clock::time_point()> now = &Clock::now;
};

}  // namespace host
