#include <gtest/gtest.h>

#include <iterator>
#include <stdexcept>
#include <string>

#include "host/system/OutputFile.h"
#include "support/TemporaryDirectory.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <thread>
#endif

namespace host {
namespace {

std::ptrdiff_t CountEntries(const TemporaryDirectory& folder) {
    return std::distance(std::filesystem::directory_iterator(folder.Path()),
                         std::filesystem::directory_iterator());
}

TEST(OutputFile, WritesANewFile) {
    const TemporaryDirectory folder;
    EXPECT_FALSE(WriteOutputFile(folder / "K\xC3\xBChler.json", "{}\n"));
    EXPECT_EQ(ReadWholeFile(folder / "K\xC3\xBChler.json"), "{}\n");
    EXPECT_EQ(CountEntries(folder), 1);
}

TEST(OutputFile, ReplacesAnOldFileAndLeavesNothingElseBehind) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write("out.json", std::string(100000, 'x'));
    EXPECT_FALSE(WriteOutputFile(file, "{}\n"));
    EXPECT_EQ(ReadWholeFile(file), "{}\n");
    EXPECT_EQ(CountEntries(folder), 1);
}

TEST(OutputFile, WritesLargeTextsWhole) {
    const TemporaryDirectory folder;
    const std::string text(5000000, 'a');
    EXPECT_FALSE(WriteOutputFile(folder / "out.json", text));
    EXPECT_EQ(ReadWholeFile(folder / "out.json"), text);
}

TEST(OutputFile, WritesATextInPieces) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write("out.json", "old");
    std::string seen;
    const auto write = [&](const WritePiece& writePiece) {
        for (const std::string_view piece : {"{\"a\"", "", ":1}", "\n"}) {
            if (const std::error_code error = writePiece(piece)) {
                return error;
            }
            seen += ReadWholeFile(file);
        }
        return std::error_code();
    };
    EXPECT_FALSE(WriteOutputFile(file, write));
    EXPECT_EQ(ReadWholeFile(file), "{\"a\":1}\n");
    EXPECT_EQ(seen, "oldoldoldold");
    EXPECT_EQ(CountEntries(folder), 1);
}

TEST(OutputFile, KeepsTheOldFileIfATextHasNoEnd) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write("out.json", "old");
    const auto fail = [](const WritePiece& write) {
        EXPECT_FALSE(write("new"));
        return std::make_error_code(std::errc::protocol_error);
    };
    const auto raise = [](const WritePiece& write) {
        EXPECT_FALSE(write("new"));
        throw std::runtime_error("no more");
        return std::error_code();
    };
    for (const std::filesystem::path& target : {file, folder / "new.json"}) {
        EXPECT_EQ(WriteOutputFile(target, fail), std::errc::protocol_error);
        EXPECT_THROW(WriteOutputFile(target, raise), std::runtime_error);
    }
    EXPECT_EQ(ReadWholeFile(file), "old");
    EXPECT_EQ(CountEntries(folder), 1);
}

TEST(OutputFile, RefusesADirectory) {
    const TemporaryDirectory folder;
    folder.MakeDirectory("out.json");
    EXPECT_EQ(WriteOutputFile(folder / "out.json", "{}"), std::errc::is_a_directory);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "out.json"));
}

TEST(OutputFile, FailsInAFolderThatIsNotThere) {
    const TemporaryDirectory folder;
    EXPECT_TRUE(WriteOutputFile(folder / "missing/out.json", "{}"));
    EXPECT_EQ(CountEntries(folder), 0);
}

#if defined(_WIN32)

TEST(OutputFile, LeavesAWriteProtectedFileAsItWas) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write("out.json", "old");
    ASSERT_NE(::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY), 0);
    EXPECT_TRUE(WriteOutputFile(file, "{}"));
    EXPECT_EQ(ReadWholeFile(file), "old");
    EXPECT_EQ(CountEntries(folder), 1);
    ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(OutputFile, WritesToDevices) {
    EXPECT_FALSE(WriteOutputFile("NUL", "{}"));
}

#else

TEST(OutputFile, KeepsThePermissionsOfTheOldFile) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write("out.json", "old");
    ASSERT_EQ(::chmod(file.c_str(), 0640), 0);
    EXPECT_FALSE(WriteOutputFile(file, "{}"));
    struct stat status {};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST(OutputFile, WritesTheFileThatALinkLeadsTo) {
    const TemporaryDirectory folder;
    folder.Write("real/out.json", "old");
    std::filesystem::create_symlink("real/out.json", folder / "link.json");
    EXPECT_FALSE(WriteOutputFile(folder / "link.json", "{}"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.json"));
    EXPECT_EQ(ReadWholeFile(folder / "real/out.json"), "{}");
}

TEST(OutputFile, MakesTheFileThatALinkLeadsTo) {
    const TemporaryDirectory folder;
    folder.MakeDirectory("real");
    std::filesystem::create_symlink("real/new.json", folder / "link.json");
    EXPECT_FALSE(WriteOutputFile(folder / "link.json", "{}"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.json"));
    EXPECT_EQ(ReadWholeFile(folder / "real/new.json"), "{}");
}

TEST(OutputFile, WritesToDevicesAndPipesDirectly) {
    EXPECT_FALSE(WriteOutputFile("/dev/null", "{}"));
    EXPECT_EQ(WriteOutputFile("/dev/full", "{}"), std::errc::no_space_on_device);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    const TemporaryDirectory folder;
    const std::filesystem::path pipe = folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { received = ReadWholeFile(pipe); });
    EXPECT_FALSE(WriteOutputFile(pipe, "{}"));
    reader.join();
    EXPECT_EQ(received, "{}");
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

/// Writes without the rights of the superuser, who may write everywhere.
std::error_code WriteUnprivileged(const std::filesystem::path& file, std::string_view text) {
    const bool isRoot = ::geteuid() == 0;
    if (isRoot && ::seteuid(65534) != 0) {
        return std::make_error_code(std::errc::not_supported);
    }
    const std::error_code error = WriteOutputFile(file, text);
    if (isRoot && ::seteuid(0) != 0) {
        std::abort();
    }
    return error;
}

TEST(OutputFile, AGroupThatIsNotKeptGetsNoMoreThanEverybody) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only the superuser can make a file of somebody else";
    }
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write("out.json", "old");
    ASSERT_EQ(::chown(file.c_str(), 65534, 65533), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0664), 0);
    ASSERT_EQ(::chmod(folder.Path().c_str(), 0777), 0);
    EXPECT_FALSE(WriteUnprivileged(file, "{}"));
    struct stat status {};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0644U);
}

TEST(OutputFile, LeavesAWriteProtectedFileAsItWas) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write("out.json", "old");
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    ASSERT_EQ(::chmod(folder.Path().c_str(), 0777), 0);
    EXPECT_EQ(WriteUnprivileged(file, "{}"), std::errc::permission_denied);
    EXPECT_EQ(ReadWholeFile(file), "old");
    EXPECT_EQ(CountEntries(folder), 1);
}

TEST(OutputFile, LeavesAnOldFileAsItWasWhereItsFolderIsWriteProtected) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write("out.json", "old");
    ASSERT_EQ(::chmod(file.c_str(), 0666), 0);
    ASSERT_EQ(::chmod(folder.Path().c_str(), 0555), 0);
    EXPECT_EQ(WriteUnprivileged(file, "{}"), std::errc::permission_denied);
    ::chmod(folder.Path().c_str(), 0755);
    EXPECT_EQ(ReadWholeFile(file), "old");
    EXPECT_EQ(CountEntries(folder), 1);
}

TEST(OutputFile, LeavesAnOldFileAsItWasWhenThereIsNoRoomForTheNewOne) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write("out.json", "old");
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit narrow = before;
    narrow.rlim_cur = 1000;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &narrow), 0);
    const std::error_code error = WriteOutputFile(file, std::string(5000, 'x'));
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(error, std::errc::file_too_large);
    EXPECT_EQ(ReadWholeFile(file), "old");
    EXPECT_EQ(CountEntries(folder), 1);
}

#endif

}  // namespace
}  // namespace host
