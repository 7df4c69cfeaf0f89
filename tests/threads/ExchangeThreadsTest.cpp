#include <gtest/gtest.h>
#include <korvaneexchange/WriteDocument.h>

#include <array>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "support/ModelBuilders.h"

// What hosts may do with KorvaneExchange on many threads at once, each on a tree of its own. Under the thread
// sanitizer these tests also see what gives the right result by luck.

using korvane::exchange::ExportMode;
using korvane::exchange::Layout;
using korvane::exchange::WriteDocument;

namespace {

constexpr int kThreads = 6;
constexpr int kRounds = 40;
constexpr ExportMode kModes[] = {ExportMode::kEverything, ExportMode::kProject, ExportMode::kStudy};

/// Only the number distinguishes the trees.
void Fill(TestProject& project, int number) {
    SetMetadata(*project, L"Number", std::to_wstring(number).c_str());
    project.Add(CAE_FILE, L"note.txt");
    for (int run = 0; run < 20; ++run) {
        CAEObject& iteration = project.Add(CAE_ITERATION, L"run \u00FC");
        project.Add(iteration, CAE_ITERATION_MODEL, L"model");
        CAEObject& part = project.Add(iteration, CAE_PART, L"part");
        project.AddFile(part, L"part.step", CAE_FILE_CAD);
    }
}

/// Modes and layouts take turns.
std::string TextOf(TestProject& project, int number) {
    std::string text;
    WriteDocument(
        *project,
        {.mode = kModes[number % 3], .layout = number % 2 == 0 ? Layout::kCompact : Layout::kIndented},
        [&text](std::string_view page) { text += page; });
    return text;
}

std::string TextAlone(int number) {
    TestProject project;
    Fill(project, number);
    return TextOf(project, number);
}

}  // namespace

TEST(ExchangeThreads, WriteInDifferentModesAtOnce) {
    std::array<std::vector<std::string>, kThreads> texts;
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    for (int number = 0; number < kThreads; ++number) {
        threads.emplace_back([&start, &texts, number] {
            TestProject project;
            Fill(project, number);
            start.arrive_and_wait();
            for (int round = 0; round < kRounds; ++round) {
                texts[static_cast<std::size_t>(number)].push_back(TextOf(project, number));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (int number = 0; number < kThreads; ++number) {
        const std::string alone = TextAlone(number);
        EXPECT_EQ(alone.find("CAEITERATIONMODEL") != std::string::npos, number % 3 == 0);
        EXPECT_EQ(alone.find("CAEITERATION") != std::string::npos, number % 3 != 1);
        EXPECT_EQ(texts[static_cast<std::size_t>(number)], std::vector<std::string>(kRounds, alone));
    }
}
