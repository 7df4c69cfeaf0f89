#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "OuString.h"

namespace {

/// Runs the body on several threads that begin together.
template <typename Body>
void RunTogether(Body body) {
    constexpr int kThreads = 4;
    std::atomic<int> waiting{kThreads};
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int number = 0; number < kThreads; ++number) {
        threads.emplace_back([&waiting, &body, number] {
            --waiting;
            while (waiting > 0) {
                std::this_thread::yield();
            }
            body(number);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(OuStringThreads, MakesTheAnsiFormOnceForCopiesThatAskTogether) {
    for (int round = 0; round < 300; ++round) {
        const OuString text(L"asked by many \u00FC");
        std::vector<const char*> answers(4);
        std::atomic<int> right{0};
        RunTogether([&text, &answers, &right](int number) {
            // Copies are what is tested.
            const OuString copy(text);
            const char* answer = copy.GetAnsiBuffer();
            right += std::strcmp(answer, "asked by many \xC3\xBC") == 0 ? 1 : 0;
            answers[static_cast<std::size_t>(number)] = answer;
        });
        ASSERT_EQ(right, 4);
        for (const char* answer : answers) {
            ASSERT_EQ(answer, text.GetAnsiBuffer());
        }
    }
}

TEST(OuStringThreads, CopiesChangesAndDestroysCopiesTogether) {
    const OuString text(L"shared text");
    std::atomic<int> right{0};
    RunTogether([&text, &right](int number) {
        bool allRight = true;
        for (int round = 0; round < 5000; ++round) {
            OuString copy(text);
            copy.Append(number % 2 == 0 ? L" even" : L" odd", 0);
            copy.MakeUpper();
            allRight = allRight && copy == (number % 2 == 0 ? L"SHARED TEXT EVEN" : L"SHARED TEXT ODD");
        }
        right += allRight ? 1 : 0;
    });
    EXPECT_EQ(right, 4);
    EXPECT_STREQ(text.GetBuffer(), L"shared text");
}

TEST(OuStringThreads, HandsTheLastReferenceFromThreadToThread) {
    for (int round = 0; round < 300; ++round) {
        std::vector<OuString> copies(4, OuString(L"handed on"));
        RunTogether([&copies](int number) {
            OuString& own = copies[static_cast<std::size_t>(number)];
            own.Append(L"!", 0);
            own.Append(L"!", 0);
        });
        for (const OuString& copy : copies) {
            ASSERT_STREQ(copy.GetBuffer(), L"handed on!!");
        }
    }
}

}  // namespace
