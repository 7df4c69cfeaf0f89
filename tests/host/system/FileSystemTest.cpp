#include <gtest/gtest.h>

#include "host/system/FileSystem.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

TEST(FileSystem, PathsThatLeadToOnePlaceWouldBeTheSameFile) {
    const TemporaryDirectory folder;
    folder.MakeDirectory("inner");
    EXPECT_TRUE(WouldBeSameFile(folder / "a.db", folder / "a.db"));
    EXPECT_TRUE(WouldBeSameFile(folder / "a.db", folder / "inner/../a.db"));
    EXPECT_FALSE(WouldBeSameFile(folder / "a.db", folder / "inner/a.db"));
    EXPECT_FALSE(WouldBeSameFile(folder / "a.db", folder / "b.db"));
    EXPECT_TRUE(WouldBeSameFile("a.db", "./a.db"));
    EXPECT_FALSE(WouldBeSameFile("", ""));
    EXPECT_FALSE(WouldBeSameFile("", "a.db"));
    // A folder that is not there can hold no file, but asking does no harm.
    EXPECT_TRUE(WouldBeSameFile(folder / "missing/a.db", folder / "missing/a.db"));
}

#if defined(_WIN32)

TEST(FileSystem, WindowsDropsCaseAndDotsAtTheEndOfNames) {
    const TemporaryDirectory folder;
    folder.MakeDirectory("Inner");
    EXPECT_TRUE(WouldBeSameFile(folder / "K\xC3\xBChler.db", folder / "K\xC3\x9CHLER.DB"));
    EXPECT_TRUE(WouldBeSameFile(folder / "Inner/a.db", folder / "INNER/a.db"));
    EXPECT_TRUE(WouldBeSameFile(folder / "a.db", folder / "a.db."));
    EXPECT_FALSE(WouldBeSameFile(folder / "a.db", folder / "a.db.x"));
}

#else

TEST(FileSystem, CaseTellsNamesApart) {
    const TemporaryDirectory folder;
    EXPECT_FALSE(WouldBeSameFile(folder / "a.db", folder / "A.DB"));
}

TEST(FileSystem, AFolderAndALinkToItHoldTheSameFiles) {
    const TemporaryDirectory folder;
    folder.MakeDirectory("real");
    std::filesystem::create_directory_symlink("real", folder / "link");
    EXPECT_TRUE(WouldBeSameFile(folder / "real/a.db", folder / "link/a.db"));
}

#endif

TEST(FileSystem, AFileMovesToANewNameOnly) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write("a", "first");
    EXPECT_FALSE(MoveToNewName(file, folder / "b"));
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(ReadWholeFile(folder / "b"), "first");
    folder.Write("a", "second");
    EXPECT_EQ(MoveToNewName(file, folder / "b"), std::errc::file_exists);
    EXPECT_EQ(ReadWholeFile(folder / "b"), "first");
    EXPECT_EQ(ReadWholeFile(file), "second");
    EXPECT_TRUE(MoveToNewName(file, folder / "missing/b"));
    EXPECT_EQ(ReadWholeFile(file), "second");
}

}  // namespace
}  // namespace host
