#include <gtest/gtest.h>

#include <string>

#include "OuStringFileName.h"

namespace {

std::wstring Normal(const wchar_t* path) {
    OuStringFileName directory(path);
    directory.NormalizeDirectory();
    return directory.GetBuffer();
}

std::wstring FileName(const wchar_t* path) {
    return OuStringFileName(path).GetFileName().GetBuffer();
}

TEST(OuStringFileName, NormalizesToForwardSlashesWithOneAtTheEnd) {
    EXPECT_EQ(Normal(L"C:\\data\\run"), L"C:/data/run/");
    EXPECT_EQ(Normal(L"C:/data/run/"), L"C:/data/run/");
    EXPECT_EQ(Normal(L"/srv\\data/"), L"/srv/data/");
    EXPECT_EQ(Normal(L"relative"), L"relative/");
    EXPECT_EQ(Normal(L"C:"), L"C:/");
    EXPECT_EQ(Normal(L"."), L"./");
}

TEST(OuStringFileName, DoublesNoSlash) {
    EXPECT_EQ(Normal(L"a//b\\\\c/\\d"), L"a/b/c/d/");
    EXPECT_EQ(Normal(L"a////b///"), L"a/b/");
}

TEST(OuStringFileName, KeepsALeadingPair) {
    EXPECT_EQ(Normal(L"\\\\server\\share"), L"//server/share/");
    EXPECT_EQ(Normal(L"//server//share//"), L"//server/share/");
    EXPECT_EQ(Normal(L"/\\server"), L"//server/");
}

TEST(OuStringFileName, ShortensLeadingSlashesToAPair) {
    EXPECT_EQ(Normal(L"///server/share"), L"//server/share/");
    EXPECT_EQ(Normal(L"\\\\\\\\\\server"), L"//server/");
}

TEST(OuStringFileName, ShortensSlashesAloneToOne) {
    EXPECT_EQ(Normal(L"/"), L"/");
    EXPECT_EQ(Normal(L"\\"), L"/");
    EXPECT_EQ(Normal(L"//"), L"/");
    EXPECT_EQ(Normal(L"\\\\\\"), L"/");
}

TEST(OuStringFileName, LeavesTheEmptyDirectoryEmpty) {
    OuStringFileName directory;
    directory.NormalizeDirectory();
    EXPECT_TRUE(directory.IsEmpty());
}

TEST(OuStringFileName, LeavesCopiesAsTheyWere) {
    OuStringFileName directory(L"a\\b");
    const OuString copy(directory);
    directory.NormalizeDirectory();
    EXPECT_STREQ(copy.GetBuffer(), L"a\\b");
}

TEST(OuStringFileName, NormalizesANormalFormToItself) {
    for (const wchar_t* path : {L"C:/data/", L"//server/", L"/", L"a/"}) {
        EXPECT_EQ(Normal(path), path);
    }
}

TEST(OuStringFileName, GivesWhatFollowsTheLastSlashOrBackslash) {
    EXPECT_EQ(FileName(L"C:\\data\\mesh.bdf"), L"mesh.bdf");
    EXPECT_EQ(FileName(L"/srv/data/mesh.bdf"), L"mesh.bdf");
    EXPECT_EQ(FileName(L"/srv\\mesh.bdf"), L"mesh.bdf");
    EXPECT_EQ(FileName(L"\\srv/mesh.bdf"), L"mesh.bdf");
    EXPECT_EQ(FileName(L"data/"), L"");
}

TEST(OuStringFileName, GivesTheWholePathWhereNoSlashStands) {
    EXPECT_EQ(FileName(L"mesh.bdf"), L"mesh.bdf");
    EXPECT_EQ(FileName(L"C:mesh.bdf"), L"C:mesh.bdf");
    EXPECT_EQ(FileName(L""), L"");
}

TEST(OuStringFileName, IsMadeOfAndAssignedEveryText) {
    EXPECT_STREQ(OuStringFileName("narrow/x", 0).GetFileName().GetBuffer(), L"x");
    EXPECT_STREQ(OuStringFileName(OuString(L"text/y")).GetFileName().GetBuffer(), L"y");
    OuStringFileName path;
    path = L"wide/z";
    EXPECT_STREQ(path.GetFileName().GetBuffer(), L"z");
    path = "narrow/w";
    EXPECT_STREQ(path.GetFileName().GetBuffer(), L"w");
    path = OuString(L"text/v");
    EXPECT_STREQ(path.GetFileName().GetBuffer(), L"v");
}

}  // namespace
