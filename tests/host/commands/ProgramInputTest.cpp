#include <filesystem>
#include <utility>

#include "ProgramSupport.h"
#include "support/LongRun.h"
#include "support/ProgramCommands.h"

/// What is given to the program to read is not always a file.
namespace {

class ProgramInputTest : public ProgramInFolder {
protected:
    void SetUp() override {
        folder.Write("root/job.inp", "*STEP\n*STATIC\n*END STEP\n");
        Do({"new", "root", "p.kvp"});
        Do({"export", "p.kvp", "-o", "p.json"});
    }
};

TEST_F(ProgramInputTest, APipeIsReadLikeAFile) {
    ASSERT_EQ(OutputOf({"tree", "p.json"}).find("root"), 0U);
    EXPECT_EQ(Run({"tree", "-"}, "p.json").output, OutputOf({"tree", "p.json"}));
}

TEST_F(ProgramInputTest, WhatTheProgramWroteIsNoFileOfTheProject) {
    const std::string before = OutputOf({"find", "root", "--show", "size"});
    const std::vector<std::pair<std::string, std::vector<std::string>>> outputs = {
        {"a document", {"export", "root"}},
        {"a document", {"export", "root", "--text", "indented"}},
        {"a document", {"export", "p.kvp", "--object", "3"}},
        {"a page", {"page", "root"}},
        {"a plot", {"plot", "root", "--x", "Files", "--y", "Size"}},
        {"an answer", {"store", "p.json", "--db", "root/server.db"}},
    };
    // Whatever their names are, and wherever they lie.
    for (std::size_t index = 0; index < outputs.size(); ++index) {
        const auto& [what, command] = outputs[index];
        const std::string name = std::to_string(index) + ".inp";
        const std::string file = "root/run/" + name;
        std::filesystem::create_directories(folder / "root/run");
        std::vector<std::string> arguments = command;
        arguments.insert(arguments.end(), {"-o", file, "-q"});
        EXPECT_EQ(Do(arguments), "");
        const std::string said = Run({"find", "root", "-v"}).error;
        EXPECT_NE(said.find(name + "' is left out: it is " + what + " of this program\n"), std::string::npos)
            << said;
        EXPECT_EQ(OutputOf({"find", "root", "--show", "size"}), before) << what;
        // The next output may replace it.
        EXPECT_EQ(Do({"export", "root", "-q", "-o", file}), "") << what;
    }
    EXPECT_EQ(Do({"update", "root", "p.kvp", "-q"}), "");
    EXPECT_EQ(OutputOf({"find", "p.kvp", "--show", "size"}), before);
}

#if !defined(_WIN32)

TEST_F(ProgramInputTest, ADeviceWithoutAnEndIsNotADocument) {
    const std::string message =
        "cannot read '/dev/zero': it is a device that gives more than a megabyte. Give a file with the "
        "document";
    ExpectRefused({"tree", "/dev/zero"}, message);
    ExpectRefused({"compare", "/dev/zero", "p.kvp"}, message, 2);
    ExpectRefused({"find", "/dev/zero", "kind=Study"}, message);
    ExpectRefused({"page", "/dev/zero", "-o", "page.html"}, message);
    ExpectRefused({"plot", "/dev/zero", "--x", "Files", "--y", "Size"}, message);
    ExpectRefused({"import", "/dev/zero", "p.kvp"}, message);
    ExpectRefused({"import", "/dev/zero", "new.kvp"}, message);
    ExpectRefused({"apply", "/dev/zero", "p.kvp"}, message);
    ExpectRefused({"store", "/dev/zero", "--db", "server.db"}, message);
}

TEST_F(ProgramInputTest, ADeviceIsNotAProject) {
    const std::string message =
        "'/dev/zero' is neither a directory nor a project file. 'korvane-json import' makes a project file "
        "from a document";
    ExpectRefused({"export", "/dev/zero"}, message);
    ExpectRefused({"export", "/dev/zero", "-o", "out.json"}, message);
    ExpectRefused({"new", "/dev/zero", "new.kvp"}, message);
    ExpectRefused({"fetch", "PRJ-1-000000", "--db", "/dev/zero"}, "'/dev/zero' is not a file");
}

TEST_F(ProgramInputTest, ADeviceWithoutAnEndIsRefusedByEveryCommandInPlaceOfEveryInput) {
    folder.Write("given/studies/static/job.inp", "*STEP\n*STATIC\n*END STEP\n");
    folder.Write("given/other/modes/job.bdf", "SOL 101\nCEND\nBEGIN BULK\nENDDATA\n");
    const auto run = [&](const std::vector<std::string>& arguments) {
        const ProcessResult result = Run(arguments);
        ASSERT_EQ(result.status, 0) << result.error;
    };
    run({"new", "given/studies", "given/p.kvp"});
    run({"export", "given/other", "-o", "given/other.json"});
    CompleteCommandFolder(folder, run);
    ASSERT_FALSE(HasFatalFailure());
    for (const ProgramCommand& command :
         kIsSample && !IsLongRun() ? OneOfEach(AllCommands()) : AllCommands()) {
        PutFileOf(command, folder);
        const std::vector<std::string> usual = ArgumentsIn(folder, command);
        const Content before = ContentOf(folder.Path());
        for (std::size_t place = 0; place < usual.size(); ++place) {
            if (!usual[place].starts_with("given/") && !usual[place].starts_with("work/")) {
                continue;
            }
            SCOPED_TRACE(command.name + ", argument " + std::to_string(place));
            std::vector<std::string> arguments = usual;
            arguments[place] = "/dev/zero";
            const ProcessResult result = Run(arguments);
            EXPECT_TRUE(result.status == 1 || result.status == 2) << result.status;
            EXPECT_EQ(result.output, "");
            EXPECT_TRUE(result.error.starts_with("korvane-json: ")) << result.error;
            EXPECT_NE(result.error.find("'/dev/zero'"), std::string::npos) << result.error;
            EXPECT_TRUE(ContentOf(folder.Path()) == before) << "files were changed";
        }
    }
}

TEST_F(ProgramInputTest, TheStandardInputMayBeADeviceWithoutAnEnd) {
    const ProcessResult result =
        RunProgram(ProgramPath("korvane-json"), {{"tree", "-"}, {}, folder.Path(), {}, {}, "/dev/zero"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error,
              "korvane-json: cannot read the standard input: it is a device that gives more than a megabyte. "
              "Give a file with the document\n");
}

TEST_F(ProgramInputTest, TheStandardInputIsReadByItsPathToo) {
    const ProcessResult result =
        RunProgram(ProgramPath("korvane-json"),
                   {{"tree", "/dev/stdin"}, {{"LC_ALL", "C"}}, folder.Path(), {}, {}, folder / "p.json"});
    EXPECT_EQ(result.output, OutputOf({"tree", "p.json"}));
}

TEST_F(ProgramInputTest, StrictFailsForANameWithABackslashButWritesTheRest) {
    folder.Write("root/a\\b.inp", "*STEP\n");
    const std::string named = "korvane-json: '" + ToUtf8(folder / "root/a\\b.inp") +
                              "' is left out: in a document a backslash separates "
                              "directories. Rename it to keep it\n";
    const ProcessResult lenient = Run({"export", "root"});
    EXPECT_EQ(lenient.status, 0);
    EXPECT_TRUE(lenient.error.starts_with(named)) << lenient.error;
    EXPECT_EQ(lenient.output.find("\"b.inp"), std::string::npos);
    EXPECT_NE(lenient.output.find("job.inp"), std::string::npos);
    const ProcessResult strict = Run({"export", "root", "--strict"});
    EXPECT_EQ(strict.status, 1);
    EXPECT_EQ(strict.output, lenient.output);
}

#endif

}  // namespace
