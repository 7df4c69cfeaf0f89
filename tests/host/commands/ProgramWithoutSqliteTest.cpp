#include <gtest/gtest.h>

#include "host/commands/ProgramSupport.h"

namespace {

class ProgramWithoutSqlite : public ProgramInFolder {};

TEST_F(ProgramWithoutSqlite, SaysWhichCommandsAreNotThere) {
    for (const std::string command : {"new", "store", "apply", "fetch", "import"}) {
        ExpectRefused(
            {command, "a", "--db", "b"},
            "there is no '" + command +
                "' here, because this korvane-json was built without SQLite. Use one that was built "
                "with it");
    }
    EXPECT_NE(OutputOf({"--help"}).find("Not in this build, which has no SQLite"), std::string::npos);
}

TEST_F(ProgramWithoutSqlite, SaysWhyAProjectFileCannotBeRead) {
    folder.Write("p.kvp", std::string("SQLite format 3\0", 16) + std::string(100, '\0'));
    for (const char* const command : {"tree", "export"}) {
        ExpectRefused({command, "p.kvp"},
                      "'p.kvp' cannot be read as a project file: this korvane-json was built without SQLite");
    }
}

TEST_F(ProgramWithoutSqlite, DocumentsAreShownAndCompared) {
    folder.Write("a.json", R"({"name":"P","type":"SIMULATION","children":[{"name":"A","type":"CAEPART"}]})");
    EXPECT_EQ(OutputOf({"tree", "a.json"}),
              "P     Project  #1  SIMULATION\n`- A  Part     #2\n\n1 part, 0 files (0 B)\n");
    EXPECT_EQ(OutputOf({"compare", "a.json", "a.json"}),
              "the same, but for what the format does not carry: 2 objects and 0 files compared\n");
    folder.Write("broken.json", "{");
    EXPECT_EQ(Run({"tree", "broken.json"}).status, 1);
    EXPECT_EQ(Run({"tree", "-"}, "a.json").output, OutputOf({"tree", "a.json"}));
}

}  // namespace
