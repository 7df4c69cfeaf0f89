#include <gtest/gtest.h>

#include "host/system/Console.h"
#include "host/system/Phase.h"

namespace host {
namespace {

/// A console whose texts are kept, with a clock that stands still until it is moved.
class ConsoleTest : public testing::Test {
protected:
    Console MakeConsole(bool isTerminal) {
        return Console([this](std::string_view text) { said += text; }, isTerminal, [this] { return now; });
    }

    std::string said;
    Console::Clock::time_point now{};
};

TEST_F(ConsoleTest, NamesTheProgramInEveryMessage) {
    Console console = MakeConsole(false);
    console.Say("one");
    console.Say("two");
    EXPECT_EQ(said, "korvane-json: one\nkorvane-json: two\n");
}

TEST_F(ConsoleTest, SaysWhatItsVerbosityAllows) {
    using Verbosity = Console::Verbosity;
    for (const auto& [verbosity, expected] :
         {std::pair(Verbosity::Quiet, "korvane-json: wrong\n"),
          std::pair(Verbosity::Normal, "korvane-json: wrong\nkorvane-json: done\n"),
          std::pair(Verbosity::Verbose,
                    "korvane-json: wrong\nkorvane-json: done\n"
                    "korvane-json: why\nkorvane-json: reading: 1.500 s\n")}) {
        Console console = MakeConsole(true);
        console.SetVerbosity(verbosity);
        said.clear();
        console.Say("wrong");
        console.Note("done");
        console.Detail("why");
        {
            const Phase phase(console, "reading");
            now += std::chrono::milliseconds(1500);
        }
        EXPECT_EQ(said, expected);
    }
}

TEST_F(ConsoleTest, ShowsNoProgressWhenItIsQuiet) {
    Console console = MakeConsole(true);
    console.SetVerbosity(Console::Verbosity::Quiet);
    now += std::chrono::seconds(5);
    console.ShowProgress("Reading files", 1, 4);
    EXPECT_EQ(said, "");
}

TEST_F(ConsoleTest, APhaseThatFailsIsNotTimed) {
    Console console = MakeConsole(false);
    console.SetVerbosity(Console::Verbosity::Verbose);
    EXPECT_THROW(
        {
            const Phase phase(console, "reading");
            throw 1;
        },
        int);
    EXPECT_EQ(said, "");
}

TEST_F(ConsoleTest, ShowsNoProgressWithinTheFirstSecond) {
    Console console = MakeConsole(true);
    now += std::chrono::milliseconds(999);
    console.ShowProgress("Reading files", 1, 4);
    EXPECT_EQ(said, "");
    now += std::chrono::milliseconds(1);
    console.ShowProgress("Reading files", 2, 4);
    EXPECT_EQ(said, "\rReading files [###############---------------]  50 %  2 of 4\x1B[K");
}

TEST_F(ConsoleTest, ShowsNoProgressWhereNobodySeesIt) {
    Console console = MakeConsole(false);
    now += std::chrono::seconds(5);
    console.ShowProgress("Reading files", 1, 4);
    console.ClearProgress();
    EXPECT_EQ(said, "");
}

TEST_F(ConsoleTest, RedrawsTheBarTenTimesASecondAtMost) {
    Console console = MakeConsole(true);
    now += std::chrono::seconds(2);
    console.ShowProgress("Reading files", 1, 4);
    said.clear();
    now += std::chrono::milliseconds(99);
    console.ShowProgress("Reading files", 2, 4);
    EXPECT_EQ(said, "");
    now += std::chrono::milliseconds(1);
    console.ShowProgress("Reading files", 3, 4);
    EXPECT_NE(said, "");
}

TEST_F(ConsoleTest, TakesTheBarAwayBeforeAMessage) {
    Console console = MakeConsole(true);
    now += std::chrono::seconds(2);
    console.ShowProgress("Looking for files", 7, 0);
    said.clear();
    console.Say("trouble");
    EXPECT_EQ(said, "\r\x1B[Kkorvane-json: trouble\n");
}

TEST_F(ConsoleTest, LeavesNoBarBehind) {
    {
        Console console = MakeConsole(true);
        now += std::chrono::seconds(2);
        console.ShowProgress("Looking for files", 7, 0);
        said.clear();
    }
    EXPECT_EQ(said, "\r\x1B[K");
}

TEST(ProgressText, CountsWhereTheTotalIsNotKnown) {
    EXPECT_EQ(ProgressText("Looking for files", 12, 0), "Looking for files  12");
    EXPECT_EQ(ProgressText("Making the document", 0, 0), "Making the document ...");
}

TEST(ProgressText, FillsTheBarToItsEnd) {
    EXPECT_EQ(ProgressText("Reading files", 0, 3),
              "Reading files [------------------------------]   0 %  0 of 3");
    EXPECT_EQ(ProgressText("Reading files", 3, 3),
              "Reading files [##############################] 100 %  3 of 3");
    EXPECT_EQ(ProgressText("Reading files", 9, 3),
              "Reading files [##############################] 100 %  3 of 3");
}

}  // namespace
}  // namespace host
