#include <gtest/gtest.h>

#include <algorithm>

#include "WithoutPrivileges.h"
#include "host/HostSupport.h"
#include "host/directory/DirectoryScanner.h"
#include "support/TemporaryDirectory.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace host {
namespace {

/// The tree as a text: a line for each directory and file, indented by depth, with the type of each file.
std::string Describe(const DirectoryTree& tree, std::size_t index = 0, const std::string& indent = "") {
    std::string text;
    for (const ScannedFile& file : tree.directories[index].files) {
        text += indent + ToUtf8(file.name) + " " + std::to_string(file.type) + "\n";
    }
    for (const std::size_t inner : tree.directories[index].directories) {
        text += indent + ToUtf8(tree.directories[inner].name) + "/\n" + Describe(tree, inner, indent + "  ");
    }
    return text;
}

class DirectoryScannerTest : public testing::Test {
protected:
    std::string Scan(const ScanOptions& options = {}) {
        tree = {};
        const std::error_code error = ScanDirectory(folder.Path(), options, kept.console, tree);
        return error ? "error: " + error.message() : Describe(tree);
    }

    TemporaryDirectory folder;
    KeptConsole kept;
    DirectoryTree tree;
};

TEST_F(DirectoryScannerTest, OrdersFilesAndDirectoriesByName) {
    for (const char* const name : {"b.txt", "a.txt", "C.txt", "\xC3\xA4.txt", "10.txt", "9.txt"}) {
        folder.Write(name, "x");
    }
    folder.Write("z/1.txt", "x");
    folder.Write("Y/1.txt", "x");
    EXPECT_EQ(Scan(),
              "10.txt 7\n9.txt 7\nC.txt 7\na.txt 7\nb.txt 7\n\xC3\xA4.txt 7\n"
              "Y/\n  1.txt 7\nz/\n  1.txt 7\n");
}

TEST_F(DirectoryScannerTest, LeavesHiddenEntriesOutWithoutAWord) {
    folder.Write(".hidden.inp", kAbaqusDeck);
    folder.Write(".git/config", "x");
    folder.Write("a.txt", "x");
    EXPECT_EQ(Scan(), "a.txt 7\n");
    EXPECT_EQ(kept.said, "");
    EXPECT_EQ(tree.unreadableCount, 0U);
}

TEST_F(DirectoryScannerTest, KeepsEmptyDirectoriesApartFromThoseWithFiles) {
    folder.MakeDirectory("empty/inner");
    folder.Write("full/inner/a.txt", "x");
    Scan();
    const auto find = [&](const char* name) {
        return *std::ranges::find_if(
            tree.directories, [&](const ScannedDirectory& directory) { return directory.name == name; });
    };
    EXPECT_FALSE(find("empty").hasFilesInTree);
    EXPECT_TRUE(find("full").hasFilesInTree);
    EXPECT_FALSE(find("full").hasDecksInTree);
}

TEST_F(DirectoryScannerTest, SeesDecksFarBelow) {
    folder.Write("a/b/c/job.inp", kAbaqusDeck);
    Scan();
    EXPECT_TRUE(tree.directories.front().hasDecksInTree);
    EXPECT_FALSE(tree.directories.front().hasDecks);
    EXPECT_TRUE(tree.directories.back().hasDecks);
}

TEST_F(DirectoryScannerTest, ADeckThatAnotherIncludesIsAnInclude) {
    folder.Write("job.inp", "*INCLUDE, INPUT=step.inp\n*INCLUDE, INPUT=./sub/loads.inp\n");
    folder.Write("step.inp", kAbaqusDeck);
    folder.Write("sub/loads.inp", kAbaqusDeck);
    folder.Write("sub/other.inp", kAbaqusDeck);
    EXPECT_EQ(Scan(), "job.inp 4\nstep.inp 5\nsub/\n  loads.inp 5\n  other.inp 4\n");
}

TEST_F(DirectoryScannerTest, ADeckIncludedFromAnIncludeIsAnInclude) {
    folder.Write("job.k", "*KEYWORD\n*CONTROL_TERMINATION\n1\n*INCLUDE\nall.inc\n*END\n");
    folder.Write("all.inc", "*KEYWORD\n*INCLUDE\nmaterials.k\n*END\n");
    folder.Write("materials.k", "*KEYWORD\n*END\n");
    EXPECT_EQ(Scan(), "all.inc 5\njob.k 4\nmaterials.k 5\n");
}

TEST_F(DirectoryScannerTest, ADeckThatIncludesItselfStaysADeck) {
    folder.Write("job.inp", "*INCLUDE, INPUT=job.inp\n*STEP\n*END STEP\n");
    EXPECT_EQ(Scan(), "job.inp 4\n");
}

TEST_F(DirectoryScannerTest, MeshesInTheSyntaxOfDecksAreMeshes) {
    folder.Write("job.inp", "*INCLUDE, INPUT=mesh.inp\n*STEP\n*END STEP\n");
    folder.Write("mesh.inp", "*NODE\n1, 0, 0, 0\n*ELEMENT, TYPE=C3D4\n");
    EXPECT_EQ(Scan(), "job.inp 4\nmesh.inp 2\n");
}

TEST_F(DirectoryScannerTest, TheEngineFileOfRadiossGoesWithItsStarter) {
    folder.Write("a/crash_0000.rad", "#RADIOSS STARTER\n/BEGIN\n");
    folder.Write("a/crash_0001.rad", "#RADIOSS ENGINE\n/RUN/crash/1/\n");
    folder.Write("b/restart_0002.rad", "#RADIOSS ENGINE\n/RUN/restart/2/\n");
    EXPECT_EQ(Scan(), "a/\n  crash_0000.rad 4\n  crash_0001.rad 5\nb/\n  restart_0002.rad 4\n");
}

TEST_F(DirectoryScannerTest, LooksIntoFilesOfSharedExtensions) {
    folder.Write("deck.dat", kNastranDeck);
    folder.Write("curve.dat", "0.0 1.0\n1.0 2.0\n");
    folder.Write("job.dat", "\n displacements (vx,vy,vz) for set N and time  0.1E+01\n");
    folder.Write("talk.key", std::string_view("PK\x03\x04\0\0", 6));
    folder.Write("crash.key", kLsDynaDeck);
    folder.Write("zlib.pc", "Name: zlib\n");
    folder.Write("file.rst", std::string_view("\x01\0\0\0", 4));
    folder.Write("notes.rst", "Notes\n=====\n");
    EXPECT_EQ(Scan(),
              "crash.key 4\ncurve.dat 11\ndeck.dat 4\nfile.rst 6\njob.dat 6\nnotes.rst 7\ntalk.key "
              "13\nzlib.pc 13\n");
}

TEST_F(DirectoryScannerTest, BinaryContentIsNoDeck) {
    folder.Write("job.inp", std::string_view("*STEP\0*END STEP", 15));
    EXPECT_EQ(Scan(), "job.inp 13\n");
    EXPECT_EQ(tree.directories.front().files.front().format, CAE_FORMAT_BINARY);
    EXPECT_EQ(tree.directories.front().files.front().solver, Solver::None);
}

TEST_F(DirectoryScannerTest, OtherFilesBesideADeckTellItsSolver) {
    folder.Write("a/job.inp", kAbaqusDeck);
    folder.Write("a/pre.fbd", "plot\n");
    folder.Write("b/job.inp", kAbaqusDeck);
    folder.Write("b/job.odb", "x");
    folder.Write("c/job.inp", kAbaqusDeck);
    Scan();
    const auto solverIn = [&](std::size_t index) { return tree.directories[index].files.front().solver; };
    EXPECT_EQ(solverIn(1), Solver::Calculix);
    EXPECT_EQ(solverIn(2), Solver::Abaqus);
    EXPECT_EQ(solverIn(3), Solver::AbaqusOrCalculix);
}

TEST_F(DirectoryScannerTest, LeavesTheOutputFileOut) {
    const std::filesystem::path output = folder.Write("sub/out.json", "{}");
    folder.Write("out.json", "{}");
    EXPECT_EQ(Scan({output}), "out.json 13\nsub/\n");
}

TEST_F(DirectoryScannerTest, ReadsADeepTreeWithoutDeepStack) {
    // As deep as a path may be long.
#if defined(_WIN32)
    constexpr int kDepth = 60;
#else
    constexpr int kDepth = 1500;
#endif
    std::filesystem::path deepest = folder.Path();
    for (int level = 0; level < kDepth; ++level) {
        deepest /= "d";
        std::filesystem::create_directory(deepest);
    }
    folder.Write(ToUtf8(deepest / "job.inp"), kAbaqusDeck);
    ASSERT_FALSE(ScanDirectory(folder.Path(), {}, kept.console, tree));
    ASSERT_EQ(tree.directories.size(), static_cast<std::size_t>(kDepth) + 1);
    EXPECT_TRUE(tree.directories.back().hasDecks);
    EXPECT_TRUE(tree.directories.front().hasDecksInTree);
}

TEST_F(DirectoryScannerTest, FailsOnlyWhereTheRootCannotBeRead) {
    EXPECT_TRUE(ScanDirectory(folder / "missing", {}, kept.console, tree));
}

#if defined(_WIN32)

TEST_F(DirectoryScannerTest, LeavesEntriesMarkedAsHiddenOut) {
    const std::filesystem::path file = folder.Write("desktop.txt", "x");
    ASSERT_NE(::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_HIDDEN), 0);
    folder.Write("a.txt", "x");
    EXPECT_EQ(Scan(), "a.txt 7\n");
}

TEST_F(DirectoryScannerTest, NamesCountsAndLeavesOutAFileThatAnotherProgramLocks) {
    folder.Write("a.txt", "x");
    const std::filesystem::path locked = folder.Write("locked.inp", kAbaqusDeck);
    HANDLE const handle =
        ::CreateFileW(locked.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(handle, INVALID_HANDLE_VALUE);
    EXPECT_EQ(Scan(), "a.txt 7\n");
    ::CloseHandle(handle);
    EXPECT_EQ(tree.unreadableCount, 1U);
    EXPECT_NE(kept.said.find("locked.inp' cannot be read and is left out: "), std::string::npos) << kept.said;
}

#else

TEST_F(DirectoryScannerTest, ALinkToAFileOfTheProjectIsAFileWhereItStands) {
    folder.Write("common/mesh.msh", "12345");
    folder.Write("study/job.inp", kAbaqusDeck);
    std::filesystem::create_symlink("../common/mesh.msh", folder / "study/all.msh");
    EXPECT_EQ(Scan(), "common/\n  mesh.msh 2\nstudy/\n  all.msh 2\n  job.inp 4\n");
    const ScannedFile& link = tree.directories[2].files.front();
    EXPECT_TRUE(link.isLink);
    EXPECT_EQ(link.size, 5U);
    EXPECT_EQ(kept.said, "");
}

TEST_F(DirectoryScannerTest, LinksToDirectoriesOfTheProjectAreNotEntered) {
    folder.Write("a/x.txt", "x");
    std::filesystem::create_directory_symlink("../a", folder / "a/again");
    std::filesystem::create_directory_symlink(".", folder / "self");
    EXPECT_EQ(Scan(), "a/\n  x.txt 7\n");
    EXPECT_EQ(tree.unreadableCount, 0U);
}

TEST_F(DirectoryScannerTest, LinksOutOfTheProjectAreLeftOutWithAWord) {
    const TemporaryDirectory outside;
    outside.Write("secret.txt", "x");
    folder.Write("a.txt", "x");
    std::filesystem::create_symlink(outside / "secret.txt", folder / "file.txt");
    std::filesystem::create_directory_symlink(outside.Path(), folder / "folder");
    std::filesystem::create_directory_symlink("..", folder / "up");
    EXPECT_EQ(Scan(), "a.txt 7\n");
    EXPECT_EQ(tree.unreadableCount, 0U);
    const std::string expected = "korvane-json: '" + ToUtf8(folder / "file.txt") +
                                 "' is left out: it is a link out of the project, to '" +
                                 ToUtf8(outside / "secret.txt") +
                                 "'. Copy its target into the project if it belongs there\n";
    EXPECT_EQ(kept.said.substr(0, expected.size()), expected);
    EXPECT_EQ(std::ranges::count(kept.said, '\n'), 3);
}

TEST_F(DirectoryScannerTest, ADirectoryWhoseNameTheRootsBeginsIsOutside) {
    folder.Write("root/a.txt", "x");
    folder.Write("root-two/b.txt", "x");
    std::filesystem::create_symlink("../root-two/b.txt", folder / "root/b.txt");
    ASSERT_FALSE(ScanDirectory(folder / "root", {}, kept.console, tree));
    EXPECT_EQ(Describe(tree), "a.txt 7\n");
}

TEST_F(DirectoryScannerTest, NamesCountsAndLeavesOutLinksThatLeadNowhere) {
    folder.Write("a.txt", "x");
    std::filesystem::create_symlink("gone.txt", folder / "dangling.txt");
    std::filesystem::create_symlink("circle", folder / "circle");
    EXPECT_EQ(Scan(), "a.txt 7\n");
    EXPECT_EQ(tree.unreadableCount, 2U);
    EXPECT_EQ(kept.said, "korvane-json: '" + ToUtf8(folder / "circle") +
                             "' cannot be read and is left out: it is a broken link (Too many levels of "
                             "symbolic links)\n"
                             "korvane-json: '" +
                             ToUtf8(folder / "dangling.txt") +
                             "' cannot be read and is left out: it is a broken link (No such file or "
                             "directory)\n");
}

TEST_F(DirectoryScannerTest, NamesCountsAndLeavesOutWhatIsNeitherFileNorDirectory) {
    ASSERT_EQ(::mkfifo((folder / "pipe.inp").c_str(), 0600), 0);
    EXPECT_EQ(Scan(), "");
    EXPECT_EQ(tree.unreadableCount, 1U);
    EXPECT_EQ(kept.said, "korvane-json: '" + ToUtf8(folder / "pipe.inp") +
                             "' cannot be read and is left out: it is neither a file nor a directory\n");
}

TEST_F(DirectoryScannerTest, NamesCountsAndLeavesOutNamesWithABackslash) {
    folder.Write("a\\b.inp", kAbaqusDeck);
    folder.Write("c\\d/e.txt", "x");
    folder.Write(".f\\g", "x");
    folder.Write("h.txt", "x");
    EXPECT_EQ(Scan(), "h.txt 7\n");
    EXPECT_EQ(tree.unreadableCount, 2U);
    constexpr const char* kReason =
        "' is left out: in a document a backslash separates directories. Rename it to "
        "keep "
        "it\n";
    EXPECT_EQ(kept.said, "korvane-json: '" + ToUtf8(folder / "a\\b.inp") + kReason + "korvane-json: '" +
                             ToUtf8(folder / "c\\d") + kReason);
}

TEST_F(DirectoryScannerTest, NamesCountsAndLeavesOutWhatMayNotBeRead) {
    folder.Write("a.txt", "x");
    ASSERT_EQ(::chmod(folder.Write("locked.inp", kAbaqusDeck).c_str(), 0), 0);
    folder.Write("secret/b.txt", "x");
    ASSERT_EQ(::chmod((folder / "secret").c_str(), 0), 0);
    {
        const WithoutPrivileges privileges;
        ASSERT_NE(::geteuid(), 0U);
        EXPECT_EQ(Scan(), "a.txt 7\nsecret/\n");
    }
    ::chmod((folder / "secret").c_str(), 0700);
    EXPECT_EQ(tree.unreadableCount, 2U);
    EXPECT_EQ(kept.said, "korvane-json: '" + ToUtf8(folder / "secret") +
                             "' cannot be read and is left out: Permission denied\n"
                             "korvane-json: '" +
                             ToUtf8(folder / "locked.inp") +
                             "' cannot be read and is left out: Permission denied\n");
    EXPECT_FALSE(tree.directories.back().hasFilesInTree);
}

TEST_F(DirectoryScannerTest, KeepsNamesThatAreNoUtf8) {
    folder.Write("m\xE9sh.msh", "x");
    Scan();
    EXPECT_EQ(tree.directories.front().files.front().name.native(), "m\xE9sh.msh");
}

#endif

}  // namespace
}  // namespace host
