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
    static int Rounds() { return IsLongRun() ? 50 : kIsSample ? 2 : 4; }

    /// Runs the program with each of the arguments, all at once.
    std::vector<ProcessResult> RunAll(const std::vector<std::vector<std::string>>& arguments) const {
        std::vector<ProcessResult> results(arguments.size());
        std::vector<std::thread> threads;
        for (std::size_t number = 0; number < arguments.size(); ++number) {
            threads.emplace_back([&, number] { results[number] = Run(arguments[number]); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        return results;
    }
    /// Runs it several times, with a number in the arguments.
    template <typename ArgumentsOf>
    std::vector<ProcessResult> RunAll(const ArgumentsOf& argumentsOf) const {
        std::vector<std::vector<std::string>> arguments;
        for (int number = 0; number < kPrograms; ++number) {
            arguments.push_back(argumentsOf(std::to_string(number)));
        }
        return RunAll(arguments);
    }
    static bool IsInUse(const ProcessResult& result) {
        return result.status != 0 && result.error.find("in use by another program") != std::string::npos;
    }
    std::size_t CountFiles(const char* name) const {
        const auto isOfWine = [](const std::filesystem::path& file) {
#if defined(_WIN32)
            // Where another program is faster, ReplaceFileW of Wine leaves an empty file of its own.
            return file.filename().native().starts_with(L"rf") && file.extension() == L".tmp" &&
                   std::filesystem::is_empty(file);
#else
            return file.empty();
#endif
        };
        return static_cast<std::size_t>(std::ranges::count_if(
            std::filesystem::directory_iterator(folder / name),
            [&](const std::filesystem::directory_entry& entry) { return !isOfWine(entry.path()); }));
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

TEST_F(ProgramsAtOnce, ThatChangeAProjectFileInDifferentWaysLoseNothing) {
    WriteDocuments();
    folder.Write("root/first/job.inp", "*STEP\n*STATIC\n*END STEP\n");
    folder.MakeDirectory("given");
    ASSERT_EQ(Run({"new", "root", "given/p.kvp"}).status, 0);
    folder.Write("root/second/job.bdf", "SOL 101\nCEND\nBEGIN BULK\nENDDATA\n");
    folder.Write("answer1.json", R"({"id":"1","dbkey":"KEY-1"})");
    folder.Write("answer2.json", R"([{"id":"2","dbkey":"KEY-2"}])");
    struct Change {
        std::vector<std::string> arguments;
        std::string effect;
    };
    const std::vector<Change> changes = {{{"apply", "answer1.json", "work/p.kvp"}, "KEY-1"},
                                         {{"apply", "answer2.json", "work/p.kvp"}, "KEY-2"},
                                         {{"update", "root", "work/p.kvp"}, "second"},
                                         {{"import", "document3.json", "work/p.kvp"}, "part-3"}};
    std::vector<std::vector<std::string>> arguments;
    std::ranges::transform(changes, std::back_inserter(arguments), &Change::arguments);
    for (int round = 0; round < Rounds(); ++round) {
        std::filesystem::remove_all(folder / "work");
        folder.MakeDirectory("work");
        std::filesystem::copy_file(folder / "given/p.kvp", folder / "work/p.kvp");
        const std::vector<ProcessResult> results = RunAll(arguments);
        const std::string tree = OutputOf({"tree", "work/p.kvp"});
        for (std::size_t number = 0; number < results.size(); ++number) {
            const ProcessResult& result = results[number];
            EXPECT_TRUE(result.status == 0 ||
                        (IsInUse(result) && result.error.ends_with("Nothing was changed\n")))
                << result.error;
            EXPECT_EQ(tree.find(changes[number].effect) != std::string::npos, result.status == 0) << tree;
        }
        EXPECT_EQ(CountFiles("work"), 1U);
    }
}

TEST_F(ProgramsAtOnce, ThatReadSeeTheFileBeforeAChangeOrAfterIt) {
    WriteDocuments();
    folder.MakeDirectory("work");
    ASSERT_EQ(Run({"import", "document0.json", "work/p.kvp"}).status, 0);
    const std::string key = FirstKey(Run({"store", "document0.json", "--db", "work/s.db"}).output);
    const std::vector<std::vector<std::string>> reading = {{"export", "work/p.kvp"},
                                                           {"find", "work/p.kvp", "kind=Part"},
                                                           {"fetch", "--list", "--db", "work/s.db"},
                                                           {"fetch", key, "--db", "work/s.db"}};
    const auto readAll = [&] {
        std::vector<std::string> outputs;
        for (const std::vector<std::string>& arguments : reading) {
            outputs.push_back(OutputOf(arguments));
        }
        return outputs;
    };
    for (int round = 0; round < Rounds(); ++round) {
        const std::string name = "R" + std::to_string(round);
        const std::vector<std::string> before = readAll();
        std::vector<std::vector<std::string>> arguments = reading;
        arguments.push_back({"import", "document1.json", "work/p.kvp"});
        arguments.push_back({"store", "document1.json", "--db", "work/s.db", "--project", name});
        const std::vector<ProcessResult> results = RunAll(arguments);
        const std::vector<std::string> after = readAll();
        for (std::size_t number = 0; number < results.size(); ++number) {
            const ProcessResult& result = results[number];
            ASSERT_TRUE(result.status == 0 || IsInUse(result)) << result.error;
            if (number < reading.size() && result.status == 0) {
                EXPECT_TRUE(result.output == before[number] || result.output == after[number])
                    << result.output;
            }
        }
        EXPECT_EQ(after[0] != before[0], results[reading.size()].status == 0);
        EXPECT_EQ(after[2] != before[2], results[reading.size() + 1].status == 0);
        EXPECT_EQ(CountFiles("work"), 2U);
    }
}

TEST_F(ProgramsAtOnce, ThatWriteTheSameOutputLeaveOneOfThemWhole) {
    WriteDocuments();
    std::vector<std::string> wholes;
    for (int number = 0; number < kPrograms; ++number) {
        const std::string text = std::to_string(number);
        ASSERT_EQ(Run({"import", "document" + text + ".json", "p" + text + ".kvp"}).status, 0);
        wholes.push_back(OutputOf({"export", "p" + text + ".kvp"}));
    }
    for (const bool isThere : {false, true}) {
        for (int round = 0; round < Rounds(); ++round) {
            std::filesystem::remove_all(folder / "work");
            folder.MakeDirectory("work");
            if (isThere) {
                folder.Write("work/out.json", "");
            }
            const std::vector<ProcessResult> results = RunAll([](const std::string& number) {
                return std::vector<std::string>{"export", "p" + number + ".kvp", "-o", "work/out.json"};
            });
            for (const ProcessResult& result : results) {
#if defined(_WIN32)
                // A file cannot be replaced while another program replaces it.
                EXPECT_TRUE(result.status == 0 || result.error.find("cannot write") != std::string::npos);
#else
                EXPECT_EQ(result.status, 0) << result.error;
#endif
            }
            EXPECT_NE(std::ranges::count(results, 0, &ProcessResult::status), 0);
            EXPECT_NE(std::ranges::find(wholes, Read("work/out.json")), wholes.end());
            EXPECT_EQ(CountFiles("work"), 1U);
        }
    }
}

}  // namespace
}  // namespace failures
