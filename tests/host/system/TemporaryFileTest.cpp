#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "host/system/OutputFile.h"
#include "host/system/TemporaryFile.h"
#include "support/TemporaryDirectory.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#endif

namespace host {
namespace {

constexpr const char* kLeftBehind = ".korvane-json-0123456789abcdef0123456789abcdef.tmp";

/// A file that was written two minutes ago: on Windows only an old one counts as left behind.
std::filesystem::path WriteOld(const TemporaryDirectory& folder, const std::string& name) {
    std::filesystem::path file = folder.Write(name, "half of a docu");
    std::filesystem::last_write_time(file,
                                     std::filesystem::file_time_type::clock::now() - std::chrono::minutes(2));
    return file;
}

TEST(TemporaryFile, NamesCannotBeForeseen) {
    const TemporaryDirectory folder;
    const std::filesystem::path first = NewTemporaryName(folder.Path());
    const std::filesystem::path second = NewTemporaryName(folder.Path());
    EXPECT_NE(first, second);
    EXPECT_EQ(first.parent_path(), folder.Path());
    EXPECT_TRUE(IsTemporaryName(first.filename()));
    EXPECT_TRUE(IsTemporaryName(second.filename()));
}

TEST(TemporaryFile, KnowsItsOwnNamesOnly) {
    EXPECT_TRUE(IsTemporaryName(kLeftBehind));
    for (const char* const name :
         {"", ".tmp", ".korvane-json-.tmp", ".korvane-json-0123456789abcdef0123456789abcde.tmp",
          ".korvane-json-0123456789abcdef0123456789abcdef0.tmp",
          "xkorvane-json-0123456789abcdef0123456789abcdef.tmp",
          ".korvane-json-0123456789ABCDEF0123456789abcdef.tmp",
          ".korvane-json-0123456789abcdef0123456789abcdef.tmq",
          ".korvane-json-0123456789abcdef 123456789abcdef.tmp", ".korvane-json-1234-0.tmp"}) {
        EXPECT_FALSE(IsTemporaryName(name)) << name;
    }
}

TEST(TemporaryFile, WhatADeadProcessLeftBehindIsRemovedByTheNextRun) {
    const TemporaryDirectory folder;
    WriteOld(folder, kLeftBehind);
    EXPECT_FALSE(WriteOutputFile(folder / "out.json", "{}"));
    EXPECT_FALSE(std::filesystem::exists(folder / kLeftBehind));
    EXPECT_EQ(ReadWholeFile(folder / "out.json"), "{}");
}

TEST(TemporaryFile, WhatTheProgramDidNotMakeStays) {
    const TemporaryDirectory folder;
    WriteOld(folder, ".korvane-json-1234-0.tmp");
    WriteOld(folder, "korvane-json-0123456789abcdef0123456789abcdef.tmp");
    folder.Write(std::string(kLeftBehind) + "/x", "x");
    WriteOld(folder, "elsewhere/twice");
    std::filesystem::create_hard_link(folder / "elsewhere/twice",
                                      folder / ".korvane-json-0123456789abcdef0123456789abcdee.tmp");
    RemoveLeftovers(folder.Path());
    EXPECT_TRUE(std::filesystem::exists(folder / ".korvane-json-1234-0.tmp"));
    EXPECT_TRUE(std::filesystem::exists(folder / "korvane-json-0123456789abcdef0123456789abcdef.tmp"));
    EXPECT_TRUE(std::filesystem::exists(folder / (std::string(kLeftBehind) + "/x")));
    EXPECT_TRUE(std::filesystem::exists(folder / ".korvane-json-0123456789abcdef0123456789abcdee.tmp"));
}

#if defined(_WIN32)

TEST(TemporaryFile, WhatIsBeingWrittenStays) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = WriteOld(folder, kLeftBehind);
    HANDLE const writing = ::CreateFileW(file.c_str(), GENERIC_WRITE | DELETE,
                                         FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(writing, INVALID_HANDLE_VALUE);
    RemoveLeftovers(folder.Path());
    EXPECT_TRUE(std::filesystem::exists(file));
    ::CloseHandle(writing);
    RemoveLeftovers(folder.Path());
    EXPECT_FALSE(std::filesystem::exists(file));
    folder.Write(kLeftBehind, "complete, and closed for a moment");
    RemoveLeftovers(folder.Path());
    EXPECT_TRUE(std::filesystem::exists(file));
}

#else

TEST(TemporaryFile, WhatIsBeingWrittenStays) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write(kLeftBehind, "half");
    const int writing = ::open(file.c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(writing, LOCK_EX), 0);
    RemoveLeftovers(folder.Path());
    EXPECT_TRUE(std::filesystem::exists(file));
    ::close(writing);
    RemoveLeftovers(folder.Path());
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST(TemporaryFile, OfACompleteFileIsOnlyAName) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write("p.kvp", "whole");
    std::filesystem::create_hard_link(file, folder / kLeftBehind);
    RemoveLeftovers(folder.Path());
    EXPECT_FALSE(std::filesystem::exists(folder / kLeftBehind));
    EXPECT_EQ(ReadWholeFile(file), "whole");
    // Two temporary names are not a complete file.
    const std::string other = ".korvane-json-0123456789abcdef0123456789abcdee.tmp";
    std::filesystem::create_hard_link(folder.Write(kLeftBehind, "half"), folder / other);
    RemoveLeftovers(folder.Path());
    EXPECT_TRUE(std::filesystem::exists(folder / kLeftBehind));
    EXPECT_TRUE(std::filesystem::exists(folder / other));
}

TEST(TemporaryFile, LinksAndPipesAndFilesOfOthersStay) {
    const TemporaryDirectory folder;
    const std::filesystem::path target = folder.Write("target", "x");
    std::filesystem::create_symlink("target", folder / kLeftBehind);
    const std::filesystem::path pipe = folder / ".korvane-json-0123456789abcdef0123456789abcdee.tmp";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const std::filesystem::path foreign =
        folder.Write(".korvane-json-0123456789abcdef0123456789abcded.tmp", "x");
    // Only the superuser can make a file of somebody else.
    const bool isForeign = ::chown(foreign.c_str(), 65534, 65534) == 0;
    RemoveLeftovers(folder.Path());
    EXPECT_TRUE(std::filesystem::is_symlink(folder / kLeftBehind));
    EXPECT_EQ(ReadWholeFile(target), "x");
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
    EXPECT_EQ(std::filesystem::exists(foreign), isForeign);
}

TEST(TemporaryFile, NamesThatOthersHaveTakenDoNotBlockTheOutput) {
    const TemporaryDirectory folder;
    const std::string begin = ".korvane-json-" + std::to_string(::getpid()) + "-";
    for (int number = 0; number < 100; ++number) {
        folder.Write(begin + std::to_string(number) + ".tmp", "taken");
    }
    EXPECT_FALSE(WriteOutputFile(folder / "out.json", "{}"));
    EXPECT_EQ(ReadWholeFile(folder / "out.json"), "{}");
}

/// Raises the signal in a child process that writes the file, and gives its end as waitpid does.
int RaiseWhileWriting(const std::filesystem::path& file, int signal, bool isIgnored) {
    const pid_t child = ::fork();
    if (child == 0) {
        std::signal(signal, isIgnored ? SIG_IGN : SIG_DFL);
        const RemovedOnInterrupt onInterrupt(file);
        static_cast<void>(std::raise(signal));
        ::_exit(7);
    }
    int status = 0;
    return ::waitpid(child, &status, 0) == child ? status : -1;
}

TEST(TemporaryFile, IsRemovedByASignalWhichEndsTheProgram) {
    const TemporaryDirectory folder;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
        const std::filesystem::path file = folder.Write(kLeftBehind, "half");
        const int status = RaiseWhileWriting(file, signal, false);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        EXPECT_FALSE(std::filesystem::exists(file)) << signal;
    }
}

TEST(TemporaryFile, StaysWhereTheSignalIsIgnored) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write(kLeftBehind, "half");
    const int status = RaiseWhileWriting(file, SIGHUP, true);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 7) << status;
    EXPECT_TRUE(std::filesystem::exists(file));
}

TEST(TemporaryFile, SignalsActAsBeforeAfterwards) {
    const TemporaryDirectory folder;
    {
        const RemovedOnInterrupt first(folder / "first");
        const RemovedOnInterrupt second(folder / "second");
    }
    EXPECT_EQ(std::signal(SIGTERM, SIG_DFL), SIG_DFL);
}

#endif

}  // namespace
}  // namespace host
