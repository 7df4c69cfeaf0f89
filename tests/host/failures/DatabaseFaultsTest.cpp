#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <vector>

#if !defined(_WIN32)
#include <sys/wait.h>
#include <unistd.h>
#endif

#include "CommandFolder.h"
#include "FaultRuns.h"
#include "FaultyFiles.h"

namespace failures {
namespace {

/// How many operations of the kind the command needs if nothing fails.
std::uint64_t CountOperations(const CommandFolder& folder, const FaultKind& kind) {
    folder.Reset();
    Arm(kind, Manner::Once, 0);
    EXPECT_EQ(RunHere(folder.Arguments()).status, 0);
    return Disarm();
}

/// Runs the commands within this process, where their files can fail.
class DatabaseFaults : public testing::TestWithParam<std::tuple<ProgramCommand, bool>> {
protected:
    DatabaseFaults() : folder_(std::get<0>(GetParam())), there_(folder_.Path()) {
        UseFaultyFiles(std::get<1>(GetParam()));
    }

    Outcome Run() const { return RunHere(folder_.Arguments()); }

    /// Runs it with the fault, and returns whether the fault came to pass.
    bool RunWithFault(const FaultKind& kind, Manner manner, std::uint64_t number, Outcome& outcome) const {
        folder_.Reset();
        Arm(kind, manner, number);
        outcome = Run();
        return Disarm() >= number;
    }

    CommandFolder folder_;
    CurrentFolder there_;
};

TEST_P(DatabaseFaults, LeaveTheOldFileOrTheNewOneAndSayWhich) {
    std::uint64_t tried = 0;
    std::uint64_t failed = 0;
    const auto& [command, isCacheSmall] = GetParam();
    const bool isBrief = IsTriedBriefly(command) || (kIsSample && isCacheSmall && !IsLongRun());
    for (const FaultKind& kind : FaultKinds()) {
        const std::uint64_t count = CountOperations(folder_, kind);
        for (const auto& [manner, number] : Failings(count, isBrief)) {
            SCOPED_TRACE(NameOfFault(kind, manner, number));
            Outcome outcome;
            const bool isReached = RunWithFault(kind, manner, number, outcome);
            SCOPED_TRACE("status " + std::to_string(outcome.status) + ", said: " + outcome.said +
                         "there: " + folder_.Names());
            EXPECT_EQ(folder_.Untruth(outcome.status, outcome.said), "");
            if (!isReached) {
                EXPECT_EQ(outcome.status, 0);
            }
            ++tried;
            failed += outcome.status != 0 ? 1 : 0;
            ASSERT_FALSE(HasFailure());
        }
    }
    EXPECT_GT(4 * failed, tried);
    std::cout << tried << " faults, " << failed << " failures reported\n";
}

#if !defined(_WIN32)

TEST_P(DatabaseFaults, OfAProcessThatEndsLeaveTheOldFileOrTheNewOne) {
    const std::vector<FaultKind> kinds = {
        {"end",
         {Operation::Open, Operation::Write, Operation::Sync, Operation::Truncate, Operation::Delete},
         0},
        {"end in the middle of writing", {Operation::Write}, 0, FaultKind::Done::Half},
        {"end after deleting", {Operation::Delete}, 0, FaultKind::Done::All},
    };
    std::uint64_t tried = 0;
    for (const FaultKind& kind : kinds) {
        for (const std::uint64_t number : Moments(CountOperations(folder_, kind))) {
            folder_.Reset();
            const pid_t child = ::fork();
            if (child == 0) {
                Arm(kind, Manner::Stop, number);
                Run();
                std::_Exit(0);
            }
            int status = 0;
            EXPECT_EQ(::waitpid(child, &status, 0), child);
            const bool isStopped = WIFEXITED(status) && WEXITSTATUS(status) == kStopped;
            EXPECT_TRUE(isStopped || status == 0) << status;
            EXPECT_EQ(folder_.OpenWithProgram(), "") << kind.name << " " << number;
            const std::string text = folder_.Text();
            EXPECT_TRUE(text == folder_.TextAfter() || (isStopped && text == folder_.TextBefore()))
                << kind.name << " " << number << ": " << text.substr(0, 200);
            ++tried;
            ASSERT_FALSE(HasFailure());
        }
    }
    EXPECT_GT(tried, kIsSanitized ? 5U : 10U);
    std::cout << tried << " ends\n";
}

#endif

INSTANTIATE_TEST_SUITE_P(Commands, DatabaseFaults,
                         testing::Combine(testing::ValuesIn(ChangingCommands()), testing::Bool()),
                         [](const testing::TestParamInfo<std::tuple<ProgramCommand, bool>>& tested) {
                             return std::get<0>(tested.param).name +
                                    (std::get<1>(tested.param) ? "WithASmallCache" : "");
                         });

class SmallCaches : public testing::TestWithParam<ProgramCommand> {};

/// What a cache cannot keep is written before the end of the change, and again when it changes later.
TEST_P(SmallCaches, MakeCommandsWriteBeforeTheEnd) {
    const CommandFolder folder(GetParam());
    const CurrentFolder there(folder.Path());
    const FaultKind writing{"write", {Operation::Write}, 0};
    UseFaultyFiles(false);
    const std::uint64_t writes = CountOperations(folder, writing);
    UseFaultyFiles(true);
    EXPECT_GT(CountOperations(folder, writing), writes);
}

INSTANTIATE_TEST_SUITE_P(Commands, SmallCaches, testing::ValuesIn(ChangingCommands()),
                         [](const testing::TestParamInfo<ProgramCommand>& tested) {
                             return tested.param.name;
                         });

}  // namespace
}  // namespace failures
