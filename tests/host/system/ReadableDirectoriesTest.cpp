#include <gtest/gtest.h>

#include "host/system/ReadableDirectories.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

TEST(ReadableDirectories, HaveWhatIsBelowThem) {
    const TemporaryDirectory folder;
    ReadableDirectories readable;
    EXPECT_TRUE(readable.Find(folder.Write("a/x", "x")).isOutside);
    readable.Add(folder / "a");
    readable.Add(folder / "missing");
    EXPECT_FALSE(readable.Find(folder / "a/x").isOutside);
    EXPECT_EQ(readable.Find(folder / "a/x").resolved, folder / "a" / "x");
    EXPECT_EQ(readable.Find(folder / "a/../a/./x").resolved, folder / "a" / "x");
    EXPECT_TRUE(readable.Find(folder.Write("b/x", "x")).isOutside);
    EXPECT_EQ(readable.Find(folder / "b/x").resolved, std::filesystem::path());
    EXPECT_TRUE(readable.Find(folder / "a/../b/x").isOutside);
    // A name that only begins like the directory's.
    EXPECT_TRUE(readable.Find(folder.Write("ab/x", "x")).isOutside);
    // A directory that was not there when it was named.
    EXPECT_TRUE(readable.Find(folder.Write("missing/x", "x")).isOutside);
}

TEST(ReadableDirectories, HaveWhatIsNotThereByItsText) {
    const TemporaryDirectory folder;
    folder.MakeDirectory("a");
    ReadableDirectories readable;
    readable.Add(folder / "a");
    EXPECT_FALSE(readable.Find(folder / "a/none").isOutside);
    EXPECT_EQ(readable.Find(folder / "a/none").resolved, std::filesystem::path());
    EXPECT_TRUE(readable.Find(folder / "none").isOutside);
    EXPECT_TRUE(readable.Find(folder / "a/../none").isOutside);
    EXPECT_FALSE(readable.Find(folder / "none/../a/none").isOutside);
}

TEST(ReadableDirectories, TakeRelativePathsFromTheWorkingDirectory) {
    const TemporaryDirectory folder;
    folder.Write("a/x", "x");
    const CurrentFolder current(folder.Path());
    ReadableDirectories readable;
    readable.Add("a");
    EXPECT_FALSE(readable.Find("a/x").isOutside);
    EXPECT_FALSE(readable.Find(folder / "a/x").isOutside);
    EXPECT_FALSE(readable.Find("a/none").isOutside);
    EXPECT_TRUE(readable.Find("none").isOutside);
}

}  // namespace
}  // namespace host
