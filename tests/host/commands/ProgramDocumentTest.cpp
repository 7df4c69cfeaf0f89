#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <regex>

#include "support/Documents.h"
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

namespace {

using nlohmann::ordered_json;

class ProgramDocumentTest : public testing::Test {
protected:
    std::string Export(std::vector<std::string> more = {}) const {
        std::vector<std::string> arguments = {"export", ToUtf8(folder / "root")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ProcessResult result =
            RunProgram(ProgramPath("korvane-json"), {std::move(arguments), {}, {}, {}, {}});
        EXPECT_EQ(result.status, 0) << result.error;
        EXPECT_EQ(result.error, "");
        SaveDocument(result.output);
        return result.output;
    }
    /// The document with the same date and user everywhere.
    std::string ExportPlain(std::vector<std::string> more = {}) const {
        const std::string dated = std::regex_replace(
            Export(std::move(more)), std::regex(R"("createdDate":"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ")"),
            R"("createdDate":"D")");
        return std::regex_replace(dated, std::regex(R"("createdBy":"[^"]+")"), R"("createdBy":"U")");
    }
    void Write(const std::string& name, std::string_view content = "x") const {
        folder.Write("root/" + name, content);
    }

    TemporaryDirectory folder;
};

TEST_F(ProgramDocumentTest, WritesAStudyWhole) {
    Write("plan.csv", "a;b\n");
    Write("beam/beam.bdf", "SOL 101\nCEND\nBEGIN BULK\nENDDATA\n");
    Write("beam/README.md", "# A beam\n");
    EXPECT_EQ(
        ExportPlain(),
        R"({"id":"1","name":"root","createdDate":"D","createdBy":"U","type":"SIMULATION","metaData":{)"
        R"("Files":{"value":"3","metaDataType":""},"Size":{"value":"45","metaDataType":"B"},)"
        R"("Solver":{"value":"Nastran","metaDataType":""},"Studies":{"value":"1","metaDataType":""}},"children":[)"
        R"({"id":"2","name":"plan.csv","createdDate":"D","createdBy":"U","type":"CAEFILE","metaData":{},)"
        R"("children":[],"files":[]},)"
        R"({"id":"3","name":"beam","createdDate":"D","createdBy":"U","type":"CAEMODEL","metaData":{)"
        R"("description":{"value":"A beam","metaDataType":""},"Files":{"value":"2","metaDataType":""},)"
        R"("Size":{"value":"41","metaDataType":"B"},"Solver":{"value":"Nastran","metaDataType":""}},"children":[)"
        R"({"id":"5","name":"Iterations","createdDate":"D","createdBy":"U","type":"CAEITERATIONFOLDER",)"
        R"("metaData":{},"children":[)"
        R"({"id":"6","name":"beam","studyTypeName":"beam","createdDate":"D","createdBy":"U",)"
        R"("type":"CAEITERATION","metaData":{"Solver":{"value":"Nastran","metaDataType":""},)"
        R"("Steps":{"value":"1","metaDataType":""}},"children":[)"
        R"({"id":"7","name":"beam.bdf","createdDate":"D","createdBy":"U","type":"CAEITERATIONMODEL",)"
        R"("metaData":{},"children":[],"files":[)"
        R"({"id":"8","name":"beam.bdf","createdDate":"D","createdBy":"U","type":"CAEFILE","metaData":{},)"
        R"("children":[],"files":[],"fileType":"Deck","fileFormat":"ASCII","locationType":"","filePath":""})"
        R"(]}],"files":[]}],"files":[]}],"files":[)"
        R"({"id":"4","name":"README.md","createdDate":"D","createdBy":"U","type":"CAEFILE","metaData":{},)"
        R"("children":[],"files":[],"fileType":"Report","fileFormat":"ASCII","locationType":"","filePath":""})"
        R"(]}],"files":[],"subType":"SDM"})"
        "\n");
}

TEST_F(ProgramDocumentTest, ModesNarrowTheDocument) {
    Write("plan.csv");
    Write("beam/beam.bdf", "SOL 101\nCEND\n");
    const ordered_json project = ordered_json::parse(Export({"--mode", "PROJECT"}));
    ASSERT_EQ(project["children"].size(), 1U);
    EXPECT_EQ(project["children"][0]["name"], "plan.csv");
    const ordered_json study = ordered_json::parse(Export({"--mode", "STUDY"}));
    EXPECT_EQ(study["children"].size(), 2U);
    EXPECT_EQ(study.dump().find("CAEITERATIONMODEL"), std::string::npos);
    EXPECT_NE(study.dump().find("CAEITERATION\""), std::string::npos);
}

TEST_F(ProgramDocumentTest, OneObjectCanBeWrittenAlone) {
    Write("a.csv");
    Write("docs/b.csv");
    const ordered_json document = ordered_json::parse(Export({"--object", "3"}));
    EXPECT_EQ(document["name"], "docs");
    EXPECT_EQ(document["type"], "CAEASSEMBLYFOLDER");
    EXPECT_EQ(document["subType"], "SDM");
    EXPECT_EQ(document["files"][0]["name"], "b.csv");
}

TEST_F(ProgramDocumentTest, IndentedAndCompactDocumentsAreTheSame) {
    Write("a.csv");
    Write("K\xC3\xBChler/job.inp", "*STEP\n");
    EXPECT_EQ(ordered_json::parse(Export({"--text", "indented"})), ordered_json::parse(Export()));
}

TEST_F(ProgramDocumentTest, TwoRunsGiveTheSameDocument) {
    for (const char* const name : {"z.csv", "b/job.inp", "a/job.k", "a/x.png", "c/d/e.txt"}) {
        Write(name);
    }
    EXPECT_EQ(Export(), Export());
}

TEST_F(ProgramDocumentTest, AnotherParserReadsNamesBackToTheSameTexts) {
    const std::vector<std::string> names = {
        "a b.txt",
        "K\xC3\xBChlk\xC3\xB6rper.txt",
        "\xE4\xB8\xAD\xE6\x96\x87.txt",
        "\xF0\x9F\x94\xA7.txt",
        "'quoted' & {braced} \xE2\x82\xAC.txt",
#if !defined(_WIN32)
        "say \"hello\".txt",
        "line\nfeed\ttab\x01\x7F.txt",
        "trailing dot."
#endif
    };
    for (const std::string& name : names) {
        Write(name);
    }
    const ordered_json document = ordered_json::parse(Export());
    std::vector<std::string> read;
    for (const ordered_json& child : document["children"]) {
        read.push_back(child["name"].get<std::string>());
    }
    std::vector<std::string> expected = names;
    std::ranges::sort(read);
    std::ranges::sort(expected);
    EXPECT_EQ(read, expected);
}

#if !defined(_WIN32)
TEST_F(ProgramDocumentTest, ANameThatIsNoUtf8ComesOutAsLoneSurrogatesForItsBytes) {
    Write("m\xE9sh\xFF.txt");
    const std::string document = Export();
    EXPECT_NE(document.find(R"("name":"m\uDCE9sh\uDCFF.txt")"), std::string::npos) << document;
}

TEST_F(ProgramDocumentTest, ADescriptionInLatin1KeepsItsBytes) {
    Write("study/job.inp", "*STEP\n");
    Write("study/README.txt",
          "Gr\xF6\xDF"
          "e\n");
    EXPECT_NE(Export().find(R"("description":{"value":"Gr\uDCF6\uDCDFe")"), std::string::npos);
}
#endif

TEST_F(ProgramDocumentTest, TheExamplesExport) {
    const ProcessResult result =
        RunProgram(ProgramPath("korvane-json"),
                   {{"export", KORVANEJSON_EXAMPLES "/bracket-project", "--strict"}, {}, {}, {}, {}});
    ASSERT_EQ(result.status, 0) << result.error;
    EXPECT_EQ(result.error, "");
    SaveDocument(result.output);
    const ordered_json document = ordered_json::parse(result.output);
    EXPECT_EQ(document["metaData"]["Studies"]["value"], "4");
    EXPECT_EQ(document["metaData"]["Solver"]["value"], "CalculiX, LS-DYNA, Nastran");
    std::string outline;
    for (const ordered_json& child : document["children"]) {
        outline += child["name"].get<std::string>() + " " + child["type"].get<std::string>() + "\n";
        for (const ordered_json& inner : child["children"]) {
            outline +=
                "  " + inner["name"].get<std::string>() + " " + inner["type"].get<std::string>() + "\n";
        }
    }
    EXPECT_EQ(outline,
              "README.md CAEFILE\n"
              "schedule.csv CAEFILE\n"
              "01-static-bracket CAEMODEL\n"
              "  bracket CAEPART\n"
              "  Iterations CAEITERATIONFOLDER\n"
              "02-modal-plate CAEMODEL\n"
              "  plate_mesh CAEPART\n"
              "  Iterations CAEITERATIONFOLDER\n"
              "03-drop-crate CAEMODEL\n"
              "  crate CAEPART\n"
              "  Iterations CAEITERATIONFOLDER\n"
              "04-K\xC3\xBChlk\xC3\xB6rper CAEMODEL\n"
              "  Iterations CAEITERATIONFOLDER\n"
              "documents CAEASSEMBLYFOLDER\n");
}

/// What stands in the tests for a whole document of a server must be one that a parser accepts, with the
/// objects that its readers look for.
TEST(ServerDocument, HoldsAnObjectOfEveryKindThatServersSend) {
    const ordered_json document =
        ordered_json::parse(ReadWholeFile(KORVANEJSON_EXAMPLES "/server-document.json"));
    std::map<std::string, int> countOfType;
    std::vector<const ordered_json*> waiting = {&document};
    while (!waiting.empty()) {
        const ordered_json& object = *waiting.back();
        waiting.pop_back();
        ++countOfType[object["type"].get<std::string>()];
        for (const char* const member : {"children", "files"}) {
            for (const ordered_json& inner : object[member]) {
                waiting.push_back(&inner);
            }
        }
    }
    const std::map<std::string, int> expected = {{"SIMULATION", 1},
                                                 {"CAEMODEL", 1},
                                                 {"CAESUBASSEMBLY", 1},
                                                 {"CAEPART", 2},
                                                 {"CAEITERATIONFOLDER", 1},
                                                 {"CAEITERATION", 1},
                                                 {"CAEITERATIONMODEL", 1},
                                                 {"CAELOADCASEVIEWFOLDER", 2},
                                                 {"CAELOADCASEVIEW", 2},
                                                 {"CAEVIEWITEM", 3},
                                                 {"CAETAG", 1},
                                                 {"CAEASSEMBLYFOLDER", 1},
                                                 {"CAEFILE", 9}};
    EXPECT_EQ(countOfType, expected);
}

}  // namespace
