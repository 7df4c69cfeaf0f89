#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>

#include "Failures.h"
#include "ProgramState.h"
#include "support/LongRun.h"

namespace exhaustion {
namespace {

/// The answer of every `store`.
constexpr const char* kAnswer = "out/answer.json";

/// What a run without failures does.
struct Undisturbed {
    ProcessResult result;
    Content after;
    /// What is in the files whose bytes differ from run to run, by their names.
    std::map<std::string, std::string> texts;
    long allocations = 0;
};

class AllocationFailure : public testing::TestWithParam<ProgramCommand> {
protected:
    Undisturbed RunUndisturbed() {
        Undisturbed run;
        for (int time = 0; time < 2; ++time) {
            SharedCounts().allocations = 0;
            run.result = state.Run([] { PlanAllocations({}); });
            run.allocations = SharedCounts().allocations;
            const Content after = ContentOf(state.Folder());
            for (const auto& [name, bytes] : time == 0 ? Content() : after) {
                if (run.after[name] != bytes) {
                    run.texts[name] = state.TextOf(name);
                }
            }
            run.after = after;
            state.Restore();
        }
        return run;
    }

    /// Whether the command changes a file and writes its report where others write documents.
    static bool HasReportOnOutput() {
        return GetParam().IsChanging() &&
               std::ranges::find(GetParam().arguments, "--format") != GetParam().arguments.end();
    }

    /// Whether the file is as the undisturbed run left it.
    bool IsNew(const Undisturbed& wanted, const std::string& name, const Content& after) const {
        const auto text = wanted.texts.find(name);
        return text != wanted.texts.end() ? state.TextOf(name) == text->second
                                          : after.at(name) == wanted.after.at(name);
    }

    /// The document was stored, and storing it again gives the answer.
    void ExpectAnswerAgain(const Undisturbed& wanted) const {
        const ProcessResult again = state.RunAgain([] {});
        EXPECT_EQ(again.status, 0) << again.error;
        EXPECT_TRUE(IsNew(wanted, kAnswer, ContentOf(state.Folder()))) << "another answer";
    }

    /// The work was done: every file is as it should be then.
    void ExpectDone(const Undisturbed& wanted, const ProcessResult& result, const Content& after) const {
        // A report on the standard output is what status 3 says is missing.
        if (result.status == 0 || !HasReportOnOutput()) {
            EXPECT_EQ(result.output, wanted.result.output);
        } else {
            EXPECT_EQ(result.output, "");
        }
        ASSERT_TRUE(std::ranges::equal(after, wanted.after, {}, &Content::value_type::first,
                                       &Content::value_type::first))
            << "a file is missing or was left over";
        const bool mayLackAnswer = result.status == 3 && GetParam().arguments.front() == "store";
        for (const auto& [name, bytes] : wanted.after) {
            const bool isOldAnswer =
                mayLackAnswer && name == kAnswer && after.at(name) == state.Before().at(name);
            EXPECT_TRUE(isOldAnswer || IsNew(wanted, name, after)) << name;
        }
        if (mayLackAnswer) {
            ExpectAnswerAgain(wanted);
        }
    }

    static void ExpectMessages(const std::string& error) {
        EXPECT_FALSE(error.empty());
        std::istringstream lines(error);
        for (std::string line; std::getline(lines, line);) {
            EXPECT_TRUE(line.starts_with("korvane-json: ")) << line;
        }
    }

    /// Runs the command with the failure and expects one of the documented ends.
    void Try(const Undisturbed& wanted, const Plan& plan) {
        SCOPED_TRACE("allocation " + std::to_string(plan.first) +
                     (plan.forGood ? " and all later ones" : ""));
        SharedCounts().allocations = 0;
        const ProcessResult result = state.Run([&] { PlanAllocations(plan); });
        SCOPED_TRACE("status " + std::to_string(result.status) + ": " + result.error);
        const Content after = ContentOf(state.Folder());
        if (result.status == 0) {
            EXPECT_EQ(result.error, wanted.result.error);
            ExpectDone(wanted, result, after);
        } else if (result.status == 3) {
            ExpectMessages(result.error);
            EXPECT_NE(result.error.find(" was "), std::string::npos);
            ExpectDone(wanted, result, after);
        } else {
            EXPECT_EQ(result.status, GetParam().failure);
            ExpectMessages(result.error);
            EXPECT_EQ(result.output, "");
            EXPECT_TRUE(after == state.Before()) << "files were changed";
        }
        state.Restore();
    }

    ProgramState state{GetParam()};
};

/// The allocations that are tried: all of them at the beginning and at the end, where a command opens and
/// finishes its files, and a sample of the others.
std::set<long> Tried(long count, bool isBrief) {
    const long whole = IsLongRun() ? 1000 : isBrief ? 4 : 10;
    const long atEnd = IsLongRun() ? 200 : isBrief ? 10 : 25;
    const long samples = IsLongRun() ? 500 : isBrief ? 12 : 40;
    std::set<long> tried;
    for (long number = 1; number <= count; ++number) {
        if (number <= whole || number > count - atEnd ||
            number * samples / count != (number - 1) * samples / count) {
            tried.insert(number);
        }
    }
    return tried;
}

TEST_P(AllocationFailure, EndsWithAMessageAndWholeFiles) {
    const Undisturbed wanted = RunUndisturbed();
    ASSERT_EQ(wanted.result.status, 0) << wanted.result.error;
    ASSERT_GT(wanted.allocations, 100);
    for (const long number : Tried(wanted.allocations, IsTriedBriefly(GetParam()))) {
        for (const bool forGood : {false, true}) {
            Try(wanted, {number, forGood});
            ASSERT_FALSE(HasFatalFailure());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, AllocationFailure, testing::ValuesIn(AllCommands()),
                         [](const auto& command) { return command.param.name; });

}  // namespace
}  // namespace exhaustion
