#include <EmbeddedModel.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "host/HostSupport.h"
#include "host/commands/ProgramSupport.h"
#include "host/model/MeshFiles.h"
#include "host/page/Base64.h"
#include "host/projectfile/ProjectFile.h"
#include "host/system/FileSystem.h"
#include "host/system/Text.h"

/// Which of the files that a project file names get into a page: it may come from somebody else, who names
/// files of the user's.
namespace host {
namespace {

using nlohmann::json;
using std::filesystem::path;

class PageFiles : public ProgramInFolder {
protected:
    /// Makes the project file "here/p.kvp", whose directory is "here" and which names files by their full
    /// paths.
    void Make(const std::vector<path>& files) {
        folder.MakeDirectory("here");
        const auto project = korvane::CreateProject(L"P", ToOuString(folder / "here"));
        for (const path& file : files) {
            const _tagFileType type = file.extension() == ".inp"   ? CAE_FILE_DECK
                                      : file.extension() == ".stl" ? CAE_FILE_MESH
                                                                   : CAE_FILE_PICTURE;
            const CAEFile& made = *korvane::CreateFile(*project, ToOuString(file), type, CAE_FORMAT_BINARY);
            project->attachCustomFile(made.getID(), nullptr);
        }
        std::filesystem::remove(folder / "here/p.kvp");
        CreateProjectFile(folder / "here/p.kvp", *project, kept.console);
    }
    /// Makes the page, and gives what the program says.
    std::string MakePage(std::vector<std::string> options = {}) {
        options.insert(options.begin(), {"page", "here/p.kvp", "-o", "page.html"});
        std::string said = Do(options);
        page = Read("page.html");
        return said;
    }
    bool HasBytes(std::string_view bytes) const { return page.find(Base64(bytes)) != std::string::npos; }
    /// The record of the file in the page, by the order in which the project has them.
    json Record(std::size_t index) const {
        const std::string_view start = R"(<script type="application/json" class="files" data-side="0">)";
        const std::size_t begin = page.find(start) + start.size();
        return json::parse(page.substr(begin, page.find("</script>", begin) - begin)).at(index);
    }
    /// The file looks as one that was not found, and the page says why it was not looked at.
    void ExpectOutside(std::size_t index) const {
        const json record = Record(index);
        EXPECT_EQ(record.value("outside", false), true) << record;
        for (const char* const member : {"size", "picture", "embedded", "model"}) {
            EXPECT_FALSE(record.contains(member)) << record;
        }
    }
    void ExpectInside(std::size_t index) const {
        EXPECT_FALSE(Record(index).contains("outside"));
        EXPECT_TRUE(Record(index).contains("size"));
    }
    std::string OutsideSaid(const std::string& number, const std::string& example) const {
        return "korvane-json: " + number + " outside of its directory and " +
               (number.starts_with("1 ") ? "was" : "were") + " not read (" + example +
               (number.starts_with("1 ") ? "" : " for one") + "); --files-in DIR reads the files below DIR\n";
    }

    static constexpr std::string_view kOwn = "GIF89a own picture";
    static constexpr std::string_view kSecret = "GIF89a secret picture";
    KeptConsole kept;
    std::string page;
};

TEST_F(PageFiles, OutsideOfTheProjectFilesDirectoryAreNotRead) {
    folder.Write("here/own.gif", kOwn);
    folder.Write("private/secret.gif", kSecret);
    folder.Write("private/part.stl", BinaryStl(FacetsOfTetrahedron()));
    Make({folder / "here/own.gif", folder / "private/secret.gif", folder / "private/part.stl"});
    EXPECT_EQ(MakePage(),
              OutsideSaid("2 files that 'here/p.kvp' names are", Quoted(folder / "private/secret.gif")));
    EXPECT_TRUE(HasBytes(kOwn));
    EXPECT_FALSE(HasBytes(kSecret));
    EXPECT_EQ(page.find("id=\"model-"), std::string::npos);
    ExpectInside(0);
    ExpectOutside(1);
    ExpectOutside(2);
}

TEST_F(PageFiles, OutsideLookTheSameWhetherTheyAreThereOrNot) {
    folder.Write("private/secret.gif", kSecret);
    Make({folder / "private/secret.gif", folder / "private/nothing.gif", folder / "here/gone.gif"});
    EXPECT_EQ(MakePage(),
              OutsideSaid("2 files that 'here/p.kvp' names are", Quoted(folder / "private/secret.gif")));
    ExpectOutside(0);
    ExpectOutside(1);
    // It is missing, which is another thing.
    EXPECT_FALSE(Record(2).contains("outside"));
    EXPECT_FALSE(Record(2).contains("size"));
}

TEST_F(PageFiles, GoByWhereAPathLeads) {
    folder.Write("here/own.gif", kOwn);
    folder.Write("hereafter/secret.gif", kSecret);
    folder.MakeDirectory("here/sub");
    Make({folder / "here" / "sub" / ".." / ".." / "hereafter" / "secret.gif",
          folder / "here" / "sub" / ".." / "own.gif", folder / "hereafter" / ".." / "here" / "own.gif",
          folder / "hereafter" / "secret.gif"});
    EXPECT_NE(MakePage().find("2 files that 'here/p.kvp' names are outside"), std::string::npos);
    EXPECT_FALSE(HasBytes(kSecret));
    ExpectOutside(0);
    ExpectInside(1);
    ExpectInside(2);
    ExpectOutside(3);
}

TEST_F(PageFiles, OfFurtherDirectoriesAreReadIfTheUserNamesThem) {
    const std::string stl = BinaryStl(FacetsOfTetrahedron());
    folder.Write("here/own.gif", kOwn);
    folder.Write("a/first.gif", kSecret);
    folder.Write("b/part.stl", stl);
    Make({folder / "here/own.gif", folder / "a/first.gif", folder / "b/part.stl"});
    EXPECT_EQ(MakePage({"--files-in", "a"}),
              OutsideSaid("1 file that 'here/p.kvp' names is", Quoted(folder / "b/part.stl")));
    EXPECT_TRUE(HasBytes(kSecret));
    ExpectInside(1);
    ExpectOutside(2);
    EXPECT_EQ(MakePage({"--files-in", "a", "--files-in", ToUtf8(folder / "b")}), "");
    EXPECT_TRUE(HasBytes(kOwn));
    EXPECT_TRUE(HasBytes(kSecret));
    EXPECT_TRUE(Record(2).contains("model"));
    ExpectRefused({"page", "here/p.kvp", "--files-in", "c", "-o", "page.html"},
                  "--files-in: 'c' is not a directory that can be read. See 'korvane-json page --help'", 2);
}

TEST_F(PageFiles, OfADirectoryThatIsComparedAreReadForTheProjectFile) {
    folder.Write("root/beam/beam.inp", kAbaqusDeck);
    folder.Write("root/beam/red.gif", kOwn);
    Do({"new", "root", "here.kvp"});
    folder.MakeDirectory("here");
    std::filesystem::rename(folder / "here.kvp", folder / "here/p.kvp");
    EXPECT_NE(MakePage().find("2 files that 'here/p.kvp' names are outside"), std::string::npos);
    EXPECT_EQ(Do({"page", "here/p.kvp", "root", "-o", "page.html"}), "");
    EXPECT_EQ(Do({"page", "root", "here/p.kvp", "-o", "page.html"}), "");
}

TEST_F(PageFiles, OfTheUsersOwnDirectoryAreShownAsFromTheDirectory) {
    folder.Write("root/beam/beam.inp", "*INCLUDE, INPUT=mesh.inc\n*STEP\n*STATIC\n*END STEP\n");
    folder.Write("root/beam/mesh.inc",
                 "*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 0, 1, 0\n*ELEMENT, TYPE=S3\n1, 1, 2, 3\n");
    folder.Write("root/beam/red.gif", kOwn);
    const auto filesOf = [&](const std::string& input) {
        EXPECT_EQ(Do({"page", input, "-o", "page.html"}), "") << input;
        page = Read("page.html");
        EXPECT_TRUE(HasBytes(kOwn)) << input;
        EXPECT_NE(page.find("id=\"model-0-2\""), std::string::npos) << input;
        return Record(2).at("model");
    };
    const json ofDirectory = filesOf("root");
    Do({"new", "root", "beside.kvp"});
    Do({"new", "root", "root/within.kvp"});
    EXPECT_EQ(filesOf("beside.kvp"), ofDirectory);
    EXPECT_EQ(filesOf("root/within.kvp"), ofDirectory);
}

TEST_F(PageFiles, ThatDecksIncludeAreInsideToo) {
    constexpr std::string_view kMesh =
        "*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 0, 1, 0\n*ELEMENT, TYPE=S3\n1, 1, 2, 3\n";
    folder.Write("private/mesh.inc", kMesh);
    folder.Write("here/job.inp", "*INCLUDE, INPUT=../private/mesh.inc\n*STEP\n*STATIC\n*END STEP\n");
    // The directory of the project is said by the file as well, and no bound.
    const auto project = korvane::CreateProject(L"P", ToOuString(folder.Path()));
    const CAEFile& deck =
        *korvane::CreateFile(*project, ToOuString(folder / "here/job.inp"), CAE_FILE_DECK, CAE_FORMAT_ASCII);
    project->attachCustomFile(deck.getID(), nullptr);
    CreateProjectFile(folder / "here/p.kvp", *project, kept.console);
    EXPECT_EQ(MakePage(), "");
    ExpectInside(0);
    EXPECT_FALSE(Record(0).contains("model"));
    EXPECT_EQ(MakePage({"--files-in", "private"}), "");
    EXPECT_TRUE(Record(0).contains("model"));
}

#if defined(_WIN32)

TEST_F(PageFiles, GoByWhereAPathOfWindowsLeads) {
    folder.Write("here/own.gif", kOwn);
    folder.Write("private/secret.gif", kSecret);
    const std::wstring drive = folder.Path().root_name().wstring();
    const std::wstring own = (folder / "here/own.gif").wstring();
    const std::wstring secret = (folder / "private/secret.gif").make_preferred().wstring();
    std::wstring lower = own;
    std::ranges::transform(lower, lower.begin(), [](wchar_t one) { return std::towlower(one); });
    std::wstring slashes = secret;
    std::ranges::replace(slashes, L'\\', L'/');
    Make({lower, slashes, L"\\\\?\\" + secret, L"\\\\.\\" + secret, L"//?/" + slashes,
          secret.substr(drive.size())});
    MakePage();
    EXPECT_FALSE(HasBytes(kSecret));
    EXPECT_TRUE(HasBytes(kOwn));
    ExpectInside(0);
    for (const std::size_t index : {1U, 2U, 3U, 4U, 5U}) {
        ExpectOutside(index);
    }
    // The device is not asked either where only a size is shown.
    const std::string tree = OutputOf({"tree", "here/p.kvp"});
    EXPECT_NE(tree.find(" on a server"), std::string::npos) << tree;
    EXPECT_NE(tree.find(" 21 B"), std::string::npos) << tree;
}

#else

TEST_F(PageFiles, GoByWhereALinkLeads) {
    folder.Write("here/sub/own.gif", kOwn);
    folder.Write("private/secret.gif", kSecret);
    std::filesystem::create_symlink("sub/own.gif", folder / "here/in.gif");
    std::filesystem::create_symlink("../private/secret.gif", folder / "here/out.gif");
    std::filesystem::create_directory_symlink("../private", folder / "here/folder");
    std::filesystem::create_directory_symlink("here", folder / "alias");
    Make({folder / "here/in.gif", folder / "here/out.gif", folder / "here/folder/secret.gif",
          folder / "alias/sub/own.gif"});
    EXPECT_EQ(MakePage(), OutsideSaid("2 files that 'here/p.kvp' names are", "'out.gif'"));
    EXPECT_TRUE(HasBytes(kOwn));
    EXPECT_FALSE(HasBytes(kSecret));
    ExpectInside(0);
    ExpectOutside(1);
    ExpectOutside(2);
    ExpectInside(3);
    // Who names the link means what it leads to.
    EXPECT_EQ(MakePage({"--files-in", "here/folder"}), "");
    EXPECT_TRUE(HasBytes(kSecret));
}

TEST_F(PageFiles, LieBesideWhatALinkToTheProjectFileLeadsTo) {
    folder.Write("here/own.gif", kOwn);
    Make({folder / "here/own.gif"});
    folder.MakeDirectory("desk");
    std::filesystem::create_symlink("../here/p.kvp", folder / "desk/p.kvp");
    EXPECT_EQ(Do({"page", "desk/p.kvp", "-o", "page.html"}), "");
    page = Read("page.html");
    EXPECT_TRUE(HasBytes(kOwn));
}

#endif

}  // namespace
}  // namespace host
