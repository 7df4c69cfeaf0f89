#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include "host/commands/ProgramSupport.h"
#include "support/LongRun.h"
#include "support/ProgramCommands.h"

namespace failures {
namespace {

class ProgramsAtOnce : public ProgramInFolder {
protected:
    static constexpr int kPrograms = 4;
    static int Rounds() { return IsLongRun() ? 50 : 4; }

    /// Runs the program several times at once, with other arguments each time.
    template <typename ArgumentsOf>
    std::vector<ProcessResult> RunAll(const ArgumentsOf& argumentsOf) const {
        std::vector<ProcessResult> results(kPrograms);
        std::vector<std::thread> threads;
        for (int number = 0; number < kPrograms; ++number) {
            threads.emplace_back([&, number] {
                results[static_cast<std::size_t>(number)] = Run(argumentsOf(std::to_string(number)));
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        return results;
    }
    std::size_t CountFiles(const char* name) const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder / name), {}));
    }
    void WriteDocuments() const {
        for (int number = 0; number < kPrograms; ++number) {
            const std::string text = std::to_string(number);
            folder.Write("document" + text + ".json",
                         R"({"id":"1","name":"P)" + text +
                             R"(","type":"SIMULATION","children":[{"id":"2","name":"part-)" + text +
                             R"(","type":"CAEPART"}]})");
        }
    }
};

TEST_F(ProgramsAtOnce, ThatCreateADatabaseAllStoreInIt) {
    WriteDocuments();
    for (const bool isEmptyFile : {false, true}) {
        for (int round = 0; round < Rounds(); ++round) {
            std::filesystem::remove_all(folder / "work");
            folder.MakeDirectory("work");
            if (isEmptyFile) {
                folder.Write("work/s.db", "");
            }
            const std::vector<ProcessResult> results = RunAll([](const std::string& number) {
                return std::vector<std::string>{"store", "document" + number + ".json", "--db", "work/s.db"};
            });
            for (const ProcessResult& result : results) {
                EXPECT_EQ(result.status, 0) << result.error;
                EXPECT_EQ(Run({"fetch", FirstKey(result.output), "--db", "work/s.db"}).status, 0)
                    << "lost: " << result.output;
            }
            EXPECT_EQ(CountFiles("work"), 1U);
        }
    }
}

TEST_F(ProgramsAtOnce, ThatCreateAProjectFileDoNotReplaceEachOthers) {
    WriteDocuments();
    for (int round = 0; round < Rounds(); ++round) {
        std::filesystem::remove_all(folder / "work");
        folder.MakeDirectory("work");
        const std::vector<ProcessResult> results = RunAll([](const std::string&) {
            return std::vector<std::string>{"new", "--empty", "work/p.kvp"};
        });
        const auto succeeded = std::ranges::count(results, 0, &ProcessResult::status);
        EXPECT_EQ(succeeded, 1);
        for (const ProcessResult& result : results) {
            EXPECT_TRUE(result.status == 0 || result.error.find("already exists") != std::string::npos)
                << result.error;
        }
        EXPECT_EQ(Run({"tree", "work/p.kvp"}).status, 0);
        EXPECT_EQ(CountFiles("work"), 1U);
    }
}

TEST_F(ProgramsAtOnce, ThatChangeAProjectFileLoseNothing) {
    WriteDocuments();
    for (int round = 0; round < Rounds(); ++round) {
        std::filesystem::remove_all(folder / "work");
        folder.MakeDirectory("work");
        ASSERT_EQ(Run({"new", "--empty", "work/p.kvp"}).status, 0);
        const std::vector<ProcessResult> results = RunAll([](const std::string& number) {
            return std::vector<std::string>{"import", "document" + number + ".json", "work/p.kvp"};
        });
        const std::string tree = OutputOf({"tree", "work/p.kvp"});
        for (int number = 0; number < kPrograms; ++number) {
            const ProcessResult& result = results[static_cast<std::size_t>(number)];
            EXPECT_TRUE(result.status == 0 || result.error.find("Nothing was changed") != std::string::npos)
                << result.error;
            EXPECT_EQ(tree.find("part-" + std::to_string(number)) != std::string::npos, result.status == 0)
                << tree;
        }
        EXPECT_EQ(CountFiles("work"), 1U);
    }
}

}  // namespace
}  // namespace failures
