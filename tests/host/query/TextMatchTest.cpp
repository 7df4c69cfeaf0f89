#include <gtest/gtest.h>

#include "host/query/TextMatch.h"

namespace host {
namespace {

bool FitsName(const char* pattern, const char* text) {
    return Glob(pattern, GlobStyle::Name).Fits(text);
}

bool FitsPath(const char* pattern, const char* text) {
    return Glob(pattern, GlobStyle::Path).Fits(text);
}

TEST(TextMatch, StarsInNamesStandForAnyText) {
    EXPECT_TRUE(FitsName("bracket*", "bracket"));
    EXPECT_TRUE(FitsName("bracket*", "bracket/left"));
    EXPECT_FALSE(FitsName("bracket*", "a bracket"));
    EXPECT_TRUE(FitsName("*.frd", "job.1.frd"));
    EXPECT_FALSE(FitsName("*.frd", "job.frd.gz"));
    EXPECT_TRUE(FitsName("a*b*c", "axxbxxbxc"));
    EXPECT_FALSE(FitsName("a*b*c", "axxbxxbx"));
    EXPECT_TRUE(FitsName("*", ""));
    EXPECT_FALSE(FitsName("", "a"));
}

TEST(TextMatch, OneCharacterMayHaveSeveralBytes) {
    EXPECT_TRUE(FitsName("br?cke", "br\u00FCcke"));
    EXPECT_FALSE(FitsName("br?cke", "brcke"));
    EXPECT_TRUE(FitsName("br?cke",
                         "br\xFC"
                         "cke"))
        << "a byte that is not UTF-8";
}

TEST(TextMatch, LetterCaseDoesNotCount) {
    EXPECT_TRUE(FitsName("BR\u00DCCKE*", "br\u00FCcke1"));
    EXPECT_EQ(FoldCase("br\u00FCcke"), FoldCase("BR\u00DCCKE"));
    EXPECT_NE(FoldCase("a"), FoldCase("b"));
}

TEST(TextMatch, BracketsAreOneOfTheirCharacters) {
    EXPECT_TRUE(FitsName("run[1-3]", "run2"));
    EXPECT_FALSE(FitsName("run[1-3]", "run4"));
    EXPECT_TRUE(FitsName("run[!1-3]", "run4"));
    EXPECT_FALSE(FitsName("run[^1-3]", "run3"));
    EXPECT_TRUE(FitsName("[a-c]", "B"));
    EXPECT_TRUE(FitsName("a[*]b", "a*b"));
    EXPECT_FALSE(FitsName("a[*]b", "axb"));
    EXPECT_TRUE(FitsName("[]]", "]"));
    EXPECT_TRUE(FitsName("a[b", "a[b"));
}

TEST(TextMatch, AStarInAPathStaysWithinOneName) {
    EXPECT_TRUE(FitsPath("Linear/*", "Linear/Plates"));
    EXPECT_FALSE(FitsPath("Linear/*", "Linear/Plates/job"));
    EXPECT_FALSE(FitsPath("Lin?ar/?", "Lin/ar/a"));
    EXPECT_TRUE(FitsPath("Linear/**", "Linear/Plates/job"));
    EXPECT_TRUE(FitsPath("**/job", "job"));
    EXPECT_TRUE(FitsPath("**/job", "Linear/Plates/job"));
    EXPECT_FALSE(FitsPath("**/job", "Linear/myjob"));
    EXPECT_TRUE(FitsPath("a/**/b", "a/b"));
    EXPECT_TRUE(FitsPath("a/**/b", "a/x/y/b"));
    EXPECT_FALSE(FitsPath("a/**/b", "a/xb"));
    EXPECT_TRUE(FitsPath("**/a*/b*", "x/a1/a2/b"));
    EXPECT_FALSE(FitsPath("*/b", "a/x/b"));
    EXPECT_FALSE(FitsPath("a[!x]b", "a/b")) << "brackets are a character of a name, too";
    EXPECT_FALSE(FitsPath("*[!x]*c", "ab/dc"));
    EXPECT_TRUE(FitsPath("**[!x]c", "ab/dc"));
    EXPECT_TRUE(FitsName("a[!x]b", "a/b"));
}

TEST(TextMatch, ManyStarsTakeNoTimeWithoutEnd) {
    std::string pattern;
    for (int star = 0; star < 100; ++star) {
        pattern += "*a";
    }
    EXPECT_FALSE(FitsName((pattern + "b").c_str(), std::string(5000, 'a').c_str()));
    EXPECT_FALSE(FitsPath(("**/" + pattern + "b").c_str(), std::string(2000, 'a').c_str()));
}

}  // namespace
}  // namespace host
