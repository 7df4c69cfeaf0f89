#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <iterator>
#include <string_view>

#include "Failures.h"
#include "ProgramState.h"
#include "host/system/TemporaryFile.h"

namespace exhaustion {
namespace {

/// The commands that write a file with -o, with and without files that have no names.
struct Writing {
    ProgramCommand command;
    bool hasUnnamedFiles;
};

std::ostream& operator<<(std::ostream& stream, const Writing& writing) {
    return stream << writing.command << (writing.hasUnnamedFiles ? "" : "ThroughName");
}

std::vector<Writing> AllWriting() {
    std::vector<Writing> found;
    for (const ProgramCommand& command : AllCommands()) {
        // The keys of a new database, and so the answer, differ from run to run.
        const bool isRandom = command.file == "s.db" && !command.HasFile();
        if (!isRandom && std::ranges::find(command.arguments, "-o") != command.arguments.end()) {
            found.push_back({command, true});
            found.push_back({command, false});
        }
    }
    return found;
}

class OutputFailure : public testing::TestWithParam<Writing> {
protected:
    void SetUp() override {
        for (const char* const name : {"out/document.json", "out/answer.json"}) {
            ASSERT_EQ(::chmod((state.Folder() / name).c_str(), 0600), 0);
        }
        target = GetParam().command.arguments.back();
        before = OutOf(state.Before());
        SharedCounts().fileCalls = 0;
        wanted = Run({0, false, Outcome::Fails});
        ASSERT_EQ(wanted.status, 0) << wanted.error;
        calls = SharedCounts().fileCalls;
        ASSERT_GT(calls, 3);
        after = OutOf(ContentOf(state.Folder()));
        state.Restore();
    }

    /// What is in the folder that is written to.
    static Content OutOf(const Content& content) {
        Content out;
        std::ranges::copy_if(content, std::inserter(out, out.end()),
                             [](const auto& file) { return file.first.starts_with("out/"); });
        return out;
    }

    void PlanCalls(Plan plan) {
        plan.hasUnnamedFiles = GetParam().hasUnnamedFiles;
        // A new file is as private as an old one, which does not depend on this.
        ::umask(before.contains(target) ? 0 : 0077);
        PlanFileCalls(plan);
    }

    ProcessResult Run(const Plan& plan) {
        return state.Run([&] { PlanCalls(plan); });
    }

    /// The folder without a file that could not be removed, which the next run does.
    static Content WithoutUnremoved(const Content& out) {
        Content rest;
        std::ranges::copy_if(out, std::inserter(rest, rest.end()), [](const auto& file) {
            return !SharedCounts().isRemovalRefused ||
                   !host::IsTemporaryName(file.first.substr(file.first.find('/') + 1));
        });
        return rest;
    }

    /// Calls `check` after every run that fails at one of the operations.
    template <typename Check>
    void TryAll(bool forGood, Outcome outcome, const Check& check) {
        for (long number = 1; number <= calls; ++number) {
            SCOPED_TRACE("operation " + std::to_string(number));
            SharedCounts().fileCalls = 0;
            SharedCounts().reason = 0;
            SharedCounts().isRemovalRefused = false;
            const ProcessResult result = Run({number, forGood, outcome});
            SCOPED_TRACE("status " + std::to_string(result.status) + ": " + result.error);
            check(result, WithoutUnremoved(OutOf(ContentOf(state.Folder()))));
            state.Restore();
        }
    }

    ProgramState state{GetParam().command};
    std::string target;
    ProcessResult wanted;
    long calls = 0;
    Content before;
    Content after;
};

TEST_P(OutputFailure, LeavesTheOldOrTheNewFileAndSaysWhich) {
    bool hasFailed = false;
    for (const bool forGood : {false, true}) {
        TryAll(forGood, Outcome::Fails, [&](const ProcessResult& result, const Content& out) {
            if (result.status == 0) {
                // There is another way to give a file its name, but not to write it.
                EXPECT_NE(SharedCounts().reason, ENOSPC);
                EXPECT_TRUE(out == after);
                EXPECT_EQ(result.error, wanted.error);
                return;
            }
            hasFailed = true;
            EXPECT_EQ(result.status, GetParam().command.arguments.front() == "store" ? 3 : 1);
            EXPECT_TRUE(out == before);
            EXPECT_NE(result.error.find("cannot write '" + target + "': "), std::string::npos);
            EXPECT_EQ(result.error.find("The old file was kept") != std::string::npos,
                      before.contains(target));
        });
    }
    EXPECT_TRUE(hasFailed);
}

TEST_P(OutputFailure, WritesOnAfterShortWrites) {
    for (const bool forGood : {false, true}) {
        TryAll(forGood, Outcome::WritesHalf, [&](const ProcessResult& result, const Content& out) {
            EXPECT_EQ(result.status, 0);
            EXPECT_TRUE(out == after);
        });
    }
}

TEST_P(OutputFailure, AKillLeavesTheOldOrTheNewFileAndTheNextRunRemovesTheRest) {
    for (long number = 1; number <= calls; ++number) {
        SCOPED_TRACE("operation " + std::to_string(number));
        SharedCounts().fileCalls = 0;
        const ProcessResult killed = Run({number, false, Outcome::Killed});
        EXPECT_EQ(killed.status, -SIGKILL);
        Content out = OutOf(ContentOf(state.Folder()));
        EXPECT_TRUE(out[target] == before[target] || out[target] == after[target]);
        EXPECT_LE(out.size(), before.size() + 1);
        EXPECT_EQ(state.RunAgain([&] { PlanCalls({}); }).status, 0);
        EXPECT_TRUE(OutOf(ContentOf(state.Folder())) == after);
        state.Restore();
    }
}

TEST_P(OutputFailure, ASignalEndsTheProgramAndLeavesNothing) {
    TryAll(false, Outcome::Terminated, [&](const ProcessResult& result, const Content& out) {
        EXPECT_EQ(result.status, -SIGTERM);
        EXPECT_EQ(result.error.find("cannot write"), std::string::npos);
        EXPECT_TRUE(out == before || out == after);
    });
}

TEST_P(OutputFailure, OtherRunsLeaveWhatIsBeingWritten) {
    TryAll(false, Outcome::CleanedUp, [&](const ProcessResult& result, const Content& out) {
        EXPECT_EQ(result.status, 0);
        EXPECT_TRUE(out == after);
    });
}

TEST_P(OutputFailure, ALimitForTheSizeOfFilesIsAnErrorAndNotTheEnd) {
    const ProcessResult result = state.Run([] {
        rlimit narrow{};
        ::getrlimit(RLIMIT_FSIZE, &narrow);
        narrow.rlim_cur = 100;
        ::setrlimit(RLIMIT_FSIZE, &narrow);
    });
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(ContentOf(state.Folder()) == state.Before());
}

/// No operation leaves a file, under any name, that others may read.
TEST_P(OutputFailure, APrivateFileIsPrivateAtEveryMoment) {
    for (long number = 1; number <= calls; ++number) {
        SCOPED_TRACE("operation " + std::to_string(number));
        SharedCounts().fileCalls = 0;
        Run({number, false, Outcome::Killed});
        for (const auto& entry : std::filesystem::directory_iterator(state.Folder() / "out")) {
            EXPECT_EQ(entry.status().permissions() & std::filesystem::perms(0077),
                      std::filesystem::perms::none)
                << entry.path();
        }
        state.Restore();
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, OutputFailure, testing::ValuesIn(AllWriting()), [](const auto& writing) {
    return writing.param.command.name + std::string(writing.param.hasUnnamedFiles ? "" : "ThroughName");
});

}  // namespace
}  // namespace exhaustion
