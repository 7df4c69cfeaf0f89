#include "ModelSupport.h"

namespace host {
namespace {

using Names = std::vector<std::string>;

class LsDynaModel : public ModelTest {
protected:
    SolverModel ReadText(std::string_view text) { return ModelTest::ReadText(ModelSyntax::LsDyna, text); }
};

TEST_F(LsDynaModel, ReadsColumnsAndCommas) {
    const SolverModel model = ReadText(
        "*KEYWORD\n$ Units: mm, N, t, s\n*NODE\n"
        "       1       -150.0000       1.50E+00           0.000       0       0\n"
        "2,1.,2.,3.\n"
        "*ELEMENT_SHELL\n       1       1       1       2       3       3\n2,1,1,2,3,4\n"
        "*ELEMENT_SHELL_THICKNESS\n       3       1       1       2       3       4\n 1. 1. 1. 1.\n"
        "       4       1       1       2       3       4\n 1. 1. 1. 1.\n"
        "*ELEMENT_BEAM\n       1       1       1       2       3\n"
        "*MAT_ELASTIC\n         5   7.8E-9\n*MAT_RIGID_TITLE\nThe floor\n         6\n*END\n*NODE\n9\n");
    EXPECT_EQ(CountsOf(model), "2 5 -");
    EXPECT_EQ(model.gap, "");
    EXPECT_EQ(model.materials, (Names{"ELASTIC 5", "The floor"}));
    EXPECT_EQ(model.units, "mm, N, t, s");
    EXPECT_EQ(
        sink.text,
        "node 1 -150. 1.5 0.\nnode 2 1. 2. 3.\nELEMENT_SHELL 1: 2/1 1 2 3\nELEMENT_SHELL 2: 3/1 1 2 3 4\n"
        "ELEMENT_SHELL 3: 3/1 1 2 3 4\nELEMENT_SHELL 4: 3/1 1 2 3 4\nELEMENT_BEAM 1: 1/1 1 2\n");
}

TEST_F(LsDynaModel, ReadsSolidsOnOneLineOrTwo) {
    const SolverModel model = ReadText(
        "*ELEMENT_SOLID\n       1       1       1       2       3       4       5       6       7       8\n"
        "       2       1\n       1       2       3       4       5       6       7       8\n"
        "3,1\n1,2,3,4,5,6,7,8,9,10\n"
        "4,1,1,2,3,4,4,4,4,4\n5,1,1,2,3,4,5,5,5,5\n6,1,1,2,3,4,5,5,6,6\n");
    EXPECT_EQ(model.gap, "");
    EXPECT_EQ(sink.text,
              "ELEMENT_SOLID 1: 7/1 1 2 3 4 5 6 7 8\nELEMENT_SOLID 2: 7/1 1 2 3 4 5 6 7 8\n"
              "ELEMENT_SOLID 3: 4/2 1 2 3 4 5 6 7 8 9 10\nELEMENT_SOLID 4: 4/1 1 2 3 4\n"
              "ELEMENT_SOLID 5: 5/1 1 2 3 4 5\nELEMENT_SOLID 6: 6/1 1 2 5 4 3 6\n");
}

TEST_F(LsDynaModel, ReadsWideColumns) {
    EXPECT_EQ(CountsOf(ReadText("*KEYWORD I10=Y\n*NODE\n1000000001              1.              2.\n")),
              "1 - -");
    EXPECT_EQ(CountsOf(ReadText("*KEYWORD LONG=Y\n*NODE\n                   7                  1.\n")),
              "1 - -");
    EXPECT_EQ(sink.text, "node 1000000001 1. 2. 0.\nnode 7 1. 0. 0.\n");
    EXPECT_EQ(CountsOf(ReadText("*NODE +\n                   7                  1.\n")), "- - -");
}

TEST_F(LsDynaModel, ReadsIncludes) {
    Write("mesh.k", "*KEYWORD\n*NODE\n1,0,0,0\n*END\n");
    Write("a_long_name.k", "*KEYWORD\n*NODE\n2,0,0,0\n*END\n");
    const SolverModel model =
        ReadText("*KEYWORD\n*INCLUDE\nmesh.k\na_long_ +\nname.k\n*NODE\n3,0,0,0\n*END\n");
    EXPECT_EQ(CountsOf(model), "3 - -");
    EXPECT_EQ(model.gap, "");
    EXPECT_EQ(CountsOf(ReadText("*INCLUDE\nnone.k\n*NODE\n3,0,0,0\n")), "- - -");
}

TEST_F(LsDynaModel, DoesNotCountWhatItDoesNotKnow) {
    const std::string node = "*NODE\n1,0,0,0\n";
    EXPECT_EQ(CountsOf(ReadText(node + "*ELEMENT_SOLID_H20\n1,1\n")), "1 - -");
    EXPECT_EQ(CountsOf(ReadText(node + "*ELEMENT_SHELL_COMPOSITE\n1,1\n")), "1 - -");
    EXPECT_EQ(CountsOf(ReadText(node + "*INCLUDE_TRANSFORM\nmesh.k\n")), "- - -");
    EXPECT_EQ(CountsOf(ReadText(node + "*ELEMENT_SHELL\n1,1,1,2\n")), "1 - -");
    EXPECT_EQ(CountsOf(ReadText(node + "*ELEMENT_SOLID\n1,1\n*END\n")), "1 - -");
    EXPECT_EQ(CountsOf(ReadText("*NODE\n&id,0,0,0\n*ELEMENT_MASS\n1,1,5.\n")), "- 1 -");
}

TEST_F(LsDynaModel, HasTheUnitsOfTheFile) {
    EXPECT_EQ(ReadText("*CONTROL_UNITS\n        mm        ms        kg\n").units, "mm, ms, kg");
}

}  // namespace
}  // namespace host
