#include <gtest/gtest.h>

#include "support/Process.h"
#include "support/TemporaryDirectory.h"

namespace {

ProcessResult RunHost(std::vector<std::string> arguments) {
    return RunProgram(ProgramPath("korvane-json"), {std::move(arguments), {}, {}, {}, {}});
}

void ExpectUsageError(const std::vector<std::string>& arguments, const std::string& message) {
    const ProcessResult result = RunHost(arguments);
    EXPECT_EQ(result.status, 2) << message;
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error, "korvane-json: " + message + "\n");
}

TEST(ProgramUsage, PrintsTheVersion) {
    const ProcessResult result = RunHost({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_TRUE(result.output.starts_with("korvane-json " KORVANEJSON_VERSION)) << result.output;
    EXPECT_TRUE(result.output.ends_with("\n"));
}

TEST(ProgramUsage, ExplainsItsCommands) {
    const ProcessResult result = RunHost({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    for (const char* const word :
         {"Usage: korvane-json", "tree", "export", "--version", "Exit status", "Examples:"}) {
        EXPECT_NE(result.output.find(word), std::string::npos) << word << "\n" << result.output;
    }
}

TEST(ProgramUsage, ExplainsEveryOptionOfACommandWithAnExample) {
    const ProcessResult tree = RunHost({"tree", "--help"});
    EXPECT_EQ(tree.status, 0);
    for (const char* const word :
         {"Usage: korvane-json tree", "DIR", "--strict", "--depth 2", "--files roles", "--format json",
          "korvane-json tree --studies projects/bracket", "korvane-json tree projects/bracket"}) {
        EXPECT_NE(tree.output.find(word), std::string::npos) << word << "\n" << tree.output;
    }
    const ProcessResult found = RunHost({"find", "--help"});
    for (const char* const word : {"Usage: korvane-json find", "CONDITION", "--show Mass", "--sort Mass",
                                   "--format csv", "--count", "has=mesh 'has!=cad'"}) {
        EXPECT_NE(found.output.find(word), std::string::npos) << word << "\n" << found.output;
    }
    const ProcessResult plotted = RunHost({"plot", "--help"});
    for (const char* const word : {"Usage: korvane-json plot", "--x Mass", "--y 'Largest Displacement'",
                                   "--by Solver", "--kind Study", "--title Brackets", "-o plot.svg"}) {
        EXPECT_NE(plotted.output.find(word), std::string::npos) << word << "\n" << plotted.output;
    }
    const ProcessResult exported = RunHost({"export", "-h"});
    EXPECT_EQ(exported.status, 0);
    for (const char* const word :
         {"--strict", "--object 12", "--mode STUDY", "--text indented", "-o bracket.json"}) {
        EXPECT_NE(exported.output.find(word), std::string::npos) << word << "\n" << exported.output;
    }
}

TEST(ProgramUsage, RefusesBadUsageWithAWordOnWhatToDo) {
    ExpectUsageError({}, "give a command, like 'korvane-json tree DIR'. 'korvane-json --help' lists them");
    ExpectUsageError({"draw"}, "there is no command 'draw'. See 'korvane-json --help'");
    ExpectUsageError({"--draw"}, "there is no option '--draw'. See 'korvane-json --help'");
    ExpectUsageError({"tree"}, "DIR is required. See 'korvane-json tree --help'");
    ExpectUsageError({"tree", ".", "more"},
                     "'more' is one argument too many. See 'korvane-json tree --help'");
    ExpectUsageError({"export", ".", "--mode", "all"},
                     "--mode: 'all' is neither PROJECT nor STUDY. See 'korvane-json export --help'");
    ExpectUsageError({"export", ".", "--text", "pretty"},
                     "--text: 'pretty' is neither compact nor indented. See 'korvane-json export --help'");
    for (const std::string text : {"first", "", "0", "010", "0x10", "-1", "+1", "1 ", "99999999999"}) {
        ExpectUsageError(
            {"export", ".", "--object", text},
            "--object: '" + text +
                "' is not an identifier; give a number like 12. See 'korvane-json export --help'");
    }
    ExpectUsageError({"tree", "--"}, "DIR is required. See 'korvane-json tree --help'");
    ExpectUsageError({"compare", "-", "-"},
                     "only one of the two can be the standard input (-). See 'korvane-json compare --help'");
    ExpectUsageError({"compare"},
                     "give two projects or documents to compare. See 'korvane-json compare --help'");
    ExpectUsageError({"compare", "a.json"},
                     "give another project or document to compare 'a.json' with. See 'korvane-json compare "
                     "--help'");
    ExpectUsageError({"compare", "-"},
                     "give another project or document to compare the standard input with. See 'korvane-json "
                     "compare --help'");
    ExpectUsageError({"compare", "a", "b", "c"},
                     "'c' is one argument too many. See 'korvane-json compare --help'");
    ExpectUsageError({"compare", "a", "b", "--ignore", "names"},
                     "--ignore: 'names' is neither dates nor keys. See 'korvane-json compare --help'");
}

TEST(ProgramUsage, NamesWhatWasMostLikelyMeant) {
    ExpectUsageError({"exprot", ".", "-o", "x"},
                     "there is no command 'exprot'; did you mean 'export'? See 'korvane-json --help'");
    ExpectUsageError({"exprot", "tree"},
                     "there is no command 'exprot'; did you mean 'export'? See 'korvane-json --help'");
    ExpectUsageError({"help", "comp"},
                     "there is no command 'comp'; did you mean 'compare'? See 'korvane-json --help'");
    ExpectUsageError({"--versoin"},
                     "there is no option '--versoin'; did you mean '--version'? See 'korvane-json --help'");
    ExpectUsageError({"tree", "--strct"},
                     "there is no option '--strct'; did you mean '--strict'? See 'korvane-json tree --help'");
    ExpectUsageError({"compare", "a", "--al"},
                     "there is no option '--al'; did you mean '--all'? See 'korvane-json compare --help'");
    ExpectUsageError(
        {"export", ".", "--objct=3"},
        "there is no option '--objct'; did you mean '--object'? See 'korvane-json export --help'");
    ExpectUsageError({"export", ".", "--mode", "STUDI"},
                     "--mode: 'STUDI' is neither PROJECT nor STUDY; did you mean 'STUDY'? See 'korvane-json "
                     "export --help'");
    ExpectUsageError({"export", ".", "--text", "indent"},
                     "--text: 'indent' is neither compact nor indented; did you mean 'indented'? See "
                     "'korvane-json export --help'");
}

TEST(ProgramUsage, NamesOptionsThatAreTooMany) {
    const std::string help = ". See 'korvane-json tree --help'";
    ExpectUsageError({"tree", ".", "--depth", "1", "--depth", "2"},
                     "'--depth' is given more than once" + help);
    ExpectUsageError({"tree", ".", "--depth", "1", "--studies"},
                     "'--depth' and '--studies' cannot be given together" + help);
}

TEST(ProgramUsage, NamesSurplusArgumentsInTheirOrder) {
    const std::string help = ". See 'korvane-json tree --help'";
    ExpectUsageError({"tree", "a", "c", "b", "a"}, "'c', 'b' and 'a' are 3 arguments too many" + help);
    ExpectUsageError({"tree", "a", "c", "--strict", "b"}, "'c' and 'b' are 2 arguments too many" + help);
    ExpectUsageError({"tree", "a", "b", "--nothing"}, "'b' is one argument too many" + help);
    ExpectUsageError({"tree", "a", "--nothing", "b"}, "there is no option '--nothing'" + help);
    ExpectUsageError({"tree", "a", "--", "--b", "c"}, "'--b' and 'c' are 2 arguments too many" + help);
    ExpectUsageError({"tree", "--", "a", "--b"}, "'--b' is one argument too many" + help);
    ExpectUsageError({"--nothing", "tree", "a"}, "there is no option '--nothing'. See 'korvane-json --help'");
    ExpectUsageError({"-o", "x", "export", "a"},
                     "'-o' is an option of 'export' and comes after it. See 'korvane-json --help'");
    ExpectUsageError({"help", "tree", "export"},
                     "'export' is one argument too many. See 'korvane-json help --help'");
}

TEST(ProgramUsage, HelpOfACommandIsThatOfItsOption) {
    const auto expectSame = [](const std::vector<std::string>& help, const std::vector<std::string>& option) {
        const ProcessResult one = RunHost(help);
        EXPECT_EQ(one.status, 0);
        EXPECT_EQ(one.error, "");
        EXPECT_NE(one.output, "");
        EXPECT_EQ(one.output, RunHost(option).output);
    };
    expectSame({"help"}, {"--help"});
    expectSame({"help"}, {"-h"});
    for (const char* const command :
         {"tree", "export", "new", "update", "store", "apply", "fetch", "import", "compare", "help"}) {
        expectSame({"help", command}, {command, "--help"});
    }
}

TEST(ProgramUsage, LetterCaseOfAWordDoesNotCount) {
    const TemporaryDirectory folder;
    folder.Write("a.inp", "*STEP\n");
    const auto write = [&](const std::string& mode, const std::string& text) {
        const ProcessResult result = RunProgram(
            ProgramPath("korvane-json"),
            {{"export", ".", "--mode", mode, "--text", text}, {{"LC_ALL", "C"}}, folder.Path(), {}, {}});
        EXPECT_EQ(result.status, 0) << result.error;
        return result.output;
    };
    EXPECT_EQ(write("study", "Indented"), write("STUDY", "indented"));
    EXPECT_EQ(write("Project", "COMPACT"), write("PROJECT", "compact"));
    EXPECT_NE(write("project", "compact"), write("study", "compact"));
}

TEST(ProgramUsage, FailsForARootThatCannotBeRead) {
    const TemporaryDirectory folder;
    for (const char* const command : {"tree", "export"}) {
        const ProcessResult missing = RunHost({command, ToUtf8(folder / "missing")});
        EXPECT_EQ(missing.status, 1);
        EXPECT_EQ(missing.output, "");
        EXPECT_TRUE(missing.error.starts_with("korvane-json: cannot read '")) << missing.error;
        EXPECT_TRUE(missing.error.ends_with(
            ". Give a directory of simulation files, or a project file, that you can read\n"))
            << missing.error;
        EXPECT_EQ(RunHost({command, ToUtf8(folder.Write("file.txt", "x"))}).status, 1);
    }
}

TEST(ProgramUsage, FailsForAnObjectThatIsNotThere) {
    const TemporaryDirectory folder;
    const ProcessResult result = RunHost({"export", ToUtf8(folder.Path()), "--object", "7"});
    const std::string directory = ToUtf8(folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error, "korvane-json: there is no object 7 in '" + directory + "'; 'korvane-json tree " +
                                directory + "' lists the objects\n");
}

TEST(ProgramUsage, NamesMayLookLikeOptionsBehindTwoDashes) {
    const TemporaryDirectory folder;
    folder.MakeDirectory("--strange");
    const ProcessResult result = RunProgram(
        ProgramPath("korvane-json"), {{"tree", "--", "--strange"}, {{"LC_ALL", "C"}}, folder.Path(), {}, {}});
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_TRUE(result.output.starts_with("--strange  Project")) << result.output;
}

}  // namespace
