#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <regex>

#include "host/commands/ProgramSupport.h"

namespace {

using nlohmann::ordered_json;

constexpr const char* kDocument =
    R"({"id":"1","name":"P","type":"SIMULATION","children":[{"id":"2","name":"A","type":"CAEPART","files":[{"id":"3","name":"a"}]}]})";

class ProgramServer : public ProgramInFolder {
protected:
    void SetUp() override { folder.Write("a.json", kDocument); }
};

TEST_F(ProgramServer, StoresAndAnswers) {
    EXPECT_EQ(DoAfterDryRun({"store", "a.json", "--db", "s.db", "-o", "answer.json"}),
              "korvane-json: 's.db': 2 objects and 1 file stored, 3 of them under new keys\n");
    const ordered_json answer = ordered_json::parse(Read("answer.json"));
    EXPECT_EQ(answer["id"], "1");
    EXPECT_TRUE(answer["dbkey"].get<std::string>().starts_with("PRJ-1-"));
    EXPECT_EQ(answer["children"][0]["id"], "2");
    EXPECT_EQ(answer["children"][0]["files"][0]["id"], "3");
    EXPECT_TRUE(Read("answer.json").ends_with("}\n"));

    const ProcessResult again = Run({"store", "-", "--db", "s.db", "--again"}, "a.json");
    EXPECT_EQ(again.status, 0);
    EXPECT_EQ(again.error, "korvane-json: 's.db': 2 objects and 1 file stored, 0 of them under new keys\n");
    EXPECT_EQ(again.output, Read("answer.json"));
}

constexpr const char* kIsThere =
    "already, and the root of the document does not have its key. If the document is of that project, use "
    "--again: its objects are then recognised by their names. If it is of another project, give that another "
    "name with --project. Nothing was changed";

TEST_F(ProgramServer, AProjectOfAKnownNameIsStoredAgainOnlyIfTheUserSaysSo) {
    Do({"store", "a.json", "--db", "s.db", "-o", "first.json"});
    const std::string refused = std::string("'s.db' has a project 'P' ") + kIsThere;
    ExpectRefused({"store", "a.json", "--db", "s.db"}, refused);
    ExpectRefused({"store", "a.json", "--db", "s.db", "--dry-run"}, refused);
    ExpectRefused({"store", "a.json", "--db", "s.db", "--project", "P"}, refused);
    ExpectRefused({"store", "a.json", "--db", "s.db", "--project", "Q", "--again"},
                  "'s.db' has no project 'Q': leave out --again to store a new one. Nothing was changed");
    ExpectRefused({"store", "a.json", "--db", "t.db", "--again"},
                  "'t.db' has no project 'P': leave out --again to store a new one. Nothing was changed");

    EXPECT_EQ(DoAfterDryRun({"store", "a.json", "--db", "s.db", "--again", "-o", "again.json"}),
              "korvane-json: 's.db': 2 objects and 1 file stored, 0 of them under new keys\n");
    EXPECT_EQ(Read("again.json"), Read("first.json"));
    EXPECT_EQ(DoAfterDryRun({"store", "a.json", "--db", "s.db", "--project", "Q", "-o", "other.json"}),
              "korvane-json: 's.db': 2 objects and 1 file stored, 3 of them under new keys\n");
    Do({"store", "a.json", "--db", "s.db", "--project", "Q", "--again", "-o", "again.json"});
    EXPECT_EQ(Read("again.json"), Read("other.json"));

    // The key of the root says which project it is.
    const std::string key = ordered_json::parse(Read("other.json"))["dbkey"];
    Do({"fetch", key, "--db", "s.db", "-o", "fetched.json"});
    EXPECT_EQ(DoAfterDryRun({"store", "fetched.json", "--db", "s.db", "-o", "keyed.json"}),
              "korvane-json: 's.db': 2 objects and 1 file stored, 0 of them under new keys\n");
    EXPECT_EQ(Read("keyed.json"), Read("other.json"));
    ExpectRefused({"store", "fetched.json", "--db", "s.db", "--project", "P"},
                  "'s.db' has the root of the document, by its key, in the project 'Q' and not in 'P': leave "
                  "out --project. Nothing was changed");
}

TEST_F(ProgramServer, TheDocumentOfOneObjectIsStoredInItsProject) {
    Do({"store", "a.json", "--db", "s.db", "-o", "first.json"});
    folder.Write("part.json", R"({"id":"7","name":"A","type":"CAEPART"})");
    const ordered_json first = ordered_json::parse(Read("first.json"));
    ExpectRefused({"store", "part.json", "--db", "s.db", "--project", "P"},
                  std::string("'s.db' has a project 'P' ") + kIsThere);
    Do({"store", "part.json", "--db", "s.db", "--project", "P", "--again", "-o", "same.json"});
    EXPECT_EQ(ordered_json::parse(Read("same.json"))["dbkey"], first["children"][0]["dbkey"]);
    // Without the project it is one by itself.
    Do({"store", "part.json", "--db", "s.db", "-o", "other.json"});
    EXPECT_NE(ordered_json::parse(Read("other.json"))["dbkey"], first["children"][0]["dbkey"]);
    const std::string advice =
        ". Store the document of the whole project, or one whose root has its key: 'korvane-json apply' sets "
        "the keys. Nothing was changed";
    folder.Write("new.json", R"({"id":"7","name":"B","type":"CAEPART"})");
    ExpectRefused({"store", "new.json", "--db", "s.db", "--project", "P", "--again"},
                  "'s.db' has no 'B' (CAEPART) in the project 'P', and the document does not say where its "
                  "root belongs" +
                      advice);
    folder.Write(
        "two.json",
        R"({"name":"P","type":"X","children":[{"name":"A","type":"CAEPART"},{"name":"A","type":"CAEPART"}]})");
    Do({"store", "two.json", "--db", "s.db", "--again", "-o", "two-answer.json"});
    ExpectRefused({"store", "part.json", "--db", "s.db", "--project", "P", "--again"},
                  "'s.db' has more than one 'A' (CAEPART) in the project 'P', and the document does not say "
                  "which of them its root is" +
                      advice);
}

TEST_F(ProgramServer, FetchesWhatWasStored) {
    Do({"store", "a.json", "--db", "s.db", "-o", "answer.json"});
    const ordered_json answer = ordered_json::parse(Read("answer.json"));
    const std::string key = answer["children"][0]["dbkey"];
    const std::string output = OutputOf({"fetch", key, "--db", "s.db"});
    const ordered_json expected = {
        {"id", "2"},
        {"name", "A"},
        {"type", "CAEPART"},
        {"dbkey", key},
        {"files", {{{"id", "3"}, {"name", "a"}, {"dbkey", answer["children"][0]["files"][0]["dbkey"]}}}},
        {"subType", "SDM"}};
    EXPECT_EQ(ordered_json::parse(output).dump(), expected.dump());
    EXPECT_EQ(Do({"fetch", key, "--db", "s.db", "-o", "b.json"}), "");
    EXPECT_EQ(Read("b.json"), output);
}

TEST_F(ProgramServer, RefusesWithoutChangingAnything) {
    folder.Write("broken.json", R"({"type":"X",})");
    folder.Write("no-type.json", R"({"name":"P"})");
    folder.Write("no-name.json", R"({"type":"X"})");
    folder.Write("no-name-but-key.json", R"({"type":"X","dbkey":"PRJ-1"})");
    folder.Write("text", "x");
    for (const bool isThere : {false, true}) {
        const ProcessResult broken = Run({"store", "broken.json", "--db", "s.db"});
        EXPECT_EQ(broken.status, 1);
        EXPECT_TRUE(broken.error.starts_with("korvane-json: cannot read 'broken.json': line 1, column 13: "))
            << broken.error;
        ExpectRefused({"store", "no-type.json", "--db", "s.db"},
                      "cannot use 'no-type.json': its root has no \"type\", so nothing can be imported from "
                      "it. Nothing was "
                      "changed");
        ExpectRefused({"store", "no-name.json", "--db", "s.db"},
                      "the root of 'no-name.json' has no name: give the name of the project with --project. "
                      "Nothing was "
                      "changed");
        ExpectRefused({"store", "no-name-but-key.json", "--db", "s.db"},
                      "'s.db' did not give the key that the root of the document has, and the root has no "
                      "name: give the name of the project with --project. Nothing was changed");
        if (!isThere) {
            ExpectRefused({"fetch", "PRJ-1", "--db", "s.db"}, "'s.db' does not exist");
            EXPECT_FALSE(std::filesystem::exists(folder / "s.db"));
            Do({"store", "a.json", "--db", "s.db", "-o", "answer.json"});
        }
    }
    ExpectRefused(
        {"fetch", "PRJ-1", "--db", "s.db"},
        "there is no object with the key 'PRJ-1' in 's.db'; the answer from 'korvane-json store' lists the "
        "keys, and --list those of projects");
    ExpectRefused({"store", "a.json", "--db", "text"},
                  "'text' is not a SQLite database. Nothing was changed");
    ExpectRefused({"fetch", "PRJ-1", "--db", "text"}, "'text' is not a SQLite database");
    Do({"new", "--empty", "p.kvp"});
    ExpectRefused({"store", "a.json", "--db", "p.kvp"},
                  "'p.kvp' is a database of another kind, not a server database. Nothing was changed");
}

TEST_F(ProgramServer, TakesNothingThatItWorksOnForItsOutput) {
    const std::string refused =
        "': the command itself works on that file. Nothing was changed; give another "
        "file with -o";
    ExpectRefused({"store", "a.json", "--db", "s.db", "-o", "s.db"}, "cannot write 's.db" + refused);
    ExpectRefused({"store", "a.json", "--db", "s.db", "-o", "./s.db"}, "cannot write './s.db" + refused);
    ExpectRefused({"store", "a.json", "--db", "s.db", "-o", "./a.json"}, "cannot write './a.json" + refused);
    Do({"store", "a.json", "--db", "s.db", "-o", "answer.json"});
    const std::string key = ordered_json::parse(Read("answer.json"))["dbkey"];
    ExpectRefused({"store", "a.json", "--db", "s.db", "-o", "s.db"}, "cannot write 's.db" + refused);
    ExpectRefused({"fetch", key, "--db", "s.db", "-o", "s.db"}, "cannot write 's.db" + refused);
    Do({"new", "--empty", "p.kvp"});
    ExpectRefused({"export", "p.kvp", "-o", "p.kvp"}, "cannot write 'p.kvp" + refused);
    ExpectRefused({"fetch", key, "--db", "s.db", "-o", "p.kvp"},
                  "cannot write 'p.kvp': it is a database. Nothing was changed; give another file with -o");
}

TEST_F(ProgramServer, ListsWhatADatabaseHolds) {
    Do({"store", "a.json", "--db", "s.db", "-o", "first.json"});
    folder.Write("part.json",
                 R"({"id":"7","name":"K\u00fchler","type":"CAEPART","createdDate":"2026-03-01T09:30:00Z"})");
    Do({"store", "part.json", "--db", "s.db", "-o", "alone.json"});
    Do({"store", "a.json", "--db", "s.db", "--project", "Q", "-o", "second.json"});
    const auto keyOf = [&](const char* answer) {
        return ordered_json::parse(Read(answer))["dbkey"].get<std::string>();
    };
    const std::string list = keyOf("first.json") + "  P                               2 objects, 1 file\n" +
                             keyOf("alone.json") +
                             "  K\xC3\xBChler  2026-03-01T09:30:00Z  1 object, 0 files\n" +
                             keyOf("second.json") + "  P (in Q)                        2 objects, 1 file\n";
    const auto withoutBlanks = [](const std::string& text) {
        return std::regex_replace(text, std::regex("  +"), "  ");
    };
    EXPECT_EQ(withoutBlanks(OutputOf({"fetch", "--list", "--db", "s.db"})), withoutBlanks(list));

    const ordered_json json =
        ordered_json::parse(OutputOf({"fetch", "--list", "--db", "s.db", "--format", "json"}));
    const auto row = [](const std::string& key, const char* name, const char* project, const char* type,
                        const char* date, int objects, int files) {
        return ordered_json{{"key", key},          {"name", name},       {"project", project}, {"type", type},
                            {"createdDate", date}, {"objects", objects}, {"files", files}};
    };
    EXPECT_EQ(json, ordered_json({{"projects",
                                   {row(keyOf("first.json"), "P", "P", "SIMULATION", "", 2, 1),
                                    row(keyOf("alone.json"), "K\xC3\xBChler", "K\xC3\xBChler", "CAEPART",
                                        "2026-03-01T09:30:00Z", 1, 0),
                                    row(keyOf("second.json"), "P", "Q", "SIMULATION", "", 2, 1)}}}));
    Do({"fetch", "--list", "--db", "s.db", "-o", "list.txt"});
    EXPECT_EQ(Read("list.txt"), OutputOf({"fetch", "--list", "--db", "s.db"}));
}

TEST_F(ProgramServer, WhatIsDetachedDoesNotCountInTheList) {
    Do({"store", "a.json", "--db", "s.db", "-o", "answer.json"});
    folder.Write("less.json", R"({"id":"1","name":"P","type":"SIMULATION"})");
    Do({"store", "less.json", "--db", "s.db", "--again", "-o", "answer.json"});
    const ordered_json list =
        ordered_json::parse(OutputOf({"fetch", "--list", "--db", "s.db", "--format", "json"}));
    ASSERT_EQ(list["projects"].size(), 1);
    EXPECT_EQ(list["projects"][0]["objects"], 1);
    EXPECT_EQ(list["projects"][0]["files"], 0);
}

TEST_F(ProgramServer, AListIsAskedForAlone) {
    const std::string help = ". See 'korvane-json fetch --help'";
    ExpectRefused({"fetch", "--db", "s.db"}, "give the key of an object, or --list" + help, 2);
    ExpectRefused({"fetch", "PRJ-1", "--list", "--db", "s.db"}, "give either a key or --list" + help, 2);
    ExpectRefused({"fetch", "PRJ-1", "--format", "json", "--db", "s.db"},
                  "--format is for --list: a document is always JSON" + help, 2);
    const ProcessResult missing = Run({"fetch", "--list", "--db", "missing.db"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.output, "");
    EXPECT_TRUE(missing.error.starts_with("korvane-json: 'missing.db' ")) << missing.error;
}

#if defined(_WIN32)

TEST_F(ProgramServer, CaseDoesNotMakeAnotherFileOfItsOutput) {
    const std::string refused =
        "': the command itself works on that file. Nothing was changed; give another "
        "file with -o";
    ExpectRefused({"store", "a.json", "--db", "s.db", "-o", "S.DB"}, "cannot write 'S.DB" + refused);
    Do({"store", "a.json", "--db", "s.db", "-o", "answer.json"});
    ExpectRefused({"store", "a.json", "--db", "s.db", "-o", "S.DB"}, "cannot write 'S.DB" + refused);
    ExpectRefused({"store", "a.json", "--db", "s.db", "-o", "A.JSON"}, "cannot write 'A.JSON" + refused);
}

#else

TEST_F(ProgramServer, NamesThatSqliteTakesForSomethingElseAreNamesOfFiles) {
    for (const std::string name : {":memory:", "file:s.db", "file:x?mode=memory"}) {
        Do({"store", "a.json", "--db", name, "-o", "answer.json"});
        EXPECT_TRUE(std::filesystem::exists(folder / name)) << name;
        const std::string key = ordered_json::parse(Read("answer.json"))["dbkey"];
        EXPECT_NE(OutputOf({"fetch", key, "--db", name}), "");
        const std::string project = name + ".kvp";
        Do({"new", "--empty", project});
        EXPECT_NE(OutputOf({"tree", project}), "");
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "s.db"));
}

#endif

TEST_F(ProgramServer, AnAnswerThatCannotBeWrittenCanBeHadAgain) {
    const ProcessResult result = Run({"store", "a.json", "--db", "s.db", "-o", "missing/answer.json"});
    EXPECT_EQ(result.status, 3);
    EXPECT_NE(result.error.find("cannot write 'missing/answer.json': "), std::string::npos) << result.error;
    EXPECT_NE(result.error.find("the document was stored: store it again with --again to get the answer, "
                                "which will be the same"),
              std::string::npos);
    EXPECT_EQ(Do({"store", "a.json", "--db", "s.db", "--again", "-o", "answer.json"}),
              "korvane-json: 's.db': 2 objects and 1 file stored, 0 of them under new keys\n");
}

}  // namespace
