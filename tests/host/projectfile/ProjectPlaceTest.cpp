#include <EmbeddedModel.h>
#include <gtest/gtest.h>

#include "host/HostSupport.h"
#include "host/projectfile/ProjectFile.h"
#include "host/projectfile/ProjectPlace.h"
#include "host/projectfile/ProjectTables.h"
#include "host/system/Text.h"
#include "support/ModelBuilders.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

using std::filesystem::path;

/// A folder "here" with a project file and its directory, which move together or alone.
class ProjectPlaceTest : public testing::Test {
protected:
    /// Makes `file`, the file of a project with one file, "arm.dat", in `directory`.
    void Make(std::string_view file, std::string_view directory) {
        folder.Write(std::string(directory) + "/arm.dat", "x");
        std::filesystem::create_directories((folder / file).parent_path());
        const auto made = korvane::CreateProject(L"P", ToOuString((folder / directory).lexically_normal()));
        const CAEFile& arm =
            *korvane::CreateFile(*made, ToOuString((folder / directory / "arm.dat").lexically_normal()),
                                 CAE_FILE_OTHER, CAE_FORMAT_ASCII);
        made->attachCustomFile(arm.getID(), nullptr);
        CreateProjectFile(folder / file, *made, kept.console);
    }
    void Move(std::string_view from, std::string_view to) {
        std::filesystem::create_directories((folder / to).parent_path());
        std::filesystem::rename(folder / from, folder / to);
    }
    /// Expects that the project and its file are in `directory`.
    void ExpectIn(std::string_view file, std::string_view directory) {
        const std::unique_ptr<CAEProject> project = ReadProjectFile(folder / file, kept.console);
        OuString text;
        project->getDirectory(text);
        EXPECT_EQ(ToPath(text), folder / directory);
        korvane::GetProjectFiles(*project).front()->getFullPathName(text);
        EXPECT_EQ(ToPath(text), folder / directory / "arm.dat");
    }
    std::string From(std::string_view file, std::string_view directory) {
        return DirectoryFrom(folder / file, ToOuString(folder / directory));
    }

    TemporaryDirectory folder;
    KeptConsole kept;
};

TEST_F(ProjectPlaceTest, IsSeenFromTheFolderOfTheFile) {
    folder.MakeDirectory("here");
    EXPECT_EQ(From("here/p.kvp", "here"), ".");
    EXPECT_EQ(From("here/p.kvp", "here/a/b"), "a/b");
    EXPECT_EQ(From("here/p.kvp", "there/a"), "../there/a");
    EXPECT_EQ(From("here/p.kvp", "."), "..");
    EXPECT_EQ(DirectoryFrom(folder / "here/p.kvp", ToOuString(folder / "here/a/")), "a");
    EXPECT_EQ(DirectoryFrom(folder / "here/p.kvp", L""), "");
    EXPECT_EQ(DirectoryFrom(folder / "here/p.kvp", L"a/b"), "");
#if defined(_WIN32)
    EXPECT_EQ(DirectoryFrom(folder / "here/p.kvp", L"Q:\\a"), "");
#else
    EXPECT_EQ(DirectoryFrom(folder / "here/p.kvp", L"/no folder in common"), "");
#endif
}

TEST_F(ProjectPlaceTest, StaysWhereItIs) {
    Make("here/p.kvp", "here/studies");
    ExpectIn("here/p.kvp", "here/studies");
}

TEST_F(ProjectPlaceTest, MovesTogetherWithTheFile) {
    Make("here/p.kvp", "here/studies");
    Move("here", "new/there");
    ExpectIn("new/there/p.kvp", "new/there/studies");
}

TEST_F(ProjectPlaceTest, MovesWithTheFileInTheDirectoryItself) {
    Make("here/studies/p.kvp", "here/studies");
    Move("here/studies", "there");
    ExpectIn("there/p.kvp", "there");
}

TEST_F(ProjectPlaceTest, MovesWithTheFileFarAbove) {
    Make("here/files/p.kvp", "here/a/studies");
    Move("here", "there");
    ExpectIn("there/files/p.kvp", "there/a/studies");
}

TEST_F(ProjectPlaceTest, ACopyOfBothIsOnItsOwn) {
    Make("here/p.kvp", "here/studies");
    std::filesystem::copy(folder / "here", folder / "there", std::filesystem::copy_options::recursive);
    ExpectIn("there/p.kvp", "there/studies");
    ExpectIn("here/p.kvp", "here/studies");
}

TEST_F(ProjectPlaceTest, StaysIfTheFileAloneMoves) {
    Make("here/p.kvp", "here/studies");
    Move("here/p.kvp", "there/p.kvp");
    ExpectIn("there/p.kvp", "here/studies");
    // A directory of this name that is another one.
    folder.Write("there/studies/other.dat", "x");
    ExpectIn("there/p.kvp", "here/studies");
}

TEST_F(ProjectPlaceTest, StaysIfTheFileAloneLeavesTheDirectory) {
    Make("here/studies/p.kvp", "here/studies");
    Move("here/studies/p.kvp", "there/p.kvp");
    ExpectIn("there/p.kvp", "here/studies");
}

TEST_F(ProjectPlaceTest, MovesAlthoughItsFilesAreGone) {
    Make("here/p.kvp", "here/studies");
    std::filesystem::remove(folder / "here/studies/arm.dat");
    Move("here", "there");
    ExpectIn("there/p.kvp", "there/studies");
}

TEST_F(ProjectPlaceTest, IsKeptBySavingAfterAMove) {
    Make("here/p.kvp", "here/studies");
    Move("here", "there");
    {
        ProjectFile file = ProjectFile::Open(folder / "there/p.kvp", true, kept.console);
        file.Save(kept.console);
    }
    Move("there", "last");
    ExpectIn("last/p.kvp", "last/studies");
}

TEST_F(ProjectPlaceTest, OfAProjectInTheProjectMovesToo) {
    folder.Write("here/studies/a.dat", "x");
    const auto made = korvane::CreateProject(L"P", ToOuString(folder / "here/studies"));
    auto& inner = dynamic_cast<CAEProject&>(*korvane::CreateObject(*made, CAE_PROJECT, L"inner"));
    korvane::SetDirectory(inner, ToOuString(folder / "here/inner"));
    korvane::CreateFile(inner, ToOuString(folder / "here/inner/b.dat"), CAE_FILE_OTHER, CAE_FORMAT_ASCII);
    korvane::CreateFile(inner, ToOuString(folder / "elsewhere/c.dat"), CAE_FILE_OTHER, CAE_FORMAT_ASCII);
    CreateProjectFile(folder / "here/p.kvp", *made, kept.console);
    Move("here", "there");
    const std::unique_ptr<CAEProject> read = ReadProjectFile(folder / "there/p.kvp", kept.console);
    auto& found = dynamic_cast<CAEProject&>(*read->getCAEObject(inner.getID()));
    OuString text;
    found.getDirectory(text);
    EXPECT_EQ(ToPath(text), folder / "there/inner");
    const std::vector<CAEFile*> files = korvane::GetProjectFiles(found);
    files[0]->getFullPathName(text);
    EXPECT_EQ(ToPath(text), folder / "there/inner/b.dat");
    files[1]->getFullPathName(text);
    EXPECT_EQ(ToPath(text), folder / "elsewhere/c.dat");
}

TEST_F(ProjectPlaceTest, FilesOfOlderFormatsAreReadAndBecomeOfThis) {
    Make("here/p.kvp", "here/studies");
    const path file = folder / "here/p.kvp";
    {
        // Keys are written into the old format, and the whole project into the new one.
        Database database(file, DatabaseUse::Changing, kProjectFileKind);
        database.Run("DROP TABLE place");
        WriteChecksum(database, kProjectFileKind);
        database.Run("PRAGMA user_version = 2");
    }
    ExpectIn("here/p.kvp", "here/studies");
    const auto format = [&] {
        Database database(file, DatabaseUse::Reading, kProjectFileKind);
        Statement question(database, "PRAGMA user_version");
        question.Begin().Next();
        return question.Number(0);
    };
    {
        ProjectFile opened = ProjectFile::Open(file, true, kept.console);
        opened.Project().setDBKey(L"PRJ-1");
        opened.SaveKeys(kept.console);
    }
    EXPECT_EQ(format(), 2);
    ExpectIn("here/p.kvp", "here/studies");
    {
        ProjectFile opened = ProjectFile::Open(file, true, kept.console);
        EXPECT_STREQ(opened.Project().getDBKey().GetAnsiBuffer(), "PRJ-1");
        opened.Save(kept.console);
    }
    EXPECT_EQ(format(), 3);
    Move("here", "there");
    ExpectIn("there/p.kvp", "there/studies");
}

TEST_F(ProjectPlaceTest, IsThereForEveryProject) {
    Make("here/p.kvp", "here/studies");
    {
        Database database(folder / "here/p.kvp", DatabaseUse::Changing, kProjectFileKind);
        database.Run("DELETE FROM place");
        WriteChecksum(database, kProjectFileKind);
    }
    EXPECT_EQ(ErrorOf([&] { ReadProjectFile(folder / "here/p.kvp", kept.console); }),
              "is damaged: it has 0 entries for places of projects instead of 1. Restore it from a copy");
}

TEST_F(ProjectPlaceTest, FilesThatAreLeftOutAreNotSaved) {
    Make("here/p.kvp", "here/studies");
    int removed = 0;
    {
        ProjectFile file = ProjectFile::Open(folder / "here/p.kvp", true, kept.console);
        CAEProject& project = file.Project();
        const CAEFile& extra = *korvane::CreateFile(project, L"/x.dat", CAE_FILE_OTHER, CAE_FORMAT_ASCII);
        korvane::CreateFile(project, L"/y.dat", CAE_FILE_OTHER, CAE_FORMAT_ASCII);
        removed = extra.getID();
        file.SaveWithout({removed}, kept.console);
    }
    const std::unique_ptr<CAEProject> read = ReadProjectFile(folder / "here/p.kvp", kept.console);
    EXPECT_EQ(korvane::GetProjectFiles(*read).size(), 2U);
    EXPECT_EQ(read->getCAEObject(removed), nullptr);
    // Its identifier is not used again.
    EXPECT_GT(korvane::CreateFile(*read, L"/z", CAE_FILE_OTHER, CAE_FORMAT_ASCII)->getID(), removed + 1);
}

}  // namespace
}  // namespace host
