#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <ostream>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

#include "RunOnSmallStack.h"
#include "support/LongRun.h"
#include "support/Process.h"
#include "support/ProgramCommands.h"

namespace {

/// Where the levels of a document lie, and how often it has what is on each level.
struct Nesting {
    const char* name;
    std::string_view opening;
    std::string_view closing;
    /// Whether each level becomes an object, instead of being left out or without effect.
    bool becomesObjects;
};

void PrintTo(const Nesting& nesting, std::ostream* out) {
    *out << nesting.name;
}

constexpr Nesting kNestings[] = {
    {"Children", R"({"type":"CAEMODEL","name":"m","children":[)", "]}", true},
    {"Mixed",
     R"({"type":"CAEMODEL","name":"m","metaData":{"m":{"value":"1","metaDataType":"kg"}},)"
     R"("files":[{"type":"CAEFILE","name":"f","fileType":"Deck"}],"children":[)",
     "]}", true},
    {"Arrays", "[", "]", false},
    {"UnknownMembers", R"({"type":"CAEMODEL","unknown":[{"metaData":)", "}]}", false},
    {"Files", R"({"type":"CAEMODEL","files":[{"name":"f","files":[)", "]}]}", false},
    {"Metadata", R"({"type":"CAEMODEL","metaData":{"m":{"value":)", "}}}", false},
};

std::string DocumentOf(const Nesting& nesting, int levels) {
    // A document of which nothing can be used would be refused.
    std::string text = R"({"type":"SIMULATION","name":"Deep","children":[{"type":"CAEPART"},)";
    for (int level = 0; level < levels; ++level) {
        text += nesting.opening;
    }
    text += R"({"type":"CAEPART"})";
    for (int level = 0; level < levels; ++level) {
        text += nesting.closing;
    }
    return text + "]}";
}

std::size_t CountIn(const std::string& text, std::string_view word) {
    std::size_t count = 0;
    for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + word.size())) {
        ++count;
    }
    return count;
}

class DeepCommands : public testing::TestWithParam<Nesting> {};

/// Runs the commands of the program in a folder, each on a small stack.
class Runs {
public:
    Runs(const Nesting& nesting, int levels) : nesting_(nesting), levels_(levels) {
        folder_.Write("source.json", DocumentOf(nesting, levels));
        folder_.Write("given/studies/static/job.inp", "*STEP\n*STATIC\n*END STEP\n");
        folder_.Write("given/other/modes/job.bdf", "SOL 101\nCEND\nBEGIN BULK\nENDDATA\n");
        folder_.Write("given/other.json", R"({"type":"SIMULATION","name":"Other","children":[]})");
        Run("import", {"import", "source.json", "given/p.kvp"});
        CompleteCommandFolder(folder_, [&](const auto& arguments) { Run(arguments.front(), arguments); });
    }

    /// Runs it and expects that it succeeds. Its time is kept with the results of the tests.
    void Run(const std::string& name, const std::vector<std::string>& arguments) const {
        const auto start = std::chrono::steady_clock::now();
        const CommandResult result = RunOnSmallStack(arguments, folder_);
        const auto time = std::chrono::steady_clock::now() - start;
        EXPECT_EQ(result.status, 0) << name << ": " << result.said.substr(0, 1000);
        testing::Test::RecordProperty(
            name + "_" + std::to_string(levels_),
            std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(time).count()));
    }
    void Run(const ProgramCommand& command) const {
        PutFileOf(command, folder_);
        const std::filesystem::path document = folder_ / "out/document.json";
        std::filesystem::remove(document);
        Run(command.name, ArgumentsIn(folder_, command));
        if (!nesting_.becomesObjects) {
            return;
        }
        const std::string_view name = command.name;
        if (std::filesystem::exists(document)) {
            ExpectAllLevels(ReadWholeFile(document), command.name);
        } else if (name == "Export") {
            ExpectAllLevels(ReadWholeFile(folder_ / "output"), command.name);
        } else if (name == "Tree" || name == "TreeOfDocument") {
            EXPECT_GE(std::ranges::count(ReadWholeFile(folder_ / "output"), '\n'), levels_) << name;
        }
    }
    /// Imports what the database has into a new project file, and compares the two.
    void GoBack() const {
        std::filesystem::copy_file(folder_ / "given/s.db", folder_ / "out/s.db");
        const std::string key = FirstKey(ReadWholeFile(folder_ / "given/answer.json"));
        Run("fetch", {"fetch", key, "--db", "out/s.db", "-o", "out/fetched.json"});
        Run("import_fetched", {"import", "out/fetched.json", "out/rebuilt.kvp"});
        Run("compare", {"compare", "out/fetched.json", "out/rebuilt.kvp"});
    }
    void ExpectAnswerOfAllLevels() const {
        if (nesting_.becomesObjects) {
            EXPECT_GE(CountIn(ReadWholeFile(folder_ / "given/answer.json"), "\"dbkey\""),
                      static_cast<std::size_t>(levels_));
        }
    }

private:
    void ExpectAllLevels(const std::string& document, const std::string& name) const {
        EXPECT_EQ(CountIn(document, "\"CAEMODEL\""), static_cast<std::size_t>(levels_)) << name;
    }

    const Nesting& nesting_;
    int levels_;
    TemporaryDirectory folder_;
};

/// Goes through all commands with a document of so many levels.
void GoThrough(const Nesting& nesting, int levels) {
    const Runs runs(nesting, levels);
    runs.ExpectAnswerOfAllLevels();
    for (const ProgramCommand& command : AllCommands()) {
        runs.Run(command);
    }
    runs.GoBack();
}

TEST_P(DeepCommands, NeedNoStack) {
    constexpr int kVeryMany = 1'000'000;
    const int many = kIsSanitized && !IsLongRun() ? 20'000 : 100'000;
    // Objects take longer than what is read over.
    const int fewer = IsLongRun() ? many / 5 : many / 10;
    GoThrough(GetParam(), GetParam().becomesObjects ? fewer : many);
    if (IsLongRun() && !kIsSanitized) {
        GoThrough(GetParam(), kVeryMany);
    }
}

TEST(CommandsOfTheTests, AreAllThatTheHelpLists) {
    std::set<std::string> tried;
    for (const ProgramCommand& command : AllCommands()) {
        if (command.arguments.front() != "--help") {
            tried.insert(command.arguments.front());
        }
    }
    EXPECT_EQ(tried, CommandsOfHelp());
}

INSTANTIATE_TEST_SUITE_P(, DeepCommands, testing::ValuesIn(kNestings),
                         [](const testing::TestParamInfo<Nesting>& parameter) {
                             return std::string(parameter.param.name);
                         });

}  // namespace
