#include <gtest/gtest.h>

#include "host/directory/Description.h"
#include "host/directory/DirectoryScanner.h"
#include "host/system/Console.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

TEST(FirstHeading, StripsTheMarksOfMarkdown) {
    EXPECT_EQ(FirstHeading("# Leaf Spring\nTested.\n"), "Leaf Spring");
    EXPECT_EQ(FirstHeading("\n\n###   Leaf Spring ###  \n"), "Leaf Spring");
    EXPECT_EQ(FirstHeading("# Written in C#\n"), "Written in C#");
}

TEST(FirstHeading, PrefersAHeadingToALineBeforeIt) {
    EXPECT_EQ(FirstHeading("[badge] [badge]\n\n## Crash of a beam\n"), "Crash of a beam");
}

TEST(FirstHeading, TakesTheFirstLineWhereThereIsNoHeading) {
    EXPECT_EQ(FirstHeading("\n  front crash, 50 km/h \r\nmore\n"), "front crash, 50 km/h");
    EXPECT_EQ(FirstHeading("#hashtag is no heading\n"), "#hashtag is no heading");
}

TEST(FirstHeading, KnowsUnderlinedHeadings) {
    EXPECT_EQ(FirstHeading("Plate\n=====\ntext"), "Plate");
    EXPECT_EQ(FirstHeading("=====\nPlate\n=====\ntext"), "Plate");
    EXPECT_EQ(FirstHeading("intro\n\nPlate\n-----\n"), "Plate");
    EXPECT_EQ(FirstHeading("= Plate\n"), "Plate");
}

TEST(FirstHeading, PassesOverWhatIsNoTextOfTheAuthor) {
    EXPECT_EQ(FirstHeading("<!-- # hidden -->\n# Plate"), "Plate");
    EXPECT_EQ(FirstHeading("<!-- a\n# hidden\n-->\n# Plate"), "Plate");
    EXPECT_EQ(FirstHeading("```\n# a comment\n```\n# Plate"), "Plate");
    EXPECT_EQ(FirstHeading("---\ntitle: x\n---\n# Plate"), "Plate");
    EXPECT_EQ(FirstHeading("\xEF\xBB\xBF# Plate"), "Plate");
    EXPECT_EQ(FirstHeading("***\n---\nPlate"), "Plate");
}

TEST(FirstHeading, IsEmptyForATextWithoutWords) {
    EXPECT_EQ(FirstHeading(""), "");
    EXPECT_EQ(FirstHeading(" \n---\n***\n#\n"), "");
}

TEST(FirstHeading, KeepsTheBytesOfOtherEncodings) {
    EXPECT_EQ(FirstHeading("# Gr\xF6\xDF"
                           "e\n"),
              "Gr\xF6\xDF"
              "e");
}

TEST(FirstHeading, EndsLinesAtCarriageReturnsToo) {
    EXPECT_EQ(FirstHeading("old text\rsecond"), "old text");
}

std::string Describe(const TemporaryDirectory& folder) {
    Console console([](std::string_view) {}, false, &Console::Clock::now);
    DirectoryTree tree;
    EXPECT_FALSE(ScanDirectory(folder.Path(), {}, console, tree));
    return DescribeDirectory(tree.directories.front());
}

TEST(DescribeDirectory, ReadsTheReadmeBeforeTheNotes) {
    const TemporaryDirectory folder;
    folder.Write("NOTES.txt", "from the notes");
    EXPECT_EQ(Describe(folder), "from the notes");
    folder.Write("readme.MD", "# from the readme");
    EXPECT_EQ(Describe(folder), "from the readme");
}

TEST(DescribeDirectory, TakesTheNextFileWhereOneSaysNothing) {
    const TemporaryDirectory folder;
    folder.Write("README", "\n\n");
    folder.Write("README.md", "# second");
    EXPECT_EQ(Describe(folder), "second");
}

TEST(DescribeDirectory, ReadsTextsOnly) {
    const TemporaryDirectory folder;
    folder.Write("README.pdf", "%PDF-1.4 # no");
    folder.Write("README.py", "# no");
    folder.Write("summary.md", "# no");
    EXPECT_EQ(Describe(folder), "");
}

}  // namespace
}  // namespace host
