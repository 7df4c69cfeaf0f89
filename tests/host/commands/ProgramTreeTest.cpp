#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "ProgramSupport.h"

namespace {

class ProgramTree : public ProgramInFolder {
protected:
    ProgramTree() {
        folder.Write("p/plates/job.inp", "*STEP\n*STATIC\n*END STEP\n");
        folder.Write("p/plates/README.md", "# Two plates\n");
        folder.Write("p/plates/left.msh", "$MeshFormat\n");
        folder.Write("p/modes/run.bdf", "SOL 101\nCEND\nBEGIN BULK\nENDDATA\n");
        folder.Write("p/modes/run2.bdf", "SOL 101\nCEND\nBEGIN BULK\nENDDATA\n");
    }
};

TEST_F(ProgramTree, ListsStudiesOnALineEach) {
    EXPECT_EQ(OutputOf({"tree", "--studies", "p"}),
              "modes   #2   Nastran          2 iterations  2 files  64 B\n"
              "plates  #10  Abaqus/CalculiX  1 iteration   3 files  49 B  Two plates\n"
              "\n"
              "2 studies, 5 files (113 B)\n");
}

TEST_F(ProgramTree, CountsFilesThatAreGone) {
    Do({"new", "p", "p.kvp", "-q"});
    std::filesystem::remove(folder / "p/modes/run.bdf");
    const std::string one = OutputOf({"tree", "--studies", "p.kvp"});
    EXPECT_TRUE(one.ends_with("2 studies, 5 files (81 B), 1 missing\n")) << one;
    std::filesystem::rename(folder / "p", folder / "q");
    const std::string all = OutputOf({"tree", "--studies", "p.kvp"});
    EXPECT_TRUE(all.ends_with("2 studies, 5 files (0 B), 5 missing\n")) << all;
}

TEST_F(ProgramTree, CountsWhatDocumentsDoNotSay) {
    folder.Write("d.json",
                 R"({"type":"SIMULATION","name":"D","children":[{"type":"CAEMODEL","name":"S",)"
                 R"("files":[{"name":"a.txt"}],"children":[{"type":"CAEITERATION","name":"i"}]}]})");
    EXPECT_EQ(OutputOf({"tree", "--studies", "d.json"}),
              "S  #2  -  1 iteration  1 file  0 B\n"
              "\n"
              "1 study, 1 file (0 B), 1 missing\n");
}

TEST_F(ProgramTree, GivesJson) {
    const auto all = nlohmann::json::parse(OutputOf({"tree", "--format", "json", "p"}));
    EXPECT_EQ(all["objects"][0]["path"], ".");
    EXPECT_FALSE(all["objects"][0].contains("parent"));
    EXPECT_EQ(all["count"], all["objects"].size());
    EXPECT_EQ(all["objects"].back()["files"][0]["name"], "job.inp");
    const auto studies =
        nlohmann::json::parse(OutputOf({"tree", "--format", "json", "--studies", "--files", "roles", "p"}));
    EXPECT_EQ(studies["count"], 2);
    EXPECT_EQ(studies["objects"][1]["name"], "plates");
    EXPECT_EQ(studies["objects"][1]["parent"], 1);
    EXPECT_FALSE(studies["objects"][1].contains("files"));
    const auto top = nlohmann::json::parse(OutputOf({"tree", "--format", "json", "--depth", "1", "p"}));
    EXPECT_EQ(top["count"], 3);
}

TEST_F(ProgramTree, RefusesWhatItDoesNotKnow) {
    ExpectRefused({"tree", "p", "--files", "some"},
                  "--files: 'some' is none of all, roles and none. See 'korvane-json tree --help'", 2);
    for (const char* const depth : {"two", "-1", "", "1.5", "99999999999999999999"}) {
        ExpectRefused({"tree", "p", "--depth", depth},
                      "--depth: '" + std::string(depth) +
                          "' is not a number of levels, like 2. See 'korvane-json tree --help'",
                      2);
    }
}

}  // namespace
