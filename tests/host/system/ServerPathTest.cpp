#include <gtest/gtest.h>

#include "host/system/ServerPath.h"

namespace host {
namespace {

TEST(ServerPath, HasOneSpellingForAShare) {
    for (const char* const path :
         {R"(\\server\share)", R"(\\Server\Share\a\b.inp)", "//server/share/a", R"(\/server/share\a)",
          R"(\\?\UNC\server\share\a)", R"(\\.\unc\server\share)", R"(\??\UNC\server\share\a)",
          "//?/UNC/server/share/a"}) {
        EXPECT_EQ(ServerIn(path), "//SERVER/SHARE") << path;
    }
    EXPECT_EQ(ServerIn(R"(\\server)"), "//SERVER");
    EXPECT_EQ(ServerIn(R"(\\10.0.0.1@80\dav\a.gif)"), "//10.0.0.1@80/DAV");
}

TEST(ServerPath, HasDevicesAsServers) {
    EXPECT_EQ(ServerIn(R"(\\.\pipe\name)"), "//?/PIPE");
    EXPECT_EQ(ServerIn(R"(\\?\C:\a.gif)"), "//?/C:");
    EXPECT_EQ(ServerIn(R"(\??\C:\a.gif)"), "//?/C:");
}

TEST(ServerPath, HasNoneOnADriveOrInADirectory) {
    for (const char* const path :
         {"", "/", "a", R"(C:\server\share)", "C:/a", R"(\server\share)", "/home/a", R"(a\\b\c)", "a//b/c"}) {
        EXPECT_EQ(ServerIn(path), "") << path;
    }
}

#if defined(_WIN32)

TEST(ServerPath, IsOfAnotherServerUntilTheUserNamesIt) {
    EXPECT_TRUE(IsOnOtherServer(L"\\\\korvane.invalid\\first\\a"));
    AllowServerOf(L"\\\\?\\UNC\\korvane.invalid\\first\\other.kvp");
    EXPECT_FALSE(IsOnOtherServer(L"\\\\korvane.invalid\\first\\a"));
    EXPECT_FALSE(IsOnOtherServer(L"//KORVANE.INVALID/First/b"));
    EXPECT_TRUE(IsOnOtherServer(L"\\\\korvane.invalid\\second\\a"));
    EXPECT_FALSE(IsOnOtherServer(L"C:\\a"));
}

#else

TEST(ServerPath, IsNothingOnLinux) {
    EXPECT_FALSE(IsOnOtherServer("//server/share/a"));
    EXPECT_FALSE(IsOnOtherServer(R"(\\server\share\a)"));
}

#endif

}  // namespace
}  // namespace host
