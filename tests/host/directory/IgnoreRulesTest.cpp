#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <random>
#include <vector>

#include "host/HostSupport.h"
#include "host/directory/DirectoryScanner.h"
#include "host/directory/IgnoreRules.h"
#include "host/system/Text.h"
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

/// What the rules say about a file or, with a slash at its end, a directory.
std::string VerdictOf(std::string_view rules, std::string_view path) {
    IgnoreRules read;
    read.AddLines(rules);
    const bool isDirectory = path.ends_with('/');
    switch (read.About(path.substr(0, path.size() - (isDirectory ? 1 : 0)), isDirectory)) {
        case IgnoreRules::Verdict::None:
            return "none";
        case IgnoreRules::Verdict::LeftOut:
            return "out";
        case IgnoreRules::Verdict::TakenIn:
            return "in";
    }
    return "";
}

TEST(IgnoreRules, HaveCommentsBlanksAndExceptions) {
    EXPECT_EQ(VerdictOf("# a.txt\n\n\\#b\n\\!c\nd  \ne\\ \r\n", "a.txt"), "none");
    EXPECT_EQ(VerdictOf("\\#b\n", "#b"), "out");
    EXPECT_EQ(VerdictOf("\\!c\n", "!c"), "out");
    EXPECT_EQ(VerdictOf("d  \n", "d"), "out");
    EXPECT_EQ(VerdictOf("e\\ \r\n", "e "), "out");
    EXPECT_EQ(VerdictOf("e\\ \r\n", "e"), "none");
    EXPECT_EQ(VerdictOf("\xEF\xBB\xBF*.log\n!keep.log\n", "a/keep.log"), "in");
    EXPECT_EQ(VerdictOf("*.log\n!keep.log\n*.log\n", "keep.log"), "out");
}

TEST(IgnoreRules, AreAboutNamesOrAboutPaths) {
    EXPECT_EQ(VerdictOf("*.frd\n", "a/b/c.frd"), "out");
    EXPECT_EQ(VerdictOf("/c.frd\n", "a/c.frd"), "none");
    EXPECT_EQ(VerdictOf("/c.frd\n", "c.frd"), "out");
    EXPECT_EQ(VerdictOf("a/*.frd\n", "a/c.frd"), "out");
    EXPECT_EQ(VerdictOf("a/*.frd\n", "a/b/c.frd"), "none");
    EXPECT_EQ(VerdictOf("a/*.frd\n", "b/a/c.frd"), "none");
    EXPECT_EQ(VerdictOf("results/\n", "a/results/"), "out");
    EXPECT_EQ(VerdictOf("results/\n", "a/results"), "none");
}

TEST(IgnoreRules, HaveStarsForAnyNumberOfNames) {
    EXPECT_EQ(VerdictOf("**/c\n", "c"), "out");
    EXPECT_EQ(VerdictOf("**/c\n", "a/b/c"), "out");
    EXPECT_EQ(VerdictOf("a/**\n", "a/b/c"), "out");
    EXPECT_EQ(VerdictOf("a/**\n", "a/"), "none");
    EXPECT_EQ(VerdictOf("a/**/c\n", "a/c"), "out");
    EXPECT_EQ(VerdictOf("a/**/c\n", "a/b/b/c"), "out");
    EXPECT_EQ(VerdictOf("a/**/c\n", "b/c"), "none");
    EXPECT_EQ(VerdictOf("a/**/b/**/c\n", "a/x/b/y/b/z/c"), "out");
}

TEST(IgnoreRules, HaveClasses) {
    EXPECT_EQ(VerdictOf("run[0-9].dat\n", "run7.dat"), "out");
    EXPECT_EQ(VerdictOf("run[!0-9].dat\n", "run7.dat"), "none");
    EXPECT_EQ(VerdictOf("run[^0-9].dat\n", "runx.dat"), "out");
    EXPECT_EQ(VerdictOf("[[:digit:][:upper:]]x\n", "Ax"), "out");
    EXPECT_EQ(VerdictOf("[]]x\n", "]x"), "out");
    EXPECT_EQ(VerdictOf("[a\n", "[a"), "none");
    EXPECT_EQ(VerdictOf("a[[:]b\n", "a:b"), "out");
    EXPECT_EQ(VerdictOf("a[[::]]\n", "a:]"), "none") << "a class without a name";
    EXPECT_EQ(VerdictOf("a[[:none:]]\n", "an"), "none");
    EXPECT_EQ(VerdictOf("a\\\n", "a\\"), "none");
    EXPECT_EQ(VerdictOf("a\\*b\n", "a*b"), "out");
    EXPECT_EQ(VerdictOf("a\\*b\n", "axb"), "none");
}

TEST(IgnoreRules, TakeNoMoreTimeForManyStars) {
    std::string pattern;
    for (int star = 0; star < 200; ++star) {
        pattern += "a*";
    }
    EXPECT_EQ(VerdictOf(pattern + "b", std::string(2000, 'a')), "none");
    std::string deep;
    for (int name = 0; name < 500; ++name) {
        deep += "a/";
    }
    EXPECT_EQ(VerdictOf("**/a/**/a/**/a/**/a/**/b\n", deep + "c"), "none");
}

#if !defined(_WIN32)
class IgnoreRulesAndGit : public testing::Test {
protected:
    void SetUp() override {
        for (const std::string top : {"", "a/", "b/", "ab/", "a/b/", "b/a/", "a/b/a/", "ab/b/"}) {
            for (const char* const name : {"a", "b", "ab", "a b", "x.y", "[ab]", "a*"}) {
                if (!std::filesystem::is_directory(folder / ("root/" + top + name))) {
                    folder.Write("root/" + top + (top.empty() ? "f-" : "") + name + ".d", "x");
                    folder.Write("root/" + top + "files/" + name, "x");
                }
            }
        }
        Git({"init", "-q"});
    }
    std::string Git(std::vector<std::string> words) const {
        words.insert(words.begin(), {"git", "-C", (folder / "root").string()});
        const ProcessResult result = RunProgram(
            "/usr/bin/env",
            ProcessOptions{
                words, {{"GIT_CONFIG_NOSYSTEM", "1"}, {"GIT_CONFIG_GLOBAL", "/dev/null"}}, {}, {}, {}});
        EXPECT_EQ(result.status, 0) << result.error;
        return result.output;
    }
    /// The files that git takes in, without those whose names begin with a dot.
    std::vector<std::string> TakenInByGit(const std::vector<std::string>& excluded) const {
        std::vector<std::string> words = {"ls-files", "-o", "-z", "--exclude-per-directory=.korvaneignore"};
        for (const std::string& pattern : excluded) {
            words.insert(words.end(), {"-x", pattern});
        }
        const std::string listed = Git(words);
        std::vector<std::string> files;
        for (std::size_t begin = 0; begin < listed.size();) {
            const std::size_t end = listed.find('\0', begin);
            std::string file = listed.substr(begin, end - begin);
            if (!file.starts_with('.') && file.find("/.") == std::string::npos) {
                files.push_back(std::move(file));
            }
            begin = end + 1;
        }
        std::ranges::sort(files);
        return files;
    }
    std::vector<std::string> TakenIn(const std::vector<std::string>& excluded) {
        Exclusion exclusion(excluded);
        DirectoryTree tree;
        KeptConsole kept;
        ScanOptions options;
        options.exclusion = &exclusion;
        EXPECT_FALSE(ScanDirectory(folder / "root", options, kept.console, tree));
        std::vector<std::string> files;
        for (const ScannedDirectory& directory : tree.directories) {
            for (const ScannedFile& file : directory.files) {
                files.push_back(
                    std::filesystem::relative(directory.path / file.name, folder / "root").string());
                EXPECT_FALSE(exclusion.LeavesOutFile(files.back())) << files.back();
            }
        }
        std::ranges::sort(files);
        return files;
    }
    std::string RandomPattern() {
        constexpr std::array<std::string_view, 16> kNames = {
            "a",   "b",     "ab",  "*",     "a*",    "?",      "[ab]",   "**",
            "*b*", "[!a]b", "*.d", "files", "a\\ b", "\\[ab]", "[a-b]*", "a\\*"};
        std::string pattern = Random(3) == 0 ? "!" : "";
        pattern += Random(4) == 0 ? "/" : "";
        const std::size_t names = 1 + Random(3);
        for (std::size_t name = 0; name < names; ++name) {
            pattern += name == 0 ? "" : "/";
            pattern += kNames.at(Random(kNames.size()));
        }
        return pattern + (Random(4) == 0 ? "/" : "");
    }
    std::size_t Random(std::size_t below) { return random() % below; }

    TemporaryDirectory folder;
    std::mt19937 random{12};
};

TEST_F(IgnoreRulesAndGit, TakeInTheSameFiles) {
    constexpr int kRounds = 150;
    std::size_t leftOut = 0;
    for (int round = 0; round < kRounds; ++round) {
        std::string said;
        for (const std::string directory : {"", "a/", "a/b/"}) {
            std::string rules = "# rules\n";
            for (std::size_t rule = Random(4); rule > 0; --rule) {
                rules += RandomPattern() + "\n";
            }
            folder.Write("root/" + directory + ".korvaneignore", rules);
            said += directory + ": " + rules;
        }
        std::vector<std::string> excluded;
        if (Random(3) == 0) {
            excluded.push_back(RandomPattern());
            said += "excluded: " + excluded.back();
        }
        const std::vector<std::string> files = TakenIn(excluded);
        leftOut += files.size() < 60 ? 1 : 0;
        ASSERT_EQ(files, TakenInByGit(excluded)) << said;
    }
    EXPECT_GT(leftOut, 20U) << "the rules leave something out";
}
#endif

}  // namespace
}  // namespace host
