#pragma once

#include <string>
#include <vector>

#include "MeshFiles.h"
#include "host/model/SolverModel.h"

/// Writes meshes as Gmsh does.
namespace host {

/// Elements of one type, on one entity of the geometry.
struct GmshBlock {
    int type;
    int dimension;
    /// The number of each, and behind it its nodes.
    std::vector<std::vector<std::int64_t>> elements;
};

struct GmshMesh {
    /// From 1 on; the first of them are on a curve, with a parameter.
    std::vector<Position> nodes;
    std::vector<GmshBlock> blocks;
};

/// A file of version 2.2 or 4.1.
class GmshFile {
public:
    GmshFile(const GmshMesh& mesh, bool hasBlocks, bool isBinary) : mesh_(mesh), isBinary_(isBinary) {
        text = std::string("$MeshFormat\n") + (hasBlocks ? "4.1 " : "2.2 ") + (isBinary ? "1 8\n" : "0 8\n");
        if (isBinary) {
            Integers({1});
        }
        text += isBinary ? "\n" : "";
        text += "$EndMeshFormat\n$PhysicalNames\n1\n3 1 \"body\"\n$EndPhysicalNames\n$Nodes\n";
        hasBlocks ? NodesInBlocks() : Nodes();
        End("Nodes");
        text += "$Elements\n";
        hasBlocks ? ElementsInBlocks() : Elements();
        End("Elements");
    }

    std::string text;

private:
    void Nodes() {
        text += std::to_string(mesh_.nodes.size()) + '\n';
        std::int64_t id = 0;
        for (const Position& node : mesh_.nodes) {
            Integers({++id});
            Reals({node[0], node[1], node[2]});
        }
    }
    /// The first node is on a point, two more are on a curve, and the others in a volume.
    void NodesInBlocks() {
        const auto count = static_cast<std::int64_t>(mesh_.nodes.size());
        Sizes({3, count, 1, count});
        NodeBlock(0, 0, 1);
        NodeBlock(1, 1, 3);
        NodeBlock(3, 3, count);
    }
    void NodeBlock(std::int64_t dimension, std::int64_t from, std::int64_t to) {
        Integers({dimension, 1, dimension == 1 ? 1 : 0});
        Sizes({to - from});
        for (std::int64_t id = from + 1; id <= to; ++id) {
            Sizes({id});
        }
        for (std::int64_t id = from; id < to; ++id) {
            const Position& node = mesh_.nodes[static_cast<std::size_t>(id)];
            dimension == 1 ? Reals({node[0], node[1], node[2], 0.5}) : Reals({node[0], node[1], node[2]});
        }
    }
    void Elements() {
        text += std::to_string(Count()) + '\n';
        for (const GmshBlock& block : mesh_.blocks) {
            if (isBinary_) {
                Integers({block.type, static_cast<std::int64_t>(block.elements.size()), 2});
            }
            for (const std::vector<std::int64_t>& element : block.elements) {
                std::vector<std::int64_t> numbers = {element[0], 7, 1};
                if (!isBinary_) {
                    numbers = {element[0], block.type, 2, 7, 1};
                }
                numbers.insert(numbers.end(), element.begin() + 1, element.end());
                Integers(numbers);
                text += isBinary_ ? "" : "\n";
            }
        }
    }
    void ElementsInBlocks() {
        const auto count = static_cast<std::int64_t>(Count());
        Sizes({static_cast<std::int64_t>(mesh_.blocks.size()), count, 1, count});
        for (const GmshBlock& block : mesh_.blocks) {
            Integers({block.dimension, 1, block.type});
            Sizes({static_cast<std::int64_t>(block.elements.size())});
            for (const std::vector<std::int64_t>& element : block.elements) {
                Sizes(element);
            }
        }
    }
    std::size_t Count() const {
        std::size_t count = 0;
        for (const GmshBlock& block : mesh_.blocks) {
            count += block.elements.size();
        }
        return count;
    }
    void Integers(const std::vector<std::int64_t>& numbers) { Numbers(numbers, 4, " "); }
    void Sizes(const std::vector<std::int64_t>& numbers) {
        Numbers(numbers, 8, " ");
        text += isBinary_ ? "" : "\n";
    }
    void Numbers(const std::vector<std::int64_t>& numbers, std::size_t size, const char* between) {
        for (const std::int64_t number : numbers) {
            if (isBinary_) {
                AppendBytes(text, static_cast<std::uint64_t>(number), size);
            } else {
                text += std::to_string(number) + between;
            }
        }
    }
    void Reals(const std::vector<double>& numbers) {
        for (const double number : numbers) {
            if (isBinary_) {
                AppendBytes(text, std::bit_cast<std::uint64_t>(number), 8);
            } else {
                text += std::to_string(number) + ' ';
            }
        }
        text += isBinary_ ? "" : "\n";
    }
    void End(const std::string& name) { text += (isBinary_ ? "\n$End" : "$End") + name + '\n'; }

    const GmshMesh& mesh_;
    bool isBinary_;
};

}  // namespace host
