#include <EmbeddedOddAnswers.h>
#include <EmbeddedRecording.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <string>
#include <vector>

#include "Allocations.h"
#include "Functions.h"
#include "support/LongRun.h"

namespace {

using allocations::Source;
using korvane::OddAnswer;

/// An exception that neither the library nor libjson knows.
struct Refusal {
    int operation;
    std::string text;
};

std::exception_ptr RefusalOf(int operation) {
    return std::make_exception_ptr(Refusal{operation, "the suite refuses " + std::to_string(operation)});
}

/// What the object model is asked in a call, to its end or to where it throws.
struct Attempt {
    std::vector<std::string> notes;
    bool wasThrown = false;
};

class ExceptionFromOutside : public testing::TestWithParam<Function> {
protected:
    ExceptionFromOutside() { allocations::CountOperatorNew(); }

    Attempt Call(Scene& scene, int throwingOperation);
    /// Lets one operation throw, counted from 0; false when there are fewer.
    bool Try(int operation);

    const Function function_ = GetParam();
    const allocations::LibjsonFunctions counted_;
    std::vector<std::string> all_;
    std::string expected_;
};

Attempt ExceptionFromOutside::Call(Scene& scene, int throwingOperation) {
    Attempt attempt;
    const std::exception_ptr refusal = RefusalOf(throwingOperation);
    const OddAnswer odd("", {.throws = true, .exception = refusal, .after = throwingOperation});
    korvane::StartRecording();
    try {
        function_.call(scene);
    } catch (const Refusal& caught) {
        attempt.wasThrown = true;
        EXPECT_EQ(caught.operation, throwingOperation);
        EXPECT_EQ(caught.text, "the suite refuses " + std::to_string(throwingOperation));
    }
    attempt.notes = korvane::TakeRecording();
    EXPECT_EQ(attempt.wasThrown, odd.TimesGiven() == 1);
    return attempt;
}

bool ExceptionFromOutside::Try(int operation) {
    Scene scene(TheMaterial(), function_.needs);
    const std::string before = scene.NodesAsText();
    scene.Begin();
    const Attempt attempt = Call(scene, operation);
    // In the order of a call that succeeds, up to the operation that threw, and nothing behind it.
    EXPECT_TRUE(attempt.notes.size() <= all_.size() &&
                std::equal(attempt.notes.begin(), attempt.notes.end(), all_.begin()));
    EXPECT_EQ(attempt.notes.size(), std::min(all_.size(), static_cast<std::size_t>(operation) + 1));
    EXPECT_TRUE(scene.NodesAsText() == before);
    ExpectWhole(scene);
    if (!attempt.wasThrown || function_.isRepeatable) {
        if (attempt.wasThrown) {
            scene.Begin();
            function_.call(scene);
        }
        EXPECT_TRUE(function_.outcome(scene) == expected_);
    }
    return attempt.wasThrown;
}

TEST_P(ExceptionFromOutside, OfAnyOperationPassesThroughAndCostsNothing) {
    {
        Scene scene(TheMaterial(), function_.needs);
        scene.Begin();
        korvane::StartRecording();
        function_.call(scene);
        all_ = korvane::TakeRecording();
        expected_ = function_.outcome(scene);
    }
    // Fills what is kept for the life of the process.
    Try(0);
    const std::size_t newInUse = allocations::InUse(Source::kNew);
    const std::size_t libjsonInUse = allocations::InUse(Source::kLibjson);
    const int step = IsLongRun() ? 1 : kIsSanitized ? 41 : kIsSample ? 17 : 5;
    for (int operation = 0; Try(operation); operation += step) {
        ASSERT_EQ(allocations::InUse(Source::kNew), newInUse) << "leaked at operation " << operation;
        ASSERT_EQ(allocations::InUse(Source::kLibjson), libjsonInUse) << "leaked at operation " << operation;
        ASSERT_FALSE(HasFailure()) << "at operation " << operation;
    }
    RecordProperty("operations", static_cast<int>(all_.size()));
}

/// Those of the functions that ask the object model.
std::vector<Function> FunctionsThatAsk() {
    std::vector<Function> asking;
    for (const Function& function : Functions()) {
        if (function.asks == Asks::kObjectModel) {
            asking.push_back(function);
        }
    }
    return asking;
}

INSTANTIATE_TEST_SUITE_P(, ExceptionFromOutside, testing::ValuesIn(FunctionsThatAsk()),
                         [](const testing::TestParamInfo<Function>& parameter) {
                             return std::string(parameter.param.name);
                         });

}  // namespace
