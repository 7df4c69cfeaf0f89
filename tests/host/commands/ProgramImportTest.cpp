#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "host/commands/ProgramSupport.h"

namespace {

using nlohmann::ordered_json;

class ProgramImport : public ProgramInFolder {
protected:
    /// A directory with studies in a folder as the project file `p.kvp` and in the database `s.db`, with
    /// keys.
    void MakeKeyedProject() {
        for (const char* const name : {"root", "root/group", "root/group/modes", "root/group/static"}) {
            folder.MakeDirectory(name);
        }
        folder.Write("root/group/modes/job.inp", "*STEP\n*END STEP\n");
        folder.Write("root/group/static/job.inp", "*STEP\n*END STEP\n");
        Do({"new", "root", "p.kvp"});
        Do({"export", "p.kvp", "-o", "d.json"});
        Do({"store", "d.json", "--db", "s.db", "-o", "a.json"});
        Do({"apply", "a.json", "p.kvp"});
    }
};

TEST_F(ProgramImport, KeepsASingleStudyInStepWithTheServer) {
    MakeKeyedProject();
    const std::string tree = OutputOf({"tree", "p.kvp"});
    EXPECT_NE(tree.find("static               Model              #8"), std::string::npos) << tree;
    Do({"export", "p.kvp", "--object", "8", "-o", "study.json"});
    ordered_json study = ordered_json::parse(Read("study.json"));
    Do({"fetch", study["dbkey"], "--db", "s.db", "-o", "fetched.json"});
    for (const std::string document : {"study.json", "fetched.json"}) {
        EXPECT_EQ(Do({"import", "--update", "--remove", document, "p.kvp"}),
                  "korvane-json: 'p.kvp': nothing has changed\n");
        EXPECT_EQ(OutputOf({"tree", "p.kvp"}), tree);
    }
    study["name"] = "static 2";
    study["children"] = {{{"type", "CAETAG"}, {"name", "checked"}}};
    folder.Write("study.json", study.dump());
    EXPECT_EQ(
        DoAfterDryRun({"import", "--update", "--remove", "study.json", "p.kvp"}),
        "korvane-json: 'p.kvp': 1 object and 0 files added, 1 value changed, 0 objects moved, 3 removed\n"
        "korvane-json: 'p.kvp': changed (1): 'name' of 'static' (id 8): 'static' becomes 'static 2'\n"
        "korvane-json: 'p.kvp': added (1): 'checked'\n"
        "korvane-json: 'p.kvp': removed (1): 'Iterations' (id 9)\n");
    const ordered_json objects = ordered_json::parse(OutputOf({"tree", "p.kvp", "--format", "json"}));
    std::string paths;
    for (const ordered_json& object : objects["objects"]) {
        paths += object["path"].get<std::string>() + "\n";
    }
    EXPECT_NE(paths.find("group/static 2/checked\n"), std::string::npos) << paths;
    EXPECT_NE(paths.find("group/modes/Iterations\n"), std::string::npos) << paths;
}

TEST_F(ProgramImport, AnUpdateWithTheDocumentOfAnotherProjectIsRefused) {
    MakeKeyedProject();
    const std::string right = "; if the document is the right one all the same, use --same";
    const std::string other =
        "cannot update 'p.kvp' with 'wrong.json': the document of 'other' is of another project than 'root' "
        "(id 1): it has another name, and not the key of this project. Nothing was changed" +
        right;
    folder.Write("wrong.json", R"({"type":"SIMULATION","name":"other","children":[],"files":[]})");
    for (const std::string more : {"--remove", "--strict", "--dry-run", "--format=json"}) {
        ExpectRefused({"import", "--update", more, "wrong.json", "p.kvp"}, other);
    }
    ExpectRefused({"import", "--update", "wrong.json", "p.kvp", "--object", "1"}, other);
    const std::string nothing =
        "cannot update 'p.kvp' with 'wrong.json': the document of 'root' may be of another object than "
        "'root' "
        "(id 1): nothing below it is known there, so that all objects would be removed. Nothing was changed" +
        right;
    folder.Write("wrong.json", R"({"type":"SIMULATION","name":"root","children":[{"type":"CAETAG"}]})");
    ExpectRefused({"import", "--update", "--remove", "wrong.json", "p.kvp"}, nothing);
    ExpectRefused({"import", "--same", "wrong.json", "p.kvp"},
                  "--same requires --update. See 'korvane-json import --help'", 2);

    folder.Write("wrong.json", R"({"type":"SIMULATION","name":"other","children":[]})");
    const std::string said =
        DoAfterDryRun({"import", "--update", "--remove", "--same", "wrong.json", "p.kvp"});
    EXPECT_NE(said.find(" 9 removed\n"), std::string::npos) << said;
    // The key of the project says that it is the same, whatever its name is.
    ordered_json renamed = ordered_json::parse(OutputOf({"export", "p.kvp"}));
    renamed["name"] = "renamed";
    folder.Write("renamed.json", renamed.dump());
    Do({"import", "--update", "--remove", "renamed.json", "p.kvp"});
}

TEST_F(ProgramImport, FailsWhereNothingBelowTheRootFits) {
    folder.Write("none.json", R"({"type":"SIMULATION","name":"P","children":[{"type":"NOPE","name":"a"},)"
                              R"({"type":"NOPE2","name":"b"}],"metaData":{"Mass":{"value":"1"}}})");
    folder.Write("file.json", R"({"type":"CAEPART","name":"P","files":[{"name":"../a"}]})");
    folder.Write("text.json", R"({"type":"SIMULATION","name":"P","children":"none"})");
    folder.Write("fine.json", R"({"type":"SIMULATION","name":"P","children":[]})");
    Do({"import", "fine.json", "p.kvp"});
    const std::string below = "nothing below its root can be used";
    for (const std::string file : {"new.kvp", "p.kvp"}) {
        for (const std::string more : {"--update", "--dry-run", "--format=json"}) {
            ExpectRefused({"import", "none.json", file, more},
                          "nothing of 'none.json' fits '" + file + "': " + below +
                              ", the first at '/children/0': 'a' of type 'NOPE' is left out with everything "
                              "below it: its \"type\" is not known. Nothing was changed");
        }
        ExpectRefused(
            {"import", "file.json", file},
            "nothing of 'file.json' fits '" + file + "': " + below +
                ", the first at '/files/0': the file '../a' is left out, because its name leads out of "
                "the project's directory. Nothing was changed");
        ExpectRefused({"import", "text.json", file},
                      "nothing of 'text.json' fits '" + file + "': " + below +
                          ", the first at '/children': 'children' of 'P' is neither an array nor an object. "
                          "Nothing was changed");
    }
}

TEST_F(ProgramImport, SaysThatTheTypeOfTheRootIsNotKnown) {
    folder.Write("odd.json", R"({"type":"BOGUS","name":"P"})");
    const std::string known =
        "korvane-json: 'p.kvp': 0 objects and 0 files created, 0 of the files attached, 0 keys set\n";
    const std::string said =
        "korvane-json: 'p.kvp': the project gets the type of the document's root, which is not known: "
        "'BOGUS'\n";
    ExpectRefused(
        {"import", "--strict", "odd.json", "p.kvp"},
        "the \"type\" of the root of 'odd.json' is not known, which --strict does not allow: 'BOGUS'. "
        "Nothing was changed; without --strict it becomes the type of the project");
    EXPECT_EQ(DoAfterDryRun({"import", "odd.json", "p.kvp"}), known + said);
    EXPECT_NE(OutputOf({"tree", "p.kvp"}).find("BOGUS"), std::string::npos);
    // The type of the project itself is known, and so are those of this program and of objects.
    for (const std::string type : {"BOGUS", "Simulation", "SIMULATION"}) {
        folder.Write("odd.json", R"({"type":")" + type + R"(","name":"P"})");
        EXPECT_EQ(Do({"import", "--strict", "odd.json", "p.kvp"}), known);
    }
    ExpectRefused(
        {"import", "--strict", "--update", "odd.json", "p.kvp", "--object", "7"},
        "there is no object 7 in 'p.kvp'. Nothing was changed; 'korvane-json tree' lists the objects");
    folder.Write("part.json", R"({"type":"CAEPART","name":"a"})");
    Do({"import", "--strict", "part.json", "p.kvp"});
    folder.Write("odd.json", R"({"type":"BOGUS","name":"a"})");
    EXPECT_EQ(Do({"import", "--strict", "odd.json", "p.kvp", "--object", "2"}), known);
    EXPECT_EQ(Do({"import", "--update", "--strict", "-q", "odd.json", "p.kvp", "--object", "2"}), "");
}

TEST_F(ProgramImport, SaysWhichKeysWereThereAlready) {
    MakeKeyedProject();
    Do({"export", "p.kvp", "-o", "d.json"});
    const std::string said = DoAfterDryRun({"import", "d.json", "p.kvp"});
    EXPECT_NE(
        said.find("\nkorvane-json: 'p.kvp': 12 keys of 'd.json' were in the project already; 'korvane-json "
                  "import --update' brings what is there in line instead of adding it again\n"),
        std::string::npos)
        << said;
    const std::string none = "in the project already";
    EXPECT_EQ(Do({"import", "d.json", "q.kvp"}).find(none), std::string::npos);
    EXPECT_EQ(Do({"import", "--update", "d.json", "q.kvp"}).find(none), std::string::npos);
    // The key of a view item is that of what it shows.
    folder.Write("one.json",
                 R"({"type":"CAEMODEL","dbkey":"M","name":"m","files":[{"name":"f","dbkey":"F"}]})");
    Do({"import", "one.json", "q.kvp"});
    folder.Write("view.json", R"({"type":"SIMULATION","children":[{"type":"CAEVIEWITEM","dbkey":"M"},)"
                              R"({"type":"CAEPART","dbkey":null},{"type":"CAEPART","dbkey":""}]})");
    EXPECT_EQ(Do({"import", "view.json", "q.kvp"}).find(none), std::string::npos);
    folder.Write("file.json", R"({"type":"SIMULATION","files":[{"name":"f","dbkey":"F"}]})");
    EXPECT_NE(Do({"import", "file.json", "q.kvp"}).find(" 1 key of 'file.json' was " + none),
              std::string::npos);
}

}  // namespace
