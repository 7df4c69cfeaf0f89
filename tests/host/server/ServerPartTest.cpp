#include <gtest/gtest.h>

#include "ServerNodes.h"

namespace host {
namespace {

constexpr const char* kAdvice =
    ". Store the document of the whole project, or one whose root has its key: 'korvane-json apply' sets the "
    "keys";

/// Documents of single objects, whose path from the root of the project is not in the document.
class ServerPart : public ServerIdentity {
protected:
    std::string Refusal(const std::string& problem) const { return problem + kAdvice; }
};

TEST_F(ServerPart, IsRecognisedWhereTheProjectHasOneOfItsKindAndName) {
    KeysOf(Project({Study("S", {Part("A")}), Study("T", {Part("B")}), Part("S")}));
    EXPECT_EQ(KeysAgain(Study("S", {Part("A"), Part("C")})), (Keys{"MOD-2", "PRT-3", "PRT-7"}));
    EXPECT_EQ(KeysAgain(Part("B")), (Keys{"PRT-5"}));
    // They are where they were.
    EXPECT_EQ(KeysAgain(Project({Study("S", {Part("A"), Part("C")}), Study("T", {Part("B")}), Part("S")})),
              (Keys{"PRJ-1", "MOD-2", "PRT-3", "PRT-7", "MOD-4", "PRT-5", "PRT-6"}));
    EXPECT_EQ(report.detached, 0U);
    // Its key says where it is, whatever it is called.
    EXPECT_EQ(KeysOf(With(Study("U", {Part("A")}), "dbkey", KeyOf("MOD-2")), {}), (Keys{"MOD-2", "PRT-3"}));
    EXPECT_EQ(KeysAgain(Study("U", {Part("A")})), (Keys{"MOD-2", "PRT-3"}));
}

TEST_F(ServerPart, IsRefusedWhereItCouldBeSeveralOrNone) {
    KeysOf(Project({Study("S", {Part("A")}), Study("T", {Part("A"), Study("T", {})})}));
    EXPECT_EQ(RefusalOfNode(Part("A"), {"P", true}),
              Refusal("has more than one 'A' (CAEPART) in the project 'P', and the document does not say "
                      "which of them its root is"));
    EXPECT_EQ(RefusalOfNode(Study("T", {}), {"P", true}),
              Refusal("has more than one 'T' (CAEMODEL) in the project 'P', and the document does not say "
                      "which of them its root is"));
    EXPECT_EQ(RefusalOfNode(Study("U", {}), {"P", true}),
              Refusal("has no 'U' (CAEMODEL) in the project 'P', and the document does not say where its "
                      "root belongs"));
    // A project of another name could be this one under a new name, or one in it.
    EXPECT_EQ(RefusalOfNode(With(Project({}), "name", "Q"), {"P", true}),
              Refusal("has no 'Q' (SIMULATION) in the project 'P', and the document does not say where its "
                      "root belongs"));
    // The object of which there is one belongs to another node of the document.
    ordered_json inner = Study("S", {With(Study("S", {}), "dbkey", KeyOf("MOD-2"))});
    EXPECT_TRUE(RefusalOfNode(inner, {"P", true}).starts_with("has no 'S'"));
    // What was detached counts as well.
    KeysAgain(Project({Study("V", {Part("S")})}));
    KeysAgain(Project({Study("W", {Part("S")})}));
    EXPECT_TRUE(RefusalOfNode(Part("S"), {"P", true}).starts_with("has more than one 'S'"));
}

TEST_F(ServerPart, TheRootOfTheProjectIsItselfAlsoWhereAnotherProjectInItHasItsName) {
    const ordered_json document = Project({Project({Part("A")}), Part("A")});
    const Keys keys = {"PRJ-1", "PRJ-2", "PRT-3", "PRT-4"};
    EXPECT_EQ(KeysOf(document), keys);
    EXPECT_EQ(KeysAgain(document), keys);
    const ordered_json part = Part("X");
    EXPECT_EQ(KeysOf(part, {}), (Keys{"PRT-5"}));
    EXPECT_EQ(KeysAgain(part, "X"), (Keys{"PRT-5"}));
}

TEST_F(ServerPart, AProjectCanConsistOfParts) {
    EXPECT_EQ(KeysOf(Study("S", {Study("S", {})})), (Keys{"MOD-1", "MOD-2"}));
    EXPECT_EQ(KeysAgain(Study("S", {Study("S", {})})), (Keys{"MOD-1", "MOD-2"}));
    EXPECT_EQ(KeysAgain(Study("T", {})), (Keys{"MOD-3"}));
    // The project itself is new then. Whether its studies are the ones that were stored alone is not known.
    const ordered_json whole = Project({Study("S", {}), Study("T", {})});
    EXPECT_EQ(KeysAgain(whole), (Keys{"PRJ-4", "MOD-5", "MOD-6"}));
    EXPECT_EQ(KeysOf(WithKeys(whole, {{"/P", "PRJ-4"}, {"/P/S", "MOD-1"}, {"/P/T", "MOD-3"}}), {}),
              (Keys{"PRJ-4", "MOD-1", "MOD-3"}));
    EXPECT_EQ(KeysAgain(whole), (Keys{"PRJ-4", "MOD-1", "MOD-3"}));
}

TEST_F(ServerPart, ADetachedOneIsRecognisedInItsOldPlace) {
    KeysOf(Project({Study("S", {Part("A")})}));
    KeysAgain(Project({}));
    EXPECT_EQ(KeysOf(With(Study("S", {Part("A"), Part("B")}), "dbkey", KeyOf("MOD-2")), {}),
              (Keys{"MOD-2", "PRT-3", "PRT-4"}));
    EXPECT_EQ(Fetch("PRJ-1").find("MOD-2"), std::string::npos);
    EXPECT_EQ(KeysAgain(Project({Study("S", {Part("A"), Part("B")})})),
              (Keys{"PRJ-1", "MOD-2", "PRT-3", "PRT-4"}));
}

TEST_F(ServerPart, KeepsItsOrderAmongEqualSiblings) {
    KeysOf(Project({Part("A"), Part("A")}));
    EXPECT_EQ(KeysOf(With(Part("A"), "dbkey", KeyOf("PRT-3")), {}), (Keys{"PRT-3"}));
    EXPECT_EQ(KeysAgain(Project({})), (Keys{"PRJ-1"}));
    EXPECT_EQ(KeysAgain(Project({Part("A"), Part("A")})), (Keys{"PRJ-1", "PRT-2", "PRT-3"}));
}

TEST_F(ServerPart, AFileStaysAttachedAndKeepsTheMembersOfItsRecords) {
    Store(
        R"({"id":"1","name":"P","type":"X","children":[{"id":"2","name":"f","type":"CAEFILE"},)"
        R"({"id":"3","name":"A","type":"CAEPART","files":[{"id":"2","name":"f","type":"CAEFILE","fileType":"CAD"}]},)"
        R"({"id":"4","name":"B","type":"CAEPART","children":[{"id":"2","name":"f","type":"CAEFILE"}],"files":[{"id":"5","name":"g"},)"
        R"({"id":"2","name":"f","type":"CAEFILE","fileType":"CAD"}]}]})");
    const std::string file = R"({"id":"9","name":"h","type":"CAEFILE","dbkey":")" + KeyOf("FIL-2") +
                             R"(","files":[{"id":"10","name":"i"}],"subType":"SDM"})";
    EXPECT_EQ(Store(file), R"({"id":"9","dbkey":"FIL-2","files":[{"id":"10","dbkey":"FIL-6"}]})");
    EXPECT_EQ(report.detached, 0U);
    // What is in the file is in the place that comes first.
    const std::string whole =
        R"({"id":"1","name":"P","type":"X","dbkey":"PRJ-1","children":[)"
        R"({"id":"9","name":"h","type":"CAEFILE","dbkey":"FIL-2","files":[{"id":"10","name":"i","dbkey":"FIL-6"}]},)"
        R"({"id":"3","name":"A","type":"CAEPART","dbkey":"PRT-3","files":[)"
        R"({"id":"9","name":"h","type":"CAEFILE","dbkey":"FIL-2","files":[],"fileType":"CAD"}]},)"
        R"({"id":"4","name":"B","type":"CAEPART","dbkey":"PRT-4","children":[)"
        R"({"id":"9","name":"h","type":"CAEFILE","dbkey":"FIL-2","files":[]}],"files":[{"id":"5","name":"g","dbkey":"FIL-5"},)"
        R"({"id":"9","name":"h","type":"CAEFILE","dbkey":"FIL-2","files":[],"fileType":"CAD"}]}],"subType":"SDM"})";
    EXPECT_EQ(Fetch("PRJ-1"), whole);
    EXPECT_EQ(Store(file), R"({"id":"9","dbkey":"FIL-2","files":[{"id":"10","dbkey":"FIL-6"}]})");
    EXPECT_EQ(Fetch("PRJ-1"), whole);
    // By its new name it is found in each of its places.
    EXPECT_EQ(KeysAgain(Project({Part("B", {FileOf("h", "CAD")})})), (Keys{"PRJ-1", "PRT-4", "FIL-2"}));

    // Where it is attached only, it keeps them too.
    Store(R"({"name":"Q","type":"X","files":[{"name":"r","fileType":"Mesh"}]})", {"Q"});
    EXPECT_EQ(Again(R"({"name":"r","type":"CAEFILE","metaData":{}})", "Q"), R"({"dbkey":"FIL-8"})");
    EXPECT_EQ(
        Fetch("PRJ-7"),
        R"({"name":"Q","type":"X","dbkey":"PRJ-7","files":[)"
        R"({"name":"r","type":"CAEFILE","dbkey":"FIL-8","metaData":{},"fileType":"Mesh"}],"subType":"SDM"})");
}

TEST_F(ServerPart, TheKnownNameOfAProjectFollowsItsRoot) {
    const ordered_json document = Project({Part("A")});
    KeysOf(document, {});
    KeysOf(With(document, "name", "Q"), {});
    KeysOf(With(document, "name", "other root"), {"named by the user"});
    const auto rename = [&](const char* key, const char* name) {
        return KeysOf(With(With(document, "name", name), "dbkey", KeyOf(key)), {}).front();
    };
    EXPECT_EQ(rename("PRJ-1", "R"), "PRJ-1");
    EXPECT_EQ(KeysAgain(With(document, "name", "R"), ""), (Keys{"PRJ-1", "PRT-2"}));
    // The old name is free for another project.
    EXPECT_EQ(KeysOf(document, {}), (Keys{"PRJ-7", "PRT-8"}));
    // Names of other projects, and those that users gave, stay.
    EXPECT_EQ(rename("PRJ-1", "Q"), "PRJ-1");
    EXPECT_EQ(KeysAgain(With(document, "name", "Q"), ""), (Keys{"PRJ-3", "PRT-4"}));
    EXPECT_EQ(KeysAgain(With(document, "name", "Q"), "R"), (Keys{"PRJ-1", "PRT-2"}));
    EXPECT_EQ(rename("PRJ-5", "S"), "PRJ-5");
    EXPECT_EQ(KeysAgain(With(document, "name", "S"), "named by the user"), (Keys{"PRJ-5", "PRT-6"}));
    EXPECT_EQ(KeysOf(With(document, "name", "S"), {}), (Keys{"PRJ-9", "PRT-10"}));
}

TEST_F(ServerPart, NoProjectTakesAnObjectFromAnother) {
    const ordered_json document = Project({Study("S", {Part("A", {FileOf("f", "CAD")})}), Part("B")});
    const Keys keys = {"PRJ-1", "MOD-2", "PRT-3", "FIL-4", "PRT-5"};
    EXPECT_EQ(KeysOf(document), keys);
    const std::string before = FetchWhole("PRJ-1");
    const ordered_json other = WithKeys(document, {{"/P/S", "MOD-2"}, {"/P/S/A/f", "FIL-4"}});
    const Keys otherKeys = {"PRJ-6", "MOD-7", "PRT-8", "FIL-9", "PRT-10"};
    EXPECT_EQ(KeysOf(other, {"Q"}), otherKeys);
    EXPECT_EQ(
        Said(),
        "korvane-json: s: 4 objects and 1 file stored, 5 of them under new keys\n"
        "korvane-json: s: \"dbkey\" not used, because it is the key of an object of another project (2): "
        "'S'; 'f'\n");
    EXPECT_EQ(KeysAgain(other, "Q"), otherKeys);
    // Nor if its own root has its key.
    EXPECT_EQ(KeysOf(With(other, "dbkey", KeyOf("PRJ-6")), {}), otherKeys);
    EXPECT_EQ(report.detached, 0U);
    EXPECT_EQ(FetchWhole("PRJ-1"), before);
    EXPECT_EQ(KeysAgain(document), keys);
}

TEST_F(ServerPart, AnObjectThatWasStoredAloneComesIntoItsProjectWithAllBelowIt) {
    const ordered_json study = Study("S", {Part("A", {FileOf("f", "CAD")}), Part("B")});
    EXPECT_EQ(KeysOf(study, {}), (Keys{"MOD-1", "PRT-2", "FIL-3", "PRT-4"}));
    const ordered_json whole = Project({Study("folder", {study}), Study("T", {Part("B")})});
    const Keys keys = {"PRJ-5", "MOD-6", "MOD-1", "PRT-2", "FIL-3", "PRT-4", "MOD-7", "PRT-8"};
    EXPECT_EQ(KeysOf(WithKeys(whole, {{"/P/folder/S", "MOD-1"},
                                      {"/P/folder/S/A", "PRT-2"},
                                      {"/P/folder/S/A/f", "FIL-3"},
                                      {"/P/T/B", "PRT-4"}})),
              keys);
    EXPECT_NE(Said().find("of another project (1): 'B'\n"), std::string::npos) << Said();
    EXPECT_EQ(KeysAgain(whole), keys);
    // What is in the whole project stays there.
    EXPECT_EQ(KeysOf(WithKeys(Project({study}), {{"/P/S", "MOD-1"}}), {"Q"}),
              (Keys{"PRJ-9", "MOD-10", "PRT-11", "FIL-12", "PRT-13"}));
    // Without its root, a part of what was stored alone is not taken either.
    EXPECT_EQ(KeysOf(Study("U", {Part("C")}), {}), (Keys{"MOD-14", "PRT-15"}));
    EXPECT_EQ(KeysOf(WithKeys(Project({Part("C")}), {{"/P/C", "PRT-15"}}), {"R"}),
              (Keys{"PRJ-16", "PRT-17"}));
}

TEST_F(ServerPart, AViewItemShowsNoAssemblyOfAnotherProject) {
    const auto document = [&](const std::string& key) {
        return Project({With(Node("CAEVIEWITEM", "V", {}), "dbkey", key),
                        With(Node("CAESUBASSEMBLY", "W", {}), "dbkey", key)});
    };
    EXPECT_EQ(KeysOf(document("")), (Keys{"PRJ-1", "ITM-2", "SUB-3"}));
    // It shows the assembly of its own document, which had that key.
    EXPECT_EQ(KeysOf(document(KeyOf("SUB-3")), {"Q"}), (Keys{"PRJ-4", "ITM-5", "SUB-6"}));
    EXPECT_NE(Said().find("of another project (2): 'W'; 'V'\n"), std::string::npos) << Said();
    EXPECT_EQ(KeysIn(ordered_json::parse(Fetch("PRJ-4"))), (Keys{"PRJ-4", "SUB-6", "SUB-6"}));
    EXPECT_EQ(KeysIn(ordered_json::parse(Fetch("PRJ-1"))), (Keys{"PRJ-1", "ITM-2", "SUB-3"}));
}

TEST_F(ServerPart, WhatAnExportModeLeavesOutComesBackWithItsKeys) {
    const auto study = [](bool hasModels) {
        std::vector<ordered_json> models;
        if (hasModels) {
            models = {Node("CAEITERATIONMODEL", "m", {}, {FileOf("f", "Deck")}),
                      Node("CAEITERATIONMODEL", "m", {Part("A")})};
        }
        return Study("S", {Node("CAEITERATION", "I", models), Part("A")});
    };
    const Keys keys = {"PRJ-1", "MOD-2", "ITR-3", "RUN-4", "FIL-5", "RUN-6", "PRT-7", "PRT-8"};
    EXPECT_EQ(KeysOf(Project({study(true)})), keys);
    EXPECT_EQ(KeysAgain(Project({study(false)})), (Keys{"PRJ-1", "MOD-2", "ITR-3", "PRT-8"}));
    EXPECT_EQ(KeysAgain(study(false)), (Keys{"MOD-2", "ITR-3", "PRT-8"}));
    EXPECT_EQ(KeysAgain(Project({study(true)})), keys);
}

}  // namespace
}  // namespace host
