#include <EmbeddedModel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "host/HostSupport.h"
#include "host/directory/DirectoryScanner.h"
#include "host/directory/OwnFiles.h"
#include "host/projectfile/ProjectFile.h"
#include "host/projectfile/ProjectTables.h"
#include "host/server/ServerTables.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

using std::filesystem::path;

class OwnFilesTest : public testing::Test {
protected:
    /// The names of the files that are read from the folder.
    std::string Names(const std::optional<path>& leftOut = {}) {
        DirectoryTree tree;
        EXPECT_FALSE(ScanDirectory(folder.Path(), {leftOut, nullptr}, kept.console, tree));
        EXPECT_EQ(tree.unreadableCount, 0U);
        std::string names;
        for (const ScannedDirectory& directory : tree.directories) {
            for (const ScannedFile& file : directory.files) {
                names += ToUtf8(file.name) + ' ';
            }
        }
        return names;
    }
    void MakeProjectFile(std::string_view name) {
        const auto project = korvane::CreateProject(L"P", L"/p");
        CreateProjectFile(folder / name, *project, kept.console);
    }
    void MakeDatabase(std::string_view name, const DatabaseKind& kind) {
        Database database(folder / name, DatabaseUse::Creating, kind);
        database.SetKind(kind);
        database.Run("CREATE TABLE t (a)");
    }

    TemporaryDirectory folder;
    KeptConsole kept;
};

TEST_F(OwnFilesTest, AreTheDatabasesOfTheProgram) {
    // The numbers stand in two places, because a directory is read without knowing of databases.
    const std::int32_t numbers[] = {kProjectFileKind.application, kServerKind.application};
    EXPECT_TRUE(std::ranges::is_permutation(numbers, kOwnApplications));
}

TEST_F(OwnFilesTest, AreLeftOutWithoutAWordWhateverTheirNamesAre) {
    folder.Write("study/job.inp", kAbaqusDeck);
    MakeProjectFile("p.kvp");
    MakeProjectFile("study/old project");
    MakeDatabase("server.inp", kServerKind);
    EXPECT_EQ(Names(), "job.inp ");
    EXPECT_EQ(kept.said, "");
}

TEST_F(OwnFilesTest, HaveJournalsThatAreLeftOutToo) {
    MakeProjectFile("p.kvp");
    for (const char* const name : {"p.kvp-journal", "p.kvp-wal", "p.kvp-shm", "q.kvp-journal", "p.kvp-old"}) {
        folder.Write(name, "x");
    }
    folder.Write("study/p.kvp-journal", "x");
    EXPECT_EQ(Names(), "p.kvp-old q.kvp-journal p.kvp-journal ");
}

TEST_F(OwnFilesTest, AreRecognisedByHowTheyBegin) {
    EXPECT_EQ(OwnFileOf(kPlotBeginning), OwnFile::Plot);
    EXPECT_EQ(OwnFileOf("<!DOCTYPE html>\n<head>" + std::string(kPageMark)), OwnFile::Page);
    EXPECT_EQ(OwnFileOf(R"({"id":"1","name":"a \"b\\","createdDate":"","createdBy":"x","type")"),
              OwnFile::Document);
    EXPECT_EQ(
        OwnFileOf("{\r\n\t\"id\" : \"1\",\n\"name\":\"a\",\"studyTypeName\" : \"\",\"createdDate\":\"d\""),
        OwnFile::Document);
    EXPECT_EQ(OwnFileOf(R"({"id":"1","dbkey":"K","children":[)"), OwnFile::Answer);
}

TEST_F(OwnFilesTest, AreNotRecognisedWhereSomethingElseBeginsAlike) {
    for (const char* const text :
         {"", "{", "{}", "{\"id\"", "{\"id\":", "{\"id\":\"1", "{\"id\":\"1\\", R"({"id":1,"dbkey":"K"})",
          R"({"id":"1","dbkey":7})", R"({"id":"1"})", R"({"id":"1","name":"n"})",
          R"({"id":"1","name":"n","createdDate":"d","owner":"x"})",
          R"({"name":"n","id":"1","createdDate":"d","createdBy":"x"})",
          R"([{"id":"1","name":"n","createdDate":"d","createdBy":"x"}])", R"({"id":"1";"dbkey":"K"})",
          " <!-- A plot by korvane-json -->\n", "<!-- A plot by somebody -->\n<svg>",
          "<meta name=\"generator\" content=\"another\">"}) {
        EXPECT_EQ(OwnFileOf(text), OwnFile::None) << text;
    }
}

TEST_F(OwnFilesTest, DoNotIncludeOtherFilesOfTheSameName) {
    folder.Write("p.kvp", "text");
    folder.Write("empty.kvp", "");
    folder.Write("short.kvp", std::string("SQLite format 3\0", 16));
    MakeDatabase("results.db", {0x01020304, 1, "database of another program"});
    EXPECT_EQ(Names(), "empty.kvp p.kvp results.db short.kvp ");
}

TEST_F(OwnFilesTest, TheFileThatTheCommandWorksOnIsNotOpenedUnderAnotherName) {
    // Closing it would end the locks that SQLite holds on it. A text shows that it is recognised by where the
    // names lead, and not by what is in it.
    folder.Write("p.kvp", "a text");
    folder.Write("q.kvp", "a test");
    std::filesystem::create_hard_link(folder / "p.kvp", folder / "link");
    std::string names = "link p.kvp q.kvp ";
#if !defined(_WIN32)
    std::filesystem::create_symlink("p.kvp", folder / "symbolic");
    names += "symbolic ";
#endif
    EXPECT_EQ(Names(folder / "p.kvp"), "q.kvp ");
    EXPECT_EQ(Names(), names);
}

}  // namespace
}  // namespace host
