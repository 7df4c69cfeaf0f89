#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
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

/// Which levels become objects, instead of being left out or without effect.
enum class Objects {
    kAll,
    kFirst,
    kNone,
};

/// Where the levels of a document lie, and how often it has what is on each level.
struct Nesting {
    const char* name;
    std::string_view opening;
    std::string_view closing;
    Objects objects;

    bool BecomesObjects() const { return objects == Objects::kAll; }
};

void PrintTo(const Nesting& nesting, std::ostream* out) {
    *out << nesting.name;
}

constexpr Nesting kNestings[] = {
    {"Children", R"({"type":"CAEMODEL","name":"m","children":[)", "]}", Objects::kAll},
    {"Mixed",
     R"({"type":"CAEMODEL","name":"m","metaData":{"m":{"value":"1","metaDataType":"kg"}},)"
     R"("files":[{"type":"CAEFILE","name":"f","fileType":"Deck"}],"children":[)",
     "]}", Objects::kAll},
    {"Arrays", "[", "]", Objects::kNone},
    {"UnknownMembers", R"({"type":"CAEMODEL","unknown":[{"metaData":)", "}]}", Objects::kFirst},
    {"Files", R"({"type":"CAEMODEL","files":[{"name":"f","files":[)", "]}]}", Objects::kFirst},
    {"Metadata", R"({"type":"CAEMODEL","metaData":{"m":{"value":)", "}}}", Objects::kFirst},
};

std::string LevelsOf(const Nesting& nesting, int levels) {
    std::string text;
    for (int level = 0; level < levels; ++level) {
        text += nesting.opening;
    }
    text += R"({"type":"CAEPART"})";
    for (int level = 0; level < levels; ++level) {
        text += nesting.closing;
    }
    return text;
}

std::string DocumentOf(const Nesting& nesting, int levels) {
    // A document of which nothing can be used would be refused.
    return R"({"type":"SIMULATION","name":"Deep","metaData":{"Mass":{"value":"1","metaDataType":"kg"}},)"
           R"("children":[{"type":"CAEPART"},)" +
           LevelsOf(nesting, levels) + "]}";
}

std::size_t CountIn(const std::string& text, std::string_view word) {
    std::size_t count = 0;
    for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + word.size())) {
        ++count;
    }
    return count;
}

/// How a command shows that it has reached every level.
enum class Shows {
    /// It writes the word once for each level.
    kEach,
    /// It writes how many there are, behind the word.
    kNumber,
};

/// A command whose outcome has every level of the project.
struct DeepCommand {
    ProgramCommand command;
    /// Where it writes; `output` is its standard output.
    const char* output;
    Shows shows;
    std::string_view word;
    /// What is counted with the levels: the root, and the parts beside the levels and in the innermost.
    int besides = 0;
    int status = 0;
};

const std::vector<DeepCommand>& CommandsOfAllLevels() {
    using enum FileUse;
    using enum Shows;
    constexpr const char* kOutput = "output";
    static const std::vector<DeepCommand> commands = {
        {{"AllInTreeJson", {"tree", "work/p.kvp", "--format", "json"}, Reads, "p.kvp"},
         kOutput,
         kEach,
         R"("kind":"Model")"},
        {{"AllInFind", {"find", "work/p.kvp", "name=m"}, Reads, "p.kvp"}, kOutput, kEach, "\n"},
        {{"AllInFindJson",
          {"find", "work/p.kvp", "name=m", "--sort", "id", "--format", "json"},
          Reads,
          "p.kvp"},
         kOutput,
         kEach,
         R"("kind":"Model")"},
        // The mass is that of the root.
        {{"AllInPlot", {"plot", "work/p.kvp", "name=m", "--x", "id", "--y", "Mass"}, Reads, "p.kvp"},
         kOutput,
         kEach,
         "<circle "},
        {{"AllInPage", {"page", "work/p.kvp", "-o", "out/page.html"}, Reads, "p.kvp"},
         "out/page.html",
         kEach,
         R"("kind":"Model")"},
        {{"AllInCompare",
          {"compare", "--format", "json", "given/document.json", "work/p.kvp"},
          Reads,
          "p.kvp"},
         kOutput,
         kNumber,
         R"("objects":)",
         3},
        {{"AllInCompareButInnermost",
          {"compare", "--format", "json", "given/changed.json", "work/p.kvp"},
          Reads,
          "p.kvp"},
         kOutput,
         kNumber,
         R"("objects":)",
         2,
         1},
        {{"AllInUpdate",
          {"import", "--update", "--same", "--format", "json", "source.json", "work/p.kvp"},
          Changes,
          "p.kvp"},
         kOutput,
         kNumber,
         R"("objectsMatched":)",
         3},
        {{"AllInUpdateButInnermost",
          {"import", "--update", "--remove", "--format", "json", "given/changed.json", "work/p.kvp"},
          Changes,
          "p.kvp"},
         kOutput,
         kNumber,
         R"("objectsMatched":)",
         2},
        {{"AllInImport",
          {"import", "--format", "json", "given/document.json", "work/p.kvp"},
          Creates,
          "p.kvp"},
         kOutput,
         kNumber,
         R"("objectsAdded":)",
         2},
    };
    return commands;
}

/// The status of `compare` for projects that differ.
constexpr int kDifferent = 1;

/// What the processor spent on runs.
using Times = std::map<std::string, ProcessorTime>;

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
        if (nesting.BecomesObjects()) {
            WriteDocumentWithOtherInnermost();
        } else {
            // The project does not have the levels, so neither has what the program wrote from it.
            AddLevels("given/document.json");
            AddLevels("given/answer.json");
        }
    }

    void Run(const ProgramCommand& command) {
        const std::filesystem::path document = folder_ / "out/document.json";
        std::filesystem::remove(document);
        const bool isCompared = command.arguments.front() == "compare";
        RunWithFile(command, isCompared && nesting_.objects == Objects::kFirst ? kDifferent : 0);
        if (!nesting_.BecomesObjects()) {
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
    void Run(const DeepCommand& deep) {
        const ProgramCommand& command = deep.command;
        RunWithFile(command, deep.status);
        const std::string text = ReadWholeFile(folder_ / deep.output);
        const int all = levels_ + deep.besides;
        if (deep.shows == Shows::kEach) {
            EXPECT_EQ(CountIn(text, deep.word), static_cast<std::size_t>(all)) << command.name;
        } else {
            EXPECT_EQ(CountIn(text, std::string(deep.word) + std::to_string(all) + ","), 1U)
                << command.name << ": " << text.substr(0, 1000);
        }
        if (command.IsChanging()) {
            Run("export_" + command.name, {"export", "work/p.kvp"});
            ExpectAllLevels(ReadWholeFile(folder_ / "output"), command.name);
        }
    }
    /// Imports what the database has into a new project file, and compares the two.
    void GoBack() {
        std::filesystem::copy_file(folder_ / "given/s.db", folder_ / "out/s.db");
        const std::string key = FirstKey(ReadWholeFile(folder_ / "given/answer.json"));
        Run("fetch", {"fetch", key, "--db", "out/s.db", "-o", "out/fetched.json"});
        Run("import_fetched", {"import", "out/fetched.json", "out/rebuilt.kvp"});
        Run("compare", {"compare", "out/fetched.json", "out/rebuilt.kvp"});
    }
    void ExpectAnswerOfAllLevels() const {
        if (nesting_.BecomesObjects()) {
            EXPECT_GE(CountIn(ReadWholeFile(folder_ / "given/answer.json"), "\"dbkey\""),
                      static_cast<std::size_t>(levels_));
        }
    }
    /// By the names of the runs.
    const Times& TimesOfRuns() const { return times_; }

private:
    /// Runs it and expects that it ends with the status.
    void Run(const std::string& name, const std::vector<std::string>& arguments, int status = 0) {
        const CommandResult result = RunOnSmallStack(arguments, folder_);
        EXPECT_EQ(result.status, status) << name << ": " << result.said.substr(0, 1000);
        times_[name] += result.time;
        testing::Test::RecordProperty(name + "_" + std::to_string(levels_),
                                      std::to_string(times_[name].count()));
    }
    void RunWithFile(const ProgramCommand& command, int status) {
        PutFileOf(command, folder_);
        Run(command.name, ArgumentsIn(folder_, command), status);
    }
    /// As one more child of the root.
    void AddLevels(const std::string& file) const {
        constexpr std::string_view kChildren = "\"children\":[";
        std::string text = ReadWholeFile(folder_ / file);
        const std::size_t at = text.find(kChildren);
        ASSERT_NE(at, std::string::npos) << file;
        folder_.Write(file, text.insert(at + kChildren.size(), LevelsOf(nesting_, levels_) + ","));
    }
    void WriteDocumentWithOtherInnermost() const {
        constexpr std::string_view kType = "CAEPART";
        std::string document = ReadWholeFile(folder_ / "given/document.json");
        document.replace(document.rfind(kType), kType.size(), "CAETAG");
        folder_.Write("given/changed.json", document);
    }
    void ExpectAllLevels(const std::string& document, const std::string& name) const {
        EXPECT_EQ(CountIn(document, "\"CAEMODEL\""), static_cast<std::size_t>(levels_)) << name;
    }

    const Nesting& nesting_;
    int levels_;
    TemporaryDirectory folder_;
    Times times_;
};

/// Goes through all commands with a document of so many levels.
Times GoThrough(const Nesting& nesting, int levels) {
    Runs runs(nesting, levels);
    runs.ExpectAnswerOfAllLevels();
    for (const ProgramCommand& command : AllCommands()) {
        runs.Run(command);
    }
    runs.Run(ProgramCommand{"UpdateFromDocument",
                            {"import", "--update", "--same", "source.json", "work/p.kvp"},
                            FileUse::Changes,
                            "p.kvp"});
    if (nesting.BecomesObjects()) {
        for (const DeepCommand& command : CommandsOfAllLevels()) {
            runs.Run(command);
        }
    }
    runs.GoBack();
    return runs.TimesOfRuns();
}

TEST_P(DeepCommands, NeedNoStack) {
    constexpr int kMany = 100'000;
    constexpr int kVeryMany = 10 * kMany;
    if (IsLongRun() && !kIsSanitized) {
        const Times times = GoThrough(GetParam(), kMany);
        for (const auto& [name, time] : GoThrough(GetParam(), kVeryMany)) {
            EXPECT_LE(time.count(), MostForTenTimesAsMuch(times.at(name)).count()) << name;
        }
        return;
    }
    if (IsLongRun()) {
        GoThrough(GetParam(), GetParam().BecomesObjects() ? kMany / 5 : kMany);
        return;
    }
    // Objects take longer than what is read over.
    constexpr int kObjects = kIsSample ? 1500 : 10'000;
    GoThrough(GetParam(), GetParam().BecomesObjects() ? kObjects : kIsSample ? 5000 : 20'000);
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
