#include "ModelSupport.h"
#include "host/model/AbaqusElements.h"

namespace host {
namespace {

using Names = std::vector<std::string>;

class AbaqusModel : public ModelTest {
protected:
    SolverModel ReadText(std::string_view text) { return ModelTest::ReadText(ModelSyntax::Abaqus, text); }
    SolverModel Read(std::string_view name) { return ModelTest::Read(ModelSyntax::Abaqus, name); }
};

TEST_F(AbaqusModel, HasTheNodesElementsMaterialsAndStepsOfTheFile) {
    const SolverModel model = ReadText(
        "*Heading\nA beam\n ** a comment\n*NODE, NSET=Nall\n1, 0., 1.5, -2\n 2 ,1.D1\n\n3,+3,2E0,\r\n"
        "*Node Output\nU\n*element ,elset=E, type = b31\n7,1,2\n8, 2,3\n"
        "*MATERIAL, name=Steel S235\n*Elastic\n210000, 0.3\n*Material,NAME=\"alu\"\n*material, name=STEEL "
        "S235\n"
        "*STEP\n*STATIC\n*End Step\n*Step, nlgeom\n*ENDSTEP\n");
    EXPECT_EQ(CountsOf(model), "3 2 2");
    EXPECT_EQ(model.materials, (Names{"Steel S235", "alu"}));
    EXPECT_EQ(model.gap, "");
    EXPECT_EQ(model.placeGap, "");
    EXPECT_EQ(sink.text,
              "node 1 0. 1.5 -2.\nnode 2 10. 0. 0.\nnode 3 3. 2. 0.\nB31 7: 1/1 1 2\nB31 8: 1/1 2 3\n");
}

TEST_F(AbaqusModel, ContinuesElementsAndKeywords) {
    const SolverModel model = ReadText(
        "*ELEMENT,\n TYPE=C3D20R,\n** between\n ELSET=E\n"
        "1, 1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,\n16,17,18,19,20\n"
        // CalculiX reads on without a comma.
        "2, 1,2,3,4,5,6,7,8,9,10\n11,12,13,14,15,16,17,18,19,20\n"
        "*ELEMENT, TYPE=C3D10\n3,1,2,3,4,5,6,7,8,9,10,\n4,1,2,3,4,5,6,7,8,9,\n10\n");
    EXPECT_EQ(CountsOf(model), "- 4 -");
    EXPECT_EQ(model.gap, "");
    EXPECT_EQ(sink.text,
              "C3D20R 1: 7/2 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20\n"
              "C3D20R 2: 7/2 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20\n"
              "C3D10 3: 4/2 1 2 3 4 5 6 7 8 9 10\nC3D10 4: 4/2 1 2 3 4 5 6 7 8 9 10\n");
}

TEST_F(AbaqusModel, CountsWhatComesTwiceOnce) {
    EXPECT_EQ(CountsOf(ReadText("*NODE\n1,0\n2,0\n1,5\n*ELEMENT,TYPE=T3D2\n1,1,2\n1,1,2\n")), "2 1 -");
}

TEST_F(AbaqusModel, ReadsIncludedFilesInTheProject) {
    Write("mesh/all.msh", "*NODE\n1,0\n2,1\n*INCLUDE, INPUT=more.msh\n");
    Write("mesh/more.msh", "3,2\n*ELEMENT, TYPE=S3\n1,1,2,3\n");
    Write("steps.inp", "*STEP\n*END STEP\n");
    Write("deck.inp", "*include, input = \"mesh\\all.msh\"\n*MATERIAL,NAME=M\n*INCLUDE,INPUT=steps.inp\n");
    const SolverModel model = Read("deck.inp");
    EXPECT_EQ(CountsOf(model), "3 1 1");
    EXPECT_EQ(model.gap, "");
}

TEST_F(AbaqusModel, HasNoCountsOfWhatIncludedFilesMayHave) {
    folder.Write("outside.msh", "*NODE\n1,0\n");
    for (const std::string name : {"missing.msh", "../outside.msh", "model", "."}) {
        const SolverModel model =
            ReadText("*INCLUDE, INPUT=" + name + "\n*NODE\n1,0\n*MATERIAL, NAME=M\n*STEP\n");
        EXPECT_EQ(CountsOf(model), "- - 1") << name;
        EXPECT_EQ(model.materials, (Names{"M"}));
        EXPECT_EQ(model.gap, "model:1: '" + name + "' is included, but cannot be read");
    }
}

TEST_F(AbaqusModel, AsksBeforeItOpensAnIncludedFile) {
    Write("mesh.msh", "*NODE\n1,0\n");
    limits.mayRead = [](const std::filesystem::path& file) { return file.filename() != "mesh.msh"; };
    EXPECT_EQ(CountsOf(ReadText("*INCLUDE, INPUT=mesh.msh\n")), "- - -");
    limits.mayRead = {};
    EXPECT_EQ(CountsOf(ReadText("*INCLUDE, INPUT=mesh.msh\n")), "1 - -");
}

TEST_F(AbaqusModel, CountsInstancesOfParts) {
    const SolverModel model = ReadText(
        "*PART, NAME=Arm\n*NODE\n1,0\n2,1\n*ELEMENT,TYPE=B31\n1,1,2\n*END PART\n"
        "*PART, NAME=Unused\n*NODE\n1,0\n*END PART\n*ASSEMBLY, NAME=A\n"
        "*INSTANCE, NAME=Left, PART=arm\n*END INSTANCE\n"
        "*INSTANCE, NAME=Right, PART=Arm\n10., 0., 0.\n0,0,0, 0,0,1, 90\n*NODE\n3,5\n*END INSTANCE\n"
        "*NODE\n1,9\n*END ASSEMBLY\n");
    EXPECT_EQ(CountsOf(model), "6 2 -");
    EXPECT_EQ(sink.text,
              "part Arm\nnode 1 0. 0. 0.\nnode 2 1. 0. 0.\nB31 1: 1/1 1 2\nend part\n"
              "part Unused\nnode 1 0. 0. 0.\nend part\n"
              "instance of arm at 0 turned by 0\nend instance\n"
              "instance of Arm at 10 turned by 90\nnode 3 5. 0. 0.\nend instance\nnode 1 9. 0. 0.\n");
    EXPECT_EQ(ReadText("*INSTANCE, PART=nowhere\n*END INSTANCE\n").gap,
              "model:2: there is no part 'nowhere'");
}

TEST_F(AbaqusModel, DoesNotCountWhatTheSolverMakes) {
    const std::string nodes = "*NODE\n1,0\n2,1\n*ELEMENT,TYPE=B31\n1,1,2\n";
    EXPECT_EQ(CountsOf(ReadText(nodes + "*NGEN, NSET=A\n1,2,1\n")), "- 1 -");
    EXPECT_EQ(CountsOf(ReadText(nodes + "*ELGEN\n1,4,1\n")), "2 - -");
    EXPECT_EQ(CountsOf(ReadText(nodes + "*RESTART, READ\n")), "- - -");
    EXPECT_EQ(CountsOf(ReadText(nodes + "*RESTART, WRITE\n")), "2 1 -");
    EXPECT_EQ(ReadText(nodes + "*NGEN\n").gap, "model:6: *NGEN lets the solver make nodes");
}

TEST_F(AbaqusModel, DoesNotCountWhatIsDamaged) {
    EXPECT_EQ(CountsOf(ReadText("*NODE\n1,0\n<id>,0\n*ELEMENT,TYPE=B31\n1,1,2\n")), "- 1 -");
    EXPECT_EQ(CountsOf(ReadText("*NODE\n1,0\n*ELEMENT,TYPE=C3D8\n1,1,2,3\n*STEP\n")), "1 - 1");
    EXPECT_EQ(CountsOf(ReadText("*NODE\n1,0\n*ELEMENT,TYPE=B31\n1,1,2,3\n")), "1 - -");
    EXPECT_EQ(CountsOf(ReadText("*NODE\n-1,0\n*ELEMENT,TYPE=B31\n1,1,x\n")), "- - -");
    EXPECT_EQ(ReadText("*ELEMENT,TYPE=C3D8\n1,1,2,3\n").gap, "the end: an element 'C3D8' has 3 nodes");
    EXPECT_EQ(ReadText("*NODE\n1,0,x\n").placeGap, "model:2: 'x' is not a coordinate");
    using namespace std::string_view_literals;
    EXPECT_EQ(CountsOf(ReadText("*NODE\n1,0\n\0\n*STEP\n"sv)), "- - -");
    EXPECT_EQ(ReadText("*NODE\n1,0\n\0\n"sv).gap, "model:0: it is not text");
}

TEST_F(AbaqusModel, ReadsNodesInOtherCoordinates) {
    ReadText("*NODE, SYSTEM=C\n1, 2., 90., 5.\n*NODE, SYSTEM=S\n2, 2., 0., 90.\n");
    EXPECT_EQ(sink.text, "node 1 0. 2. 5.\nnode 2 0. 0. 2.\n");
    EXPECT_EQ(ReadText("*SYSTEM\n0,0,0,1,1,1\n*NODE\n1,0\n").placeGap, "model:1: *SYSTEM moves the nodes");
}

TEST_F(AbaqusModel, HasTheUnitsOfACommentOrTheHeading) {
    EXPECT_EQ(ReadText("** Units: N, mm, s\n*NODE\n").units, "N, mm, s");
    EXPECT_EQ(ReadText("*HEADING\nBracket (mm, N, t, s)\n").units, "mm, N, t, s");
    EXPECT_EQ(ReadText("** Units: N, mm, s\n** units: m, N, s\n").units, "");
    EXPECT_EQ(ReadText("** Units are mm and so on\n*HEADING\nload (A, B)\n").units, "");
}

TEST_F(AbaqusModel, KnowsManyElements) {
    const auto text = [](std::string_view type) {
        const ElementKind kind = AbaqusElement(type);
        return std::to_string(static_cast<int>(kind.shape)) + '/' + std::to_string(kind.order) + ' ' +
               std::to_string(kind.fewestNodes) + '-' + std::to_string(kind.mostNodes);
    };
    EXPECT_EQ(text("C3D8I"), "7/1 8-8");
    EXPECT_EQ(text("C3D10M"), "4/2 10-10");
    EXPECT_EQ(text("C3D15V"), "6/2 15-18");
    EXPECT_EQ(text("C3D15"), "6/2 15-15");
    EXPECT_EQ(text("C3D27R"), "7/2 21-27");
    EXPECT_EQ(text("DC3D6"), "6/1 6-6");
    EXPECT_EQ(text("COH3D8"), "7/1 8-8");
    EXPECT_EQ(text("SC8R"), "7/1 8-8");
    EXPECT_EQ(text("S4R5"), "3/1 4-4");
    EXPECT_EQ(text("S8R5"), "3/2 8-8");
    EXPECT_EQ(text("STRI65"), "2/2 6-6");
    EXPECT_EQ(text("CPEG4"), "3/1 4-4");
    EXPECT_EQ(text("CAX8R"), "3/2 8-8");
    EXPECT_EQ(text("SAX1"), "1/1 2-2");
    EXPECT_EQ(text("SPRINGA"), "1/1 2-2");
    EXPECT_EQ(text("SPRING1"), "0/1 1-1");
    EXPECT_EQ(text("B32OS"), "1/2 3-3");
    EXPECT_EQ(text("U1"), "0/1 0-0");
    EXPECT_EQ(text("C3D99999999999999999999"), "0/1 0-0");
    EXPECT_EQ(text(""), "0/1 0-0");
}

TEST_F(AbaqusModel, TakesTheNodesOfUnknownElementsAsTheyAreWritten) {
    EXPECT_EQ(CountsOf(ReadText("*ELEMENT, TYPE=U7\n1,1,2,3,\n4,5\n2,1,2\n")), "- 2 -");
    EXPECT_EQ(sink.text, "U7 1: 0/1 1 2 3 4 5\nU7 2: 0/1 1 2\n");
}

}  // namespace
}  // namespace host
