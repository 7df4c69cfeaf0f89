#include <limits>
#include <map>

#include "GmshFiles.h"
#include "ModelSupport.h"
#include "host/model/MeshSyntax.h"

namespace host {
namespace {

/// A brick on top of which is a pyramid, with a skin, an edge and a point.
GmshMesh Bricks() {
    return {kBrickUnderPyramid,
            {{15, 0, {{1, 1}}},
             {1, 1, {{2, 1, 2}}},
             {3, 2, {{3, 1, 2, 3, 4}, {4, 1, 2, 6, 5}}},
             {5, 3, {{5, 1, 2, 3, 4, 5, 6, 7, 8}}},
             {7, 3, {{6, 5, 6, 7, 8, 9}}}}};
}
constexpr std::string_view kBricks =
    "node 1 0. 0. 0.\nnode 2 1. 0. 0.\nnode 3 1. 1. 0.\nnode 4 0. 1. 0.\nnode 5 0. 0. 1.\nnode 6 1. 0. 1.\n"
    "node 7 1. 1. 1.\nnode 8 0. 1. 1.\nnode 9 0.5 0.5 2.\n15 1: 0/1 1\n1 2: 1/1 1 2\n3 3: 3/1 1 2 3 4\n"
    "3 4: 3/1 1 2 6 5\n5 5: 7/1 1 2 3 4 5 6 7 8\n7 6: 5/1 5 6 7 8 9\n";

class GmshModel : public ModelTest {
protected:
    SolverModel ReadText(std::string_view text) {
        sink.text.clear();
        return ModelTest::ReadText(ModelSyntax::Gmsh, text);
    }
    std::string Outcome(std::string_view text) {
        const SolverModel model = ReadText(text);
        return CountsOf(model) + ": " + model.gap;
    }
    /// A file of version 2.2 with two nodes and a line between them.
    static std::string Lines(std::string_view nodes, std::string_view elements = "1\n1 1 0 1 2\n") {
        return "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n$Nodes\n" + std::string(nodes) +
               "$EndNodes\n$Elements\n" + std::string(elements) + "$EndElements\n";
    }
    static std::string Blocks(std::string_view nodes, std::string_view elements) {
        return "$MeshFormat\n4.1 0 8\n$EndMeshFormat\n$Nodes\n" + std::string(nodes) +
               "$EndNodes\n$Elements\n" + std::string(elements) + "$EndElements\n";
    }
};

TEST_F(GmshModel, IsReadInEveryVersionAsTextAndAsBytes) {
    const GmshMesh mesh = Bricks();
    for (const bool hasBlocks : {false, true}) {
        for (const bool isBinary : {false, true}) {
            EXPECT_EQ(Outcome(GmshFile(mesh, hasBlocks, isBinary).text), "9 6 -: ") << hasBlocks << isBinary;
            EXPECT_EQ(sink.text, kBricks) << hasBlocks << isBinary;
        }
    }
}

TEST_F(GmshModel, IsReadAsOtherProgramsWriteIt) {
    EXPECT_EQ(
        Outcome("  \n$MeshFormat\r\n2 0 8\r\n$EndMeshFormat\r\n$Comments\n$ of a "
                "person\n$EndComments\n$Elements\n"
                "1\n7\t1  3 0 0 0 2\t5\n$EndElements\n\n$Nodes\n\n2\n5 1e0 2.5D0 +3\n\n2 0 0 0\n$EndNodes"),
        "2 1 -: ");
    EXPECT_EQ(sink.text, "1 7: 1/1 2 5\nnode 5 1. 2.5 3.\nnode 2 0. 0. 0.\n");
}

TEST_F(GmshModel, HasTheMiddlesOfEdgesWhereAbaqusHasThem) {
    // The edges of each in the order of Gmsh, by their corners from 1 on; then those of the model.
    using Edges = std::vector<std::pair<int, int>>;
    struct Expectation {
        int type;
        int corners;
        int more;
        Edges given;
        Edges wanted;
    };
    const Expectation expectations[] = {
        {9, 3, 0, {{1, 2}, {2, 3}, {3, 1}}, {{1, 2}, {2, 3}, {3, 1}}},
        {16, 4, 0, {{1, 2}, {2, 3}, {3, 4}, {4, 1}}, {{1, 2}, {2, 3}, {3, 4}, {4, 1}}},
        {10, 4, 1, {{1, 2}, {2, 3}, {3, 4}, {4, 1}}, {{1, 2}, {2, 3}, {3, 4}, {4, 1}}},
        {11,
         4,
         0,
         {{1, 2}, {2, 3}, {3, 1}, {4, 1}, {3, 4}, {2, 4}},
         {{1, 2}, {2, 3}, {3, 1}, {4, 1}, {2, 4}, {3, 4}}},
        {19,
         5,
         0,
         {{1, 2}, {1, 4}, {1, 5}, {2, 3}, {2, 5}, {3, 4}, {3, 5}, {4, 5}},
         {{1, 2}, {2, 3}, {3, 4}, {1, 4}, {1, 5}, {2, 5}, {3, 5}, {4, 5}}},
        {18,
         6,
         0,
         {{1, 2}, {1, 3}, {1, 4}, {2, 3}, {2, 5}, {3, 6}, {4, 5}, {4, 6}, {5, 6}},
         {{1, 2}, {2, 3}, {1, 3}, {4, 5}, {5, 6}, {4, 6}, {1, 4}, {2, 5}, {3, 6}}},
        {17,
         8,
         0,
         {{1, 2}, {1, 4}, {1, 5}, {2, 3}, {2, 6}, {3, 4}, {3, 7}, {4, 8}, {5, 6}, {5, 8}, {6, 7}, {7, 8}},
         {{1, 2}, {2, 3}, {3, 4}, {1, 4}, {5, 6}, {6, 7}, {7, 8}, {5, 8}, {1, 5}, {2, 6}, {3, 7}, {4, 8}}},
    };
    for (const Expectation& expectation : expectations) {
        const auto middle = [](const std::pair<int, int>& edge) {
            return std::to_string(100 + 10 * edge.first + edge.second);
        };
        std::string line = "1\n1 " + std::to_string(expectation.type) + " 0";
        std::string wanted;
        for (int corner = 1; corner <= expectation.corners; ++corner) {
            line += ' ' + std::to_string(corner);
            wanted += ' ' + std::to_string(corner);
        }
        for (std::size_t edge = 0; edge < expectation.given.size(); ++edge) {
            line += ' ' + middle(expectation.given[edge]);
            wanted += ' ' + middle(expectation.wanted[edge]);
        }
        for (int node = 0; node < expectation.more; ++node) {
            line += " 99";
            wanted += " 99";
        }
        EXPECT_EQ(Outcome(Lines("1\n1 0 0 0\n", line + '\n')), "1 1 -: ");
        EXPECT_TRUE(sink.text.ends_with("/2" + wanted + '\n')) << sink.text << wanted;
    }
    Outcome(Lines("1\n1 0 0 0\n", "1\n1 8 0 1 2 3\n"));
    EXPECT_TRUE(sink.text.ends_with("8 1: 1/2 1 3 2\n")) << sink.text;
    // What is in the middles of faces is behind the middles of edges.
    std::string nodes;
    for (int node = 1; node <= 27; ++node) {
        nodes += ' ' + std::to_string(node);
    }
    Outcome(Lines("1\n1 0 0 0\n", "1\n1 12 0" + nodes + '\n'));
    EXPECT_TRUE(sink.text.ends_with(" 9 12 14 10 17 19 20 18 11 13 15 16 21 22 23 24 25 26 27\n"))
        << sink.text;
}

TEST_F(GmshModel, CountsElementsOfUnknownTypes) {
    EXPECT_EQ(Outcome(Lines("1\n1 0 0 0\n", "2\n1 134 0 1\n2 139 1 0 1 2 3\n")), "1 2 -: ");
    GmshMesh mesh = Bricks();
    mesh.blocks[1].type = 134;
    EXPECT_EQ(Outcome(GmshFile(mesh, true, false).text), "9 6 -: ");
    EXPECT_EQ(Outcome(GmshFile(mesh, true, true).text),
              "9 - -: model, byte 590: it is not a block of elements");
}

TEST_F(GmshModel, SaysWhatIsNotRead) {
    EXPECT_EQ(Outcome("*NODE\n1,0\n"), "- - -: model:2: there is no $MeshFormat");
    EXPECT_EQ(Outcome("$Nodes\n1\n1 0 0 0\n$EndNodes\n"), "- - -: model:4: there is no $MeshFormat");
    for (const char* const format : {"4 0 8", "5 0 8", "1 0 8", "2.2 0 4", "2.2 x 8", "2.2", "x", ""}) {
        EXPECT_EQ(Outcome("$MeshFormat\n" + std::string(format) +
                          "\n$EndMeshFormat\n$Nodes\n1\n1 0 0 0\n$EndNodes\n"),
                  std::string("- - -: model:") + (*format == '\0' ? '3' : '2') +
                      ": this version of Gmsh's format is not read");
    }
    EXPECT_EQ(Outcome(std::string("$MeshFormat\n2.2 1 8\n\0\0\0\1\n$EndMeshFormat\n", 40)),
              "- - -: model, byte 20: the bytes of the numbers are in another order");
}

TEST_F(GmshModel, OfLinesSaysWhereItIsDamaged) {
    const std::string nodes = "2\n1 0 0 0\n2 1 0 0\n";
    EXPECT_EQ(Outcome(Lines(nodes)), "2 1 -: ");
    EXPECT_EQ(Outcome(Lines("x\n")), "- 1 -: model:5: the number of nodes is missing");
    EXPECT_EQ(Outcome(Lines("")), "- 1 -: model:5: the number of nodes is missing");
    EXPECT_EQ(Outcome(Lines("3\n1 0 0 0\n2 1 0 0\n")), "- 1 -: model:8: there are 2 of 3 nodes");
    EXPECT_EQ(Outcome(Lines("9223372036854775807\n1 0 0 0\n")),
              "- 1 -: model:7: there are 1 of 9223372036854775807 nodes");
    EXPECT_EQ(Outcome(Lines("1\n1 0 0 0\n2 1 0 0\n")), "- 1 -: model:8: $Nodes does not end where it should");
    EXPECT_EQ(Outcome(Lines("-1\n1 0 0 0\n")), "- 1 -: model:7: $Nodes does not end where it should");
    for (const char* const line : {"1 0 0", "x 0 0 0", "1 0 0 x", "1 0 0 1e999", "1 0 0 nan"}) {
        EXPECT_EQ(Outcome(Lines("2\n" + std::string(line) + "\n2 1 0 0\n")),
                  "- 1 -: model:6: it is not a node")
            << line;
        EXPECT_TRUE(sink.text.starts_with("node 2 1. 0. 0.\n")) << "what is behind it is read";
    }
    EXPECT_EQ(Outcome(Lines("1\n1 0 0 1e39\n")),
              "- 1 -: model:6: the node 1 has no number, or is at no place");
    EXPECT_EQ(Outcome(Lines("1\n-1 0 0 0\n")),
              "- 1 -: model:6: the node -1 has no number, or is at no place");
    for (const char* const line : {"1 1 0 1", "1 1 0 1 2 3", "1 1 -1 1 2", "1 1 9 1 2", "0 1 0 1 2",
                                   "1 1 0 1 0", "1 1 0 1 x", "1 x 0 1 2", "1", "1 1 4000000000 1 2"}) {
        EXPECT_EQ(Outcome(Lines(nodes, "2\n" + std::string(line) + "\n2 1 0 1 2\n")),
                  "2 - -: model:11: the line is not an element")
            << line;
        EXPECT_TRUE(sink.text.ends_with("1 2: 1/1 1 2\n")) << "what is behind it is read";
    }
    EXPECT_EQ(Outcome(Lines(nodes, "2\n1 1 0 1 2\n")), "2 - -: model:12: there are 1 of 2 elements");
    EXPECT_EQ(Outcome(Lines(nodes, "x\n")), "2 - -: model:10: the number of elements is missing");
    // A section that does not end is not the end of those behind it.
    EXPECT_EQ(Outcome("$MeshFormat\n2.2 0 8\n$EndMeshFormat\n$Nodes\n1\n1 0 0 0\n$Elements\n1\n1 15 0 "
                      "1\n$EndElements\n"),
              "- 1 -: model:7: $Nodes does not end where it should");
    EXPECT_EQ(sink.text, "node 1 0. 0. 0.\n15 1: 0/1 1\n");
}

TEST_F(GmshModel, OfBlocksSaysWhereItIsDamaged) {
    const std::string nodes = "1 2 1 2\n1 1 1 2\n1\n2\n0 0 0 0\n1 0 0 1\n";
    const std::string elements = "1 1 1 1\n1 1 1 1\n1 1 2\n";
    EXPECT_EQ(Outcome(Blocks(nodes, elements)), "2 1 -: ");
    EXPECT_EQ(Outcome(Blocks("1 2 1\n", elements)), "- 1 -: model:5: the number of nodes is missing");
    EXPECT_EQ(Outcome(Blocks("2 2 1 2\n1 1 1 2\n1\n2\n0 0 0 0\n1 0 0 1\n", elements)),
              "- 1 -: model:11: it is not a block of nodes");
    EXPECT_EQ(Outcome(Blocks("1 3 1 2\n1 1 1 2\n1\n2\n0 0 0 0\n1 0 0 1\n", elements)),
              "- 1 -: model:10: the number of nodes is not that of its beginning");
    for (const char* const block : {"4 1 0 2", "-1 1 0 2", "1 1 0 -2", "1 1 0", "x 1 0 2"}) {
        EXPECT_EQ(Outcome(Blocks("1 2 1 2\n" + std::string(block) + "\n1\n2\n0 0 0\n0 0 0\n", elements)),
                  "- 1 -: model:6: it is not a block of nodes")
            << block;
    }
    EXPECT_EQ(Outcome(Blocks("1 2 1 2\n1 1 0 1000000000000\n1\n2\n0 0 0\n0 0 0\n", elements)),
              "- 1 -: model:11: it is not a block of nodes");
    EXPECT_EQ(Outcome(Blocks("1 2 1 2\n1 1 0 2\n1\n2\n0 0 x\n0 0 0\n", elements)),
              "- 1 -: model:9: it is not the place of a node");
    EXPECT_EQ(Outcome(Blocks(nodes, "1 1 1\n")), "2 - -: model:13: the number of elements is missing");
    EXPECT_EQ(Outcome(Blocks(nodes, "1 2 1 2\n1 1 1 1\n1 1 2\n")),
              "2 - -: model:15: the number of elements is not that of its beginning");
    EXPECT_EQ(Outcome(Blocks(nodes, "1 2 1 2\n1 1 1 2\n1 1 2\n")),
              "2 - -: model:16: it is not a block of elements");
    EXPECT_EQ(Outcome(Blocks(nodes, "1 1 1 1\n1 1 1 -1\n")),
              "2 - -: model:14: it is not a block of elements");
    EXPECT_EQ(Outcome(Blocks(nodes, "1 2 1 2\n1 1 1 2\n1 1\n2 1 2\n")),
              "2 - -: model:15: the line is not an element");
}

TEST_F(GmshModel, ThatIsCutHasNoCountsOfWhatIsMissing) {
    const GmshMesh mesh = Bricks();
    for (const bool hasBlocks : {false, true}) {
        for (const bool isBinary : {false, true}) {
            const std::string whole = GmshFile(mesh, hasBlocks, isBinary).text;
            const std::size_t endOfNodes = whole.find("$EndNodes") + 9;
            const std::size_t endOfElements = whole.find("$EndElements") + 12;
            for (std::size_t size = 0; size < endOfElements; size += 13) {
                const SolverModel model = ReadText(whole.substr(0, size));
                EXPECT_EQ(model.elements, std::nullopt) << hasBlocks << isBinary << size;
                EXPECT_TRUE(size >= endOfNodes || !model.nodes) << hasBlocks << isBinary << size;
                EXPECT_TRUE(kBricks.starts_with(sink.text)) << sink.text;
            }
        }
    }
}

TEST_F(GmshModel, OfBytesIsReadWithAnyNumbersInIt) {
    const GmshMesh mesh = Bricks();
    for (const bool hasBlocks : {false, true}) {
        const std::string whole = GmshFile(mesh, hasBlocks, true).text;
        for (std::size_t place = whole.find("$Nodes"); place < whole.size(); place += 7) {
            constexpr std::string_view kBytes("\0\x7F\xFF$\n", 5);
            std::string damaged = whole;
            damaged[place] = kBytes[place % kBytes.size()];
            const SolverModel model = ReadText(damaged);
            EXPECT_TRUE(!model.gap.empty() || (model.nodes && model.elements)) << place;
        }
    }
    GmshMesh strange = mesh;
    strange.nodes[2][1] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Outcome(GmshFile(strange, false, true).text),
              "- 6 -: model, byte 171: the node 3 has no number, or is at no place");
}

TEST_F(GmshModel, LeavesOutOtherSectionsOfAnySize) {
    const GmshMesh mesh = Bricks();
    const std::string whole = GmshFile(mesh, true, true).text;
    const std::size_t nodes = whole.find("$Nodes");
    // The end of the section is on both sides of the end of a block that is read.
    constexpr std::size_t kBlock = std::size_t{64} * 1024;
    constexpr std::size_t kFirstLine = 10;
    for (std::size_t size = kBlock - nodes - kFirstLine - 16; size < kBlock - nodes - kFirstLine + 2;
         ++size) {
        const std::string section = "$Entities\n" + std::string(size, '\7') + "\n$EndEntities\n";
        EXPECT_EQ(Outcome(whole.substr(0, nodes) + section + whole.substr(nodes)), "9 6 -: ") << size;
    }
    EXPECT_EQ(Outcome(whole + "$NodeData\n" + std::string(3 * kBlock, '\7')), "9 6 -: ");
}

TEST_F(GmshModel, HasNoCountsWhenTheTimeIsOver) {
    GmshMesh mesh = Bricks();
    mesh.nodes.resize(20000);
    Write("mesh", GmshFile(mesh, true, false).text);
    int calls = 0;
    limits.now = [&] { return ModelLimits::Clock::time_point() + std::chrono::seconds(++calls > 3 ? 1 : 0); };
    const SolverModel model = Read(ModelSyntax::Gmsh, "mesh");
    EXPECT_EQ(CountsOf(model), "- - -");
    EXPECT_TRUE(model.gap.ends_with(": the time for reading it was over")) << model.gap;
    EXPECT_TRUE(model.gap.starts_with("mesh:")) << model.gap;
}

TEST(MeshSyntax, IsThatOfTheBeginning) {
    TemporaryDirectory folder;
    EXPECT_EQ(MeshSyntaxOf(folder.Write("part.msh", "$MeshFormat\n2.2 0 8\n")), ModelSyntax::Gmsh);
    EXPECT_EQ(MeshSyntaxOf(folder.Write("part.mesh", "\n$MeshFormat\n")), ModelSyntax::Gmsh);
    EXPECT_EQ(MeshSyntaxOf(folder.Write("mesh.msh", "*NODE\n")), std::nullopt);
    EXPECT_EQ(MeshSyntaxOf(folder.Write("empty.msh", "")), std::nullopt);
}

}  // namespace
}  // namespace host
