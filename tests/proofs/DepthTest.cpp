#include <EmbeddedOddAnswers.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "Allocations.h"
#include "Functions.h"
#include "support/LongRun.h"
#include "support/ProcessorTime.h"
#include "support/SmallStack.h"

namespace {

using allocations::Source;

constexpr int kFew = 200;
/// How deep the trees are; where there are several sizes, each is ten times the one before.
std::vector<int> Levels() {
    constexpr int kMany = 20'000;
    if (kIsSanitized) {
        return {IsLongRun() ? kMany : kMany / 5};
    }
    return IsLongRun() ? std::vector<int>{100'000, 1'000'000}
                       : std::vector<int>{kIsSample ? kMany / 2 : kMany};
}

/// What a call takes and gives.
struct Effort {
    /// Of the object model.
    long long operations = 0;
    long long allocations = 0;
    /// Openings, separators and lines in what it gave.
    long long marks = 0;
    /// The names of levels in what it gave.
    long long names = 0;
    ProcessorTime time = {};
};

long long AllocationsSoFar() {
    const std::size_t calls = allocations::Calls(Source::kNew) + allocations::Calls(Source::kLibjson);
    return static_cast<long long>(calls);
}

long long CountIn(std::string_view text, std::string_view word) {
    long long count = 0;
    for (std::size_t at = text.find(word); at != std::string_view::npos;
         at = text.find(word, at + word.size())) {
        ++count;
    }
    return count;
}

/// The call with everything around it, the making and the release of what it works on too, on a small stack.
Effort EffortOf(const Function& function, Shape shape, int levels) {
    Effort effort;
    OnSmallStack([&] {
        Scene scene(Deep(shape, levels), function.needs);
        scene.Begin();
        {
            // Counts, and never throws.
            const korvane::OddAnswer counter("", {.throws = true, .after = std::numeric_limits<int>::max()});
            const long long before = AllocationsSoFar();
            const ProcessorTime start = ProcessorTimeSoFar();
            function.call(scene);
            effort.time = ProcessorTimeSoFar() - start;
            effort.allocations = AllocationsSoFar() - before;
            effort.operations = counter.TimesLeftOut();
        }
        const std::string outcome = function.outcome(scene);
        for (const std::string_view mark : {"{", "[", ",", "\n"}) {
            effort.marks += CountIn(outcome, mark);
        }
        effort.names = CountIn(outcome, kNameOfLevel);
        if (function.expectInnermost != nullptr) {
            function.expectInnermost(scene);
        }
    });
    return effort;
}

/// What the effort for so many levels is when each level takes as much as the ones of few levels do.
long long Extrapolated(long long few, long long twice, int levels) {
    return few + (twice - few) * (levels / kFew - 1);
}

struct Descent {
    const Function* function;
    Shape shape;
};

std::string NameOf(Shape shape) {
    switch (shape) {
        case Shape::kChildren:
            return "Children";
        case Shape::kArrays:
            return "Arrays";
        case Shape::kMetadata:
            return "Metadata";
        default:
            return "Mixed";
    }
}

std::string NameOf(const Descent& tried) {
    return std::string(tried.function->name) + "_" + NameOf(tried.shape);
}

void PrintTo(const Descent& tried, std::ostream* out) {
    *out << NameOf(tried);
}

class DeepCall : public testing::TestWithParam<Descent> {
protected:
    DeepCall() { allocations::CountOperatorNew(); }

    const allocations::LibjsonFunctions counted_;
};

TEST_P(DeepCall, NeedsNoStackAndTheSameForEveryLevel) {
    const auto& [function, shape] = GetParam();
    const Reach reach = function->reaches.ofShapes[static_cast<std::size_t>(shape)];
    // Fills what is kept for the life of the process.
    EffortOf(*function, shape, kFew);
    const Effort few = EffortOf(*function, shape, kFew);
    const Effort twice = EffortOf(*function, shape, 2 * kFew);
    std::optional<ProcessorTime> timeOfTenth;
    for (const int levels : Levels()) {
        const Effort deep = EffortOf(*function, shape, levels);
        EXPECT_EQ(deep.operations, Extrapolated(few.operations, twice.operations, levels));
        EXPECT_EQ(deep.marks, Extrapolated(few.marks, twice.marks, levels));
        EXPECT_EQ(deep.names, static_cast<long long>(reach.ofEachLevel) * levels + reach.ofAll);
        // Identifiers with more digits make longer texts, and lists that grow in steps ask less often: less
        // than twice as much either way, where a step that went through all levels would take thousands of
        // times as much.
        EXPECT_LE(deep.allocations, Extrapolated(few.allocations, twice.allocations, levels) * 2 + 100);
        if (timeOfTenth) {
            EXPECT_LE(deep.time.count(), MostForTenTimesAsMuch(*timeOfTenth).count());
        }
        timeOfTenth = deep.time;
        RecordProperty("milliseconds_" + std::to_string(levels), static_cast<int>(deep.time.count()));
    }
}

std::vector<Descent> Descents() {
    std::vector<Descent> descents;
    for (const Function& function : Functions()) {
        // Reports and texts are walked from one end to the other, whatever they are about.
        const bool hasShape = function.needs != Needs::kReports && function.needs != Needs::kText;
        for (const Shape shape : {Shape::kChildren, Shape::kArrays, Shape::kMetadata, Shape::kMixed}) {
            if (hasShape || shape == Shape::kChildren) {
                descents.push_back({&function, shape});
            }
        }
    }
    return descents;
}

INSTANTIATE_TEST_SUITE_P(, DeepCall, testing::ValuesIn(Descents()),
                         [](const testing::TestParamInfo<Descent>& parameter) {
                             return NameOf(parameter.param);
                         });

}  // namespace
