#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "ChangingCommands.h"
#include "FaultRuns.h"
#include "FaultyFiles.h"

namespace failures {
namespace {

/// A command that changes nothing itself, on a file that another command left with a change to be undone.
struct ReadingCommand {
    const char* name;
    /// The command that left the change; see ChangingCommands.
    const char* changing;
    /// "KEY" stands for the key of the stored project.
    std::vector<std::string> arguments;
};

void PrintTo(const ReadingCommand& command, std::ostream* output) {
    *output << command.name;
}

/// All commands that open databases without changing them. A new command is one line here.
const std::vector<ReadingCommand>& ReadingCommands() {
    static const std::vector<ReadingCommand> commands = {
        {"Export", "Import", {"export", "work/p.kvp", "-o", "out"}},
        {"NewFromFile", "Import", {"new", "work/p.kvp", "--force", "--dry-run", "work/p.kvp"}},
        {"ApplyDryRun", "Import", {"apply", "given/answer.json", "work/p.kvp", "--dry-run"}},
        {"ImportDryRun", "Import", {"import", "given/fewer.json", "work/p.kvp", "--dry-run"}},
        {"Fetch", "Store", {"fetch", "KEY", "--db", "work/s.db", "-o", "out"}},
        {"StoreDryRun", "Store", {"store", "given/fewer.json", "--db", "work/s.db", "--dry-run"}},
    };
    return commands;
}

const ChangingCommand& Find(const std::string& name) {
    for (const ChangingCommand& command : ChangingCommands()) {
        if (name == command.name) {
            return command;
        }
    }
    throw std::invalid_argument(name);
}

class ReadingFaults : public testing::TestWithParam<ReadingCommand> {
protected:
    ReadingFaults()
        : folder_(Find(GetParam().changing)), there_(folder_.Path()), arguments_(GetParam().arguments) {
        UseFaultyFiles(true);
        const std::string answer = ReadWholeFile("given/answer.json");
        const std::size_t begin = answer.find("\"dbkey\":\"") + 9;
        std::ranges::replace(arguments_, std::string("KEY"),
                             answer.substr(begin, answer.find('"', begin) - begin));
    }

    std::filesystem::path Journal() const {
        std::filesystem::path journal = folder_.File();
        journal += "-journal";
        return journal;
    }
    /// Leaves half of a change in the file, and the journal beside it.
    void LeaveHalfAChange() {
        const FaultKind writing{"write", {Operation::Write}, SQLITE_IOERR_WRITE};
        folder_.Reset();
        Arm(writing, Manner::Once, 0);
        RunHere(Find(GetParam().changing).arguments);
        const std::uint64_t count = Disarm();
        folder_.Reset();
        Arm(writing, Manner::Gone, count * 3 / 4);
        const Outcome outcome = RunHere(Find(GetParam().changing).arguments);
        Disarm();
        ASSERT_NE(outcome.said.find("could not be undone yet"), std::string::npos) << outcome.said;
        ASSERT_TRUE(folder_.Bytes() != folder_.BytesBefore());
        std::filesystem::copy_file(folder_.File(), "half");
        std::filesystem::copy_file(Journal(), "journal");
    }
    void PutHalfAChange() const {
        folder_.Reset();
        std::filesystem::remove(folder_.File());
        std::filesystem::copy_file("half", folder_.File());
        std::filesystem::copy_file("journal", Journal());
    }
    static std::string Output() { return std::filesystem::exists("out") ? ReadWholeFile("out") : ""; }

    CommandFolder folder_;
    CurrentFolder there_;
    std::vector<std::string> arguments_;
};

TEST_P(ReadingFaults, LeaveTheChangeToBeUndoneOrUndoIt) {
    folder_.Reset();
    const Outcome whole = RunHere(arguments_);
    ASSERT_EQ(whole.status, 0) << whole.said;
    const std::string output = Output();
    ASSERT_NO_FATAL_FAILURE(LeaveHalfAChange());
    std::uint64_t tried = 0;
    for (const FaultKind& kind : FaultKinds()) {
        PutHalfAChange();
        Arm(kind, Manner::Once, 0);
        EXPECT_EQ(RunHere(arguments_).said, whole.said);
        const std::uint64_t count = Disarm();
        EXPECT_TRUE(folder_.Bytes() == folder_.BytesBefore()) << "the change was not undone";
        for (const Manner manner : {Manner::Once, Manner::ForGood, Manner::Gone}) {
            for (const std::uint64_t number : Moments(count)) {
                SCOPED_TRACE(NameOfFault(kind, manner, number));
                PutHalfAChange();
                std::filesystem::remove("out");
                Arm(kind, manner, number);
                const Outcome outcome = RunHere(arguments_);
                Disarm();
                SCOPED_TRACE("said: " + outcome.said);
                if (outcome.status == 0) {
                    EXPECT_EQ(outcome.said, whole.said);
                    EXPECT_TRUE(Output() == output) << "other output";
                } else {
                    EXPECT_EQ(outcome.status, 1);
                    EXPECT_EQ(Output(), "");
                }
                EXPECT_TRUE(folder_.Text() == folder_.TextBefore()) << "the change is not undone";
                ASSERT_FALSE(HasFailure());
                ++tried;
            }
        }
    }
    std::cout << tried << " faults\n";
}

INSTANTIATE_TEST_SUITE_P(Commands, ReadingFaults, testing::ValuesIn(ReadingCommands()),
                         [](const testing::TestParamInfo<ReadingCommand>& tested) {
                             return std::string(tested.param.name);
                         });

}  // namespace
}  // namespace failures
