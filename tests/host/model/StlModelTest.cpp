#include <limits>

#include "MeshFiles.h"
#include "ModelSupport.h"
#include "host/model/MeshSyntax.h"
#include "host/model/PointNumbers.h"

namespace host {
namespace {

constexpr std::string_view kTetrahedron =
    "node 1 0. 0. 0.\nnode 2 0. 1. 0.\nnode 3 1. 0. 0.\nfacet 1: 2/1 1 2 3\nnode 4 0. 0. 1.\n"
    "facet 2: 2/1 1 3 4\nfacet 3: 2/1 3 2 4\nfacet 4: 2/1 1 4 2\n";

class StlModel : public ModelTest {
protected:
    SolverModel ReadText(std::string_view text) {
        sink.text.clear();
        return ModelTest::ReadText(ModelSyntax::Stl, text);
    }
    /// What becomes of the bytes: the counts, the number of triangles that are shown, and what is missing.
    std::string Outcome(std::string_view text) {
        const SolverModel model = ReadText(text);
        std::size_t shown = 0;
        for (std::size_t place = sink.text.find("facet"); place != std::string::npos;
             place = sink.text.find("facet", place + 1)) {
            ++shown;
        }
        return CountsOf(model) + ", " + std::to_string(shown) + " shown: " + model.gap;
    }
};

TEST_F(StlModel, HasEachCornerOnceAsANode) {
    for (const std::string& file : {BinaryStl(FacetsOfTetrahedron()), TextStl(FacetsOfTetrahedron())}) {
        const SolverModel model = ReadText(file);
        EXPECT_EQ(CountsOf(model), "4 4 -");
        EXPECT_EQ(model.gap, "");
        EXPECT_EQ(sink.text, kTetrahedron);
    }
}

TEST_F(StlModel, IsKnownAsBytesByItsSize) {
    const std::string file = BinaryStl(FacetsOfTetrahedron(), "solid of bytes");
    EXPECT_EQ(Outcome(file), "4 4 -, 4 shown: ");
    // With a byte too few it is still not text.
    EXPECT_EQ(Outcome(file.substr(0, file.size() - 1)),
              "- - -, 3 shown: model, byte 0: the size of the file, 283 bytes, is not that of 4 triangles");
    // Text of any size is text, also with names in any encoding.
    for (std::size_t length = 0; length < 100; length += 7) {
        EXPECT_EQ(Outcome(TextStl(FacetsOfTetrahedron(), std::string(length, '\xE4'))), "4 4 -, 4 shown: ");
    }
}

TEST_F(StlModel, OfTextIsReadAsProgramsWriteIt) {
    EXPECT_EQ(Outcome("SOLID\r\nFACET NORMAL nan nan nan\r\n\tOUTER LOOP\r\n\t\tVERTEX 0 0 0\r\n"
                      "VERTEX +1.5e+01 0 0\r\nVERTEX 0\t1 0\r\nENDLOOP\r\nENDFACET\r\nENDSOLID\r\n"
                      "solid another\nfacet normal 0 0 1\nouter loop\nvertex 1 1 1\nvertex 2 1 1\n"
                      "vertex -0 0 0\nendloop\nendfacet\nendsolid another"),
              "5 2 -, 2 shown: ");
    EXPECT_NE(sink.text.find("node 2 15. 0. 0.\n"), std::string::npos) << sink.text;
    EXPECT_EQ(Outcome("  solid empty\nendsolid\n"), "- - -, 0 shown: ");
}

TEST_F(StlModel, OfTextSaysWhereItIsDamaged) {
    const std::string facet =
        "facet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\n"
        "endloop\nendfacet\n";
    const auto outcome = [&](std::string_view damage, std::string_view end = "endsolid\n") {
        return Outcome("solid\n" + facet + std::string(damage) + facet + std::string(end));
    };
    EXPECT_EQ(outcome(""), "3 2 -, 2 shown: ");
    EXPECT_EQ(outcome("", ""), "- - -, 2 shown: model:15: the file ends before its solid");
    EXPECT_EQ(outcome("", "facet normal 0 0 1\n"),
              "- - -, 2 shown: model:16: the file ends before its solid");
    EXPECT_EQ(outcome("some words\n"), "- - -, 2 shown: model:9: the line is not one of STL");
    EXPECT_EQ(outcome("endfacet\n"), "- - -, 2 shown: model:9: the triangle has no beginning");
    EXPECT_EQ(outcome("facet normal 0 0 1\n"), "- - -, 2 shown: model:10: the triangle above has no end");
    EXPECT_EQ(outcome("facet normal 0 0 1\nvertex 0 0 0\nvertex 1 0 0\nendfacet\n"),
              "- - -, 2 shown: model:12: the triangle has 2 corners");
    EXPECT_EQ(outcome("facet\nvertex 0 0 0\nvertex 1 0 0\nvertex 1 1 0\nvertex 0 1 0\nendfacet\n"),
              "- - -, 2 shown: model:14: the triangle has 4 corners");
    for (const char* const corner : {"0 0", "0 0 nan", "0 0 inf", "0 0 1e39", "0 0 1e999", "0 0 x", ""}) {
        EXPECT_EQ(
            outcome("facet\nvertex 0 0 0\nvertex 1 0 0\nvertex " + std::string(corner) + "\nendfacet\n"),
            "- - -, 2 shown: model:13: a corner of the triangle is at no place")
            << corner;
    }
}

TEST_F(StlModel, OfBytesSaysWhereItIsDamaged) {
    const std::string whole = BinaryStl(FacetsOfTetrahedron());
    const auto gap = [](std::size_t size, std::uint64_t triangles) {
        return "model, byte 0: the size of the file, " + std::to_string(size) + " bytes, is not that of " +
               std::to_string(triangles) + " triangles";
    };
    for (std::size_t size = 0; size < whole.size(); size += 3) {
        const std::string shown = std::to_string(size < 84 ? 0 : (size - 84) / 50);
        EXPECT_EQ(Outcome(whole.substr(0, size)),
                  "- - -, " + shown + " shown: " +
                      (size < 84 ? "model, byte 0: the file is too short for STL" : gap(size, 4)));
    }
    EXPECT_EQ(Outcome(whole + "123"), "- - -, 4 shown: " + gap(whole.size() + 3, 4));
    // It says four thousand million triangles, and has sixteen bytes of them.
    std::string liar(80, ' ');
    AppendBytes(liar, 0xFFFFFFFF, 4);
    liar.resize(100);
    EXPECT_EQ(Outcome(liar), "- - -, 0 shown: " + gap(100, 0xFFFFFFFF));
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinite = std::numeric_limits<float>::infinity();
    for (const float number : {kNan, kInfinite, -kInfinite}) {
        std::vector<Facet> facets = FacetsOfTetrahedron();
        facets[2][1][2] = number;
        EXPECT_EQ(Outcome(BinaryStl(facets)),
                  "- - -, 3 shown: model, byte 184: a corner of the triangle is at no place");
    }
    std::vector<Facet> facets = FacetsOfTetrahedron();
    facets[0][0][0] = std::numeric_limits<float>::max();
    EXPECT_EQ(Outcome(BinaryStl(facets)), "5 4 -, 4 shown: ");
}

TEST_F(StlModel, HasNoCountsWhenTheTimeIsOver) {
    const std::vector<Facet> facets(5000, FacetsOfTetrahedron()[2]);
    EXPECT_EQ(Outcome(BinaryStl(facets)), "3 5000 -, 5000 shown: ");
    EXPECT_EQ(Outcome(TextStl(facets)), "3 5000 -, 5000 shown: ");
    Write("part", BinaryStl(facets));
    int calls = 0;
    // Two blocks are read.
    limits.now = [&] { return ModelLimits::Clock::time_point() + std::chrono::seconds(++calls > 3 ? 1 : 0); };
    const SolverModel model = Read(ModelSyntax::Stl, "part");
    EXPECT_EQ(CountsOf(model), "- - -");
    EXPECT_EQ(model.gap, "part, byte 131034: the time for reading it was over");
}

TEST_F(StlModel, CannotBeReadWhereThereIsNoFile) {
    SolverModel model;
    EXPECT_TRUE(ReadModel(folder / "root/none", ModelSyntax::Stl, limits, nullptr, model));
    EXPECT_TRUE(ReadModel(folder / "root", ModelSyntax::Stl, limits, nullptr, model));
}

TEST(PointNumbers, AreThoseOfEqualCoordinates) {
    PointNumbers numbers;
    constexpr std::int64_t kPoints = 20000;
    bool isNew = false;
    for (int round = 0; round < 2; ++round) {
        for (std::int64_t point = 0; point < kPoints; ++point) {
            const auto coordinate = static_cast<double>(point);
            ASSERT_EQ(numbers.NumberOf({coordinate, -coordinate, 0.5}, isNew), point + 1);
            ASSERT_EQ(isNew, round == 0);
        }
    }
    EXPECT_EQ(numbers.NumberOf({-0.0, 0.0, 0.5}, isNew), 1);
    EXPECT_FALSE(isNew);
    EXPECT_EQ(numbers.NumberOf({0.0, 1e-300, 0.5}, isNew), kPoints + 1);
    EXPECT_TRUE(isNew);
}

TEST(MeshSyntax, IsThatOfTheName) {
    TemporaryDirectory folder;
    EXPECT_EQ(MeshSyntaxOf(folder.Write("part.stl", "")), ModelSyntax::Stl);
    EXPECT_EQ(MeshSyntaxOf(folder.Write("PART.STL", "")), ModelSyntax::Stl);
    EXPECT_EQ(MeshSyntaxOf(folder.Write("part.step", "solid\nendsolid\n")), std::nullopt);
    EXPECT_EQ(MeshSyntaxOf(folder / "none.stl"), std::nullopt);
    EXPECT_EQ(MeshSyntaxOf(folder.MakeDirectory("folder.stl")), std::nullopt);
}

}  // namespace
}  // namespace host
