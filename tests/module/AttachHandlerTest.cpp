#include <EmbeddedConsole.h>
#include <gtest/gtest.h>
#include <korvanejson/Module.h>

#include <cstdarg>
#include <string>
#include <vector>

#include "ImportSwap.h"
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

/// How the system was asked to pin the library.
struct PinCall {
    DWORD flags;
    LPCWSTR address;
    HMODULE handle;
};
std::vector<PinCall> pinCalls;

BOOL WINAPI RefuseToPin(DWORD flags, LPCWSTR address, HMODULE* handle) {
    pinCalls.push_back({flags, address, *handle});
    return FALSE;
}

TEST(AttachHandlerPins, AtTheAttachmentOfEveryProcessAndThreadAndGoesOnWhereThatFails) {
    const ImportSwap swap(&GetModuleHandleExW, &RefuseToPin);
    for (const unsigned long reason : {0UL, 1UL, 2UL, 3UL, 4UL}) {
        pinCalls.clear();
        EXPECT_EQ(HandleAttach(static_cast<AttachReason>(reason), nullptr), 1) << reason;
        EXPECT_EQ(pinCalls.size(), reason == 1 || reason == 2 ? 1U : 0U) << reason;
        for (const PinCall& call : pinCalls) {
            EXPECT_EQ(call.flags, 5U);
            EXPECT_EQ(call.address, reinterpret_cast<LPCWSTR>(&__localFnToKeepKorvaneJsonDllLoaded));
            EXPECT_EQ(call.handle, nullptr);
        }
    }
}

/// What was given to the console.
struct Message {
    _PimuMessageType type;
    std::wstring format;
    std::wstring argument;
};
std::vector<Message> messages;

void NoteMessage(_PimuMessageType type, const wchar_t* format, ...) {
    // NOLINTNEXTLINE(cppcoreguidelines-init-variables): va_start does that.
    std::va_list arguments;
    va_start(arguments, format);
    messages.push_back({type, format, va_arg(arguments, const wchar_t*)});
    va_end(arguments);
}

TEST(AttachHandlerWarns, WithTheFormatAndTheNameOfTheLibrary) {
    const ImportSwap swap(&PimuWriteConsoleMessage, &NoteMessage);
    PimuSetDLLUnloadWarning(true);
    HandleAttach(AttachReason::kProcessDetach, nullptr);
    PimuSetDLLUnloadWarning(false);
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].type, 0);
    EXPECT_EQ(messages[0].format, L"'%s' dll is getting unloaded with application still running!");
    EXPECT_EQ(messages[0].argument, L"KorvaneJson");
}

}  // namespace
