#include <gtest/gtest.h>

#include "host/system/NearestWord.h"

namespace host {
namespace {

const std::vector<std::string> kWords = {"tree", "export", "new", "import", "compare"};

TEST(NearestWord, OneLetterInThreeMayBeWrong) {
    EXPECT_EQ(NearestWord("tre", kWords), "tree");
    EXPECT_EQ(NearestWord("treee", kWords), "tree");
    EXPECT_EQ(NearestWord("trea", kWords), "tree");
    EXPECT_EQ(NearestWord("exprot", kWords), "export");
    EXPECT_EQ(NearestWord("ecxport", kWords), "export");
    EXPECT_EQ(NearestWord("nwe", kWords), "new");
    EXPECT_EQ(NearestWord("Studie", {"Project", "Study"}), "Study") << "of the longer word";
    EXPECT_EQ(NearestWord("draw", kWords), "");
    EXPECT_EQ(NearestWord("exrtpo", kWords), "");
}

TEST(NearestWord, OfSeveralItIsTheNearestAndThenTheFirst) {
    EXPECT_EQ(NearestWord("mport", kWords), "import");
    EXPECT_EQ(NearestWord("xport", kWords), "export");
    EXPECT_EQ(NearestWord("abcx", {"abcd", "abce"}), "abcd");
}

TEST(NearestWord, ABeginningIsEnough) {
    EXPECT_EQ(NearestWord("comp", kWords), "compare");
    EXPECT_EQ(NearestWord("c", kWords), "");
    EXPECT_EQ(NearestWord("--al", {"--ignore", "--all"}), "--all");
}

TEST(NearestWord, NeitherCaseNorDashesCount) {
    EXPECT_EQ(NearestWord("TREE", kWords), "tree");
    EXPECT_EQ(NearestWord("Studi", {"PROJECT", "STUDY"}), "STUDY");
    EXPECT_EQ(NearestWord("-strict", {"--strict"}), "--strict");
    EXPECT_EQ(NearestWord("--", {"--strict"}), "");
    EXPECT_EQ(NearestWord("", kWords), "");
}

TEST(NearestWord, LongTextsAreNoMisspeltWords) {
    const std::string text(41, 'x');
    EXPECT_EQ(NearestWord(text, {text}), "");
    EXPECT_EQ(NearestWord(text.substr(1), {text}), text);
}

TEST(NearestWord, IsAskedFor) {
    EXPECT_EQ(DidYouMean("tree"), "; did you mean 'tree'?");
    EXPECT_EQ(DidYouMean(""), "");
}

}  // namespace
}  // namespace host
