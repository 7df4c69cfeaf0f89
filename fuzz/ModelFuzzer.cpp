// Reads any text as a model in every syntax. The text is in three files that include each other, and the same
// with a surface made of it.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>

#include "Expect.h"
#include "FuzzedFiles.h"
#include "host/model/ModelReader.h"
#include "host/model/SurfaceMesh.h"

namespace {

/// Counts again, and checks what it gets.
class CheckingSink : public host::SolverModelSink {
public:
    void AddNode(std::int64_t id, const host::Position& position) override {
        Expect(id > 0, "a node has a number");
        surface.AddNode(id, position);
    }
    void AddElement(const host::ModelElement& element) override {
        Expect(element.id > 0, "an element has a number");
        const auto corners = static_cast<std::size_t>(host::CornersOf(element.shape));
        Expect(element.nodes.size() >= corners, "an element has its corners");
        for (const std::int64_t node : element.nodes) {
            Expect(node >= 0, "a node of an element has a number");
        }
        ++elements;
        surface.AddElement(element);
    }
    void BeginPart(std::string_view name) override {
        Expect(!isInPart && !isInInstance, "parts are not in each other");
        isInPart = hasParts = true;
        surface.BeginPart(name);
    }
    void EndPart() override {
        Expect(isInPart, "a part ends once");
        isInPart = false;
        surface.EndPart();
    }
    void BeginInstance(std::string_view part, const host::Placement& placement) override {
        Expect(!isInPart && !isInInstance, "instances are not in each other");
        isInInstance = true;
        surface.BeginInstance(part, placement);
    }
    void EndInstance() override {
        Expect(isInInstance, "an instance ends once");
        isInInstance = false;
        surface.EndInstance();
    }

    host::SurfaceBuilder surface;
    std::uint64_t elements = 0;
    bool isInPart = false;
    bool isInInstance = false;
    bool hasParts = false;
};

void ExpectModel(const std::filesystem::path& file, host::ModelSyntax syntax) {
    constexpr std::size_t kMostTriangles = 2000;
    host::ModelLimits limits;
    limits.now = [] { return host::ModelLimits::Clock::time_point(); };
    CheckingSink sink;
    host::SolverModel model;
    Expect(!host::ReadModel(file, syntax, limits, &sink, model), "a file is read");
    Expect(!sink.isInPart && !sink.isInInstance, "what began has ended");
    Expect(!model.nodes || *model.nodes > 0, "a count is not zero");
    Expect(model.gap.empty() || !model.nodes || !model.elements,
           "a reason belongs to a count that is missing");
    if (model.elements && !sink.hasParts) {
        Expect(*model.elements == sink.elements, "every element that is counted is given");
    }
    host::SolverModel again;
    Expect(!host::ReadModel(file, syntax, limits, nullptr, again), "a file is read again");
    Expect(model.nodes == again.nodes && model.elements == again.elements && model.steps == again.steps &&
               model.materials == again.materials && model.units == again.units,
           "the counts are the same without a sink");
    host::SurfaceMesh mesh;
    const bool isWithin = sink.surface.Build(kMostTriangles, mesh);
    Expect(isWithin || mesh.points.empty(), "beyond the limit the surface is empty");
    Expect(mesh.triangles.size() % 3 == 0 && mesh.triangles.size() / 3 <= kMostTriangles, "whole triangles");
    for (const std::uint32_t point : mesh.triangles) {
        Expect(point < mesh.points.size() / 3, "triangles are between points");
    }
    for (const std::uint32_t point : mesh.lines) {
        Expect(point < mesh.points.size() / 3, "lines are between points");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::filesystem::path folder = PlaceInMemory("model");
    std::filesystem::create_directory(folder);
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    // The first file may include the others by their names.
    WriteBytes(folder / "deck", text);
    WriteBytes(folder / "a", text.substr(size / 2));
    WriteBytes(folder / "b", text.substr(size / 4 * 3));
    for (const host::ModelSyntax syntax :
         {host::ModelSyntax::Abaqus, host::ModelSyntax::Nastran, host::ModelSyntax::LsDyna,
          host::ModelSyntax::Stl, host::ModelSyntax::Gmsh}) {
        ExpectModel(folder / "deck", syntax);
    }
    std::filesystem::remove_all(folder);
    return 0;
}
