#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cwchar>
#include <string>
#include <thread>
#include <vector>

#include "EmbeddedConsole.h"
#include "PimuUtil.h"

namespace {

template <typename... Arguments>
std::string Written(const wchar_t* format, Arguments... arguments) {
    testing::internal::CaptureStderr();
    PimuWriteConsoleMessage(PIMU_MESSAGE_NORMAL, format, arguments...);
    return testing::internal::GetCapturedStderr();
}

TEST(PimuUtil, WarnsOfNoUnloadingUnlessAskedTo) {
    EXPECT_FALSE(PimuIsDLLUnloadWarningEnabled());
    PimuSetDLLUnloadWarning(true);
    EXPECT_TRUE(PimuIsDLLUnloadWarningEnabled());
    PimuSetDLLUnloadWarning(false);
    EXPECT_FALSE(PimuIsDLLUnloadWarningEnabled());
}

TEST(PimuUtil, WritesOneLineToStandardError) {
    EXPECT_EQ(Written(L"'%s' dll is getting unloaded with application still running!", L"KorvaneJson"),
              "'KorvaneJson' dll is getting unloaded with application still running!\n");
}

TEST(PimuUtil, WritesNothingToStandardOutput) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(Written(L"text"), "text\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(PimuUtil, FormatsAsTheStringDoes) {
    EXPECT_EQ(Written(L"%s|%S|%5d|%%|%.1f", L"wide", "narrow", 7, 0.5), "wide|narrow|    7|%|0.5\n");
    EXPECT_EQ(Written(L""), "\n");
    EXPECT_EQ(Written(L"wrong %y"), "\n");
    EXPECT_EQ(Written(nullptr), "\n");
}

TEST(PimuUtil, WritesTheTextInTheAnsiCodePageWhateverTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"C", "C.UTF-8"}) {
        std::setlocale(LC_ALL, locale);
        EXPECT_EQ(Written(L"\u00FC %s", L"\u65E5\u672C"), "\xC3\xBC \xE6\x97\xA5\xE6\x9C\xAC\n") << locale;
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(PimuUtil, KeepsNulCharactersOfTheText) {
    EXPECT_EQ(Written(L"%ca%cb%c", 0, 0, 0), std::string("\0a\0b\0\n", 6));
}

TEST(PimuUtil, WritesLinesOfAnyLength) {
    const std::wstring text(100000, L'x');
    EXPECT_EQ(Written(L"%s", text.c_str()), std::string(100000, 'x') + "\n");
}

TEST(PimuUtil, WritesMessagesOfEveryTypeAlike) {
    for (const int type : {0, 1, 2, 17, -1}) {
        testing::internal::CaptureStderr();
        PimuWriteConsoleMessage(static_cast<_PimuMessageType>(type), L"type %d", type);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "type " + std::to_string(type) + "\n");
    }
}

TEST(PimuUtil, WritesBehindWhatTheStreamStillHolds) {
    testing::internal::CaptureStderr();
    std::fputs("first ", stderr);
    PimuWriteConsoleMessage(PIMU_MESSAGE_WARNING, L"second");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "first second\n");
}

TEST(PimuUtil, WritesWholeLinesFromSeveralThreads) {
    testing::internal::CaptureStderr();
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([] {
            for (int line = 0; line < 100; ++line) {
                PimuWriteConsoleMessage(PIMU_MESSAGE_NORMAL, L"%s", L"one whole line");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::string expected;
    for (int line = 0; line < 400; ++line) {
        expected += "one whole line\n";
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), expected);
}

// Last, because a stream never loses its orientation.
TEST(PimuUtilOrientation, IsLeftAsItIsAndDoesNotMatter) {
    EXPECT_EQ(Written(L"before"), "before\n");
    std::fwide(stderr, 1);
    EXPECT_EQ(Written(L"wide \u00FC"), "wide \xC3\xBC\n");
#if !defined(_WIN32)
    EXPECT_GT(std::fwide(stderr, 0), 0);
#endif
}

}  // namespace
