#include <EmbeddedConsole.h>
#include <gtest/gtest.h>
#include <libjson.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "LoadedLibrary.h"
#include "support/Process.h"

// The library as the system's loader sees it. This program does not link it.

namespace {

const char* Banner() {
    return LoadedLibrary::Find<const char*(int)>("KorvaneJson_get_module_info")(-1);
}

std::atomic<int> allocations = 0;

void* CountedAllocation(std::size_t bytes) {
    ++allocations;
    return std::malloc(bytes);
}

/// Takes a block from libjson's memory functions.
void MakeLongText() {
    const JSONNode node(json_string("text"), json_string(100'000, 'x'));
    EXPECT_EQ(node.as_string().size(), 100'000U);
}

TEST(Loading, GivesDocumentsTheAllocationFunctionsOfTheRuntimeAndKeepsTheLibrary) {
    ASSERT_FALSE(LoadedLibrary::IsLoaded());
    libjson::register_memory_callbacks(CountedAllocation, std::realloc, std::free);
    MakeLongText();
    const int before = allocations;
    ASSERT_GT(before, 0);
    {
        const LoadedLibrary library;
        MakeLongText();
        EXPECT_EQ(allocations, before);
    }
    EXPECT_TRUE(LoadedLibrary::IsLoaded());
}

#if defined(_WIN32)
TEST(Loading, ExportTableHoldsTheInterfaceAndNothingElse) {
    const LoadedLibrary library;
    std::ifstream file(KORVANEJSON_EXPORTS);
    std::vector<std::string> expected;
    for (std::string name; std::getline(file, name);) {
        expected.push_back(name);
    }
    std::ranges::sort(expected);
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(LoadedLibrary::ExportedNames(), expected);
}
#endif

TEST(Loading, NoUnloadTakesTheLibraryAway) {
    const std::string banner = (LoadedLibrary(), Banner());
    for (int round = 0; round < 20; ++round) {
        const LoadedLibrary library;
        library.Unload();
        library.Unload();
        ASSERT_TRUE(LoadedLibrary::IsLoaded()) << round;
        EXPECT_EQ(Banner(), banner);
    }
}

TEST(Loading, ThreadsComeAndGo) {
    const LoadedLibrary library;
    const std::string banner = Banner();
    for (int round = 0; round < 50; ++round) {
        std::string told;
        std::thread([&told] { told = Banner(); }).join();
        EXPECT_EQ(told, banner);
    }
    library.Unload();
    std::thread([&banner] { EXPECT_EQ(Banner(), banner); }).join();
    EXPECT_TRUE(LoadedLibrary::IsLoaded());
}

/// A host in small, which ends in the way of its argument.
ProcessResult RunModuleHost(const char* ending) {
    ProcessOptions options;
    options.arguments = {ending};
    return RunProgram(ProgramPath("module-host"), options);
}

class ProcessEnd : public testing::TestWithParam<const char*> {};

TEST_P(ProcessEnd, WritesNothingAlsoWhereWarningsAreWanted) {
    const ProcessResult result = RunModuleHost(GetParam());
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.output.starts_with("KorvaneJson version ")) << result.output;
    EXPECT_EQ(result.error, "");
}

INSTANTIATE_TEST_SUITE_P(After, ProcessEnd, testing::Values("return", "exit", "thread"),
                         [](const testing::TestParamInfo<const char*>& ending) {
                             return std::string(ending.param);
                         });

TEST(Console, WhatTheConsoleWritesWouldBeSeen) {
    const ProcessResult result = RunModuleHost("warning");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "a warning\n");
}

}  // namespace
