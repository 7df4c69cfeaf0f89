#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <utility>

#include "Failures.h"
#include "ProgramState.h"
#include "host/system/FileSystem.h"
#include "host/system/TemporaryFile.h"

namespace exhaustion {
namespace {

/// The project file or database that the command creates; empty if it creates none.
std::string CreatedFile(const ProgramCommand& command) {
    if (command.use == FileUse::Creates) {
        return "work/" + command.file;
    }
    const std::string& last = command.arguments.back();
    return last.starts_with("out/") && last.ends_with(".kvp") ? last : "";
}

/// What the program said in the end: before, it may have named what it left out of a directory.
std::string LastMessage(const ProcessResult& result) {
    const std::string said = result.error.substr(0, result.error.rfind('\n'));
    return said.substr(said.rfind('\n') + 1);
}

/// The commands that create a project file or a database, whose last step is to give it its name.
class CreationFailure : public testing::TestWithParam<ProgramCommand> {
protected:
    void SetUp() override {
        wanted = Run({});
        ASSERT_EQ(wanted.status, 0) << wanted.error;
        calls = SharedCounts().fileCalls;
        ASSERT_GT(calls, 5);
        text = state.TextOf(created);
        ASSERT_EQ(state.Before().count(created), 0U);
        ASSERT_EQ(Names(), NamesWith(true));
        state.Restore();
    }

    ProcessResult Run(Plan plan) {
        plan.folder = std::string_view(created).substr(0, created.find('/'));
        SharedCounts().fileCalls = 0;
        SharedCounts().isRemovalRefused = false;
        return state.Run([&] { PlanFileCalls(plan); });
    }

    /// The names of what is in the folder of the file.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        const std::filesystem::path folder = (state.Folder() / created).parent_path();
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            names.push_back(ToUtf8(entry.path().filename()));
        }
        std::ranges::sort(names);
        return names;
    }
    /// What there was before, and the file if it has been created.
    std::vector<std::string> NamesWith(bool isCreated) const {
        const std::string folder = created.substr(0, created.find('/') + 1);
        std::vector<std::string> names;
        for (const auto& [name, bytes] : state.Before()) {
            if (name.starts_with(folder)) {
                names.push_back(name.substr(folder.size()));
            }
        }
        if (isCreated) {
            names.push_back(created.substr(folder.size()));
        }
        std::ranges::sort(names);
        return names;
    }
    bool IsCreated() const { return std::filesystem::exists(state.Folder() / created); }

    /// Expects the whole file, or none.
    void ExpectWholeOrNone() const {
        if (IsCreated()) {
            EXPECT_EQ(state.TextOf(created), text);
        }
    }

    /// Expects that at most a temporary file and its journal are left, and that the next command which writes
    /// in the folder removes them.
    void ExpectLeftoversThatAreRemoved() const {
        const std::vector<std::string> rest = NamesWith(IsCreated());
        for (const std::string& name : Names()) {
            const std::string file = name.substr(0, name.rfind("-journal"));
            EXPECT_TRUE(std::ranges::find(rest, name) != rest.end() || host::IsTemporaryName(file)) << name;
        }
        EXPECT_LE(Names().size(), rest.size() + 2);
        const std::filesystem::path next = (state.Folder() / created).parent_path() / "next.json";
        EXPECT_EQ(state.RunWith({"export", "given/studies", "-o", next}, [] {}).status, 0);
        std::filesystem::remove(next);
        EXPECT_EQ(Names(), rest);
    }

    ProgramState state{GetParam()};
    const std::string created = CreatedFile(GetParam());
    ProcessResult wanted;
    long calls = 0;
    std::string text;
};

TEST_P(CreationFailure, LeavesTheWholeFileOrNoneAndSaysWhich) {
    int failed = 0;
    for (const bool forGood : {false, true}) {
        for (long number = 1; number <= calls; ++number) {
            const ProcessResult result = Run({number, forGood});
            SCOPED_TRACE("operation " + std::to_string(number) + (forGood ? " and all later ones" : "") +
                         ", status " + std::to_string(result.status) + ": " + result.error);
            EXPECT_EQ(IsCreated(), result.status == 0);
            ExpectWholeOrNone();
            if (result.status == 0) {
                EXPECT_EQ(result.error, wanted.error);
            } else {
                ++failed;
                EXPECT_EQ(result.status, 1);
                EXPECT_TRUE(LastMessage(result).starts_with("korvane-json: '" + created + "' "));
                EXPECT_TRUE(LastMessage(result).ends_with(". Nothing was changed"));
                EXPECT_EQ(result.output, "");
            }
            if (SharedCounts().isRemovalRefused) {
                ExpectLeftoversThatAreRemoved();
            } else {
                EXPECT_EQ(Names(), NamesWith(result.status == 0));
            }
            state.Restore();
        }
    }
    EXPECT_GT(failed, 0);
}

TEST_P(CreationFailure, WithoutANameSaysSoAndLeavesNothing) {
    Plan plan;
    plan.refusesNames = true;
    const ProcessResult result = Run(plan);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(LastMessage(result), "korvane-json: '" + created + "' cannot be created: " +
                                       std::strerror(EIO) + ". Nothing was changed");
    EXPECT_TRUE(ContentOf(state.Folder()) == state.Before());
}

TEST_P(CreationFailure, NeedsNoLinksAndNoRenamingWithoutReplacing) {
    for (const bool renamesExclusively : {true, false}) {
        Plan plan;
        plan.hasLinks = false;
        plan.renamesExclusively = renamesExclusively;
        const ProcessResult result = Run(plan);
        EXPECT_EQ(result.status, 0) << result.error;
        EXPECT_EQ(result.error, wanted.error);
        EXPECT_EQ(state.TextOf(created), text);
        EXPECT_EQ(Names(), NamesWith(true));
        state.Restore();
    }
}

TEST_P(CreationFailure, AKillLeavesTheWholeFileOrNoneAndTheNextRunRemovesTheRest) {
    bool wasCreated = false;
    for (long number = 1; number <= calls; ++number) {
        SCOPED_TRACE("operation " + std::to_string(number));
        EXPECT_EQ(Run({number, false, Outcome::Killed}).status, -SIGKILL);
        ExpectWholeOrNone();
        wasCreated = wasCreated || IsCreated();
        ExpectLeftoversThatAreRemoved();
        if (!IsCreated()) {
            EXPECT_EQ(Run({}).status, 0);
            EXPECT_EQ(state.TextOf(created), text);
        }
        state.Restore();
    }
    EXPECT_TRUE(wasCreated) << "no kill came after the file had its name";
}

TEST_P(CreationFailure, ASignalEndsTheProgramAndLeavesNothingButTheFile) {
    for (long number = 1; number <= calls; ++number) {
        SCOPED_TRACE("operation " + std::to_string(number));
        const ProcessResult result = Run({number, false, Outcome::Terminated});
        EXPECT_EQ(result.status, -SIGTERM);
        ExpectWholeOrNone();
        EXPECT_EQ(Names(), NamesWith(IsCreated()));
        state.Restore();
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, CreationFailure,
                         testing::ValuesIn(CommandsWhere([](const ProgramCommand& command) {
                             return !CreatedFile(command).empty();
                         })),
                         [](const auto& command) { return command.param.name; });

TEST(MoveToNewName, ReplacesNothingWithWhateverTheFileSystemHas) {
    for (const auto& [hasLinks, renamesExclusively] :
         {std::pair(true, true), {false, true}, {false, false}}) {
        SCOPED_TRACE(std::to_string(hasLinks) + std::to_string(renamesExclusively));
        const TemporaryDirectory folder;
        const std::filesystem::path from = folder.Write("from", "new");
        const std::filesystem::path to = folder.Write("to", "old");
        Plan plan;
        plan.hasLinks = hasLinks;
        plan.renamesExclusively = renamesExclusively;
        PlanFileCalls(plan);
        EXPECT_EQ(host::MoveToNewName(from, to), std::errc::file_exists);
        EXPECT_EQ(ReadWholeFile(from), "new");
        EXPECT_EQ(ReadWholeFile(to), "old");
        EXPECT_FALSE(host::MoveToNewName(from, folder.Path() / "third"));
        EXPECT_FALSE(std::filesystem::exists(from));
        EXPECT_EQ(ReadWholeFile(folder.Path() / "third"), "new");
        // What leads nowhere is a name, too.
        std::filesystem::create_symlink("nowhere", folder.Path() / "fourth");
        EXPECT_EQ(host::MoveToNewName(to, folder.Path() / "fourth"), std::errc::file_exists);
        EXPECT_EQ(ReadWholeFile(to), "old");
    }
}

}  // namespace
}  // namespace exhaustion
