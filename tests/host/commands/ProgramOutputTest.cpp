#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>

#if !defined(_WIN32)
#include <sys/resource.h>
#endif

#include "support/LongRun.h"
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

namespace {

class ProgramOutputTest : public testing::Test {
protected:
    void SetUp() override {
        folder.Write("root/K\xC3\xBChler/job.inp", "*STEP\n*STATIC\n*END STEP\n");
        folder.Write("root/K\xC3\xBChler/notes.txt", "K\xC3\xBChlk\xC3\xB6rper\n");
        folder.Write("root/plan.csv", "a;b\n");
    }

    ProcessResult RunHost(ProcessOptions options) const {
        return RunProgram(ProgramPath("korvane-json"), options);
    }
    ProcessResult RunHost(std::vector<std::string> arguments) const {
        return RunHost(ProcessOptions{std::move(arguments), {}, {}, {}, {}});
    }
    std::string Root() const { return ToUtf8(folder / "root"); }
    std::ptrdiff_t CountEntries() const {
        return std::distance(std::filesystem::directory_iterator(folder.Path()),
                             std::filesystem::directory_iterator());
    }

    TemporaryDirectory folder;
};

TEST_F(ProgramOutputTest, PrintsTheTree) {
    const ProcessResult result = RunHost(ProcessOptions{{"tree", Root()}, {{"LC_ALL", "C"}}, {}, {}, {}});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.output,
              "root                    Project            #1  Simulation\n"
              "|  Files: 3; Size: 41 B; Solver: Abaqus/CalculiX; Studies: 1\n"
              "|- plan.csv             File               #2  Table   ASCII     4 B\n"
              "`- K\xC3\xBChler               Model              #3\n"
              "   |  Description: K\xC3\xBChlk\xC3\xB6rper; Files: 2; Size: 37 B; Solver: Abaqus/CalculiX\n"
              "   |- notes.txt         custom file        #4  Report  ASCII    13 B\n"
              "   `- Iterations        IterationFolder    #5\n"
              "      `- job            Iteration          #6\n"
              "         |  Solver: Abaqus/CalculiX; Steps: 1\n"
              "         `- job.inp     IterationModel     #7\n"
              "            `- job.inp  FE representation  #8  Deck    ASCII    24 B\n"
              "\n"
              "1 study, 1 iteration, 3 files (41 B)\n");
}

#if !defined(_WIN32)
/// The most memory that a program took of all that were run, in kilobytes.
long MostMemory() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return usage.ru_maxrss;
}

TEST_F(ProgramOutputTest, ADocumentTakesNoMemoryOfItsOwn) {
    // Freed memory stays with the address sanitizer.
    constexpr long kMostForTheDocument = kIsSanitized ? 200'000 : 4'000;
    const std::string longName(180, 'x');
    for (int file = 0; file < 10'000; ++file) {
        folder.Write("plant/study/" + std::to_string(file) + longName + ".txt", "");
    }
    const std::string plant = ToUtf8(folder / "plant");
    const std::string document = ToUtf8(folder / "plant.json");
    // Both read the whole directory.
    ASSERT_EQ(RunHost({"export", plant, "--mode", "PROJECT", "-o", document}).status, 0);
    EXPECT_LT(std::filesystem::file_size(folder / "plant.json"), 1'000U);
    const long before = MostMemory();
    ASSERT_EQ(RunHost({"export", plant, "-o", document}).status, 0);
    EXPECT_GT(std::filesystem::file_size(folder / "plant.json"), 3'500'000U);
    EXPECT_LT(MostMemory() - before, kMostForTheDocument);
}
#endif

TEST_F(ProgramOutputTest, TheDocumentIsOneLineOfAsciiUnlessIndented) {
    const ProcessResult compact = RunHost({"export", Root()});
    EXPECT_EQ(compact.status, 0);
    EXPECT_EQ(compact.error, "");
    EXPECT_EQ(std::ranges::count(compact.output, '\n'), 1);
    EXPECT_TRUE(compact.output.ends_with("\"subType\":\"SDM\"}\n"));
    EXPECT_TRUE(std::ranges::all_of(compact.output, [](char byte) { return byte >= 0; }));
    EXPECT_NE(compact.output.find("K\\u00FChlk\\u00F6rper"), std::string::npos);
    const ProcessResult indented = RunHost({"export", Root(), "--text", "indented"});
    EXPECT_EQ(indented.status, 0);
    EXPECT_GT(std::ranges::count(indented.output, '\n'), 20);
    EXPECT_TRUE(indented.output.ends_with("}\n"));
    EXPECT_FALSE(indented.output.ends_with("\n\n"));
}

TEST_F(ProgramOutputTest, ADashIsTheStandardOutput) {
    EXPECT_EQ(RunHost({"export", Root(), "-o", "-"}).output, RunHost({"export", Root()}).output);
}

TEST_F(ProgramOutputTest, WritesTheDocumentToAFile) {
    const std::string target = ToUtf8(folder /
                                      "Gr\xC3\xB6\xC3\x9F"
                                      "e.json");
    const ProcessResult result = RunHost({"export", Root(), "-o", target});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(ReadWholeFile(folder / "Gr\xC3\xB6\xC3\x9F"
                                     "e.json"),
              RunHost({"export", Root()}).output);
    EXPECT_EQ(CountEntries(), 2);
}

TEST_F(ProgramOutputTest, TheFileWrittenToIsNoPartOfTheProject) {
    const std::string target = ToUtf8(folder / "root/out.json");
    ASSERT_EQ(RunHost({"export", Root(), "--mode", "PROJECT", "-o", target}).status, 0);
    EXPECT_EQ(ReadWholeFile(folder / "root/out.json").find("out.json"), std::string::npos);
    ASSERT_EQ(RunHost({"export", Root(), "--mode", "PROJECT", "-o", target}).status, 0);
    EXPECT_EQ(ReadWholeFile(folder / "root/out.json").find("out.json"), std::string::npos);
    const ProcessResult redirected =
        RunHost(ProcessOptions{{"tree", Root()}, {}, {}, folder / "root/tree.txt", {}});
    EXPECT_EQ(redirected.status, 0);
    EXPECT_EQ(ReadWholeFile(folder / "root/tree.txt").find("tree.txt"), std::string::npos);
}

TEST_F(ProgramOutputTest, AnOldFileStaysWhenNothingCouldBeDone) {
    const std::string target = ToUtf8(folder.Write("out.json", "old"));
    EXPECT_EQ(RunHost({"export", ToUtf8(folder / "missing"), "-o", target}).status, 1);
    EXPECT_EQ(RunHost({"export", Root(), "--object", "99", "-o", target}).status, 1);
    EXPECT_EQ(ReadWholeFile(folder / "out.json"), "old");
}

TEST_F(ProgramOutputTest, TakesNoFileOfTheProjectForItsOutput) {
    const std::string deck = ToUtf8(folder.Write("root/kept/run.inp", "*STEP\n"));
    const ProcessResult result = RunHost({"export", Root(), "-o", deck});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error,
              "korvane-json: cannot write '" + deck +
                  "': it is a file of the project, not a document, a page or a plot. Nothing was "
                  "changed; give another file "
                  "with -o\n");
    EXPECT_EQ(ReadWholeFile(folder / "root/kept/run.inp"), "*STEP\n");
    // The document of the last time is replaced.
    for (int count = 0; count < 2; ++count) {
        EXPECT_EQ(RunHost({"export", Root(), "-o", ToUtf8(folder / "root/kept/out.json")}).status, 0);
    }
}

TEST_F(ProgramOutputTest, SaysWhyTheOutputCannotBeWritten) {
    folder.MakeDirectory("out.json");
    const ProcessResult directory = RunHost({"export", Root(), "-o", ToUtf8(folder / "out.json")});
    EXPECT_EQ(directory.status, 1);
    EXPECT_TRUE(directory.error.starts_with("korvane-json: cannot write '")) << directory.error;
    EXPECT_NE(directory.error.find("Give another file with -o"), std::string::npos);
    EXPECT_EQ(RunHost({"export", Root(), "-o", ToUtf8(folder / "missing/out.json")}).status, 1);
}

TEST_F(ProgramOutputTest, EndsQuietlyWhenNobodyReadsOn) {
    // More than a pipe holds.
    for (int index = 0; index < 500; ++index) {
        folder.Write("root/many/file" + std::to_string(index) + ".txt", "x");
    }
    for (const char* const command : {"tree", "export"}) {
        const ProcessResult result = RunHost(ProcessOptions{{command, Root()}, {}, {}, {}, 10});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output.size(), 10U);
        EXPECT_EQ(result.error, "");
    }
}

TEST_F(ProgramOutputTest, ShowsNeitherColoursNorProgressWithoutATerminal) {
    const ProcessResult result = RunHost(ProcessOptions{{"tree", Root()}, {{"TERM", "xterm"}}, {}, {}, {}});
    EXPECT_EQ(result.output.find('\x1B'), std::string::npos);
    EXPECT_EQ(result.error, "");
}

#if !defined(_WIN32)

TEST_F(ProgramOutputTest, DrawsBoxesWhereTheLocaleIsUtf8) {
    const ProcessResult result =
        RunHost(ProcessOptions{{"tree", Root()}, {{"LC_ALL", "C.UTF-8"}}, {}, {}, {}});
    EXPECT_NE(result.output.find("├─ plan.csv"), std::string::npos) << result.output;
}

TEST_F(ProgramOutputTest, FailsWhereTheStandardOutputIsFull) {
    for (const char* const command : {"tree", "export"}) {
        const ProcessResult result = RunHost(ProcessOptions{{command, Root()}, {}, {}, "/dev/full", {}});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.error,
                  "korvane-json: cannot write to the standard output: No space left on device\n");
    }
}

TEST_F(ProgramOutputTest, WritesToTheStandardOutputByItsPathToo) {
    EXPECT_EQ(RunHost({"export", Root(), "-o", "/dev/stdout"}).output, RunHost({"export", Root()}).output);
    EXPECT_EQ(RunHost({"export", Root(), "-o", "/dev/null"}).status, 0);
}

TEST_F(ProgramOutputTest, StrictFailsForAnEntryThatCannotBeReadButWritesTheRest) {
    std::filesystem::create_symlink("gone", folder / "root/dangling.inp");
    const std::string named = "korvane-json: '" + ToUtf8(folder / "root/dangling.inp") +
                              "' cannot be read and is left out: it is a broken link (No such file or "
                              "directory)\n";
    for (const char* const command : {"tree", "export"}) {
        const ProcessResult lenient = RunHost({command, Root()});
        EXPECT_EQ(lenient.status, 0);
        EXPECT_EQ(
            lenient.error,
            named +
                "korvane-json: 1 entry could not be read or named in a document, and was left out; with "
                "--strict that is a failure\n");
        const ProcessResult strict = RunHost({command, Root(), "--strict"});
        EXPECT_EQ(strict.status, 1);
        EXPECT_EQ(strict.error, named +
                                    "korvane-json: 1 entry could not be read or named in a document, and was "
                                    "left out; --strict does not allow that\n");
        EXPECT_EQ(strict.output, lenient.output);
        EXPECT_NE(strict.output, "");
    }
}

#endif

}  // namespace
