#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "ProgramSupport.h"

/// Pages as text; tests/page/ looks at them in a browser.
namespace {

using nlohmann::json;

class ProgramPage : public ProgramInFolder {
protected:
    void WriteStudy() const {
        folder.Write("root/beam/beam.inp", "*STEP\n*STATIC\n*END STEP\n");
        folder.Write("root/beam/red.gif", "GIF89a red");
        folder.Write("root/beam/blue.gif", "GIF89a blue, larger");
    }
    /// The blocks of JSON with the class, as one array or object each.
    static std::vector<json> Blocks(const std::string& page, const std::string& kind) {
        const std::string start = "<script type=\"application/json\" class=\"" + kind + "\" data-side=\"";
        std::vector<json> blocks;
        for (std::size_t at = 0; (at = page.find(start, at)) != std::string::npos;) {
            // The number of the side has one digit.
            at += start.size() + 3;
            blocks.push_back(json::parse(page.substr(at, page.find("</script>", at) - at)));
        }
        return blocks;
    }
    static json Named(const std::vector<json>& blocks, const std::string& name) {
        for (const json& block : blocks) {
            for (const json& record : block) {
                if (record.value("name", "") == name) {
                    return record;
                }
            }
        }
        ADD_FAILURE() << "there is no " << name;
        return {};
    }
};

TEST_F(ProgramPage, HasTheObjectsAndFilesOfTheProject) {
    WriteStudy();
    EXPECT_EQ(Do({"page", "root", "-o", "page.html"}), "");
    const std::string page = Read("page.html");
    EXPECT_TRUE(page.starts_with("<!DOCTYPE html>\n"));
    EXPECT_TRUE(page.ends_with("</html>\n"));
    EXPECT_NE(page.find("<title>root</title>"), std::string::npos);
    const std::vector<json> objects = Blocks(page, "objects");
    ASSERT_EQ(objects.size(), 1U);
    EXPECT_EQ(objects[0][0]["parent"], -1);
    EXPECT_EQ(objects[0][0]["kind"], "Project");
    const json study = Named(objects, "beam");
    EXPECT_EQ(study["kind"], "Model");
    EXPECT_EQ(study["parent"], 0);
    EXPECT_EQ(study["files"], (json::array({{0, "custom file"}, {1, "custom file"}})));
    const json file = Named(Blocks(page, "files"), "red.gif");
    EXPECT_EQ(file["place"], "beam/red.gif");
    EXPECT_EQ(file["size"], 10);
    EXPECT_EQ(file["picture"], "image/gif");
    EXPECT_NE(page.find("R0lGODlhIHJlZA=="), std::string::npos);
}

TEST_F(ProgramPage, IsWrittenToTheStandardOutputToo) {
    WriteStudy();
    Do({"page", "root", "-o", "page.html"});
    EXPECT_EQ(OutputOf({"page", "root", "-o", "-"}), Read("page.html"));
}

TEST_F(ProgramPage, PicturesThatDoNotFitAreNamedOnly) {
    WriteStudy();
    // blue.gif has 19 bytes and comes first; red.gif has 10.
    Do({"page", "root", "--pictures", "18", "-o", "page.html"});
    const std::vector<json> files = Blocks(Read("page.html"), "files");
    EXPECT_EQ(Named(files, "red.gif").value("embedded", false), true);
    EXPECT_EQ(Named(files, "blue.gif").value("embedded", false), false);
    EXPECT_EQ(Named(files, "blue.gif")["picture"], "image/gif");
    EXPECT_EQ(Blocks(Read("page.html"), "head").at(0)["pictureLimit"], 18);
}

TEST_F(ProgramPage, SizesHaveUnits) {
    WriteStudy();
    const auto limitOf = [this](const std::string& size) {
        return Blocks(OutputOf({"page", "root", "--pictures", size, "-o", "-"}), "head")
            .at(0)["pictureLimit"];
    };
    EXPECT_EQ(limitOf("0"), 0);
    EXPECT_EQ(limitOf("12B"), 12);
    EXPECT_EQ(limitOf("500k"), 500'000);
    EXPECT_EQ(limitOf("20M"), 20'000'000);
    EXPECT_EQ(limitOf("2gb"), 2'000'000'000);
    for (const std::string size :
         {"", "M", "-1", "1.5M", "1 M", "1X", "1MM", "99999999999999999999", "99999999999T"}) {
        ExpectRefused({"page", "root", "--pictures", size, "-o", "page.html"},
                      "--pictures: '" + size +
                          "' is not a size; give one like 500k, 20M or 0. See 'korvane-json page --help'",
                      2);
    }
}

TEST_F(ProgramPage, MayLieInTheDirectoryThatItShows) {
    WriteStudy();
    const auto contentOfPage = [&] {
        const std::string page = Read("root/page.html");
        json content = {Blocks(page, "head"), Blocks(page, "files"), Blocks(page, "objects")};
        // Writing the page changes the directory's date, and the page shows that date.
        content[2][0][0].erase("created");
        return content;
    };
    Do({"page", "root", "-o", "root/page.html"});
    const json content = contentOfPage();
    EXPECT_EQ(content[2][0][0]["name"], "root");
    // The page is neither refused nor a file of the project the second time.
    EXPECT_EQ(Do({"page", "root", "-o", "root/page.html"}), "");
    EXPECT_EQ(contentOfPage(), content);
}

TEST_F(ProgramPage, ReplacesNoFileOfTheProject) {
    WriteStudy();
    folder.Write("root/notes.html", "<!DOCTYPE html><p>by hand</p>");
    ExpectRefused({"page", "root", "-o", "root/notes.html"},
                  "cannot write 'root/notes.html': it is a file of the project, not a document, a page or a "
                  "plot. Nothing was "
                  "changed; give another file with -o");
}

TEST_F(ProgramPage, NeedsAnOutput) {
    WriteStudy();
    ExpectRefused({"page", "root"}, "--output is required. See 'korvane-json page --help'", 2);
}

TEST_F(ProgramPage, ShowsDocumentsAndProjectFilesLikeTheirDirectory) {
    WriteStudy();
    Do({"export", "root", "-o", "root.json"});
    Do({"new", "root", "root.kvp"});
    const json ofFile = Named(Blocks(OutputOf({"page", "root.kvp", "-o", "-"}), "objects"), "beam");
    const ProcessResult document = Run({"page", "root.json", "-o", "-"});
    EXPECT_EQ(document.status, 0);
    const json ofDocument = Named(Blocks(document.output, "objects"), "beam");
    EXPECT_EQ(ofFile["metadata"], ofDocument["metadata"]);
    EXPECT_EQ(ofFile["files"], ofDocument["files"]);
}

TEST_F(ProgramPage, ComparesTwoProjects) {
    folder.Write("a.json", R"({"type":"X","name":"A","children":[{"type":"CAEPART","name":"p","dbkey":"K"},)"
                           R"({"type":"CAEPART","name":"gone","dbkey":"L"}]})");
    folder.Write("b.json", R"({"type":"X","name":"B","children":[{"type":"CAETAG","name":"fresh"},)"
                           R"({"type":"CAEPART","name":"q","dbkey":"K"}]})");
    const std::string page = OutputOf({"page", "a.json", "b.json", "--ignore", "dates", "-o", "-"});
    const json head = Blocks(page, "head").at(0);
    EXPECT_EQ(head["sides"], (json::array({"A", "B"})));
    EXPECT_EQ(head["title"], "A and B");
    EXPECT_EQ(head["comparison"], "4 differences: 1 added, 1 removed, 2 changed");
    EXPECT_EQ(Blocks(page, "pairs").at(0), (json::array({{1, 1}, {2, 3}})));
    const json changes = Blocks(page, "changes").at(0);
    EXPECT_EQ(changes[1], (json::array({"-", 3, "removed"})));
    EXPECT_EQ(changes[2], (json::array({"+", 2, "added"})));
    EXPECT_EQ(changes[3], (json::array({"~", 3, "name changed from 'p' to 'q'"})));
    EXPECT_NE(page.find("class=\"objects\" data-side=\"1\""), std::string::npos);
    ExpectRefused({"page", "-", "-", "-o", "page.html"},
                  "only one of the two can be the standard input (-). See 'korvane-json page --help'", 2);
    ExpectRefused({"page", "a.json", "--ignore", "dates", "-o", "page.html"},
                  "--ignore needs another project to compare with. See 'korvane-json page --help'", 2);
    ExpectRefused(
        {"page", "a.json", "b.json", "-o", "b.json"},
        "cannot write 'b.json': the command itself works on that file. Nothing was changed; give another "
        "file with -o");
    EXPECT_EQ(Run({"page", "a.json", "missing.json", "-o", "page.html"}).status, 1);
}

TEST_F(ProgramPage, StrictCountsWhatCannotBeNamed) {
    WriteStudy();
#if !defined(_WIN32)
    folder.Write("root/a\\b.txt", "x");
    EXPECT_EQ(Run({"page", "root", "-o", "page.html"}).status, 0);
    EXPECT_EQ(Run({"page", "--strict", "root", "-o", "page.html"}).status, 1);
#endif
}

}  // namespace
