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

}  // namespace
