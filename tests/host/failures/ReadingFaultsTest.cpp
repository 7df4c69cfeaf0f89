#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "CommandFolder.h"
#include "FaultRuns.h"
#include "FaultyFiles.h"
#include "support/FileFormats.h"
#include "support/OutputTo.h"

namespace failures {
namespace {

/// The command whose interrupted change is left in the file of a command that reads it.
const ProgramCommand& ChangeIn(const ProgramCommand& command) {
    return *std::ranges::find(AllCommands(), FormatOf(command).change, &ProgramCommand::name);
}

/// Commands that change nothing themselves, on a file that another command left with a change to be undone.
class ReadingFaults : public testing::TestWithParam<ProgramCommand> {
protected:
    ReadingFaults()
        : change_(ChangeIn(GetParam())),
          folder_(change_),
          there_(folder_.Path()),
          arguments_(ArgumentsIn(folder_.Folder(), GetParam())) {
        UseFaultyFiles(true);
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
        RunHere(change_.arguments);
        const std::uint64_t count = Disarm();
        folder_.Reset();
        Arm(writing, Manner::Gone, count * 3 / 4);
        const Outcome outcome = RunHere(change_.arguments);
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
    /// Runs the command, with its standard output in a file.
    Outcome Run() const {
        const OutputTo output("output");
        return RunHere(arguments_);
    }
    /// What the command wrote outside of "work".
    static Content Output() {
        Content content = ContentOf("out");
        content["standard output"] = ReadWholeFile("output");
        return content;
    }
    static bool HasWritten() {
        return !std::filesystem::is_empty("out") || std::filesystem::file_size("output") > 0;
    }

    const ProgramCommand& change_;
    CommandFolder folder_;
    CurrentFolder there_;
    std::vector<std::string> arguments_;
};

TEST_P(ReadingFaults, LeaveTheChangeToBeUndoneOrUndoIt) {
    folder_.Reset();
    const Outcome whole = Run();
    ASSERT_EQ(whole.status, 0) << whole.said;
    const Content output = Output();
    ASSERT_NO_FATAL_FAILURE(LeaveHalfAChange());
    std::uint64_t tried = 0;
    for (const FaultKind& kind : FaultKinds()) {
        PutHalfAChange();
        Arm(kind, Manner::Once, 0);
        EXPECT_EQ(Run().said, whole.said);
        const std::uint64_t count = Disarm();
        EXPECT_TRUE(folder_.Bytes() == folder_.BytesBefore()) << "the change was not undone";
        for (const auto& [manner, number] : Failings(count, IsTriedBriefly(GetParam()))) {
            SCOPED_TRACE(NameOfFault(kind, manner, number));
            PutHalfAChange();
            Arm(kind, manner, number);
            const Outcome outcome = Run();
            Disarm();
            SCOPED_TRACE("said: " + outcome.said);
            if (outcome.status == 0) {
                EXPECT_EQ(outcome.said, whole.said);
                EXPECT_TRUE(Output() == output) << "other output";
            } else {
                EXPECT_EQ(outcome.status, GetParam().failure);
                EXPECT_FALSE(HasWritten());
            }
            EXPECT_TRUE(folder_.Text() == folder_.TextBefore()) << "the change is not undone";
            ASSERT_FALSE(HasFailure());
            ++tried;
        }
    }
    EXPECT_GT(tried, 0U);
    std::cout << tried << " faults\n";
}

INSTANTIATE_TEST_SUITE_P(Commands, ReadingFaults,
                         testing::ValuesIn(OneOfEachInASample(CommandsWhere(
                             [](const ProgramCommand& command) { return command.use == FileUse::Reads; }))),
                         [](const testing::TestParamInfo<ProgramCommand>& tested) {
                             return tested.param.name;
                         });

}  // namespace
}  // namespace failures
