#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "host/commands/ProgramSupport.h"

namespace {

using nlohmann::json;

constexpr const char* kAdvice =
    "It seems to be the answer to another export, whose identifiers mean other objects. Nothing was changed. "
    "Store the document of the project file itself: 'korvane-json export PROJECT.kvp | korvane-json store - "
    "--db FILE | korvane-json apply - PROJECT.kvp'";

/// Answers that belong to another export than the project file's own.
class ProgramApply : public ProgramInFolder {
protected:
    void WriteStudy(const std::string& name) const {
        folder.Write("root/" + name + "/arm.step", "ISO-10303-21;");
        folder.Write("root/" + name + "/job.inp", "*STEP\n*STATIC\n*END STEP\n");
        folder.Write("root/" + name + "/notes.txt", name);
    }
    /// The keys of all nodes by the names on the way to them, as the document of the project file has them.
    json KeysIn(const std::string& project) const {
        json keys;
        AddKeys(json::parse(OutputOf({"export", project})), "", keys);
        return keys;
    }
    /// Runs it, and expects an error that begins and ends so, and every file as it was.
    void ExpectConflict(const std::vector<std::string>& arguments, const std::string& begin,
                        const std::string& end) const {
        const Content before = ContentOf(folder.Path());
        const ProcessResult result = Run(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.output, "");
        EXPECT_TRUE(result.error.starts_with("korvane-json: " + begin)) << result.error;
        EXPECT_TRUE(result.error.ends_with(end + "\n")) << result.error;
        EXPECT_TRUE(ContentOf(folder.Path()) == before) << "files were changed";
    }

private:
    static void AddKeys(const json& node, const std::string& above, json& keys) {
        const std::string path = above + "/" + node.value("name", "");
        keys[path + " " + node.value("type", "")] = node.value("dbkey", "");
        for (const char* const section : {"children", "files"}) {
            for (const json& inner : node.at(section)) {
                AddKeys(inner, path, keys);
            }
        }
    }
};

}  // namespace

TEST_F(ProgramApply, TheAnswerToTheDirectoryFitsUntilItHasOtherNumbers) {
    WriteStudy("alpha");
    WriteStudy("zeta");
    Do({"new", "root", "p.kvp"});
    Do({"export", "root", "-o", "d1.json"});
    Do({"store", "d1.json", "--db", "s.db", "-o", "a1.json"});
    Do({"apply", "a1.json", "p.kvp"});
    const json before = KeysIn("p.kvp");
    WriteStudy("bravo");
    Do({"update", "root", "p.kvp"});
    // The directory is numbered anew, and the study in the middle moves the numbers behind it.
    Do({"export", "root", "-o", "d2.json"});
    Do({"store", "d2.json", "--db", "s.db", "--again", "-o", "a2.json"});
    for (const char* const option : {"--strict", "--dry-run"}) {
        ExpectConflict({"apply", "a2.json", "p.kvp", option}, "'a2.json' does not fit 'p.kvp': it has ",
                       kAdvice);
    }
    ExpectConflict({"apply", "a2.json", "p.kvp", "--format", "json"},
                   "'a2.json' does not fit 'p.kvp': it has ", kAdvice);
    // Another server does not explain nodes in other places.
    ExpectConflict({"apply", "a2.json", "p.kvp", "--replace-keys"}, "'a2.json' does not fit 'p.kvp': it has ",
                   kAdvice);

    // As the message says.
    Do({"export", "p.kvp", "-o", "d3.json"});
    Do({"store", "d3.json", "--db", "s.db", "-o", "a3.json"});
    EXPECT_EQ(Do({"apply", "a3.json", "p.kvp"}), "korvane-json: 'p.kvp': 8 keys set, 17 unchanged\n");
    const json after = KeysIn("p.kvp");
    EXPECT_EQ(after.size(), before.size() + 8);
    for (const auto& [path, key] : before.items()) {
        EXPECT_EQ(after.at(path), key) << path;
    }
}

TEST_F(ProgramApply, TheAnswerToOneStudyOfTheDirectoryFitsNoWholeProject) {
    WriteStudy("alpha");
    WriteStudy("group/zeta");
    folder.Write("root/LICENSE", "free");
    Do({"new", "root", "v.kvp"});
    Do({"export", "root", "--study", "group/zeta", "-o", "d.json"});
    Do({"store", "d.json", "--db", "s.db", "-o", "a.json"});
    ExpectConflict({"apply", "a.json", "v.kvp"}, "'a.json' does not fit 'v.kvp': it has ", kAdvice);
    // The same study of the project file fits.
    const json whole = json::parse(OutputOf({"export", "v.kvp"}));
    const json& study = whole.at("children").back().at("children").front();
    EXPECT_EQ(study.at("name"), "zeta");
    Do({"export", "v.kvp", "--object", study.at("id"), "-o", "d2.json"});
    Do({"store", "d2.json", "--db", "s2.db", "-o", "a2.json"});
    EXPECT_EQ(Do({"apply", "a2.json", "v.kvp", "--strict"}),
              "korvane-json: 'v.kvp': 8 keys set, 0 unchanged\n");
}

TEST_F(ProgramApply, TheAnswerForAnotherProjectOfTheServerReplacesNoKey) {
    WriteStudy("alpha");
    Do({"new", "root", "p.kvp"});
    Do({"new", "root", "q.kvp"});
    const auto store = [&](const std::string& project, const std::string& name) {
        Do({"export", project + ".kvp", "-o", "d.json"});
        Do({"store", "d.json", "--db", "s.db", "--project", name, "-o", project + ".json"});
    };
    store("p", "P");
    store("q", "Q");
    Do({"apply", "p.json", "p.kvp"});
    const std::string withOption =
        std::string(kAdvice) + ". If it is the answer of another server to this project, use --replace-keys";
    ExpectConflict({"apply", "q.json", "p.kvp"},
                   "'q.json' does not fit 'p.kvp': it has 9 conflicts (the key of 'root' (id 1): 'PRJ-1-",
                   withOption);

    // Its own answer of another server.
    Do({"export", "p.kvp", "-o", "d.json"});
    Do({"store", "d.json", "--db", "other.db", "-o", "other.json"});
    ExpectConflict({"apply", "other.json", "p.kvp"},
                   "'other.json' does not fit 'p.kvp': it has 9 conflicts (", withOption);
    EXPECT_EQ(DoAfterDryRun({"apply", "other.json", "p.kvp", "--replace-keys"}),
              "korvane-json: 'p.kvp': 9 keys set, 0 unchanged\n");
    EXPECT_EQ(Do({"apply", "other.json", "p.kvp"}), "korvane-json: 'p.kvp': 0 keys set, 9 unchanged\n");
}

TEST_F(ProgramApply, OneConflictIsToldAsOne) {
    folder.Write("d.json",
                 R"({"name":"P","type":"SIMULATION","children":[{"type":"CAEPART","name":"A","dbkey":"K1"},)"
                 R"({"type":"CAEPART","name":"B"}]})");
    Do({"import", "d.json", "p.kvp"});
    folder.Write("a.json", R"([{"id":"2","dbkey":"K2"},{"id":"3","dbkey":"K3"}])");
    ExpectRefused(
        {"apply", "a.json", "p.kvp"},
        "'a.json' does not fit 'p.kvp': it has 1 conflict (the key of 'A' (id 2): 'K1' stays, and 'K2' "
        "is not set). " +
            std::string(kAdvice) +
            ". If it is the answer of another server to this project, use --replace-keys");
    folder.Write("b.json", R"([{"id":"3","dbkey":"K1"}])");
    ExpectRefused({"apply", "b.json", "p.kvp"},
                  "'b.json' does not fit 'p.kvp': it has 1 conflict (the key of 'B' (id 3): 'K1' is not set, "
                  "because it is the key of 'A' (id 2)). " +
                      std::string(kAdvice));
    EXPECT_EQ(Do({"apply", "a.json", "p.kvp", "--replace-keys"}),
              "korvane-json: 'p.kvp': 2 keys set, 0 unchanged\n");
}
