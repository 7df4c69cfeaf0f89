#include <gtest/gtest.h>

#include <set>

#include "ServerSupport.h"
#include "support/LongRun.h"

namespace host {
namespace {

class ServerTest : public ServerInFolder {};

constexpr const char* kSmallDocument =
    R"({"id":"1","name":"P","type":"SIMULATION","metaData":{},"children":[)"
    R"({"id":"2","name":"S","type":"CAEMODEL","children":[{"id":"3","name":"A","type":"CAEPART","children":[],"files":[]}],)"
    R"("files":[{"id":"4","name":"a.dat","type":"CAEFILE","fileType":"Report","filePath":""}]}],"files":[],"subType":"SDM"})";

TEST_F(ServerTest, AnswersWithIdentifiersAndKeysInTheTreeOfTheDocument) {
    EXPECT_EQ(Store(kSmallDocument),
              R"({"id":"1","dbkey":"PRJ-1","children":[{"id":"2","dbkey":"MOD-2","children":[)"
              R"({"id":"3","dbkey":"PRT-3"}],"files":[{"id":"4","dbkey":"FIL-4"}]}]})");
    EXPECT_EQ(Said(), "korvane-json: s: 3 objects and 1 file stored, 4 of them under new keys\n");
}

TEST_F(ServerTest, GivesTheDocumentBackWithItsKeysBehindTheTypes) {
    Store(kSmallDocument);
    EXPECT_EQ(Fetch("PRJ-1"),
              R"({"id":"1","name":"P","type":"SIMULATION","dbkey":"PRJ-1","metaData":{},"children":[)"
              R"({"id":"2","name":"S","type":"CAEMODEL","dbkey":"MOD-2","children":[)"
              R"({"id":"3","name":"A","type":"CAEPART","dbkey":"PRT-3","children":[],"files":[]}],)"
              R"("files":[{"id":"4","name":"a.dat","type":"CAEFILE","dbkey":"FIL-4","fileType":"Report",)"
              R"("filePath":""}]}],"files":[],"subType":"SDM"})");
    EXPECT_EQ(
        Fetch("PRT-3"),
        R"({"id":"3","name":"A","type":"CAEPART","dbkey":"PRT-3","children":[],"files":[],"subType":"SDM"})");
    EXPECT_EQ(Fetch("PRT-4"), "none");
}

TEST_F(ServerTest, TheSameDocumentGetsTheSameKeysAgain) {
    const std::string answer = StoreWhole(kSmallDocument);
    EXPECT_EQ(StoreWhole(kSmallDocument, {"P", true}), answer);
    EXPECT_EQ(report.newKeys, 0U);
    EXPECT_EQ(report.detached, 0U);
    // And so does the document that carries them.
    EXPECT_EQ(StoreWhole(FetchWhole("PRJ-1"), {}), answer);
    EXPECT_EQ(report.newKeys, 0U);
}

TEST_F(ServerTest, TwoProjectsDoNotCollideAndTwoDatabasesShareNoKey) {
    const std::string first = StoreWhole(kSmallDocument);
    EXPECT_EQ(Store(kSmallDocument, {"Q"}),
              R"({"id":"1","dbkey":"PRJ-5","children":[{"id":"2","dbkey":"MOD-6","children":[)"
              R"({"id":"3","dbkey":"PRT-7"}],"files":[{"id":"4","dbkey":"FIL-8"}]}]})");
    EXPECT_EQ(StoreWhole(kSmallDocument, {"P", true}), first);
    std::set<std::string> origins;
    for (int number = 0; number < 8; ++number) {
        std::filesystem::remove(File());
        Store(kSmallDocument);
        origins.insert(KeyOf(""));
    }
    EXPECT_GT(origins.size(), 4U);
}

TEST_F(ServerTest, AKeyThatTheDatabaseNeverGaveCountsForNothing) {
    EXPECT_EQ(Store(R"({"id":"1","type":"CAEPART","dbkey":"PRT-9-other"})"), R"({"id":"1","dbkey":"PRT-1"})");
    EXPECT_EQ(Fetch("PRT-1"), R"({"id":"1","type":"CAEPART","dbkey":"PRT-1","subType":"SDM"})");
    EXPECT_EQ(Again(R"({"id":"1","type":"CAEPART","dbkey":""})"), R"({"id":"1","dbkey":"PRT-1"})");
    EXPECT_EQ(Again(R"({"id":"1","type":"CAEPART","dbkey":null})"), R"({"id":"1","dbkey":"PRT-1"})");
    EXPECT_EQ(report.notes.CountOf("\"dbkey\" ignored, because it is null"), 1U);
}

TEST_F(ServerTest, EveryKindHasItsKey) {
    const std::pair<const char*, const char*> kinds[] = {
        {"CAESUBASSEMBLY", "SUB-1"},    {"CAEITERATION", "ITR-1"},      {"CAEITERATIONFOLDER", "ITF-1"},
        {"CAEITERATIONMODEL", "RUN-1"}, {"CAEASSEMBLYFOLDER", "ASF-1"}, {"CAELOADCASEVIEWFOLDER", "LVF-1"},
        {"CAELOADCASEVIEW", "LCV-1"},   {"CAEVIEWITEM", "ITM-1"},       {"CAETAG", "TAG-1"},
        {"CAEFILE", "FIL-1"},           {"Anything", "PRJ-1"}};
    for (const auto& [type, key] : kinds) {
        std::filesystem::remove(File());
        EXPECT_EQ(Store(std::string(R"({"id":"1","type":")") + type + "\"}"),
                  std::string(R"({"id":"1","dbkey":")") + key + "\"}");
    }
}

TEST_F(ServerTest, NodesWithoutIdentifierHaveKeysToo) {
    const std::string document =
        R"({"type":"X","children":[{"type":"CAEPART","name":"a"},{"type":"CAEPART","name":"b"}],"files":[{"name":"f"}]})";
    const std::string answer =
        R"({"dbkey":"PRJ-1","children":[{"dbkey":"PRT-2"},{"dbkey":"PRT-3"}],"files":[{"dbkey":"FIL-4"}]})";
    EXPECT_EQ(Store(document), answer);
    EXPECT_EQ(Again(document), answer);
    EXPECT_EQ(Fetch("PRT-3"), R"({"type":"CAEPART","dbkey":"PRT-3","name":"b","subType":"SDM"})");
    // A key without a type to stand behind comes last.
    EXPECT_EQ(Fetch("FIL-4"), R"({"name":"f","dbkey":"FIL-4","subType":"SDM"})");
}

TEST_F(ServerTest, AnIdentifierThatComesTwiceMeansTwoObjectsButOneFile) {
    const std::string document =
        R"({"id":"1","type":"X","children":[{"id":"5","type":"CAEPART"},{"id":"5","type":"CAEPART"},)"
        R"({"id":"6","type":"CAEFILE","name":"c"}],"files":[{"id":"6","name":"r"}]})";
    const std::string answer =
        R"({"id":"1","dbkey":"PRJ-1","children":[{"id":"5","dbkey":"PRT-2"},{"id":"5","dbkey":"PRT-3"},)"
        R"({"id":"6","dbkey":"FIL-4"}],"files":[{"id":"6","dbkey":"FIL-4"}]})";
    EXPECT_EQ(Store(document), answer);
    EXPECT_EQ(Again(document), answer);
    EXPECT_EQ(
        Fetch("PRJ-1"),
        R"({"id":"1","type":"X","dbkey":"PRJ-1","children":[{"id":"5","type":"CAEPART","dbkey":"PRT-2"},)"
        R"({"id":"5","type":"CAEPART","dbkey":"PRT-3"},{"id":"6","type":"CAEFILE","dbkey":"FIL-4","name":"c"}],)"
        R"("files":[{"id":"6","name":"r","dbkey":"FIL-4"}],"subType":"SDM"})");
}

TEST_F(ServerTest, WhatIsNoLongerInTheDocumentPartsButStaysFetchable) {
    Store(kSmallDocument);
    EXPECT_EQ(Again(R"({"id":"1","name":"P","type":"SIMULATION","children":[],"files":[]})"),
              R"({"id":"1","dbkey":"PRJ-1"})");
    EXPECT_EQ(report.detached, 1U);
    EXPECT_NE(Said().find("and 1 detached that the document no longer has"), std::string::npos);
    EXPECT_EQ(
        Fetch("PRJ-1"),
        R"({"id":"1","name":"P","type":"SIMULATION","dbkey":"PRJ-1","children":[],"files":[],"subType":"SDM"})");
    // With all below it.
    EXPECT_NE(Fetch("MOD-2").find("PRT-3"), std::string::npos);
    EXPECT_NE(Fetch("MOD-2").find("FIL-4"), std::string::npos);
    // And back under its key.
    EXPECT_NE(Again(kSmallDocument).find("MOD-2"), std::string::npos);
    EXPECT_NE(Fetch("PRJ-1").find("PRT-3"), std::string::npos);
}

TEST_F(ServerTest, APartOfAProjectIsReplacedInItsPlace) {
    Store(kSmallDocument);
    const std::string study = R"({"id":"2","name":"T","type":"CAEMODEL","dbkey":")" + KeyOf("MOD-2") +
                              R"(","children":[{"id":"9","type":"CAETAG"}],"files":[],"subType":"SDM"})";
    EXPECT_EQ(Store(study), R"({"id":"2","dbkey":"MOD-2","children":[{"id":"9","dbkey":"TAG-5"}]})");
    EXPECT_EQ(report.detached, 2U);
    EXPECT_EQ(Fetch("PRJ-1"),
              R"({"id":"1","name":"P","type":"SIMULATION","dbkey":"PRJ-1","metaData":{},"children":[)"
              R"({"id":"2","name":"T","type":"CAEMODEL","dbkey":"MOD-2","children":[)"
              R"({"id":"9","type":"CAETAG","dbkey":"TAG-5"}],"files":[]}],"files":[],"subType":"SDM"})");
}

TEST_F(ServerTest, AChildMovesAndAFileStaysWhereItHangsElsewhere) {
    Store(
        R"({"id":"1","type":"X","children":[)"
        R"({"id":"2","type":"CAEMODEL","children":[{"id":"4","type":"CAEPART"}],"files":[{"id":"5","name":"old"}]},)"
        R"({"id":"3","type":"CAEMODEL","children":[],"files":[]}]})");
    Store(R"({"id":"3","type":"CAEMODEL","dbkey":")" + KeyOf("MOD-5") +
          R"(","children":[{"id":"4","type":"CAEPART","dbkey":")" + KeyOf("PRT-3") +
          R"("}],"files":[{"id":"5","name":"new","dbkey":")" + KeyOf("FIL-4") + R"("}]})");
    const std::string moved =
        R"({"id":"1","type":"X","dbkey":"PRJ-1","children":[)"
        R"({"id":"2","type":"CAEMODEL","dbkey":"MOD-2","children":[],"files":[{"id":"5","name":"new","dbkey":"FIL-4"}]},)"
        R"({"id":"3","type":"CAEMODEL","dbkey":"MOD-5","children":[{"id":"4","type":"CAEPART","dbkey":"PRT-3"}],)"
        R"("files":[{"id":"5","name":"new","dbkey":"FIL-4"}]}],"subType":"SDM"})";
    EXPECT_EQ(Fetch("PRJ-1"), moved);
    // The file is recognised by its new name where only its other place is in the document.
    EXPECT_EQ(Again(R"({"type":"X","children":[{"type":"CAEMODEL","files":[{"name":"new"}]}]})"),
              R"({"dbkey":"PRJ-1","children":[{"dbkey":"MOD-2","files":[{"dbkey":"FIL-4"}]}]})");
}

TEST_F(ServerTest, AViewItemGoesOnShowingItsAssembly) {
    const std::string document =
        R"({"id":"1","type":"X","children":[{"id":"2","type":"CAEVIEWITEM","dbkey":"ITEM-1"},)"
        R"({"id":"3","type":"CAESUBASSEMBLY","dbkey":"ITEM-1"},{"id":"4","type":"CAEVIEWITEM","dbkey":"ITEM-2"}]})";
    EXPECT_EQ(Store(document), R"({"id":"1","dbkey":"PRJ-1","children":[{"id":"2","dbkey":"ITM-2"},)"
                               R"({"id":"3","dbkey":"SUB-3"},{"id":"4","dbkey":"ITM-4"}]})");
    const std::string fetched =
        R"({"id":"1","type":"X","dbkey":"PRJ-1","children":[{"id":"2","type":"CAEVIEWITEM","dbkey":"SUB-3"},)"
        R"({"id":"3","type":"CAESUBASSEMBLY","dbkey":"SUB-3"},{"id":"4","type":"CAEVIEWITEM","dbkey":"ITM-4"}],"subType":"SDM"})";
    EXPECT_EQ(Fetch("PRJ-1"), fetched);
    Store(FetchWhole("PRJ-1"), {});
    EXPECT_EQ(report.newKeys, 0U);
    EXPECT_EQ(Fetch("PRJ-1"), fetched);
    EXPECT_EQ(Fetch("ITM-2"), R"({"id":"2","type":"CAEVIEWITEM","dbkey":"ITM-2","subType":"SDM"})");
}

TEST_F(ServerTest, KeepsMembersOfEveryFormAndOrder) {
    const std::string document =
        R"({"files":{"x":{"n":1.50e2}},"a":[1,{"children":[]}],"type":"X","dbkey":"?","children":7,)"
        R"("children":[{"type":"CAEPART","\u0001\"\/":null},4],"a":true})";
    Store(document);
    EXPECT_EQ(
        Fetch("PRJ-1"),
        R"({"files":[{"n":1.50e2,"dbkey":"FIL-3"}],"a":[1,{"children":[]}],"type":"X","dbkey":"PRJ-1","children":7,)"
        R"("children":[{"type":"CAEPART","dbkey":"PRT-2","\u0001\"\/":null}],"a":true,"subType":"SDM"})");
    EXPECT_EQ(report.notes.CountOf("not stored, because it is not an object"), 1U);
}

TEST_F(ServerTest, ADryRunDoesItAllOnACopy) {
    const auto dryRun = [&](const std::string& document, bool isAgain = false) {
        report = StoreReport();
        Server server = Server::OpenForStoring(File(), true);
        return Plain(ToText(server.Store(Parse(document), {"P", isAgain}, report, kept.console)));
    };
    EXPECT_EQ(dryRun(R"({"id":"1","type":"CAEPART"})"), R"({"id":"1","dbkey":"PRT-1"})");
    EXPECT_FALSE(std::filesystem::exists(File()));
    // An empty file is as good as none.
    folder.Write("server.db", "");
    EXPECT_EQ(dryRun(R"({"id":"1","type":"CAEPART"})"), R"({"id":"1","dbkey":"PRT-1"})");
    EXPECT_EQ(ReadWholeFile(File()), "");
    Store(kSmallDocument);
    const std::string bytes = ReadWholeFile(File());
    EXPECT_NE(dryRun(R"({"name":"P","type":"SIMULATION","children":[{"id":"9","type":"CAETAG"}]})", true)
                  .find("TAG-5"),
              std::string::npos);
    EXPECT_EQ(report.detached, 1U);
    EXPECT_EQ(ReadWholeFile(File()), bytes);
    // What is refused is refused in the dry run as well.
    EXPECT_TRUE(ErrorOf([&] { dryRun(kSmallDocument); }).starts_with("has a project 'P' already"));
}

TEST_F(ServerTest, RefusesOtherFiles) {
    const auto errorOf = [&](std::string_view name) {
        const std::string storing = ErrorOf([&] { Server::OpenForStoring(folder / name, false); });
        std::string fetching = ErrorOf([&] { Server::OpenForFetching(folder / name); });
        EXPECT_EQ(storing, fetching);
        return fetching;
    };
    folder.Write("text", "x");
    EXPECT_EQ(errorOf("text"), "is not a SQLite database");
    EXPECT_EQ(ReadWholeFile(folder / "text"), "x");
    Store(kSmallDocument);
    Database(File(), DatabaseUse::Changing, kServerKind).Run("PRAGMA user_version = 4");
    EXPECT_EQ(errorOf("server.db"),
              "was written by a newer korvane-json: it has format 4, and this version reads formats up to 3. "
              "Use the newer version");
    Database(File(), DatabaseUse::Changing, DatabaseKind{kServerKind.application, 9, ""})
        .Run("PRAGMA application_id = 3");
    EXPECT_EQ(errorOf("server.db"), "is a database of another kind, not a server database");
    EXPECT_EQ(ErrorOf([&] { Server::OpenForFetching(folder / "missing"); }), "does not exist");
    EXPECT_FALSE(std::filesystem::exists(folder / "missing"));
}

TEST_F(ServerTest, LeavesTheFileInWhichAnotherProgramMakesItsDatabase) {
    Database other(File(), DatabaseUse::Creating, kServerKind);
    {
        Transaction transaction(other);
        ASSERT_EQ(std::filesystem::file_size(File()), 0U);
        EXPECT_EQ(ErrorOf([&] { Store(kSmallDocument); }),
                  "is in use by another program: try again when that program has finished");
        EXPECT_TRUE(std::filesystem::exists(File()));
        transaction.Complete([&] { other.SetKind(kServerKind); });
    }
    EXPECT_GT(std::filesystem::file_size(File()), 0U);
}

TEST_F(ServerTest, FetchesTheStateOfOneMoment) {
    Store(kSmallDocument);
    const std::string whole = Fetch("PRJ-1");
    const std::string key = KeyOf("PRJ-1");
    Server server = Server::OpenForFetching(File());
    // Progress is told between the nodes: there another program tries to change what comes next.
    bool isFetching = false;
    std::size_t tries = 0;
    Console console([](std::string_view) {}, true,
                    [&] {
                        if (isFetching) {
                            ++tries;
                            Database other(File(), DatabaseUse::Changing, kServerKind);
                            other.Run("PRAGMA busy_timeout = 0");
                            EXPECT_THROW(other.Run("UPDATE node SET members = '{}'"), DatabaseError);
                        }
                        return Console::Clock::time_point();
                    });
    isFetching = true;
    EXPECT_EQ(Plain(FetchText(server, key, console)), whole);
    EXPECT_EQ(tries, 4U);
}

TEST_F(ServerTest, RefusesAnEmptyName) {
    // To SQLite it means a database that is gone at the end.
    EXPECT_EQ(ErrorOf([] { Server::OpenForStoring({}, false); }), "is not a file name");
    EXPECT_EQ(ErrorOf([] { Server::OpenForStoring({}, true); }), "is not a file name");
}

TEST_F(ServerTest, RefusesDamagedContent) {
    const auto errorOf = [&](const std::string& statement) {
        std::filesystem::remove(File());
        Store(kSmallDocument);
        const std::string key = KeyOf("PRJ-1");
        Change(statement);
        return ErrorOf([&] { FetchText(Server::OpenForFetching(File()), key, kept.console); });
    };
    EXPECT_EQ(
        errorOf("UPDATE node SET members = '5' WHERE number = 1"),
        "is damaged: the members of a node cannot be read: they are not an object. Restore it from a copy");
    EXPECT_EQ(
        errorOf("UPDATE node SET members = '[1]' WHERE number = 3"),
        "is damaged: the members of a node cannot be read: they are not an object. Restore it from a copy");
    EXPECT_TRUE(errorOf("UPDATE node SET members = '{' WHERE number = 3")
                    .starts_with("is damaged: the members of a node cannot be read: line 1, column 2"));
    EXPECT_EQ(
        errorOf("DELETE FROM object WHERE number = 3"),
        "is damaged: something that the node 3 refers to is missing, or is below it. Restore it from a copy");
    EXPECT_EQ(
        errorOf("DELETE FROM node WHERE number = 2"),
        "is damaged: something that the node 3 refers to is missing, or is below it. Restore it from a copy");
    EXPECT_EQ(errorOf("DELETE FROM origin"),
              "is damaged: it does not have one text for its keys. Restore it from a copy");
    // Whoever reads the answer would see another key.
    EXPECT_EQ(errorOf("UPDATE origin SET text = 'a' || char(0) || 'b'"),
              "is damaged: a text has a NUL character: 'a\\x00b'. Restore it from a copy");
    EXPECT_EQ(errorOf("UPDATE origin SET text = x'6100'"),
              "is damaged: a text has a NUL character: 'a\\x00'. Restore it from a copy");
    EXPECT_EQ(
        errorOf("UPDATE node SET above = 2 WHERE number = 1"),
        "is damaged: something that the node 1 refers to is missing, or is below it. Restore it from a copy");
    EXPECT_EQ(
        errorOf("UPDATE node SET shown = 9 WHERE number = 3"),
        "is damaged: something that the node 3 refers to is missing, or is below it. Restore it from a copy");
    // An object would get the key of another one.
    for (const char* const owner : {"1", "9", "NULL"}) {
        EXPECT_EQ(
            errorOf(std::string("UPDATE node SET owner = ") + owner + " WHERE number = 3"),
            "is damaged: the node 3 is not owned by the object that it is below. Restore it from a copy");
    }
    EXPECT_EQ(errorOf("UPDATE node SET owner = 9 WHERE number = 1"),
              "is damaged: the node 1 is not owned by the object that it is below. Restore it from a copy");
}

TEST_F(ServerTest, AnInterruptedStoreLeavesNothing) {
    Store(kSmallDocument);
    const std::string bytes = ReadWholeFile(File());
    // Progress is told between the nodes, and there the work ends.
    int calls = 0;
    Console console([](std::string_view) {}, true,
                    [&] {
                        if (++calls == 3) {
                            throw DatabaseError("cannot be written: the disk is full");
                        }
                        return Console::Clock::time_point();
                    });
    EXPECT_EQ(ErrorOf([&] {
                  Server::OpenForStoring(File(), false)
                      .Store(Parse(R"({"name":"P","type":"SIMULATION","children":[{"type":"CAETAG"}]})"),
                             {"P", true}, report, console);
              }),
              "cannot be written: the disk is full");
    EXPECT_EQ(ReadWholeFile(File()), bytes);
    EXPECT_NE(Fetch("PRJ-1").find("PRT-3"), std::string::npos);
}

TEST_F(ServerTest, StoresAndFetchesManyNodesOneBelowTheOther) {
    constexpr int kDepth = kIsSanitized ? 20'000 : 100'000;
    std::string document = R"({"type":"X")";
    for (int depth = 0; depth < kDepth; ++depth) {
        document += R"(,"children":[{"type":"CAEMODEL")";
    }
    for (int depth = 0; depth < kDepth; ++depth) {
        document += "}]";
    }
    document += "}";
    const std::string answer = Store(document);
    EXPECT_EQ(report.objects, static_cast<std::size_t>(kDepth) + 1);
    const std::string innermost = R"("dbkey":"MOD-)" + std::to_string(kDepth + 1) + R"("}]})";
    EXPECT_NE(answer.find(innermost), std::string::npos);
    const std::string fetched = Fetch("PRJ-1");
    EXPECT_NE(fetched.find(R"({"type":"CAEMODEL",)" + innermost), std::string::npos);
    EXPECT_TRUE(fetched.ends_with(R"(]}],"subType":"SDM"})"));
    EXPECT_EQ(Again(document), answer);
    EXPECT_EQ(report.newKeys, 0U);
}

}  // namespace
}  // namespace host
