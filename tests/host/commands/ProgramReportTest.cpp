#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>

#include "host/commands/ProgramSupport.h"

namespace {

using nlohmann::ordered_json;

constexpr const char* kDeckWithNodes = "*NODE\n*STEP\n*STATIC\n";

class ProgramReport : public ProgramInFolder {
protected:
    void SetUp() override {
        folder.Write("root/plan.csv", "a;b\n");
        folder.Write("root/beam/beam.inp", kDeckWithNodes);
        folder.Write("root/beam/beam.step", "ISO-10303-21;");
    }
    /// Runs it with --format json, and gives the report, which is all that it writes.
    ordered_json ReportOf(std::vector<std::string> arguments, int status = 0) const {
        arguments.emplace_back("--format");
        arguments.emplace_back("json");
        const ProcessResult result = Run(arguments);
        EXPECT_EQ(result.status, status) << result.error;
        EXPECT_EQ(result.error, "");
        EXPECT_TRUE(result.output.ends_with("}\n")) << result.output;
        return ordered_json::parse(result.output);
    }
    /// The same after a dry run, whose report has only another flag.
    ordered_json ReportAfterDryRun(std::vector<std::string> arguments) const {
        const Content before = ContentOf(folder.Path());
        arguments.emplace_back("--dry-run");
        ordered_json dry = ReportOf(arguments);
        EXPECT_TRUE(ContentOf(folder.Path()) == before) << "files were changed";
        arguments.pop_back();
        ordered_json report = ReportOf(arguments);
        EXPECT_TRUE(ContentOf(folder.Path()) != before);
        if (dry.contains("dryRun")) {
            EXPECT_EQ(dry["dryRun"], true);
            dry["dryRun"] = false;
        }
        EXPECT_EQ(dry, report);
        return report;
    }
};

ordered_json Counts(int objects, int files) {
    return {{"objects", objects}, {"files", files}};
}

TEST_F(ProgramReport, OfNew) {
    EXPECT_EQ(ReportAfterDryRun({"new", "root", "p.kvp"}), ordered_json({{"report", "new"},
                                                                         {"dryRun", false},
                                                                         {"objects", 6},
                                                                         {"files", 3},
                                                                         {"replaced", false},
                                                                         {"leftOut", 0}}));
    EXPECT_EQ(ReportAfterDryRun({"new", "--empty", "p.kvp", "--force"}), ordered_json({{"report", "new"},
                                                                                       {"dryRun", false},
                                                                                       {"objects", 1},
                                                                                       {"files", 0},
                                                                                       {"replaced", true},
                                                                                       {"leftOut", 0}}));
}

TEST_F(ProgramReport, OfUpdateListsEveryChange) {
    Do({"new", "root", "p.kvp"});
    const ordered_json none = ReportOf({"update", "root", "p.kvp"});
    EXPECT_EQ(none["changed"], false);
    EXPECT_EQ(none["entries"], ordered_json::array());
    for (int index = 0; index < 30; ++index) {
        folder.Write("root/beam/loads-" + std::to_string(index) + ".csv", "1\n");
    }
    std::filesystem::remove(folder / "root/plan.csv");
    const ordered_json report = ReportAfterDryRun({"update", "root", "p.kvp"});
    EXPECT_EQ(report["report"], "update");
    EXPECT_EQ(report["changed"], true);
    EXPECT_EQ(report["counts"], ordered_json({{"added", Counts(0, 30)},
                                              {"changed", Counts(2, 0)},
                                              {"removed", Counts(0, 0)},
                                              {"missing", Counts(0, 1)}}));
    EXPECT_EQ(report["leftOut"], 0);
    EXPECT_FALSE(report.contains("directory"));
    std::map<std::string, int> changes;
    for (const ordered_json& entry : report["entries"]) {
        ++changes[entry["change"]];
    }
    EXPECT_EQ(changes, (std::map<std::string, int>{{"added", 30}, {"changed", 2}, {"missing", 1}}));
    EXPECT_EQ(report["entries"][0]["kind"], "File");
    EXPECT_EQ(report["entries"][0]["path"], "beam/loads-0.csv");
    EXPECT_TRUE(report["entries"][0]["id"].is_number_integer());

    const ordered_json removed = ReportAfterDryRun({"update", "root", "p.kvp", "--remove"});
    EXPECT_EQ(removed["counts"]["removed"], Counts(0, 1));
    EXPECT_EQ(removed["entries"][0]["change"], "removed");
    EXPECT_EQ(removed["entries"][0]["path"], "plan.csv");
    std::filesystem::rename(folder / "root", folder / "moved");
    const std::string directory = ReportOf({"update", "moved", "p.kvp"})["directory"];
    EXPECT_EQ(directory, ToUtf8(folder / "moved"));
}

TEST_F(ProgramReport, OfUpdateHasWhatIsBelowAndTheValues) {
    Do({"new", "root", "p.kvp"});
    std::string path = "root";
    for (int level = 0; level < 10; ++level) {
        path += "/level";
    }
    folder.Write(path + "/job.inp", kDeckWithNodes);
    folder.Write("root/beam/beam.inp", "*NODE\n1,0,0,0\n2,1,0,0\n*STEP\n*STATIC\n*STEP\n*STATIC\n");
    folder.Write("root/beam/loads.csv", "1\n");
    const ordered_json report = ReportAfterDryRun({"update", "root", "p.kvp"});
    std::map<std::string, int> added;
    std::map<std::string, ordered_json> changed;
    for (const ordered_json& entry : report["entries"]) {
        const std::string where = entry["path"];
        EXPECT_EQ(where.find("..."), std::string::npos) << where;
        if (entry["change"] == "added") {
            ++added[entry["kind"]];
            EXPECT_FALSE(entry.contains("values"));
        } else {
            changed[where] = entry["values"];
        }
    }
    EXPECT_EQ(report["counts"]["added"], Counts(13, 2));
    EXPECT_EQ(added, (std::map<std::string, int>{{"AssemblyFolder", 9},
                                                 {"Model", 1},
                                                 {"IterationFolder", 1},
                                                 {"Iteration", 1},
                                                 {"IterationModel", 1},
                                                 {"File", 2}}));
    EXPECT_EQ(changed.at("beam"),
              ordered_json::array(
                  {{{"value", "metadata"}, {"name", "Files"}, {"from", "2"}, {"to", "3"}},
                   {{"value", "metadata"}, {"name", "Size"}, {"from", "33"}, {"to", "65"}, {"unit", "B"}},
                   {{"value", "file"}, {"name", "beam/loads.csv"}, {"to", "custom file"}}}));
    EXPECT_EQ(changed.at("beam/Iterations/beam"),
              ordered_json::array({{{"value", "metadata"}, {"name", "Nodes"}, {"to", "2"}},
                                   {{"value", "metadata"}, {"name", "Steps"}, {"from", "1"}, {"to", "2"}}}));
}

TEST_F(ProgramReport, OfUpdateSaysTheValuesOnRequest) {
    Do({"new", "root", "p.kvp"});
    folder.Write("root/beam/beam.inp", std::string(2000, '*'));
    folder.Write("root/beam/korvane.toml",
                 "name = \"Girder\"\n[metadata]\nMass = { value = 3, unit = \"kg\" }\n");
    EXPECT_EQ(Do({"update", "root", "p.kvp", "--dry-run"}).find("changes from"), std::string::npos);
    const std::string said = Run({"update", "root", "p.kvp", "--dry-run", "-v"}).error;
    for (const char* const sentence : {"'Size' of 'Girder' (Model #3) changes from 33 B to 2.0 kB\n",
                                       "the name of 'Girder' (Model #3) changes from 'beam' to 'Girder'\n",
                                       "'Mass' of 'Girder' (Model #3) is new: 3 kg\n"}) {
        EXPECT_NE(said.find(std::string("korvane-json: 'p.kvp': ") + sentence), std::string::npos)
            << sentence << said;
    }
}

TEST_F(ProgramReport, OfStoreLeavesTheAnswerToAFile) {
    Do({"new", "root", "p.kvp"});
    Do({"export", "p.kvp", "-o", "d.json"});
    ordered_json expected = {
        {"report", "store"}, {"dryRun", false}, {"objects", 6},         {"files", 3},
        {"newKeys", 9},      {"detached", 0},   {"carriedOver", false}, {"notes", ordered_json::array()}};
    EXPECT_EQ(ReportAfterDryRun({"store", "d.json", "--db", "s.db", "-o", "a.json"}), expected);
    EXPECT_TRUE(ordered_json::parse(Read("a.json")).contains("dbkey"));
    const std::string asks =
        "with --format json the report is on the standard output: give a file for the answer with -o. See "
        "'korvane-json store --help'";
    ExpectRefused({"store", "d.json", "--db", "s.db", "--again", "--format", "json"}, asks, 2);
    ExpectRefused({"store", "d.json", "--db", "s.db", "--again", "--format", "json", "-o", "-"}, asks, 2);
    expected["newKeys"] = 0;
    expected["dryRun"] = true;
    EXPECT_EQ(ReportOf({"store", "d.json", "--db", "s.db", "--again", "--dry-run"}), expected);
    folder.Write("odd.json",
                 R"({"name":"R","type":"X","children":[1,{"name":"a","type":"CAEPART","dbkey":null}]})");
    EXPECT_EQ(ReportOf({"store", "odd.json", "--db", "s.db", "-o", "b.json"})["notes"].size(), 2);
}

TEST_F(ProgramReport, OfApplyImportAndCompareIsThatOfTheLibrary) {
    Do({"new", "root", "p.kvp"});
    Do({"export", "p.kvp", "-o", "d.json"});
    Do({"store", "d.json", "--db", "s.db", "-o", "a.json"});
    const ordered_json applied = ReportAfterDryRun({"apply", "a.json", "p.kvp"});
    EXPECT_EQ(applied["report"], "answer");
    EXPECT_EQ(applied["keysSet"], 9);
    const ordered_json imported = ReportAfterDryRun({"import", "d.json", "q.kvp"});
    EXPECT_EQ(imported["report"], "import");
    EXPECT_EQ(imported["objectsAdded"], 5);
    const ordered_json updated = ReportOf({"import", "--update", "d.json", "q.kvp"});
    EXPECT_EQ(updated["objectsAdded"], 0);
    EXPECT_GT(updated["objectsMatched"], 5);
    const ordered_json different = ReportOf({"compare", "p.kvp", "q.kvp"}, 1);
    EXPECT_EQ(different["report"], "compare");
    EXPECT_EQ(different["same"], false);
    EXPECT_GT(different["entries"].size(), 8U);
    EXPECT_EQ(ReportOf({"compare", "q.kvp", "d.json"})["same"], true);
}

TEST_F(ProgramReport, AFailureHasNoReport) {
    const ProcessResult missing = Run({"new", "missing", "p.kvp", "--format", "json"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.output, "");
    EXPECT_NE(missing.error, "");
    Do({"new", "root", "p.kvp"});
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"import", "missing.json", "p.kvp"},
                                               {"apply", "missing.json", "p.kvp"},
                                               {"compare", "missing.json", "p.kvp"},
                                               {"store", "missing.json", "--db", "s.db", "-o", "a.json"},
                                               {"update", "missing", "p.kvp"}}) {
        std::vector<std::string> json = arguments;
        json.insert(json.end(), {"--format", "json"});
        const ProcessResult result = Run(json);
        EXPECT_EQ(result.status, arguments.front() == "compare" ? 2 : 1);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.error, Run(arguments).error);
    }
}

#if !defined(_WIN32)

TEST_F(ProgramReport, ThatCannotBeWrittenIsNoFailureOfTheWork) {
    ProcessOptions options{
        {"new", "root", "p.kvp", "--format", "json"}, {{"LC_ALL", "C"}}, folder.Path(), "/dev/full", {}};
    const ProcessResult done = RunProgram(ProgramPath("korvane-json"), options);
    EXPECT_EQ(done.status, 3) << done.error;
    EXPECT_TRUE(done.error.starts_with("korvane-json: cannot write to the standard output: ")) << done.error;
    EXPECT_NE(OutputOf({"tree", "p.kvp"}), "");
    options.arguments = {"new", "root", "q.kvp", "--format", "json", "--dry-run"};
    EXPECT_EQ(RunProgram(ProgramPath("korvane-json"), options).status, 1);
    EXPECT_FALSE(std::filesystem::exists(folder / "q.kvp"));
}

#endif

}  // namespace
