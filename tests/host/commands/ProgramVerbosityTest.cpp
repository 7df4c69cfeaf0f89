#include <gtest/gtest.h>

#include <regex>

#include "host/commands/ProgramSupport.h"

namespace {

using Arguments = std::vector<std::string>;

class ProgramVerbosity : public ProgramInFolder {
protected:
    void SetUp() override {
        folder.Write("root/beam/beam.inp", "*STEP\n*STATIC\n");
        folder.Write("root/.hidden/x.inp", "*STEP\n");
        folder.Write(
            "odd.json",
            R"({"name":"P","type":"SIMULATION","odd":1,"children":[{"name":"a"},{"name":"t","type":"CAETAG"}]})");
    }
    /// Runs the commands of a whole trip with the option, which stands before the command or behind it.
    void GoRound(const std::string& option, bool isBefore,
                 const std::function<void(const Arguments&, const ProcessResult&)>& look) const {
        const std::vector<Arguments> trip = {
            {"new", "root", "p.kvp", "--force"},
            {"export", "p.kvp", "-o", "d.json"},
            {"store", "d.json", "--db", option + (isBefore ? "1" : "2") + ".db", "-o", "a.json"},
            {"apply", "a.json", "p.kvp"},
            {"import", "odd.json", "q.kvp"},
            {"import", "--update", "odd.json", "q.kvp", "--dry-run"},
            {"update", "root", "p.kvp"},
            {"tree", "root"},
            {"compare", "p.kvp", "q.kvp", "--ignore", "dates"},
        };
        for (Arguments arguments : trip) {
            arguments.insert(isBefore ? arguments.begin() : arguments.end(), option);
            look(arguments, Run(arguments));
        }
        std::filesystem::remove(folder / "p.kvp");
        std::filesystem::remove(folder / "q.kvp");
    }
};

TEST_F(ProgramVerbosity, QuietSaysNothingUnlessSomethingWentWrong) {
    Do({"new", "--empty", "p.kvp"});
    for (const std::string option : {"-q", "--quiet"}) {
        for (const bool isBefore : {true, false}) {
            GoRound(option, isBefore, [](const Arguments& arguments, const ProcessResult& result) {
                EXPECT_EQ(result.error, "") << testing::PrintToString(arguments);
                EXPECT_EQ(result.status, arguments[0] == "compare" || arguments[1] == "compare" ? 1 : 0);
                // What is written to the standard output stays.
                const bool isShown = arguments[0] == "tree" || arguments[1] == "tree" ||
                                     arguments[0] == "compare" || arguments[1] == "compare";
                EXPECT_EQ(result.output.empty(), !isShown) << testing::PrintToString(arguments);
            });
            Do({"new", "--empty", "p.kvp"});
        }
    }
    const ProcessResult missing = Run({"-q", "tree", "missing"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.error.starts_with("korvane-json: cannot read 'missing': ")) << missing.error;
    EXPECT_EQ(Run({"import", "odd.json", "q.kvp", "--strict", "-q"}).error,
              Run({"import", "odd.json", "q.kvp", "--strict"}).error);
    EXPECT_EQ(Run({"tree", "-q"}).status, 2);
}

TEST_F(ProgramVerbosity, VerboseSaysWhatWasReadAndLeftOutAndHowLongItTook) {
    Do({"new", "--empty", "p.kvp"});
    const std::regex time(": [0-9]+\\.[0-9]{3} s\n");
    for (const std::string option : {"-v", "--verbose"}) {
        for (const bool isBefore : {true, false}) {
            GoRound(option, isBefore, [&](const Arguments& arguments, const ProcessResult& result) {
                EXPECT_TRUE(std::regex_search(result.error, time))
                    << testing::PrintToString(arguments) << result.error;
            });
            Do({"new", "--empty", "p.kvp"});
        }
    }
    const std::string said = Run({"tree", "root", "-v"}).error;
    const std::string hidden = "korvane-json: '" + ToUtf8((folder / "root/.hidden").make_preferred()) +
                               "' is left out: it is hidden\n";
    EXPECT_NE(said.find(hidden), std::string::npos) << said;
    EXPECT_NE(said.find("' has 1 file in 2 directories\n"), std::string::npos) << said;
    std::filesystem::copy_file(folder / "p.kvp", folder / "root/kept.kvp");
    EXPECT_NE(Run({"tree", "root", "-v"})
                  .error.find("kept.kvp' is left out: it is a project file or a database of this program\n"),
              std::string::npos);
    // Without it none of this is said.
    EXPECT_EQ(OutputOf({"tree", "root"}), Run({"tree", "root", "-v"}).output);
}

TEST_F(ProgramVerbosity, TheTwoExcludeEachOther) {
    const std::string both = "give either --quiet or --verbose. See 'korvane-json tree --help'";
    ExpectRefused({"tree", "root", "-q", "-v"}, both, 2);
    ExpectRefused({"-q", "tree", "root", "--verbose"}, both, 2);
    EXPECT_EQ(Run({"-q", "tree", "root", "--quiet"}).status, 0);
}

}  // namespace
