#include <gtest/gtest.h>

#include "OlderServerDatabase.h"
#include "ServerNodes.h"

namespace host {
namespace {

class ServerCarryOver : public ServerIdentity {
protected:
    void SetUp() override {
        Database database(File(), DatabaseUse::Creating, kOlderKind);
        Transaction(database).Complete([&] {
            database.Run(kOlderTables);
            database.Run(kOlderRows);
            database.SetKind(kOlderKind);
        });
    }
    std::int64_t Format() const {
        Database database(File(), DatabaseUse::Reading, kServerKind);
        Statement format(database, "PRAGMA user_version");
        return format.Begin().Next() ? format.Number(0) : 0;
    }
    /// Changes the older database; with its checksum, unless it is of format 1.
    void ChangeOlder(const std::string& statements) {
        Database database(File(), DatabaseUse::Changing, kOlderKind);
        Transaction(database).Complete([&] {
            database.Run(statements.c_str());
            if (ReadChecksum(database)) {
                WriteChecksum(database, kOlderKind);
            }
        });
    }
    static ordered_json Document() {
        const ordered_json file = With(FileOf("f", "CAD"), "id", "4");
        return Project({Study("S", {Part("A", {file}), Part("A", {file, FileOf("f", "Mesh")})}),
                        Study("S", {Part("A")})});
    }
    const Keys keys = {"PRJ-1", "MOD-2", "PRT-3", "FIL-4", "PRT-5", "FIL-4", "FIL-6", "MOD-7", "PRT-8"};
};

TEST_F(ServerCarryOver, AnOlderDatabaseIsFetchedFromAsItIs) {
    const std::string bytes = ReadWholeFile(File());
    EXPECT_EQ(KeysIn(ordered_json::parse(Fetch("PRJ-1"))), keys);
    EXPECT_EQ(Fetch("MOD-9"),
              R"({"id":"9","name":"gone","type":"CAEMODEL","dbkey":"MOD-9","children":[)"
              R"({"id":"10","name":"A","type":"CAEPART","dbkey":"PRT-10"}],"subType":"SDM"})");
    EXPECT_TRUE(ReadWholeFile(File()) == bytes);
    ChangeOlder("DROP TABLE checksum; PRAGMA user_version = 1");
    EXPECT_EQ(KeysIn(ordered_json::parse(Fetch("PRJ-1"))), keys);
}

TEST_F(ServerCarryOver, AnOlderDatabaseIsListedWithWhatWasDetachedInIt) {
    const auto list = [&] {
        std::string text;
        for (const StoredRoot& root : Server::OpenForFetching(File()).List()) {
            text += Plain(root.key) + " " + root.name + " in " + root.project + " " + root.type + " " +
                    std::to_string(root.objects) + " " + std::to_string(root.files) + "\n";
        }
        return text;
    };
    const std::string whole = "PRJ-1 P in P SIMULATION 6 2\n";
    const std::string view = "PRJ-11 view in view SIMULATION 3 0\n";
    EXPECT_EQ(list(), whole + "MOD-9 gone in P CAEMODEL 2 0\n" + view);
    ChangeOlder("DROP TABLE checksum; PRAGMA user_version = 1");
    EXPECT_EQ(list(), whole + "MOD-9 gone in P CAEMODEL 2 0\n" + view);
    KeysAgain(Document());
    EXPECT_EQ(list(), whole + "MOD-9 gone in P CAEMODEL 2 0\n" + view);
}

TEST_F(ServerCarryOver, StoringCarriesItOverWithAllKeysAndPaths) {
    for (const bool isFirstFormat : {false, true}) {
        std::filesystem::remove(File());
        SetUp();
        if (isFirstFormat) {
            ChangeOlder("DROP TABLE checksum; PRAGMA user_version = 1");
        }
        const std::string whole = Fetch("PRJ-1");
        const std::string gone = Fetch("MOD-9");
        const std::string view = Fetch("PRJ-11");
        const ordered_json more =
            Project({Study("R", {Part("A")}), Document()["children"][0], Study("S", {Part("A"), Part("A")})});
        EXPECT_EQ(KeysOf(more, {"", true}), (Keys{"PRJ-1", "MOD-14", "PRT-15", "MOD-2", "PRT-3", "FIL-4",
                                                  "PRT-5", "FIL-4", "FIL-6", "MOD-7", "PRT-8", "PRT-16"}));
        EXPECT_TRUE(Said().starts_with(
            "korvane-json: s: carried over to a new format with all its keys; older versions of korvane-json "
            "cannot read it any more\nkorvane-json: s: 9 objects and 2 files stored, 3 of them under new "
            "keys\n"))
            << Said();
        EXPECT_EQ(Format(), kServerKind.format);
        EXPECT_EQ(Fetch("MOD-9"), gone);
        EXPECT_EQ(Fetch("PRJ-11"), view);
        EXPECT_EQ(KeysAgain(Document()), keys);
        EXPECT_EQ(Said().find("carried over"), std::string::npos);
        EXPECT_EQ(KeysOf(ordered_json::parse(FetchWhole("PRJ-11")), {}),
                  (Keys{"PRJ-11", "ITM-12", "SUB-13"}));
        EXPECT_EQ(Fetch("PRJ-11"), view);
    }
}

TEST_F(ServerCarryOver, WhereADetachedObjectWasIsNotKnownAndNotGuessed) {
    EXPECT_EQ(KeysAgain(Project({Study("gone", {Part("A")})})), (Keys{"PRJ-1", "MOD-14", "PRT-15"}));
    EXPECT_TRUE(RefusalOfNode(Study("gone", {}), {"P", true}).starts_with("has more than one 'gone'"));
    // What is detached from now on is known.
    EXPECT_EQ(KeysAgain(Project({})), (Keys{"PRJ-1"}));
    EXPECT_EQ(KeysAgain(Document()), keys);
}

TEST_F(ServerCarryOver, WhatIsDetachedAfterwardsIsRecognisedByTheOrderThatItHad) {
    EXPECT_EQ(KeysAgain(Project({Document()["children"][0]})),
              (Keys{"PRJ-1", "MOD-2", "PRT-3", "FIL-4", "PRT-5", "FIL-4", "FIL-6"}));
    EXPECT_EQ(KeysAgain(Document()), keys);
    std::filesystem::remove(File());
    SetUp();
    EXPECT_EQ(KeysAgain(Project({Study("S", {}), Study("S", {})})), (Keys{"PRJ-1", "MOD-2", "MOD-7"}));
    EXPECT_EQ(KeysAgain(Document()), keys);
}

TEST_F(ServerCarryOver, ARefusalOrADryRunLeavesTheOlderDatabase) {
    const std::string bytes = ReadWholeFile(File());
    EXPECT_TRUE(RefusalOfNode(Document(), {}).starts_with("has a project 'P' already"));
    Server server = Server::OpenForStoring(File(), true);
    const JSONNode answer = server.Store(Parse(Document().dump()), {"P", true}, report, kept.console);
    EXPECT_EQ(KeysIn(ordered_json::parse(Plain(ToText(answer)))), keys);
    EXPECT_TRUE(report.isCarriedOver);
    EXPECT_TRUE(ReadWholeFile(File()) == bytes);
}

TEST_F(ServerCarryOver, AnInterruptionLeavesTheOlderDatabase) {
    const std::string bytes = ReadWholeFile(File());
    // Progress is told when the database is checked, and between the nodes that are stored.
    for (const int last : {1, 2, 5}) {
        int calls = 0;
        Console console([](std::string_view) {}, true,
                        [&] {
                            if (++calls > last) {
                                throw DatabaseError("cannot be written: the disk is full");
                            }
                            return Console::Clock::time_point();
                        });
        EXPECT_EQ(ErrorOf([&] {
                      Server::OpenForStoring(File(), false)
                          .Store(Parse(Document().dump()), {"P", true}, report, console);
                  }),
                  "cannot be written: the disk is full");
        EXPECT_TRUE(ReadWholeFile(File()) == bytes) << last;
    }
    EXPECT_EQ(KeysIn(ordered_json::parse(Fetch("PRJ-1"))), keys);
}

TEST_F(ServerCarryOver, DamageIsRefused) {
    const auto errorOf = [&](const std::string& statement) {
        std::filesystem::remove(File());
        SetUp();
        ChangeOlder(statement);
        return RefusalOfNode(Document(), {"P", true});
    };
    EXPECT_EQ(
        errorOf("UPDATE node SET members = '5' WHERE number = 23"),
        "is damaged: the members of a node cannot be read: they are not an object. Restore it from a copy");
    EXPECT_TRUE(errorOf("UPDATE node SET members = '{' WHERE number = 23")
                    .starts_with("is damaged: the members of a node cannot be read: line 1, column 2"));
    EXPECT_EQ(errorOf("UPDATE node SET object = 14 WHERE number = 23"),
              "is damaged: something that the node 23 refers to is missing, or is below it. Restore it from "
              "a copy");
    EXPECT_TRUE(errorOf("ALTER TABLE object ADD COLUMN more TEXT").starts_with("is damaged or was made by"));
    EXPECT_EQ(
        errorOf("UPDATE object SET key = 'PRT-9-ae9187' WHERE number = 3; DROP TABLE checksum;"
                "CREATE TABLE checksum (value INTEGER NOT NULL)"),
        "is damaged: its content does not have the checksum that was written with it. Restore it from a "
        "copy");
}

}  // namespace
}  // namespace host
