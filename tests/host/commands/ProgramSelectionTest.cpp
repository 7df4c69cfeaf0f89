#include <gtest/gtest.h>

#include <filesystem>

#include "ProgramSupport.h"

namespace {

/// Two studies and a file in the root.
class ProgramSelectionTest : public ProgramInFolder {
protected:
    void SetUp() override {
        folder.Write("root/plan.csv", "x");
        folder.Write("root/a/job.inp", kDeck);
        folder.Write("root/a/job.frd", "x");
        folder.Write("root/b/job.inp", kDeck);
    }
    /// The last line of a tree counts everything in it.
    std::string CountsOf(const std::vector<std::string>& arguments) const {
        const std::string output = OutputOf(arguments);
        return output.substr(output.find("\n\n") + 2);
    }
};

TEST_F(ProgramSelectionTest, ChoosesStudies) {
    EXPECT_EQ(CountsOf({"tree", "root"}), "2 studies, 2 iterations, 4 files (50 B)\n");
    EXPECT_EQ(CountsOf({"tree", "--study", "a", "root"}), "1 study, 1 iteration, 2 files (25 B)\n");
    EXPECT_EQ(CountsOf({"tree", "root", "--study=root/b"}), "1 study, 1 iteration, 1 file (24 B)\n");
    EXPECT_EQ(CountsOf({"tree", "root", "--study", "a", "--study", "b"}),
              "2 studies, 2 iterations, 3 files (49 B)\n");
    const ProcessResult result = Run({"export", "root", "--study", "none"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.error.starts_with("korvane-json: 'none' is not a directory with decks in "))
        << result.error;
    EXPECT_EQ(result.output, "");
}

TEST_F(ProgramSelectionTest, LeavesOutWhatPatternsSay) {
    EXPECT_EQ(CountsOf({"tree", "--exclude", "*.frd", "--exclude", "/b/", "root"}),
              "1 study, 1 iteration, 2 files (25 B)\n");
    folder.Write("root/.korvaneignore", "# results\n*.frd\nplan.csv\n");
    EXPECT_EQ(CountsOf({"tree", "root"}), "2 studies, 2 iterations, 2 files (48 B)\n");
    EXPECT_EQ(CountsOf({"tree", "root", "--exclude", "!plan.csv"}),
              "2 studies, 2 iterations, 3 files (49 B)\n");
    for (const char* const pattern : {"[a", "/", ""}) {
        EXPECT_EQ(Run({"tree", "root", "--exclude", pattern}).status, 2) << pattern;
    }
}

TEST_F(ProgramSelectionTest, IsForDirectoriesOnly) {
    ASSERT_EQ(Run({"new", "root", "p.kvp", "--exclude", "*.frd"}).status, 0);
    const ProcessResult result = Run({"tree", "p.kvp", "--study", "a"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(
        result.error,
        "korvane-json: 'p.kvp' is not a directory, and --study and --exclude choose from a directory. Leave "
        "them out\n");
    ASSERT_EQ(Run({"export", "p.kvp", "-o", "p.json"}).status, 0);
    EXPECT_EQ(Run({"tree", "p.json", "--exclude", "x"}).status, 1);
}

TEST_F(ProgramSelectionTest, ComparesWhatIsChosenOfDirectories) {
    ASSERT_EQ(Run({"new", "root", "p.kvp", "--exclude", "*.frd"}).status, 0);
    EXPECT_EQ(Run({"compare", "p.kvp", "root", "--ignore", "dates"}).status, 1);
    EXPECT_EQ(Run({"compare", "p.kvp", "root", "--ignore", "dates", "--exclude", "*.frd"}).status, 0);
    EXPECT_EQ(Run({"compare", "root", "root", "--ignore", "dates", "--study", "a"}).status, 0);
    const ProcessResult result = Run({"compare", "p.kvp", "p.kvp", "--study", "a"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(
        result.error,
        "korvane-json: --study and --exclude choose from a directory, and neither 'p.kvp' nor 'p.kvp' is "
        "one. See 'korvane-json compare --help'\n");
}

TEST_F(ProgramSelectionTest, AnUpdateLeavesTheRestAsItWas) {
    ASSERT_EQ(Run({"new", "root", "p.kvp"}).status, 0);
    folder.Write("root/a/new.txt", "x");
    folder.Write("root/b/new.txt", "x");
    std::filesystem::remove(folder / "root/plan.csv");
    EXPECT_NE(
        Run({"update", "root", "p.kvp", "--study", "a", "--remove"})
            .error.find("0 objects and 1 file added, 1 object and 0 files changed, 0 objects and 0 files "
                        "removed, 0 objects and 0 files missing\n"),
        std::string::npos);
    EXPECT_NE(Run({"update", "root", "p.kvp", "--exclude", "b"}).error.find("0 objects and 0 files added"),
              std::string::npos);
    EXPECT_NE(Run({"update", "root", "p.kvp"}).error.find("0 objects and 1 file added"), std::string::npos);
}

}  // namespace
