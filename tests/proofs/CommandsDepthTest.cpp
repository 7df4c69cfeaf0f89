#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <ostream>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

#include "Commands.h"
#include "LongRun.h"
#include "support/Process.h"

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
    std::string text = R"({"type":"SIMULATION","name":"Deep","children":[)";
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

/// Under the sanitizers and under Wine objects take several times as long.
#if defined(_WIN32)
constexpr bool kIsSlow = true;
#else
constexpr bool kIsSlow = kIsSanitized;
#endif

class DeepCommands : public testing::TestWithParam<Nesting> {};

/// Goes through all commands with a document of so many levels.
void GoThrough(const Nesting& nesting, int levels) {
    const TemporaryDirectory folder;
    folder.Write("doc.json", DocumentOf(nesting, levels));
    for (const Command& command : Commands()) {
        const auto start = std::chrono::steady_clock::now();
        const CommandResult result = RunOnSmallStack(command, folder);
        const auto time = std::chrono::steady_clock::now() - start;
        ASSERT_EQ(result.status, 0) << command.name << ": " << result.said.substr(0, 1000);
        testing::Test::RecordProperty(
            std::string(command.name) + "_" + std::to_string(levels),
            std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(time).count()));
        if (std::string_view(command.name) == "tree" && nesting.becomesObjects) {
            EXPECT_GE(std::ranges::count(ReadWholeFile(folder / "output"), '\n'), levels);
        }
    }
    if (nesting.becomesObjects) {
        const auto objects = static_cast<std::size_t>(levels);
        for (const char* const file : {"exported.json", "indented.json", "study.json", "fetched.json"}) {
            EXPECT_EQ(CountIn(ReadWholeFile(folder / file), "\"CAEMODEL\""), objects) << file;
        }
        EXPECT_GE(CountIn(ReadWholeFile(folder / "answer.json"), "\"dbkey\""), objects);
    }
}

TEST_P(DeepCommands, NeedNoStack) {
    constexpr int kMany = 100'000;
    constexpr int kVeryMany = 1'000'000;
    GoThrough(GetParam(), GetParam().becomesObjects && kIsSlow ? kMany / 20 : kMany);
    if (IsLongRun() && !kIsSanitized) {
        GoThrough(GetParam(), kVeryMany);
    }
}

TEST(CommandsOfTheProofs, AreAllThatTheHelpLists) {
    std::set<std::string> listed;
    std::istringstream help(RunProgram(ProgramPath("korvane-json"), {{"--help"}, {}, {}, {}, {}}).output);
    bool isInList = false;
    for (std::string line; std::getline(help, line);) {
        // The heading depends on the version of CLI11.
        isInList = line.starts_with("Commands:") || line.starts_with("Subcommands:") ||
                   (isInList && line.starts_with("  "));
        if (isInList && line.starts_with("  ") && line[2] != ' ') {
            listed.insert(line.substr(2, line.find(' ', 2) - 2));
        }
    }
    std::set<std::string> tried;
    for (const Command& command : Commands()) {
        tried.insert(command.arguments.front());
    }
    EXPECT_EQ(tried, listed);
}

INSTANTIATE_TEST_SUITE_P(, DeepCommands, testing::ValuesIn(kNestings),
                         [](const testing::TestParamInfo<Nesting>& parameter) {
                             return std::string(parameter.param.name);
                         });

}  // namespace
