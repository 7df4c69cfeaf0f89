#include <EmbeddedConsole.h>
#include <gtest/gtest.h>

#include <string>

#include "module/AttachHandler.h"

// The handler called directly, for what a library that stays loaded never sees.

namespace {

constexpr const char* kWarning = "'KorvaneJson' dll is getting unloaded with application still running!\n";

class AttachHandler : public testing::TestWithParam<bool> {
protected:
    AttachHandler() { PimuSetDLLUnloadWarning(GetParam()); }
    ~AttachHandler() override { PimuSetDLLUnloadWarning(false); }

    /// What the handler writes; it must let the load go on.
    static std::string Written(AttachReason reason, const void* reserved) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(HandleAttach(reason, reserved), 1);
        return testing::internal::GetCapturedStderr();
    }

    static inline const int something = 0;
};

TEST_P(AttachHandler, WarnsOfAnUnloadWhileTheProcessGoesOnWhereThatIsWanted) {
    EXPECT_EQ(Written(AttachReason::kProcessDetach, nullptr), GetParam() ? kWarning : "");
}

TEST_P(AttachHandler, WritesNothingAtTheEndOfTheProcess) {
    EXPECT_EQ(Written(AttachReason::kProcessDetach, &something), "");
}

TEST_P(AttachHandler, WritesNothingForEveryOtherReason) {
    for (const unsigned long reason : {1UL, 2UL, 3UL, 4UL, 1000UL, 0xFFFFFFFFUL}) {
        EXPECT_EQ(Written(static_cast<AttachReason>(reason), nullptr), "") << reason;
        EXPECT_EQ(Written(static_cast<AttachReason>(reason), &something), "") << reason;
    }
}

INSTANTIATE_TEST_SUITE_P(UnloadWarning, AttachHandler, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& wanted) {
                             return wanted.param ? "Wanted" : "NotWanted";
                         });

}  // namespace
