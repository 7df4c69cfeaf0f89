#include <EmbeddedRestore.h>
#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "Allocations.h"
#include "Functions.h"
#include "support/LongRun.h"

namespace {

using allocations::Failing;
using allocations::Source;
using allocations::Times;

/// Holds every node that libjson has ready, of all sizes: the next one needs a new block.
class EverySpareNode {
public:
    EverySpareNode(const EverySpareNode&) = delete;
    EverySpareNode& operator=(const EverySpareNode&) = delete;
    EverySpareNode() {
        nodes_.reserve(kMostNodes);
        const Failing failing(Source::kLibjson, 1, Times::kFromThenOn);
        HoldAll([] { return JSONNode(json_string(), json_string(kSmallestText, 'x')); });
        for (json_index_t capacity = 1; capacity <= kLargestCapacity; ++capacity) {
            HoldAll([capacity] {
                JSONNode list(JSON_ARRAY);
                list.reserve(capacity);
                return list;
            });
        }
    }

private:
    template <typename Make>
    void HoldAll(const Make& make) {
        try {
            while (nodes_.size() < kMostNodes) {
                nodes_.push_back(make());
            }
            ADD_FAILURE() << "there are too many spare nodes to hold them all";
        } catch (const std::bad_alloc&) {
            return;
        }
    }

    static constexpr std::size_t kMostNodes = 1'000'000;
    /// What needs memory at all, and what needs more than libjson has ready for nodes.
    static constexpr std::size_t kSmallestText = 8;
    static constexpr json_index_t kLargestCapacity = 128;
    std::vector<JSONNode> nodes_;
};

struct Case {
    const Function* function;
    Source source;
    Times times;
};

std::string NameOf(const Case& tried) {
    return std::string(tried.function->name) + (tried.source == Source::kNew ? "_New" : "_Libjson") +
           (tried.times == Times::kOnce ? "_Once" : "_FromThenOn");
}

void PrintTo(const Case& tried, std::ostream* out) {
    *out << NameOf(tried);
}

class FailedAllocation : public testing::TestWithParam<Case> {
protected:
    FailedAllocation() { allocations::CountOperatorNew(); }

    /// Calls the function while the n-th allocation fails. True when one did.
    bool Try(std::size_t nth);
    static std::optional<EverySpareNode> HoldSpareNodes() {
        return GetParam().source == Source::kLibjson ? std::optional<EverySpareNode>(std::in_place)
                                                     : std::nullopt;
    }
    /// The next one to fail: all of them, or fewer the further behind.
    static std::size_t Next(std::size_t nth) {
        if (IsLongRun()) {
            return nth + 1;
        }
        const std::size_t all = kIsSanitized ? 10 : kIsSample ? 20 : 60;
        return nth < all ? nth + 1 : nth + nth / (kIsSanitized ? 2 : kIsSample ? 4 : 16);
    }

    const Function& function_ = *GetParam().function;
    const allocations::LibjsonFunctions counted_;
    std::string expected_;
};

bool FailedAllocation::Try(std::size_t nth) {
    Scene scene(TheMaterial(), function_.needs);
    const std::string before = scene.NodesAsText();
    scene.Begin();
    bool hasHappened = false;
    bool wasThrown = false;
    {
        const std::optional<EverySpareNode> spare = HoldSpareNodes();
        const Failing failing(GetParam().source, nth, GetParam().times);
        try {
            function_.call(scene);
        } catch (const std::bad_alloc&) {
            wasThrown = true;
        }
        hasHappened = failing.HasHappened();
    }
    if (wasThrown || !function_.throwsOnItsWay) {
        EXPECT_EQ(wasThrown, hasHappened);
    }
    EXPECT_TRUE(scene.NodesAsText() == before);
    if (wasThrown) {
        ExpectWhole(scene);
        scene.Begin();
        if (function_.isRepeatable) {
            function_.call(scene);
        }
    }
    if (!wasThrown || function_.isRepeatable) {
        EXPECT_TRUE(function_.outcome(scene) == expected_);
    }
    return hasHappened;
}

TEST(Allocations, OfEveryLibraryAreSeen) {
    allocations::CountOperatorNew();
    const allocations::LibjsonFunctions counted;
    const std::size_t newInUse = allocations::InUse(Source::kNew);
    {
        const OuString text(L"in the library of texts");
        EXPECT_EQ(allocations::InUse(Source::kNew), newInUse + 1);
    }
    EXPECT_EQ(allocations::InUse(Source::kNew), newInUse);
    const std::size_t libjsonInUse = allocations::InUse(Source::kLibjson);
    {
        const JSONNode node(json_string(), json_string(5000, 'x'));
        EXPECT_EQ(allocations::InUse(Source::kLibjson), libjsonInUse + 1);
    }
    EXPECT_EQ(allocations::InUse(Source::kLibjson), libjsonInUse);
}

TEST(TheMaterial, DiffersInEveryWay) {
    using korvane::exchange::Reason;
    const korvane::exchange::Report report = TheMaterial().report();
    for (const Reason reason : {Reason::kAdded, Reason::kChanged, Reason::kMoved, Reason::kRemoved}) {
        EXPECT_GT(report.Count(reason), 0U) << NameOf(reason);
    }
}

TEST_P(FailedAllocation, ReachesTheCallerAndCostsNothing) {
    std::size_t all = 0;
    {
        Scene scene(TheMaterial(), function_.needs);
        scene.Begin();
        const std::optional<EverySpareNode> spare = HoldSpareNodes();
        const std::size_t before = allocations::Calls(GetParam().source);
        function_.call(scene);
        all = allocations::Calls(GetParam().source) - before;
        expected_ = function_.outcome(scene);
    }
    // Fills what is kept for the life of the process.
    Try(1);
    const std::size_t newInUse = allocations::InUse(Source::kNew);
    const std::size_t libjsonInUse = allocations::InUse(Source::kLibjson);
    std::size_t failures = 0;
    std::size_t nth = 1;
    while (Try(nth)) {
        ++failures;
        ASSERT_EQ(allocations::InUse(Source::kNew), newInUse) << "leaked at allocation " << nth;
        ASSERT_EQ(allocations::InUse(Source::kLibjson), libjsonInUse) << "leaked at allocation " << nth;
        ASSERT_FALSE(HasFailure()) << "at allocation " << nth;
        nth = Next(nth);
    }
    EXPECT_EQ(failures > 0, all > 0);
    RecordProperty("allocations", static_cast<int>(all));
    RecordProperty("failures", static_cast<int>(failures));
}

/// Makes an object while one allocation after the other fails, and expects that the tree is as it was each
/// time, without an object that hangs nowhere until the project goes.
void ExpectNothingLeftBehind(const std::function<void(TestProject& project)>& make) {
    allocations::CountOperatorNew();
    TestProject project;
    project.Add(CAE_PART, L"Door").setDBKey(L"KEY");
    make(project);
    bool hasHappened = true;
    for (std::size_t nth = 1; hasHappened; ++nth) {
        const std::size_t inUse = allocations::InUse(Source::kNew);
        bool wasThrown = false;
        {
            const Failing failing(Source::kNew, nth, Times::kOnce);
            try {
                make(project);
            } catch (const std::bad_alloc&) {
                wasThrown = true;
            }
            hasHappened = failing.HasHappened();
        }
        EXPECT_EQ(wasThrown, hasHappened);
        if (wasThrown) {
            EXPECT_EQ(allocations::InUse(Source::kNew), inUse) << "at allocation " << nth;
            ExpectWhole(project);
        }
    }
}

TEST(FailedCreation, OfAnObjectLeavesNothingBehind) {
    ExpectNothingLeftBehind([](TestProject& project) {
        int id = 0;
        createCAEObject(&*project, 1, CAE_SUBASSEMBLY, id);
    });
}

TEST(FailedCreation, OfAFileLeavesNothingBehind) {
    ExpectNothingLeftBehind([](TestProject& project) {
        korvane::CreateFile(*project, L"/a.dat", CAE_FILE_MESH, CAE_FORMAT_ASCII);
    });
}

TEST(FailedCreation, OfARestoredObjectLeavesNothingBehind) {
    ExpectNothingLeftBehind([next = 1000](TestProject& project) mutable {
        korvane::RestoreObject(*project, CAE_PART, L"restored", ++next);
    });
}

TEST(FailedCreation, OfARestoredFileLeavesNothingBehind) {
    ExpectNothingLeftBehind(
        [next = 1000](TestProject& project) mutable { korvane::RestoreFile(*project, L"restored", ++next); });
}

TEST(FailedCreation, OfAVersionLeavesNothingBehind) {
    ExpectNothingLeftBehind([next = 0](TestProject& project) mutable {
        project->getCAEObject(2)->createNewVersion(++next, 0, true, false);
    });
}

TEST(FailedRenumbering, LeavesTheObjectUnderItsOldNumber) {
    allocations::CountOperatorNew();
    bool hasHappened = true;
    for (std::size_t nth = 1; hasHappened; ++nth) {
        TestProject project;
        CAEObject& assembly = project.Add(CAE_SUBASSEMBLY, L"Frame");
        assembly.setDBKey(L"KEY");
        bool isDone = false;
        {
            const Failing failing(Source::kNew, nth, Times::kOnce);
            try {
                isDone = korvane::Renumber(assembly, 1'000'000);
            } catch (const std::bad_alloc&) {
                EXPECT_FALSE(isDone);
            }
            hasHappened = failing.HasHappened();
        }
        EXPECT_EQ(isDone, !hasHappened);
        const int expected = isDone ? 1'000'000 : 2;
        EXPECT_EQ(assembly.getID(), expected);
        int found = 0;
        EXPECT_EQ(getMasterAssemblyCAEIDByITEMID(&*project, L"KEY", found), 0);
        EXPECT_EQ(found, expected);
        ExpectWhole(project);
    }
}

std::vector<Case> Cases() {
    std::vector<Case> cases;
    for (const Function& function : Functions()) {
        for (const Source source : {Source::kNew, Source::kLibjson}) {
            for (const Times times : {Times::kOnce, Times::kFromThenOn}) {
                cases.push_back({&function, source, times});
            }
        }
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(, FailedAllocation, testing::ValuesIn(Cases()),
                         [](const testing::TestParamInfo<Case>& parameter) {
                             return NameOf(parameter.param);
                         });

}  // namespace
