#include "PageModel.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <vector>

#include "host/directory/DeckModel.h"
#include "host/model/MeshSyntax.h"
#include "host/model/ModelReader.h"
#include "host/model/SurfaceMesh.h"
#include "host/system/FileSystem.h"
#include "host/system/ServerPath.h"

namespace host {
namespace {

/// Somebody waits for the page, but does not want to wait for each of many files.
constexpr std::chrono::seconds kBudget{5};
constexpr std::size_t kPointSize = 6;
constexpr std::size_t kTriangleSize = 12;
constexpr std::size_t kLineSize = 8;
/// What a browser can turn without effort.
constexpr std::size_t kMostTriangles = 2'000'000;

constexpr std::size_t Padded(std::size_t size) {
    return (size + 3) / 4 * 4;
}

std::optional<ModelSyntax> SyntaxOf(const std::filesystem::path& file, _tagFileType type) {
    switch (type) {
        case CAE_FILE_DECK:
            return ModelSyntaxOf(file);
        case CAE_FILE_MESH:
        case CAE_FILE_CAD:
        case CAE_FILE_GRAPHIC:
            return MeshSyntaxOf(file);
        default:
            return std::nullopt;
    }
}

/// Sets the box. Returns false if a coordinate is not a number that can be drawn.
bool Measure(const std::vector<float>& points, PageModel& model) {
    model.low.fill(std::numeric_limits<float>::max());
    model.high.fill(std::numeric_limits<float>::lowest());
    for (std::size_t index = 0; index < points.size(); ++index) {
        const float value = points[index];
        if (!std::isfinite(value)) {
            return false;
        }
        model.low.at(index % 3) = std::min(model.low.at(index % 3), value);
        model.high.at(index % 3) = std::max(model.high.at(index % 3), value);
    }
    return true;
}

void AppendNumber(std::string& bytes, std::uint32_t number, std::size_t size) {
    for (std::size_t index = 0; index < size; ++index) {
        bytes += static_cast<char>(number >> (8U * index) & 0xFFU);
    }
}

std::string Encode(const SurfaceMesh& surface, const PageModel& model) {
    constexpr double kSteps = std::numeric_limits<std::uint16_t>::max();
    std::string bytes;
    bytes.reserve(Padded(model.points * kPointSize) + model.triangles * kTriangleSize +
                  model.lines * kLineSize);
    for (std::size_t index = 0; index < surface.points.size(); ++index) {
        const double low = model.low.at(index % 3);
        const double size = model.high.at(index % 3) - low;
        const double place = size > 0 ? (surface.points[index] - low) / size : 0;
        AppendNumber(bytes, static_cast<std::uint32_t>(std::lround(place * kSteps)), 2);
    }
    bytes.resize(Padded(bytes.size()));
    for (const std::vector<std::uint32_t>* const list : {&surface.triangles, &surface.lines}) {
        for (const std::uint32_t point : *list) {
            AppendNumber(bytes, point, 4);
        }
    }
    return bytes;
}

}  // namespace

std::optional<PageModel> ReadPageModel(const std::filesystem::path& file, _tagFileType type,
                                       const std::filesystem::path& directory,
                                       const ReadableDirectories& readable, PageRoom& room) {
    const std::optional<ModelSyntax> syntax = SyntaxOf(file, type);
    if (!syntax) {
        return std::nullopt;
    }
    SurfaceBuilder builder;
    SolverModel read;
    const ModelLimits limits{
        .root = IsOnOtherServer(directory) ? std::filesystem::path() : directory,
        .mayRead = [&readable](const std::filesystem::path& included) { return readable.Has(included); },
        .budget = kBudget};
    const std::error_code error = ReadModel(file, *syntax, limits, &builder, read);
    ThrowIfOutOfMemory(error);
    SurfaceMesh surface;
    if (error) {
        return std::nullopt;
    }
    PageModel model;
    model.nodes = read.nodes;
    model.elements = read.elements;
    model.gap = read.gap;
    if (!read.placeGap.empty()) {
        model.gap += (model.gap.empty() ? "" : " ") + read.placeGap;
    }
    const std::uint64_t most = std::min<std::uint64_t>(room.bytes / kTriangleSize, kMostTriangles);
    if (!builder.Build(static_cast<std::size_t>(most), surface)) {
        return model;
    }
    model.points = surface.points.size() / 3;
    model.triangles = surface.triangles.size() / 3;
    model.lines = surface.lines.size() / 2;
    if (model.points == 0 || !Measure(surface.points, model)) {
        return std::nullopt;
    }
    if (room.Take(Padded(model.points * kPointSize) + model.triangles * kTriangleSize +
                  model.lines * kLineSize)) {
        model.bytes = Encode(surface, model);
    }
    return model;
}

}  // namespace host
