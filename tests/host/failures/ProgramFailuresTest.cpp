#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <iostream>
#include <random>
#include <thread>

#include "CommandFolder.h"
#include "support/LongRun.h"
#include "support/Process.h"
#include "support/ProgramCommands.h"

namespace failures {
namespace {

/// So many studies that the database is larger than what SQLite keeps in memory. Under the sanitizers, which
/// are slow, small caches stand for that (SmallCaches).
const int kManyStudies = kIsSanitized && !IsLongRun() ? 150 : 700;
constexpr std::uintmax_t kKibibyte = 1024;
/// Disks and limits of so many sizes, between what is there and what the command needs.
std::uintmax_t LevelsFor(const ProgramCommand& command) {
    return IsLongRun() ? 10 : kIsSample || IsTriedBriefly(command) ? 2 : 4;
}

std::uintmax_t SizeOf(const std::optional<std::string>& bytes) {
    return bytes ? bytes->size() : 0;
}

/// The program in a shell that runs `preparation` first, in the folder.
ProcessResult RunAfter(const std::string& preparation, const CommandFolder& folder) {
    std::vector<std::string> arguments = {"-c", preparation, "sh", ToUtf8(ProgramPath("korvane-json"))};
    const std::vector<std::string> own = folder.Arguments();
    arguments.insert(arguments.end(), own.begin(), own.end());
    return RunProgram("/bin/sh", {arguments, {}, folder.Path(), {}, {}});
}

class ProgramFailures : public testing::TestWithParam<ProgramCommand> {
protected:
    /// The size of the new file.
    static std::uintmax_t NewSize(const CommandFolder& folder) {
        folder.Reset();
        EXPECT_EQ(RunAfter("exec \"$@\"", folder).status, 0);
        return SizeOf(folder.Bytes());
    }
    static void Expect(const CommandFolder& folder, const ProcessResult& result) {
        EXPECT_EQ(folder.Untruth(result.status, result.error), "")
            << "status " << result.status << ", said: " << result.error << "there: " << folder.Names();
        // The next command can use what is there.
        EXPECT_EQ(folder.OpenWithProgram(), "");
    }
};

TEST_P(ProgramFailures, OfFilesThatMustNotGrowAnyMoreAreReportedAsTheyAre) {
    const CommandFolder folder(GetParam(), kManyStudies);
    const std::uintmax_t size = NewSize(folder);
    const std::uintmax_t levels = LevelsFor(GetParam());
    int failed = 0;
    for (std::uintmax_t level = 0; level < levels; ++level) {
        folder.Reset();
        // In units of 512 bytes. The signal would end the program before it could say anything.
        const std::uintmax_t limit = size * (2 * level + 1) / (2 * levels) / 512;
        const ProcessResult result =
            RunAfter("trap '' XFSZ; ulimit -f " + std::to_string(limit) + "; exec \"$@\"", folder);
        SCOPED_TRACE(std::to_string(limit * 512) + " of " + std::to_string(size) + " bytes");
        Expect(folder, result);
        failed += result.status != 0 ? 1 : 0;
    }
    EXPECT_GT(failed, 0);
}

/// How a shell begins a command that runs with a disk of its own: root may mount one, and elsewhere a user
/// may where the system lets users be root of a namespace. Empty if neither works.
std::string BeginWithDisk() {
    for (const std::string begin : {"exec unshare -m sh -c '", "exec unshare -rm sh -c '"}) {
        const TemporaryDirectory folder;
        const std::string mount = begin + "mount -t tmpfs -o size=64k tmpfs .'";
        if (RunProgram("/bin/sh", {{"-c", mount}, {}, folder.Path(), {}, {}}).status == 0) {
            return begin;
        }
    }
    return {};
}

TEST_P(ProgramFailures, OfAFullDiskAreReportedAsTheyAre) {
    static const std::string begin = BeginWithDisk();
    ASSERT_NE(begin, "") << "this test needs a disk of its own: run it as root or where user namespaces are "
                            "allowed (unshare -rm, mount -t tmpfs)";
    const std::string mount = begin + "mount -t tmpfs -o size=";
    const CommandFolder folder(GetParam(), kManyStudies);
    std::filesystem::create_directory(folder.Path() / "result");
    const std::uintmax_t size = NewSize(folder);
    folder.Reset();
    const std::uintmax_t oldSize = SizeOf(folder.Bytes());
    const std::uintmax_t levels = LevelsFor(GetParam());
    int failed = 0;
    for (std::uintmax_t level = 0; level < levels; ++level) {
        folder.Reset();
        std::filesystem::remove_all(folder.Path() / "result");
        std::filesystem::copy(folder.Path() / "work", folder.Path() / "result");
        // From no room at all beyond the old file to room for a new one and the journal.
        const std::uintmax_t room = oldSize + 4 * kKibibyte + (size + oldSize) * level / levels;
        const ProcessResult result = RunAfter(
            mount + std::to_string(room / kKibibyte) +
                "k tmpfs work && cp -a result/. work && { \"$@\"; status=$?; rm -rf result/* result/.k*; "
                "cp -a work/. result; exit $status; }' sh \"$@\"",
            folder);
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path() / "work")) {
            std::filesystem::remove(entry.path());
        }
        std::filesystem::copy(folder.Path() / "result", folder.Path() / "work");
        SCOPED_TRACE("a disk of " + std::to_string(room / kKibibyte) + " KiB");
        Expect(folder, result);
        failed += result.status != 0 ? 1 : 0;
    }
    EXPECT_GT(failed, 0);
}

/// Starts the command and ends it after so many microseconds. Returns whether it was still running.
bool RunAndKill(const CommandFolder& folder, std::int64_t microseconds) {
    std::vector<std::string> texts = {ToUtf8(ProgramPath("korvane-json"))};
    const std::vector<std::string> own = folder.Arguments();
    texts.insert(texts.end(), own.begin(), own.end());
    std::vector<char*> arguments;
    for (std::string& text : texts) {
        arguments.push_back(text.data());
    }
    arguments.push_back(nullptr);
    const std::filesystem::path path = folder.Path();
    const pid_t child = ::fork();
    if (child == 0) {
        const int nothing = ::open("/dev/null", O_RDWR);
        if (nothing >= 0 && ::dup2(nothing, 0) == 0 && ::dup2(nothing, 1) == 1 && ::dup2(nothing, 2) == 2 &&
            ::chdir(path.c_str()) == 0) {
            ::execv(arguments.front(), arguments.data());
        }
        ::_exit(126);
    }
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
    ::kill(child, SIGKILL);
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status) || (WIFEXITED(status) && WEXITSTATUS(status) == 0)) << status;
    return WIFSIGNALED(status);
}

TEST_P(ProgramFailures, AKilledProgramLeavesTheOldFileOrTheNewOne) {
    const CommandFolder folder(GetParam(), kManyStudies);
    folder.Reset();
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(RunAfter("exec \"$@\"", folder).status, 0);
    const auto duration =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
    constexpr unsigned kSeed = 20260301;
    std::mt19937 random(kSeed);
    std::uniform_int_distribution<std::int64_t> moments(0, duration.count());
    int killed = 0;
    int old = 0;
    const int kills = IsLongRun() ? 200 : kIsSample || IsTriedBriefly(GetParam()) ? 3 : 8;
    for (int number = 0; number < kills; ++number) {
        folder.Reset();
        // The first one is killed before it could do anything.
        const std::int64_t moment = number == 0 ? 0 : moments(random);
        const bool isKilled = RunAndKill(folder, moment);
        SCOPED_TRACE("killed after " + std::to_string(moment) + " microseconds");
        EXPECT_EQ(folder.OpenWithProgram(), "");
        const std::string text = folder.Text();
        ASSERT_TRUE(text == folder.TextAfter() || (isKilled && text == folder.TextBefore()))
            << "neither the old nor the new: " << text.substr(0, 200);
        killed += isKilled ? 1 : 0;
        old += text == folder.TextBefore() ? 1 : 0;
    }
    EXPECT_GT(killed, 0);
    std::cout << "seed " << kSeed << ": " << killed << " of " << kills << " killed within "
              << duration.count() / 1000 << " ms, " << old << " old files\n";
}

INSTANTIATE_TEST_SUITE_P(Commands, ProgramFailures, testing::ValuesIn(ChangingCommands()),
                         [](const testing::TestParamInfo<ProgramCommand>& tested) {
                             return tested.param.name;
                         });

}  // namespace
}  // namespace failures
