#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "ProgramSupport.h"

namespace {

class ProgramFind : public ProgramInFolder {
protected:
    ProgramFind() {
        folder.Write("p/plates/job.inp", kDeck);
        folder.Write("p/plates/left.msh", "$MeshFormat\n");
        folder.Write("p/plates/right.msh", "$MeshFormat\n");
        folder.Write("p/plates/right.step", "ISO-10303-21;\n");
        folder.Write("p/plates/refs/a, b.png", "12345");
        folder.Write("p/modes/run.bdf", "SOL 101\nCEND\nBEGIN BULK\nENDDATA\n");
    }
};

TEST_F(ProgramFind, SaysWhichStudiesUseWhichSolver) {
    EXPECT_EQ(OutputOf({"find", "p", "kind=Study", "--show", "Solver", "--show", "Files"}),
              "Model  modes   #2  Nastran          1\n"
              "Model  plates  #7  Abaqus/CalculiX  5\n");
}

TEST_F(ProgramFind, SaysWhichPartsHaveAMeshButNoCadFile) {
    EXPECT_EQ(OutputOf({"find", "p", "kind=Part", "has=mesh", "has!=cad"}), "Part  plates/left  #11\n");
}

TEST_F(ProgramFind, ReadsProjectFilesAndDocumentsAsWell) {
    Do({"new", "p", "p.kvp"});
    OutputOf({"export", "p", "-o", "p.json"});
    for (const char* const input : {"p", "p.kvp", "p.json"}) {
        EXPECT_EQ(OutputOf({"find", input, "path=plates/right", "--count"}), "1\n") << input;
    }
}

TEST_F(ProgramFind, ListsCommaSeparatedValues) {
    EXPECT_EQ(OutputOf({"find", "p", "name~*.png", "--show", "size", "--show", "type", "--format", "csv"}),
              "kind,path,id,key,size,size unit,type\r\n"
              "File,\"plates/refs/a, b.png\",8,,5,B,Picture\r\n");
    folder.Write("d.json",
                 R"({"type":"SIMULATION","name":"D","children":[{"type":"CAEPART","name":"a \"b\"\nc"}]})");
    EXPECT_EQ(OutputOf({"find", "d.json", "kind=Part", "--format", "csv"}),
              "kind,path,id,key\r\nPart,\"a \"\"b\"\"\nc\",2,\r\n");
}

TEST_F(ProgramFind, ListsJson) {
    const auto found =
        nlohmann::json::parse(OutputOf({"find", "p", "path=plates/right", "--format", "json"}));
    EXPECT_EQ(found["count"], 1);
    const auto& part = found["objects"][0];
    EXPECT_EQ(part["kind"], "Part");
    EXPECT_EQ(part["path"], "plates/right");
    EXPECT_EQ(part["files"][0]["role"], "CAD file");
    EXPECT_EQ(part["files"][1]["role"], "active mesh");
    EXPECT_EQ(part["files"][1]["size"], 12);
    EXPECT_EQ(part["files"][1]["missing"], false);
    const auto study = nlohmann::json::parse(OutputOf({"find", "p", "path=plates", "--format", "json"}));
    EXPECT_EQ(study["objects"][0]["metadata"]["Size"]["unit"], "B");
}

TEST_F(ProgramFind, SortsByNumbersAndTexts) {
    EXPECT_EQ(OutputOf({"find", "p", "kind=Study", "--sort", "Size", "--show", "Size"}),
              "Model  modes   #2  32 B\n"
              "Model  plates  #7  67 B\n");
    EXPECT_EQ(OutputOf({"find", "p", "kind=Part", "--sort", "name"}),
              "Part  plates/left   #11\n"
              "Part  plates/right  #9\n");
}

TEST_F(ProgramFind, SortsNumbersInOneUnitBeforeTextsAndNothing) {
    const auto part = [](const std::string& name, const std::string& value, const std::string& unit) {
        return R"({"type":"CAEPART","name":")" + name + R"(","metaData":{"Results":{"value":")" + value +
               R"(","metaDataType":")" + unit + R"("}}})";
    };
    folder.Write("d.json",
                 R"({"type":"SIMULATION","name":"D","children":[{"type":"CAEPART","name":"none"},)" +
                     part("things", "1", "things") + "," + part("large", "2", "MB") + "," +
                     part("text", "many", "") + "," + part("small", "30", "kB") + "]}");
    EXPECT_EQ(OutputOf({"find", "d.json", "kind=Part", "--sort", "results", "--show", "Results"}),
              "Part  small   #6  30 kB\n"
              "Part  large   #4  2 MB\n"
              "Part  things  #3  1 things\n"
              "Part  text    #5  many\n"
              "Part  none    #2  -\n");
}

TEST_F(ProgramFind, NothingFoundIsNoFailure) {
    const ProcessResult result = Run({"find", "p", "name=nothing"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error, "korvane-json: no object of 'p' meets the conditions\n");
    EXPECT_EQ(OutputOf({"find", "p", "name=nothing", "--count"}), "0\n");
    EXPECT_EQ(OutputOf({"find", "p", "path=plates/right", "--count", "--format", "json"}), "{\"count\":1}\n");
}

TEST_F(ProgramFind, SaysWhatMayHaveBeenMeant) {
    const ProcessResult result = Run({"find", "p", "kind=Study", "--show", "Solvr", "Masss!=1"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "Model  modes   #2  -\nModel  plates  #7  -\n");
    EXPECT_EQ(result.error,
              "korvane-json: no object of 'p' has the metadata entry 'Solvr'; did you mean 'Solver'?\n"
              "korvane-json: no object of 'p' has the metadata entry 'Masss'; there are 'Files', 'Size', "
              "'Solver', 'Studies', 'Steps'\n");
}

TEST_F(ProgramFind, RefusesABadConditionBeforeItReads) {
    ExpectRefused(
        {"find", "missing", "kind=Part", "Mass"},
        "'Mass' is not a condition; a condition is a name, one of = != ~ !~ < <= > >=, and a value: "
        "kind=Part, name~bracket*, 'Mass>2 kg' (in quotes, because the shell takes > for itself). See "
        "'korvane-json find --help'",
        2);
    ExpectRefused({"find", "p", "--format", "xml"},
                  "--format: 'xml' is none of lines, json and csv. See 'korvane-json find --help'", 2);
}

TEST_F(ProgramFind, SaysWhichUnitsCannotBeCompared) {
    const ProcessResult result = Run({"find", "p", "kind=Study", "Size>1 kg"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error,
              "korvane-json: 'p': values of 'Size' whose unit cannot be converted to 'kg' (2): 'B' 2 times\n"
              "korvane-json: no object of 'p' meets the conditions\n");
    EXPECT_EQ(OutputOf({"find", "p", "kind=Study", "Size>0.05 kB"}), "Model  plates  #7\n");
}

}  // namespace
