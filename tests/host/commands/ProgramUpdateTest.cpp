#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "host/commands/ProgramSupport.h"

namespace {

using nlohmann::json;

/// Where an object of a document is: its identifier and its key.
using Keys = std::map<std::string, std::string>;

class ProgramUpdate : public ProgramInFolder {
protected:
    void WriteStudies() const {
        folder.Write("root/plan.csv", "a;b\n");
        folder.Write("root/beam/beam.inp", kDeck);
        folder.Write("root/beam/beam.step", "x");
        folder.Write("root/crate/crate.inp", kDeck);
    }
    /// Every object and file of the project file by its path.
    Keys KeysOf(const std::string& file) const {
        const json document = json::parse(OutputOf({"export", file}));
        Keys keys;
        std::vector<std::pair<std::string, const json*>> waiting = {{"", &document}};
        while (!waiting.empty()) {
            const auto [above, node] = waiting.back();
            waiting.pop_back();
            const std::string path =
                above + "/" + node->at("type").get<std::string>() + " " + node->at("name").get<std::string>();
            // A file at the root is among the children, with an empty name, and attached.
            const std::string& place =
                keys.contains(path) ? path + " #" + node->at("id").get<std::string>() : path;
            keys[place] = node->at("id").get<std::string>() + " " + node->value("dbkey", "");
            for (const char* const section : {"children", "files"}) {
                const auto found = node->find(section);
                for (std::size_t index = 0; found != node->end() && index < found->size(); ++index) {
                    waiting.emplace_back(path, &found->at(index));
                }
            }
        }
        return keys;
    }
    void Exchange() const {
        Do({"export", "p.kvp", "-o", "sent.json"});
        Do({"store", "sent.json", "--db", "server.db", "-o", "answer.json"});
        Do({"apply", "answer.json", "p.kvp"});
    }
    void Copy(const std::string& from, const std::string& to) const {
        std::filesystem::copy(from, folder / to, std::filesystem::copy_options::recursive);
    }
    /// Without identifiers, which say in which order things were created, and without keys.
    std::string TreeOf(const std::string& input) const {
        std::istringstream words(OutputOf({"tree", input}));
        std::string text;
        for (std::string word; words >> word;) {
            const bool isKey = word == "key" || word.find("-") == 3;
            text += word.starts_with('#') || isKey ? "" : word + ' ';
        }
        return text;
    }
};

TEST_F(ProgramUpdate, AStudyInTheMiddleOfTheAlphabetMovesNoKey) {
    Copy(KORVANEJSON_EXAMPLES "/bracket-project", "bracket");
    Do({"new", "bracket", "p.kvp"});
    Exchange();
    const Keys before = KeysOf("p.kvp");
    ASSERT_GT(before.size(), 40U);
    Copy(KORVANEJSON_EXAMPLES "/bracket-project/03-drop-crate", "bracket/02-drop-again");
    EXPECT_EQ(
        DoAfterDryRun({"update", "bracket", "p.kvp"}),
        "korvane-json: 'p.kvp': 7 objects and 5 files added, 1 object and 0 files changed, 0 objects and "
        "0 files missing\n"
        "korvane-json: 'p.kvp': added (1): '02-drop-again' (Model #45)\n"
        "korvane-json: 'p.kvp': changed (1): 'bracket' (Project #1)\n");
    Exchange();
    const Keys after = KeysOf("p.kvp");
    std::map<std::string, int> countOfKey;
    for (const auto& [place, key] : before) {
        ASSERT_TRUE(after.contains(place)) << place;
        EXPECT_EQ(after.at(place), key) << place;
        EXPECT_FALSE(key.ends_with(' ')) << place << " has no key";
    }
    for (const auto& [place, key] : after) {
        EXPECT_FALSE(key.ends_with(' ')) << place << " has no key";
        EXPECT_EQ(++countOfKey[key], 1) << key;
    }
    EXPECT_EQ(after.size(), before.size() + 12);
    EXPECT_EQ(TreeOf("p.kvp"), TreeOf("bracket"));
    // Nothing is left to do, for the directory and for the server.
    const std::string bytes = Read("p.kvp");
    EXPECT_EQ(Do({"update", "bracket", "p.kvp"}),
              "korvane-json: 'p.kvp': nothing has changed in the directory. The project file is as it was\n");
    EXPECT_EQ(Read("p.kvp"), bytes);
    Exchange();
    EXPECT_EQ(KeysOf("p.kvp"), after);
}

TEST_F(ProgramUpdate, RemovesOnRequestOnly) {
    WriteStudies();
    folder.Write("root/crate/a.csv", "1\n");
    folder.Write("root/crate/b.csv", "1\n");
    Do({"new", "root", "p.kvp"});
    std::filesystem::remove_all(folder / "root/beam");
    std::filesystem::remove(folder / "root/plan.csv");
    const std::string kept = Do({"update", "root", "p.kvp"});
    EXPECT_TRUE(
        kept.ends_with("korvane-json: 'p.kvp': what is missing stays in the project. --remove removes "
                       "it\n"))
        << kept;
    EXPECT_NE(OutputOf({"tree", "p.kvp"}).find("beam.step"), std::string::npos);
    EXPECT_EQ(DoAfterDryRun({"update", "root", "p.kvp", "--remove"}),
              "korvane-json: 'p.kvp': 0 objects and 0 files added, 0 objects and 0 files changed, 5 objects "
              "and 3 files removed, 0 objects and 0 files missing\n"
              "korvane-json: 'p.kvp': removed (2): 'beam' (Model #3); 'plan.csv' (File #2)\n");
    EXPECT_EQ(TreeOf("p.kvp"), TreeOf("root"));
    // What was removed is in no table, and its identifier goes to nobody.
    Do({"new", "p.kvp", "q.kvp"});
    EXPECT_NE(Read("q.kvp").find("crate.inp"), std::string::npos);
    EXPECT_EQ(Read("q.kvp").find("beam.step"), std::string::npos);
    folder.Write("root/new.csv", "1\n");
    EXPECT_NE(Do({"update", "root", "p.kvp"}).find("'new.csv' (File #17)"), std::string::npos);
}

TEST_F(ProgramUpdate, RemovesMostFilesOnlyWithForce) {
    WriteStudies();
    Do({"new", "root", "p.kvp"});
    const auto refusal = [](int files) {
        return "--remove would remove " + std::to_string(files) +
               " of the 4 files that 'p.kvp' has from its directory, and their identifiers and keys would be "
               "lost. Nothing was changed; look whether 'root' is complete, and give --force if it is";
    };
    std::filesystem::rename(folder / "root", folder / "away");
    std::filesystem::create_directory(folder / "root");
    ExpectRefused({"update", "root", "p.kvp", "--remove"}, refusal(4));
    ExpectRefused({"update", "root", "p.kvp", "--remove", "--dry-run"}, refusal(4));
    ExpectRefused({"update", "root", "p.kvp", "--remove", "--moved", "--format", "json"}, refusal(4));
    folder.Write("root/plan.csv", "a;b\n");
    ExpectRefused({"update", "root", "p.kvp", "--remove"}, refusal(3));
    // Without --remove nothing is lost, and what is left out is not missing.
    Do({"update", "root", "p.kvp", "--dry-run"});
    Do({"update", "root", "p.kvp", "--remove", "--exclude", "beam", "--exclude", "crate", "--dry-run"});
    folder.Write("root/beam/beam.step", "x");
    Do({"update", "root", "p.kvp", "--remove", "--dry-run"});
    std::filesystem::remove_all(folder / "root/beam");
    EXPECT_NE(DoAfterDryRun({"update", "root", "p.kvp", "--remove", "--force"}).find("and 3 files removed"),
              std::string::npos);
}

TEST_F(ProgramUpdate, KeepsWhatWasImported) {
    WriteStudies();
    Do({"new", "root", "p.kvp"});
    folder.Write("b.json",
                 R"({"name":"B","type":"CAEPART","dbkey":"K","files":[{"name":"b.step","fileType":"CAD"}]})");
    Do({"import", "b.json", "p.kvp"});
    const std::string tree = OutputOf({"tree", "p.kvp"});
    EXPECT_EQ(Do({"update", "root", "p.kvp", "--remove"}),
              "korvane-json: 'p.kvp': nothing has changed in the directory. The project file is as it was\n");
    EXPECT_EQ(OutputOf({"tree", "p.kvp"}), tree);
}

TEST_F(ProgramUpdate, BringsARebuiltProjectTogetherWithItsDirectory) {
    Copy(KORVANEJSON_EXAMPLES "/bracket-project", "bracket");
    Do({"new", "bracket", "p.kvp"});
    Exchange();
    Do({"export", "p.kvp", "-o", "stored.json"});
    Do({"import", "stored.json", "rebuilt.kvp"});
    EXPECT_EQ(Run({"update", "bracket", "rebuilt.kvp"}).status, 1);
    const Keys before = KeysOf("rebuilt.kvp");
    const std::string said = Do({"update", "bracket", "rebuilt.kvp", "--moved"});
    EXPECT_TRUE(said.starts_with("korvane-json: 'rebuilt.kvp': 0 objects and 0 files added, ")) << said;
    // The files at the root have a name in the document now, because their paths are known.
    const Keys after = KeysOf("rebuilt.kvp");
    std::set<std::string> left;
    for (const auto& [place, key] : before) {
        EXPECT_TRUE(!after.contains(place) || after.at(place) == key) << place;
        left.insert(key);
    }
    for (const auto& [place, key] : after) {
        EXPECT_EQ(left.erase(key), 1U) << place << " " << key;
    }
    EXPECT_EQ(left, std::set<std::string>());
    EXPECT_EQ(OutputOf({"tree", "rebuilt.kvp"}).find("missing"), std::string::npos);
    EXPECT_EQ(Do({"update", "bracket", "rebuilt.kvp", "--remove"}),
              "korvane-json: 'rebuilt.kvp': nothing has changed in the directory. The project file is as it "
              "was\n");
}

TEST_F(ProgramUpdate, RefusesAnotherDirectory) {
    WriteStudies();
    folder.Write("other/job.inp", kDeck);
    Do({"new", "root", "p.kvp"});
    const std::string refusal = "'p.kvp' is the project of '" + ToUtf8(folder / "root") +
                                "', and 'other' is another directory. Nothing was changed; give that "
                                "directory, or --moved if it is this one now";
    ExpectRefused({"update", "other", "p.kvp"}, refusal);
    ExpectRefused({"update", "other", "p.kvp", "--dry-run"}, refusal);
    // A directory that is gone does not make every other one its place.
    std::filesystem::remove_all(folder / "root");
    ExpectRefused({"update", "other", "p.kvp"}, refusal);
    Do({"update", "other", "p.kvp", "--moved", "--remove", "--force"});
    EXPECT_NE(OutputOf({"tree", "p.kvp"}).find("job.inp"), std::string::npos);
}

TEST_F(ProgramUpdate, FindsADirectoryThatMoved) {
    WriteStudies();
    Do({"new", "root", "p.kvp"});
    const Keys before = KeysOf("p.kvp");
    std::filesystem::rename(folder / "root", folder / "new place");
    EXPECT_EQ(DoAfterDryRun({"update", "new place", "p.kvp"}),
              "korvane-json: 'p.kvp': 0 objects and 0 files added, 0 objects and 0 files changed, 0 objects "
              "and 0 files missing\n"
              "korvane-json: 'p.kvp': the directory of the project is now '" +
                  ToUtf8(folder / "new place") + "'\n");
    EXPECT_EQ(KeysOf("p.kvp"), before);
    EXPECT_EQ(OutputOf({"tree", "p.kvp"}).find("missing"), std::string::npos);
}

TEST_F(ProgramUpdate, WorksOnAProjectFileThatMovedWithItsDirectory) {
    WriteStudies();
    Do({"new", "root", "root/p.kvp"});
    std::filesystem::create_directory(folder / "far");
    std::filesystem::rename(folder / "root", folder / "far/away");
    EXPECT_EQ(OutputOf({"tree", "far/away/p.kvp"}).find("missing"), std::string::npos);
    EXPECT_EQ(
        Do({"update", "far/away", "far/away/p.kvp"}),
        "korvane-json: 'far/away/p.kvp': nothing has changed in the directory. The project file is as it "
        "was\n");
    folder.Write("far/away/more/job.inp", kDeck);
    EXPECT_NE(Do({"update", "far/away", "far/away/p.kvp"}).find("added (1): 'more' (Model #"),
              std::string::npos);
}

TEST_F(ProgramUpdate, LeavesTheFilesOfTheProgramOut) {
    WriteStudies();
    Do({"new", "root", "root/p.kvp"});
    Do({"export", "root/p.kvp", "-o", "sent.json"});
    Do({"store", "sent.json", "--db", "root/beam/server.db", "-o", "answer.json"});
    Do({"new", "--force", "root", "root/second project"});
    EXPECT_EQ(Do({"update", "root", "root/p.kvp"}),
              "korvane-json: 'root/p.kvp': nothing has changed in the directory. The project file is as it "
              "was\n");
    EXPECT_EQ(TreeOf("root"), TreeOf("root/p.kvp"));
}

TEST_F(ProgramUpdate, NamesWhatIsMissingInItsArguments) {
    WriteStudies();
    Do({"new", "root", "p.kvp"});
    folder.Write("text.kvp", "x");
    ExpectRefused({"update", "root"}, "PROJECT.kvp is required. See 'korvane-json update --help'", 2);
    ExpectRefused({"update", "root", "text.kvp"}, "'text.kvp' is not a SQLite database. Nothing was changed");
    ExpectRefused({"update", "root", "none.kvp"}, "'none.kvp' does not exist. Nothing was changed");
    for (const char* const directory : {"missing", "p.kvp", "root/plan.csv"}) {
        const ProcessResult result = Run({"update", directory, "p.kvp"});
        EXPECT_EQ(result.status, 1);
        EXPECT_TRUE(result.error.starts_with("korvane-json: cannot read '" + std::string(directory) + "': "))
            << result.error;
        EXPECT_TRUE(result.error.ends_with(". Nothing was changed; give the directory of the project\n"))
            << result.error;
    }
}

TEST_F(ProgramUpdate, TheExamplesOfItsHelpWork) {
    const std::string help = OutputOf({"update", "--help"});
    folder.Write("projects/bracket/static/job.inp", kDeck);
    Do({"new", "projects/bracket", "bracket.kvp"});
    std::istringstream lines(help.substr(help.find("Examples:")));
    int count = 0;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string word;
        std::vector<std::string> arguments;
        if (!(words >> word) || word != "korvane-json") {
            continue;
        }
        while (words >> word) {
            arguments.push_back(word);
        }
        Do(arguments);
        ++count;
    }
    EXPECT_EQ(count, 3);
}

#if !defined(_WIN32)

TEST_F(ProgramUpdate, WhatCannotBeReadIsKeptAndStrictTellsSo) {
    WriteStudies();
    Do({"new", "root", "p.kvp"});
    const std::string bytes = Read("p.kvp");
    std::filesystem::remove_all(folder / "root/beam");
    std::filesystem::create_symlink("gone", folder / "root/beam");
    const std::string counted =
        "korvane-json: 1 entry could not be read or named in a document, and was left out; ";
    const std::string said = Do({"update", "root", "p.kvp", "--remove"});
    EXPECT_NE(said.find("'p.kvp': cannot be read now, so it stays as it was (2): 'beam/beam.step' (File #5); "
                        "'beam/beam.inp' (File #9)"),
              std::string::npos)
        << said;
    EXPECT_TRUE(said.ends_with(counted + "with --strict that is a failure\n")) << said;
    EXPECT_EQ(Read("p.kvp"), bytes);
    folder.Write("root/more.csv", "1\n");
    const ProcessResult strict = Run({"update", "root", "p.kvp", "--strict"});
    EXPECT_EQ(strict.status, 1);
    EXPECT_TRUE(strict.error.ends_with(counted + "--strict does not allow that\n")) << strict.error;
    EXPECT_NE(OutputOf({"tree", "p.kvp"}).find("more.csv"), std::string::npos);
}

#endif

}  // namespace
