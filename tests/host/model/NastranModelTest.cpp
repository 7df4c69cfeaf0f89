#include "ModelSupport.h"

namespace host {
namespace {

using Names = std::vector<std::string>;

class NastranModel : public ModelTest {
protected:
    SolverModel ReadText(std::string_view text) { return ModelTest::ReadText(ModelSyntax::Nastran, text); }
};

TEST_F(NastranModel, ReadsSmallLargeAndFreeFields) {
    const SolverModel model = ReadText(
        "$ a comment\nSOL 101\nCEND\nTITLE = GRID of beams\nSUBCASE 1\n LOAD = 1\nsubcase 2\nBEGIN BULK\n"
        "GRID           1             1.5    -2.0  7.-1\n"
        "grid*                  2                            1.+2            -3.5\n"
        "*                    4.0\n"
        "GRID,3,,1.,2.,3.\n"
        "GRID*,4,,1.D1,20.\n*,30.\n"
        "GRID\t5\t\t1.0\t2.0\n"
        "CROD           1       1       1       2 $ behind\n"
        "CBAR,2,1,2,3,0.,0.,1.\nMAT1,7,2.+5,,.3\nMATS1,7\nMAT8           9\nENDDATA\nGRID,99\n");
    EXPECT_EQ(CountsOf(model), "5 2 2");
    EXPECT_EQ(model.gap, "");
    EXPECT_EQ(model.materials, (Names{"MAT1 7", "MAT8 9"}));
    EXPECT_EQ(sink.text,
              "node 1 1.5 -2. 0.7\nnode 2 100. -3.5 4.\nnode 3 1. 2. 3.\nnode 4 10. 20. 30.\n"
              "node 5 1. 2. 0.\nCROD 1: 1/1 1 2\nCBAR 2: 1/1 2 3\n");
}

TEST_F(NastranModel, ContinuesCards) {
    const SolverModel model = ReadText(
        "CHEXA          1       1       1       2       3       4       5       6+C1\n"
        "+C1            7       8\n"
        "CHEXA          2       1       1       2       3       4       5       6\n"
        "               7       8       9\n"
        "CTETRA,3,1,1,2,3,4,5,6\n,7,8,9,10\n"
        "CPENTA*                1               1               1               2\n"
        "*                      3               4               5               6\n");
    EXPECT_EQ(model.gap, "");
    EXPECT_EQ(sink.text,
              "CHEXA 1: 7/1 1 2 3 4 5 6 7 8\nCHEXA 2: 7/2 1 2 3 4 5 6 7 8 9\n"
              "CTETRA 3: 4/2 1 2 3 4 5 6 7 8 9 10\n");
    EXPECT_EQ(CountsOf(model), "- 3 -") << "elements share their numbers";
}

TEST_F(NastranModel, ReadsIncludesAcrossLines) {
    Write("mesh/plate.bdf", "GRID,1\nGRID,2\n");
    const SolverModel model =
        ReadText("SOL 103\nCEND\nBEGIN BULK\nINCLUDE 'mesh/\n  plate.bdf'\nCROD,1,1,1,2\nENDDATA\n");
    EXPECT_EQ(CountsOf(model), "2 1 1");
    EXPECT_EQ(model.gap, "");
    EXPECT_EQ(CountsOf(ReadText("SOL 103\nCEND\nBEGIN BULK\nINCLUDE 'no.bdf'\nGRID,1\n")), "- - 1");
}

TEST_F(NastranModel, DoesNotCountWhatItDoesNotKnow) {
    EXPECT_EQ(CountsOf(ReadText("GRID,1\n=,*1,=,=\n=3\n")), "- - -");
    EXPECT_EQ(CountsOf(ReadText("GRID,x\nCROD,1,1,1,2\n")), "- 1 -");
    EXPECT_EQ(CountsOf(ReadText("GRID,1\nCTRIA3,1,1,1,2\n")), "1 - -");
    EXPECT_EQ(ReadText("GRID,1\nCTRIA3,1,1,1,2\n").gap, "model:2: CTRIA3 1 lacks a node");
    EXPECT_EQ(CountsOf(ReadText("BEGIN BULK\nGRID,1\nBEGIN SUPER=1\nGRID,1\n")), "- - -");
}

TEST_F(NastranModel, SaysThatNodesAreInOtherCoordinates) {
    EXPECT_EQ(ReadText("GRID,1,5,1.,2.,3.\n").placeGap,
              "model:1: the node is in a coordinate system of its own");
    EXPECT_EQ(ReadText("GRID,1,0,1.,2.,3.\n").placeGap, "");
}

TEST_F(NastranModel, HasTheUnitsThatTheFileSays) {
    EXPECT_EQ(ReadText("DTI,UNITS,1,MGG,N,MM,S\nGRID,1\n").units, "MGG, N, MM, S");
    EXPECT_EQ(ReadText("$ Plate (mm, N, t, s)\n").units, "mm, N, t, s");
}

}  // namespace
}  // namespace host
