#include <gtest/gtest.h>

#include <string>

#include "ProgramSupport.h"

namespace {

/// Two studies, and a project file of them.
class ProgramCompareTest : public ProgramInFolder {
protected:
    void SetUp() override {
        folder.Write("root/a/job.inp", kDeck);
        folder.Write("root/a/plan.csv", "x");
        folder.Write("root/b/job.inp", kDeck);
        Do({"new", "root", "p.kvp"});
    }
    /// Gives everything in the project file a key.
    void SetKeys() const {
        Do({"export", "p.kvp", "-o", "sent.json"});
        Do({"store", "sent.json", "--db", "server.db", "-o", "answer.json"});
        Do({"apply", "answer.json", "p.kvp"});
    }
    std::string DifferencesOf(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "compare");
        const ProcessResult result = Run(arguments);
        EXPECT_EQ(result.error, "");
        EXPECT_EQ(result.status, result.output.starts_with("the same") ? 0 : 1);
        return result.output;
    }
};

TEST_F(ProgramCompareTest, ADirectoryHasNoKeysThatDiffer) {
    SetKeys();
    EXPECT_TRUE(DifferencesOf({"p.kvp", "root", "--ignore", "dates"}).starts_with("the same"));
    EXPECT_TRUE(DifferencesOf({"root", "p.kvp", "--ignore", "dates"}).starts_with("the same"));
    folder.Write("root/b/korvane.toml", "[metadata]\nReviewer = \"Grace\"\n");
    EXPECT_EQ(DifferencesOf({"p.kvp", "root", "--ignore", "dates"}),
              "~ root/b: metadata 'Reviewer' added 'Grace'\n1 difference: 1 changed\n");
    const std::string page = OutputOf({"page", "p.kvp", "root", "--ignore", "dates", "-o", "-"});
    EXPECT_NE(page.find("\"1 difference: 1 changed\""), std::string::npos);
}

TEST_F(ProgramCompareTest, KeysAreLeftOutOnRequest) {
    Do({"new", "root", "without.kvp"});
    SetKeys();
    const std::string keyed = DifferencesOf({"p.kvp", "without.kvp", "--ignore", "dates"});
    EXPECT_NE(keyed.find("dbkey changed from 'MOD-"), std::string::npos) << keyed;
    EXPECT_TRUE(DifferencesOf({"p.kvp", "without.kvp", "--ignore", "keys", "--ignore", "dates"})
                    .starts_with("the same"));
    folder.Write("old.json", R"({"type":"X","name":"P","createdDate":"1","dbkey":"K"})");
    folder.Write("new.json", R"({"type":"X","name":"P","createdDate":"2","dbkey":"L"})");
    EXPECT_EQ(DifferencesOf({"old.json", "new.json", "--ignore", "KEYS"}),
              "~ P: createdDate changed from '1' to '2'\n1 difference: 1 changed\n");
    const std::string page = OutputOf({"page", "old.json", "new.json", "--ignore", "keys", "-o", "-"});
    EXPECT_NE(page.find("\"1 difference: 1 changed\""), std::string::npos);
}

TEST_F(ProgramCompareTest, TheChosenPartOfBothIsCompared) {
    folder.Write("root/data.csv", "x");
    folder.Write("root/tests/c/job.inp", kDeck);
    Do({"new", "root", "p.kvp", "--force"});
    for (const std::string study : {"a", "tests/c", "root/b"}) {
        EXPECT_TRUE(
            DifferencesOf({"p.kvp", "root", "--study", study, "--ignore", "dates"}).starts_with("the same"))
            << study;
        EXPECT_TRUE(
            DifferencesOf({"root", "p.kvp", "--study", study, "--ignore", "dates"}).starts_with("the same"))
            << study;
    }
    EXPECT_TRUE(DifferencesOf({"p.kvp", "root", "--study", "a", "--study", "b", "--ignore", "dates"})
                    .starts_with("the same"));
    for (const char* const pattern : {"*.csv", "/b", "data.csv"}) {
        EXPECT_TRUE(DifferencesOf({"p.kvp", "root", "--exclude", pattern, "--ignore", "dates"})
                        .starts_with("the same"))
            << pattern;
    }
    folder.Write("root/a/new.csv", "x");
    folder.Write("root/b/new.csv", "x");
    std::filesystem::remove(folder / "root/a/plan.csv");
    EXPECT_EQ(DifferencesOf({"p.kvp", "root", "--study", "a", "--ignore", "dates"}),
              "~ root/a/new.csv: name changed from 'plan.csv' to 'new.csv'\n1 difference: 1 changed\n");
    const std::string page =
        OutputOf({"page", "p.kvp", "root", "--study", "a", "--ignore", "dates", "-o", "-"});
    EXPECT_NE(page.find("\"1 difference: 1 changed\""), std::string::npos);
    EXPECT_EQ(page.find("\"tests\""), std::string::npos);
}

TEST_F(ProgramCompareTest, ShowsValuesWithTheirUnits) {
    folder.Write("root/a/plan.csv", std::string(2000, 'x'));
    folder.Write("root/b/korvane.toml", "[metadata]\nMass = { value = 3, unit = \"kg\" }\n");
    const std::string added = "~ root/b: metadata 'Mass' added 3 kg\n";
    EXPECT_EQ(DifferencesOf({"p.kvp", "root", "--ignore", "dates"}),
              "~ root: metadata 'Size' changed from 49 B to 2.0 kB\n"
              "~ root/a: metadata 'Size' changed from 25 B to 2.0 kB\n" +
                  added + "3 differences: 3 changed\n");
    // A document has the unit, too, and an import puts it where types are.
    Do({"export", "root", "-o", "d.json"});
    const std::string ofDocument = DifferencesOf({"p.kvp", "d.json", "--ignore", "dates"});
    EXPECT_NE(ofDocument.find("~ root/a: metadata 'Size' changed from 25 B to 2.0 kB\n"), std::string::npos)
        << ofDocument;
    folder.Write("root/a/plan.csv", std::string(2001, 'x'));
    Do({"new", "root", "p.kvp", "--force"});
    folder.Write("root/a/plan.csv", std::string(2002, 'x'));
    EXPECT_NE(DifferencesOf({"p.kvp", "root"}).find("'Size' changed from '2025' B to '2026' B\n"),
              std::string::npos);
}

TEST_F(ProgramCompareTest, NothingCanBeChosenWithoutADirectory) {
    const std::string complaint =
        "--study and --exclude choose from a directory, and neither 'p.kvp' nor 'p.kvp' is one. See "
        "'korvane-json ";
    ExpectRefused({"compare", "p.kvp", "p.kvp", "--study", "a"}, complaint + "compare --help'", 2);
    ExpectRefused({"page", "p.kvp", "p.kvp", "--exclude", "a", "-o", "page.html"}, complaint + "page --help'",
                  2);
}

}  // namespace
