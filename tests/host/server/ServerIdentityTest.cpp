#include <gtest/gtest.h>

#include "ServerNodes.h"

namespace host {
namespace {

ordered_json StudyWithAll(const std::string& name) {
    const ordered_json deck = FileOf("job.inp", "Deck");
    return Study(name,
                 {Part("arm", {FileOf("arm.step", "CAD"), FileOf("arm.msh", "Mesh")}),
                  Node("CAEITERATIONFOLDER", "Iterations",
                       {Node("CAEITERATION", "job", {Node("CAEITERATIONMODEL", "job.inp", {}, {deck})})})},
                 {FileOf("notes.txt", "Report")});
}

TEST_F(ServerIdentity, AStudyInTheMiddleMovesNoKey) {
    const ordered_json before = Numbered(Project({StudyWithAll("alpha"), StudyWithAll("zeta")}));
    const std::map<std::string, std::string> keys = ByPath(before, KeysOf(before));
    const std::string bytes = ReadWholeFile(File());
    const ordered_json after =
        Numbered(Project({StudyWithAll("alpha"), StudyWithAll("bravo"), StudyWithAll("zeta")}));
    for (const bool hasKeys : {false, true}) {
        folder.Write("server.db", bytes);
        const ordered_json sent = hasKeys ? WithKeys(after, keys) : after;
        std::map<std::string, std::string> now = ByPath(after, KeysOf(sent, {"P", !hasKeys}));
        EXPECT_EQ(report.newKeys, 9U);
        EXPECT_EQ(report.detached, 0U);
        for (const auto& [path, key] : keys) {
            EXPECT_EQ(now[path], key) << path;
        }
        EXPECT_EQ(now["/P/bravo"], "MOD-20");
        EXPECT_EQ(now["/P/bravo/notes.txt"], "FIL-28");
    }
}

TEST_F(ServerIdentity, ADocumentWithoutKeysIsNewOrRefused) {
    const ordered_json document = Numbered(Project({Part("A")}));
    EXPECT_EQ(KeysOf(document, {}), (Keys{"PRJ-1", "PRT-2"}));
    const std::string refused =
        "has a project 'P' already, and the root of the document does not have its key. If the document is "
        "of "
        "that project, use --again: its objects are then recognised by their names. If it is of another "
        "project, give that another name with --project";
    EXPECT_EQ(RefusalOfNode(document, {}), refused);
    EXPECT_EQ(RefusalOfNode(With(document, "name", "other"), {"P"}), refused);
    EXPECT_EQ(RefusalOfNode(With(document, "dbkey", "PRJ-1-of another server"), {}), refused);
    // Nor does the key of one of its objects say that it is the same project: the object may have been
    // imported into another one.
    ordered_json withOne = document;
    withOne["children"][0]["dbkey"] = KeyOf("PRT-2");
    EXPECT_EQ(RefusalOfNode(withOne, {}), refused);

    EXPECT_EQ(KeysOf(document, {"", true}), (Keys{"PRJ-1", "PRT-2"}));
    EXPECT_EQ(KeysOf(withOne, {"", true}), (Keys{"PRJ-1", "PRT-2"}));
    EXPECT_EQ(KeysOf(document, {"Q"}), (Keys{"PRJ-3", "PRT-4"}));
    EXPECT_EQ(KeysOf(document, {"Q", true}), (Keys{"PRJ-3", "PRT-4"}));
    EXPECT_EQ(RefusalOfNode(document, {"R", true}),
              "has no project 'R': leave out --again to store a new one");
    // With its key the root says itself which project it is.
    const ordered_json root = With(document, "dbkey", KeyOf("PRJ-3"));
    EXPECT_EQ(KeysOf(root, {}), (Keys{"PRJ-3", "PRT-4"}));
    EXPECT_EQ(KeysOf(root, {"", true}), (Keys{"PRJ-3", "PRT-4"}));
    EXPECT_EQ(KeysOf(root, {"Q"}), (Keys{"PRJ-3", "PRT-4"}));
    EXPECT_EQ(RefusalOfNode(root, {"P"}),
              "has the root of the document, by its key, in the project 'Q' and not in 'P': leave out "
              "--project");
    EXPECT_EQ(RefusalOfNode(With(With(document, "name", ""), "dbkey", "?"), {}),
              "did not give the key that the root of the document has, and the root has no name: give the "
              "name of the project with --project");
}

TEST_F(ServerIdentity, IdentifiersCountForNothing) {
    const ordered_json document =
        Project({With(Part("A"), "id", "5"), With(Part("B"), "id", "6"), With(Study("S", {}), "id", "7")});
    EXPECT_EQ(KeysOf(document), (Keys{"PRJ-1", "PRT-2", "PRT-3", "MOD-4"}));
    const ordered_json swapped = With(
        Project({With(Part("B"), "id", "5"), With(Study("S", {}), "id", "6"), With(Part("A"), "id", "7")}),
        "id", "6");
    EXPECT_EQ(KeysAgain(swapped), (Keys{"PRJ-1", "PRT-3", "MOD-4", "PRT-2"}));
    EXPECT_EQ(report.newKeys, 0U);
    // They carry the keys back.
    EXPECT_EQ(
        Again(swapped.dump()),
        R"({"id":"6","dbkey":"PRJ-1","children":[{"id":"5","dbkey":"PRT-3"},{"id":"6","dbkey":"MOD-4"},)"
        R"({"id":"7","dbkey":"PRT-2"}]})");
}

TEST_F(ServerIdentity, AnObjectOfAnotherKindIsAnotherObject) {
    EXPECT_EQ(KeysOf(Project({Part("A")})), (Keys{"PRJ-1", "PRT-2"}));
    EXPECT_EQ(KeysAgain(Project({Node("CAETAG", "A", {})})), (Keys{"PRJ-1", "TAG-3"}));
    EXPECT_EQ(KeysAgain(Project({Node("CAETAG", "A", {}), Part("A")})), (Keys{"PRJ-1", "TAG-3", "PRT-2"}));
    // The type of a project is no kind of its own.
    EXPECT_EQ(KeysAgain(With(Project({Part("A")}), "type", "CAEPROGRAM")), (Keys{"PRJ-1", "PRT-2"}));
}

TEST_F(ServerIdentity, ARenamedObjectWithoutKeyIsNewAndTheOldOneStays) {
    EXPECT_EQ(KeysOf(Project({Study("S", {Part("A")})})), (Keys{"PRJ-1", "MOD-2", "PRT-3"}));
    EXPECT_EQ(KeysAgain(Project({Study("T", {Part("A")})})), (Keys{"PRJ-1", "MOD-4", "PRT-5"}));
    EXPECT_NE(Fetch("MOD-2").find("PRT-3"), std::string::npos);
    // With its old name it is itself again, with all that it had.
    EXPECT_EQ(KeysAgain(Project({Study("S", {Part("A")}), Study("T", {})})),
              (Keys{"PRJ-1", "MOD-2", "PRT-3", "MOD-4"}));
}

TEST_F(ServerIdentity, ARenamedObjectWithKeyIsFoundByItsNewNameOnly) {
    const ordered_json document = Project({Part("A"), Part("B")});
    EXPECT_EQ(KeysOf(document), (Keys{"PRJ-1", "PRT-2", "PRT-3"}));
    // They exchange their names.
    const std::map<std::string, std::string> exchanged = {
        {"/P", "PRJ-1"}, {"/P/B", "PRT-2"}, {"/P/A", "PRT-3"}};
    EXPECT_EQ(KeysOf(WithKeys(document, exchanged), {}), (Keys{"PRJ-1", "PRT-3", "PRT-2"}));
    EXPECT_EQ(KeysAgain(document), (Keys{"PRJ-1", "PRT-3", "PRT-2"}));
    // An object that was detached does not get in the way of the one that has its name now.
    EXPECT_EQ(KeysAgain(Project({Part("A")})), (Keys{"PRJ-1", "PRT-3"}));
    EXPECT_EQ(KeysOf(WithKeys(Project({Part("B")}), {{"/P", "PRJ-1"}, {"/P/B", "PRT-3"}}), {}),
              (Keys{"PRJ-1", "PRT-3"}));
    EXPECT_EQ(KeysAgain(Project({Part("B")})), (Keys{"PRJ-1", "PRT-3"}));
    EXPECT_EQ(KeysAgain(Project({Part("B"), Part("B")})), (Keys{"PRJ-1", "PRT-3", "PRT-4"}));
}

TEST_F(ServerIdentity, AMovedObjectKeepsItsKeyIfItHasOneInTheDocument) {
    KeysOf(Project({Study("S", {Part("A", {FileOf("a", "CAD")})}), Study("T", {})}));
    const ordered_json moved = Project({Study("S", {}), Study("T", {Part("A", {FileOf("a", "CAD")})})});
    const std::string bytes = ReadWholeFile(File());
    EXPECT_EQ(KeysAgain(moved), (Keys{"PRJ-1", "MOD-2", "MOD-5", "PRT-6", "FIL-7"}));
    folder.Write("server.db", bytes);
    // What is below it is found below it.
    EXPECT_EQ(KeysOf(WithKeys(moved, {{"/P", "PRJ-1"}, {"/P/T/A", "PRT-3"}}), {}),
              (Keys{"PRJ-1", "MOD-2", "MOD-5", "PRT-3", "FIL-4"}));
    EXPECT_EQ(KeysAgain(moved), (Keys{"PRJ-1", "MOD-2", "MOD-5", "PRT-3", "FIL-4"}));
    EXPECT_EQ(report.detached, 0U);
}

TEST_F(ServerIdentity, EqualSiblingsAreToldApartByTheirOrder) {
    const auto parts = [](int count) {
        return Project(std::vector<ordered_json>(static_cast<std::size_t>(count), Part("A")));
    };
    EXPECT_EQ(KeysOf(parts(3)), (Keys{"PRJ-1", "PRT-2", "PRT-3", "PRT-4"}));
    EXPECT_EQ(KeysAgain(parts(1)), (Keys{"PRJ-1", "PRT-2"}));
    EXPECT_EQ(KeysAgain(parts(3)), (Keys{"PRJ-1", "PRT-2", "PRT-3", "PRT-4"}));
    const ordered_json mixed = Project({Part("A"), Part("B"), Part("A"), Part("C"), Part("A"), Part("A")});
    EXPECT_EQ(KeysAgain(mixed), (Keys{"PRJ-1", "PRT-2", "PRT-5", "PRT-3", "PRT-6", "PRT-4", "PRT-7"}));
    // Two studies of equal name, and what is in them.
    const ordered_json studies = Project({Study("S", {Part("A")}), Study("S", {Part("A"), Part("B")})});
    EXPECT_EQ(KeysOf(studies, {"Q"}), (Keys{"PRJ-8", "MOD-9", "PRT-10", "MOD-11", "PRT-12", "PRT-13"}));
    EXPECT_EQ(KeysAgain(studies, "Q"), (Keys{"PRJ-8", "MOD-9", "PRT-10", "MOD-11", "PRT-12", "PRT-13"}));
}

TEST_F(ServerIdentity, WhatTheOrderAloneDecidesIsSaidIfTheNumberHasChanged) {
    const auto files = [](const std::vector<std::string>& names) {
        std::vector<ordered_json> all;
        for (const std::string& name : names) {
            all.push_back(FileOf(name, "Mesh"));
        }
        return Numbered(Project({Part("A", all)}));
    };
    const auto said = [&](const std::string& what) { return Said().find(what) != std::string::npos; };
    KeysOf(files({"mesh", "mesh", "a"}));
    KeysAgain(files({"a", "mesh", "b", "mesh"}));
    EXPECT_FALSE(said("order")) << Said();
    Again(files({"mesh", "mesh", "mesh", "a", "b", "c"}).dump());
    EXPECT_TRUE(
        said("s: may have the key of another one: recognised by the order among equal siblings, of "
             "which there were more or fewer before (2): 'mesh' (id '3'); 'mesh' (id '4')\n"))
        << Said();
    Again(files({"mesh", "mesh", "mesh", "a"}).dump());
    EXPECT_FALSE(said("order")) << Said();
    Again(files({"mesh", "a"}).dump());
    EXPECT_TRUE(said("fewer before (1): 'mesh' (id '3')\n")) << Said();
    // One that has its key needs no order.
    KeysOf(Numbered(With(Project({With(Part("A", {With(FileOf("mesh", "Mesh"), "dbkey", KeyOf("FIL-3")),
                                                  FileOf("mesh", "Mesh")}),
                                       "dbkey", KeyOf("PRT-2"))}),
                         "dbkey", KeyOf("PRJ-1"))),
           {});
    EXPECT_TRUE(said("fewer before (1): 'mesh' (id '4')\n")) << Said();
}

TEST_F(ServerIdentity, AnEqualSiblingWithAKeyIsNotCountedAsAnother) {
    const auto keyed = [&](const char* key) { return With(Part("A"), "dbkey", KeyOf(key)); };
    const auto project = [&](const std::vector<ordered_json>& children) {
        return With(Project(children), "dbkey", KeyOf("PRJ-1"));
    };
    KeysOf(Project({Part("A"), Part("A")}));
    // A new one in front of them.
    EXPECT_EQ(KeysOf(project({Part("A"), keyed("PRT-2"), keyed("PRT-3")}), {}),
              (Keys{"PRJ-1", "PRT-4", "PRT-2", "PRT-3"}));
    // From now on that is their order.
    EXPECT_EQ(KeysAgain(Project({Part("A"), Part("A"), Part("A")})),
              (Keys{"PRJ-1", "PRT-4", "PRT-2", "PRT-3"}));
    // The first one is gone, and a new one comes last.
    EXPECT_EQ(KeysOf(project({keyed("PRT-2"), keyed("PRT-3"), Part("A"), Part("A")}), {}),
              (Keys{"PRJ-1", "PRT-2", "PRT-3", "PRT-5", "PRT-6"}));
}

TEST_F(ServerIdentity, ASiblingThatMovedAwayLeavesTheOrderOfTheOthers) {
    KeysOf(Project({Study("S", {Part("A"), Part("A")}), Study("T", {})}));
    // The document of the other study alone takes the first of the two.
    const ordered_json other =
        With(Study("T", {With(Part("A"), "dbkey", KeyOf("PRT-3"))}), "dbkey", KeyOf("MOD-5"));
    EXPECT_EQ(KeysOf(other, {}), (Keys{"MOD-5", "PRT-3"}));
    EXPECT_EQ(KeysAgain(Project({Study("S", {Part("A")}), Study("T", {Part("A")})})),
              (Keys{"PRJ-1", "MOD-2", "PRT-4", "MOD-5", "PRT-3"}));
}

TEST_F(ServerIdentity, AKeyOfAnotherKindOrOfTwoObjectsIsNotUsed) {
    KeysOf(Project({Part("A"), Study("S", {})}));
    const ordered_json document =
        With(Project({With(Part("A"), "dbkey", KeyOf("MOD-3")), With(Study("S", {}), "dbkey", KeyOf("MOD-3")),
                      With(Study("T", {}), "dbkey", KeyOf("MOD-3")),
                      With(Node("CAEVIEWITEM", "V", {}), "dbkey", KeyOf("PRT-2"))}),
             "dbkey", KeyOf("PRJ-1"));
    EXPECT_EQ(KeysOf(document, {}), (Keys{"PRJ-1", "PRT-2", "MOD-3", "MOD-4", "ITM-5"}));
    EXPECT_EQ(Said(),
              "korvane-json: s: 5 objects and 0 files stored, 2 of them under new keys\n"
              "korvane-json: s: \"dbkey\" not used, because it is the key of an object of another kind (2): "
              "'A'; 'V'\n"
              "korvane-json: s: \"dbkey\" not used, because another object of the document has the same (1): "
              "'T'\n");
    // A root with the key of another kind has none.
    EXPECT_TRUE(RefusalOfNode(With(Project({}), "dbkey", KeyOf("MOD-3")), {}).starts_with("has a project"));
}

TEST_F(ServerIdentity, AFileGoesByItsOwnerItsNameAndItsType) {
    const ordered_json document =
        Numbered(Project({Part("A", {FileOf("f", "CAD"), FileOf("f", "Mesh"), FileOf("f", "CAD")}),
                          Part("B", {FileOf("f", "CAD")})}));
    const Keys keys = {"PRJ-1", "PRT-2", "FIL-3", "FIL-4", "FIL-5", "PRT-6", "FIL-7"};
    EXPECT_EQ(KeysOf(document), keys);
    EXPECT_EQ(KeysAgain(document), keys);
    const ordered_json changed = Numbered(Project(
        {Part("0", {FileOf("f", "CAD")}),
         Part("A", {FileOf("e", "CAD"), FileOf("f", "Mesh"), FileOf("f", "CAD"), FileOf("f", "Report")}),
         Part("B", {FileOf("g", "CAD")})}));
    EXPECT_EQ(KeysAgain(changed), (Keys{"PRJ-1", "PRT-8", "FIL-9", "PRT-2", "FIL-10", "FIL-4", "FIL-3",
                                        "FIL-11", "PRT-6", "FIL-12"}));
    // What was detached is there again.
    EXPECT_EQ(KeysAgain(document), keys);
}

TEST_F(ServerIdentity, AFileIsRecognisedWhereverItIsAttached) {
    const auto at = [](const std::string& id, const std::string& name = "f") {
        return With(FileOf(name, "CAD"), "id", id);
    };
    EXPECT_EQ(KeysOf(Project({Part("A", {at("7")}), Part("B", {at("7")})})),
              (Keys{"PRJ-1", "PRT-2", "FIL-3", "PRT-4", "FIL-3"}));
    // A new part that comes first has it too.
    const ordered_json more = Project(
        {Part("0", {at("9")}), Part("A", {at("9")}), Part("B", {at("9")}), Part("C", {at("9", "g")})});
    EXPECT_EQ(KeysAgain(more),
              (Keys{"PRJ-1", "PRT-5", "FIL-3", "PRT-2", "FIL-3", "PRT-4", "FIL-3", "PRT-6", "FIL-3"}));
    // Two files where it was one.
    EXPECT_EQ(KeysAgain(Project({Part("A", {at("1")}), Part("B", {at("2")})})),
              (Keys{"PRJ-1", "PRT-2", "FIL-3", "PRT-4", "FIL-7"}));
    // One file where it was two.
    EXPECT_EQ(KeysAgain(Project({Part("A", {at("1")}), Part("B", {at("1")})})),
              (Keys{"PRJ-1", "PRT-2", "FIL-3", "PRT-4", "FIL-3"}));
    // Only one of its nodes has the key.
    EXPECT_EQ(KeysAgain(Project({Part("D", {at("1")}), Part("E", {With(at("1"), "dbkey", KeyOf("FIL-7"))})})),
              (Keys{"PRJ-1", "PRT-8", "FIL-7", "PRT-9", "FIL-7"}));
    // Nodes that have keys of two files are two files, and identifiers do not unite files with one key.
    EXPECT_EQ(KeysAgain(Project({Part("A", {With(at("1"), "dbkey", KeyOf("FIL-7"))}),
                                 Part("B", {With(at("1"), "dbkey", KeyOf("FIL-3"))}),
                                 Part("C", {With(at("2"), "dbkey", KeyOf("FIL-3"))})})),
              (Keys{"PRJ-1", "PRT-2", "FIL-7", "PRT-4", "FIL-3", "PRT-6", "FIL-3"}));
}

TEST_F(ServerIdentity, WhatIsInAFileIsRecognisedInEachOfItsPlaces) {
    const auto at = [](const std::string& name) {
        ordered_json file = With(FileOf("f", "CAD"), "id", "7");
        // Nodes in a file have no identifiers here, so they are different ones in each place.
        file["files"] = {FileOf(name, "Mesh"), FileOf(name, "Mesh")};
        file["children"] = ordered_json::array({Part(name)});
        return file;
    };
    const ordered_json document = Project({Part("A", {at("x")}), Part("B", {at("x")})});
    const Keys keys = {"PRJ-1", "PRT-2", "FIL-3", "PRT-4", "FIL-5", "FIL-6",
                       "PRT-7", "FIL-3", "PRT-8", "FIL-9", "FIL-10"};
    EXPECT_EQ(KeysOf(document), keys);
    EXPECT_EQ(KeysAgain(document), keys);
    const std::string bytes = ReadWholeFile(File());
    // A new place comes first. What is in the file is told apart by its order through all places.
    EXPECT_EQ(KeysAgain(Project({Part("0", {at("x")}), Part("A", {at("x")}), Part("B", {at("x")})})),
              (Keys{"PRJ-1", "PRT-11", "FIL-3", "PRT-4", "FIL-5", "FIL-6", "PRT-2", "FIL-3", "PRT-8", "FIL-9",
                    "FIL-10", "PRT-7", "FIL-3", "PRT-12", "FIL-13", "FIL-14"}));
    folder.Write("server.db", bytes);
    // Also if only the key says that it is one file.
    ordered_json byKey = document;
    byKey["children"][0]["files"][0]["dbkey"] = KeyOf("FIL-3");
    byKey["children"][1]["files"][0]["dbkey"] = KeyOf("FIL-3");
    byKey["children"][1]["files"][0]["id"] = "8";
    EXPECT_EQ(KeysAgain(byKey), keys);
}

TEST_F(ServerIdentity, NamesAreWholeTexts) {
    // Put together with slashes, these paths are the same.
    const ordered_json document =
        Project({Study("a/b", {Part("c")}), Study("a", {Part("b/c"), Study("b", {Part("c")})}), Study("", {}),
                 Study("", {Part("")}), Study("/", {}), Study("A", {}), Study("\xC3\xA4", {})});
    const Keys keys = KeysOf(document);
    EXPECT_EQ(keys.size(), 13U);
    EXPECT_EQ(KeysAgain(document), keys);
    ordered_json reversed = document;
    std::ranges::reverse(reversed["children"]);
    EXPECT_EQ(KeysAgain(reversed), (Keys{"PRJ-1", "MOD-13", "MOD-12", "MOD-11", "MOD-8", "PRT-14", "MOD-9",
                                         "MOD-4", "PRT-5", "MOD-6", "PRT-7", "MOD-2", "PRT-3"}));
}

}  // namespace
}  // namespace host
