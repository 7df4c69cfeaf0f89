#include <fstream>

#include "ModelSupport.h"
#include "host/model/Numbers.h"

namespace host {
namespace {

class ModelReader : public ModelTest {};

TEST_F(ModelReader, SaysThatAFileCannotBeRead) {
    SolverModel model;
    EXPECT_TRUE(ReadModel(folder / "root/none", ModelSyntax::Abaqus, limits, nullptr, model));
    EXPECT_TRUE(ReadModel(folder / "root", ModelSyntax::Abaqus, limits, nullptr, model));
}

TEST_F(ModelReader, HasNoCountsWhenTheTimeIsOver) {
    Write("mesh.msh", "*NODE\n2,0\n");
    int calls = 0;
    // The time begins, and the first block is read; then it is over.
    limits.now = [&] { return ModelLimits::Clock::time_point() + std::chrono::seconds(++calls > 2 ? 1 : 0); };
    const SolverModel model =
        ReadText(ModelSyntax::Abaqus, "*NODE\n1,0\n*MATERIAL,NAME=A\n*STEP\n*INCLUDE,INPUT=mesh.msh\n");
    EXPECT_EQ(CountsOf(model), "- - -");
    EXPECT_TRUE(model.materials.empty());
    EXPECT_EQ(model.gap, "model:5: the time for reading it was over");
}

TEST_F(ModelReader, ReadsFilesLargerThanItsBlocks) {
    std::string text = "*NODE\n";
    constexpr int kNodes = 50000;
    for (int node = 1; node <= kNodes; ++node) {
        text += std::to_string(node) + ", 0.125, 0.25, 1.0\n";
    }
    // The last line has no end.
    text += "*ELEMENT, TYPE=B31\n1,1,2\n2,2,3";
    EXPECT_EQ(CountsOf(ReadText(ModelSyntax::Abaqus, text)), "50000 2 -");
}

TEST_F(ModelReader, StopsAtLinesThatAreTooLong) {
    const std::string text =
        "*NODE\n1,0\n*HEADING\n" + std::string(std::size_t{3} << 20U, 'x') + "\n*NODE\n2,0\n";
    const SolverModel model = ReadText(ModelSyntax::Abaqus, text);
    EXPECT_EQ(CountsOf(model), "- - -");
    EXPECT_EQ(model.gap, "model:4: the line is longer than a megabyte");
}

TEST_F(ModelReader, EndsCirclesOfIncludes) {
    Write("a.inp", "*INCLUDE, INPUT=b.inp\n");
    Write("b.inp", "*NODE\n1,0\n*INCLUDE, INPUT=a.inp\n");
    const SolverModel model = Read(ModelSyntax::Abaqus, "a.inp");
    EXPECT_EQ(CountsOf(model), "- - -");
    EXPECT_EQ(model.gap, "b.inp:3: 'a.inp' is included, but cannot be read");
}

TEST_F(ModelReader, EndsChainsOfIncludesThatAreTooDeep) {
    for (int file = 0; file < 100; ++file) {
        Write(std::to_string(file), "*INCLUDE, INPUT=" + std::to_string(file + 1) + "\n");
    }
    Write("100", "*NODE\n1,0\n");
    EXPECT_EQ(CountsOf(Read(ModelSyntax::Abaqus, "0")), "- - -");
    EXPECT_EQ(CountsOf(Read(ModelSyntax::Abaqus, "40")), "1 - -");
}

TEST(ModelNumbers, AreReadAsSolversWriteThem) {
    EXPECT_EQ(ParseReal(" 1.5 "), 1.5);
    EXPECT_EQ(ParseReal("+1.5E+3"), 1500.0);
    EXPECT_EQ(ParseReal("-1.5d-1"), -0.15);
    EXPECT_EQ(ParseReal("7.+4"), 70000.0);
    EXPECT_EQ(ParseReal("-7.-1"), -0.7);
    EXPECT_EQ(ParseReal(".5"), 0.5);
    for (const char* text : {"", "+", "-", ".", "nan", "inf", "1e", "1ee5", "0x10", "1.2.3", "1 2", "+-1"}) {
        EXPECT_EQ(ParseReal(text), std::nullopt) << text;
    }
    EXPECT_EQ(ParseReal(std::string(100, '1')), std::nullopt);
    EXPECT_EQ(ParseInteger(" +12 "), 12);
    EXPECT_EQ(ParseInteger("-3"), -3);
    for (const char* text : {"", "+", "+-1", "1.", "1x", "99999999999999999999"}) {
        EXPECT_EQ(ParseInteger(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace host
