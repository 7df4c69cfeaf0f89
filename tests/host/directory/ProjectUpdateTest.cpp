#include <EmbeddedModel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <sstream>

#include "WithoutPrivileges.h"
#include "host/HostSupport.h"
#include "host/directory/DirectoryReader.h"
#include "host/directory/ProjectUpdate.h"
#include "host/document/ObjectLists.h"
#include "host/document/ObjectTexts.h"
#include "host/document/ProjectObjects.h"
#include "host/document/TreePrinter.h"
#include "host/system/Text.h"
#include "support/LongRun.h"
#include "support/TemporaryDirectory.h"

#if !defined(_WIN32)
#include <sys/stat.h>
#endif

namespace host {
namespace {

/// Where an object is, its identifier and its key.
using Places = std::map<std::string, std::string>;

std::string PlaceOf(const CAEObject& object) {
    const auto* const file = dynamic_cast<const CAEFile*>(&object);
    if (file != nullptr) {
        return std::string("file ") + PathOf(*file).GetAnsiBuffer();
    }
    std::string place;
    for (const CAEObject* next = &object; next != nullptr; next = next->getParent()) {
        place = std::string("/") + NameOf(*next).GetAnsiBuffer() + place;
    }
    return CAEObject::getTypeName(object.getType()) + (" " + place);
}

Places PlacesOf(CAEProject& project) {
    Places places;
    VisitProject(project, [&](const CAEObject& object, const ObjectPlace&) {
        places[PlaceOf(object)] = std::to_string(object.getID()) + " " + object.getDBKey().GetAnsiBuffer();
    });
    return places;
}

/// The tree as text, without identifiers, keys and the spaces that line them up.
std::string TreeOf(CAEProject& project) {
    std::istringstream lines(PrintTree(project, {false, false}));
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        for (std::string word; words >> word;) {
            const bool isKey = word == "key" || word.starts_with("K-");
            text += word.starts_with('#') || isKey ? "" : word + ' ';
        }
        text += '\n';
    }
    return text;
}

class ProjectUpdateTest : public testing::Test {
protected:
    void SetUp() override { folder.MakeDirectory("root"); }

    /// Writes a file that is an hour old, so that its date is not that of anything made by the test.
    void Write(std::string_view name, std::string_view content = "x") {
        const std::filesystem::path file = folder.Write("root/" + std::string(name), content);
        std::filesystem::last_write_time(file,
                                         std::filesystem::last_write_time(file) - std::chrono::hours(1));
    }
    void Remove(std::string_view name) {
        std::filesystem::remove_all(folder / ("root/" + std::string(name)));
    }
    void Rename(std::string_view from, std::string_view to) {
        std::filesystem::rename(folder / ("root/" + std::string(from)), folder / ("root/" + std::string(to)));
    }

    /// Reads the directory for the first time, and gives every object a key.
    void Make() {
        project = ReadDirectory(folder / "root", std::nullopt, kept.console).project;
        ASSERT_NE(project, nullptr);
        VisitProject(*project, [](CAEObject& object, const ObjectPlace&) {
            object.setDBKey(OuString(("K-" + std::to_string(object.getID())).c_str(), 0));
        });
        before = PlacesOf(*project);
    }
    /// Reads it again, and returns what is said about it.
    std::string Update(bool isRemoving = false) {
        const KnownFiles known = KnownFilesOf(*project);
        kept.said.clear();
        DirectoryReading reading =
            ReadDirectory(folder / "root", std::nullopt, kept.console, &known, selection);
        read = std::move(reading.project);
        EXPECT_NE(read, nullptr);
        readingSaid = std::exchange(kept.said, "");
        result =
            UpdateProject(*project, *read, isRemoving, false, {reading.described.named, reading.exclusion});
        result.report.Say("P", isRemoving, kept.console);
        return std::exchange(kept.said, "");
    }
    void ExpectNothingChanges() {
        const std::string tree = TreeOf(*project);
        const Places places = PlacesOf(*project);
        Update();
        EXPECT_FALSE(result.report.isChanged);
        EXPECT_EQ(TreeOf(*project), tree);
        EXPECT_EQ(PlacesOf(*project), places);
    }
    /// Expects that everything that is where it was has its identifier and key, and that nothing else has one
    /// of them. Returns how many are new.
    std::size_t CountNew() {
        const Places after = PlacesOf(*project);
        std::map<std::string, std::string> placeOf;
        for (const auto& [place, identity] : before) {
            placeOf[identity] = place;
        }
        std::size_t count = 0;
        for (const auto& [place, identity] : after) {
            const auto old = before.find(place);
            if (old != before.end()) {
                EXPECT_EQ(identity, old->second) << place;
            } else {
                EXPECT_FALSE(placeOf.contains(identity)) << place << " was " << placeOf[identity];
                ++count;
            }
        }
        return count;
    }
    void ExpectLikeNew() { EXPECT_EQ(TreeOf(*project), TreeOf(*read)); }
    CAEObject& Find(const std::string& place) {
        CAEObject* found = nullptr;
        VisitProject(*project, [&](CAEObject& object, const ObjectPlace&) {
            found = PlaceOf(object) == place ? &object : found;
        });
        EXPECT_NE(found, nullptr) << place;
        return *found;
    }
    std::string FilePlace(std::string_view name) {
        return std::string("file ") +
               ToOuString((folder / "root" / path(name)).make_preferred()).GetAnsiBuffer();
    }
    static std::filesystem::path path(std::string_view name) { return PathFromUtf8(std::string(name)); }
    void WriteStudies() {
        Write("LICENSE", "free");
        Write("a/job.inp", kAbaqusDeck);
        Write("a/arm.step", "ISO-10303-21;");
        Write("a/arm.msh", "$MeshFormat");
        Write("a/arm.png", "\x89PNG");
        Write("a/README.md", "# First\n");
        Write("c/job.inp", kAbaqusDeck);
        Write("c/data.txt", "text");
        Write("docs/plan.pdf", "%PDF-");
    }

    Selection selection;
    TemporaryDirectory folder;
    KeptConsole kept;
    std::unique_ptr<CAEProject> project;
    std::unique_ptr<CAEProject> read;
    ProjectUpdate result;
    std::string readingSaid;
    Places before;
};

constexpr const char* kStays = "korvane-json: P: what is missing stays in the project. --remove removes it\n";

TEST_F(ProjectUpdateTest, OfTheSameDirectoryChangesNothing) {
    WriteStudies();
    Make();
    EXPECT_EQ(Update(),
              "korvane-json: P: nothing has changed in the directory. The project file is as it was\n");
    ExpectNothingChanges();
    EXPECT_EQ(CountNew(), 0U);
}

TEST_F(ProjectUpdateTest, AddsAStudyInTheMiddleAndKeepsTheRest) {
    WriteStudies();
    Make();
    Write("b/job.inp", kAbaqusDeck);
    Write("b/hook.step", "ISO-10303-21;");
    EXPECT_EQ(Update(),
              "korvane-json: P: 5 objects and 2 files added, 1 object and 0 files changed, 0 objects and 0 "
              "files missing\n"
              "korvane-json: P: added (1): 'b' (Model #21)\n"
              "korvane-json: P: changed (1): 'root' (Project #1)\n");
    EXPECT_EQ(CountNew(), 7U);
    // Identifiers that were used before are not used again.
    EXPECT_EQ(PlacesOf(*project).size(), before.size() + 7);
    ExpectLikeNew();
    ExpectNothingChanges();
}

TEST_F(ProjectUpdateTest, AddsFilesPartsAndIterationsToAStudy) {
    WriteStudies();
    Make();
    Write("a/b.inp", kAbaqusDeck);
    Write("a/hook.step", "ISO-10303-21;");
    Write("a/results/out.frd", "1C\n");
    Write("CREDITS", "x");
    const std::string said = Update();
    EXPECT_NE(said.find("added (4): 'a/hook' (Part #"), std::string::npos) << said;
    EXPECT_NE(said.find("'a/Iterations/b' (Iteration #"), std::string::npos) << said;
    EXPECT_NE(said.find("'CREDITS' (File #"), std::string::npos) << said;
    EXPECT_NE(said.find("'a/results/out.frd' (File #"), std::string::npos) << said;
    CountNew();
    ExpectLikeNew();
    ExpectNothingChanges();
}

TEST_F(ProjectUpdateTest, WhatIsMissingStaysUnlessItIsRemoved) {
    WriteStudies();
    Make();
    Remove("a");
    Remove("c/data.txt");
    Remove("LICENSE");
    const std::string missing =
        "korvane-json: P: missing from the directory (3): 'a' (Model #3); 'LICENSE' (File #2); 'c/data.txt' "
        "(File #14)\n";
    EXPECT_EQ(Update(),
              "korvane-json: P: 0 objects and 0 files added, 2 objects and 0 files changed, 5 objects and 7 "
              "files missing\n" +
                  missing + "korvane-json: P: changed (2): 'root' (Project #1); 'c' (Model #13)\n" + kStays);
    EXPECT_EQ(PlacesOf(*project), before);
    EXPECT_EQ(Update(),
              "korvane-json: P: 0 objects and 0 files added, 0 objects and 0 files changed, 5 objects and 7 "
              "files missing\n" +
                  missing +
                  "korvane-json: P: nothing else has changed in the directory. The project file is as it "
                  "was\n" +
                  kStays);
    EXPECT_FALSE(result.report.isChanged);
    EXPECT_EQ(Update(true),
              "korvane-json: P: 0 objects and 0 files added, 0 objects and 0 files changed, 5 objects and 7 "
              "files removed, 0 objects and 0 files missing\n"
              "korvane-json: P: removed (3): 'a' (Model #3); 'LICENSE' (File #2); 'c/data.txt' (File "
              "#14)\n");
    EXPECT_TRUE(result.report.isChanged);
    EXPECT_EQ(CountNew(), 0U);
    ExpectLikeNew();
    // The child is gone from the tree; the others stay in the list until it is saved without them.
    EXPECT_EQ(project->getCAEObject(2), nullptr);
    EXPECT_EQ(result.removedFiles.size(), 6U);
    EXPECT_TRUE(result.removedFiles.contains(14));
}

TEST_F(ProjectUpdateTest, AStudyThatWasRenamedIsMissingAndNew) {
    WriteStudies();
    Make();
    Rename("c", "z");
    const std::string said = Update();
    EXPECT_NE(said.find("added (1): 'z' (Model #"), std::string::npos) << said;
    EXPECT_NE(said.find("missing from the directory (1): 'c' (Model #13)\n"), std::string::npos) << said;
    EXPECT_EQ(CountNew(), 6U);
    Update(true);
    ExpectLikeNew();
}

TEST_F(ProjectUpdateTest, StudiesThatSwapNamesStayTheirPaths) {
    WriteStudies();
    Write("c/README.md", "# Third\n");
    Make();
    Rename("a", "x");
    Rename("c", "a");
    Rename("x", "c");
    Update();
    // What both have has the identity of its path; the rest is missing there and new here.
    CountNew();
    const Places after = PlacesOf(*project);
    EXPECT_EQ(after.at("Model /root/a"), before.at("Model /root/a"));
    EXPECT_EQ(after.at(FilePlace("a/job.inp")), before.at(FilePlace("a/job.inp")));
    EXPECT_EQ(result.report.added.files, 4U);
    EXPECT_EQ(result.report.missing.files, 4U);
    Update(true);
    ExpectLikeNew();
}

TEST_F(ProjectUpdateTest, AFolderThatBecameAStudyKeepsItsFilesAndWhatIsBelow) {
    Write("x/data.csv", "1;2\n");
    Write("x/y/job.inp", kAbaqusDeck);
    Make();
    Write("x/job.inp", kAbaqusDeck);
    const std::string said = Update();
    EXPECT_NE(said.find("added (1): 'x' (Model #"), std::string::npos) << said;
    EXPECT_NE(said.find("missing from the directory (1): 'x' (AssemblyFolder #2)"), std::string::npos)
        << said;
    EXPECT_NE(said.find("moved (1): 'x/y' (Model #4)"), std::string::npos) << said;
    CountNew();
    EXPECT_EQ(Find("Model /root/x/y").getDBKey(), OuString(L"K-4"));
    EXPECT_EQ(Find("Model /root/x/y").getParent(), &Find("Model /root/x"));
    EXPECT_EQ(project->getCAEObject(3)->getDBKey(), OuString(L"K-3"));
    ExpectNothingChanges();
    Update(true);
    EXPECT_EQ(project->getCAEObject(2), nullptr);
    ExpectLikeNew();
    // And back.
    before = PlacesOf(*project);
    Remove("x/job.inp");
    Update(true);
    CountNew();
    ExpectLikeNew();
    ExpectNothingChanges();
}

TEST_F(ProjectUpdateTest, AFileOfAnotherTypeStaysTheFileOfItsPath) {
    Write("s/job.inp", kAbaqusDeck);
    Write("s/other.inp", kAbaqusDeck);
    Write("s/data.dat", "text\n");
    Make();
    const std::string identity = before.at(FilePlace("s/other.inp"));
    Write("s/job.inp", "*INCLUDE, INPUT=other.inp\n*STEP\n*STATIC\n*END STEP\n");
    Write("s/data.dat", std::string("\x00\x01", 2));
    Update();
    CountNew();
    auto& included = dynamic_cast<CAEFile&>(Find(FilePlace("s/other.inp")));
    EXPECT_EQ(included.getFileType(), CAE_FILE_INCLUDE);
    EXPECT_EQ(dynamic_cast<CAEFile&>(Find(FilePlace("s/data.dat"))).getFileFormat(), CAE_FORMAT_BINARY);
    EXPECT_EQ(PlacesOf(*project).at(FilePlace("s/other.inp")), identity);
    // Its iteration has no deck any more.
    EXPECT_EQ(result.report.missing.objects, 2U);
    EXPECT_EQ(result.report.missing.files, 0U);
    ExpectNothingChanges();
    Update(true);
    ExpectLikeNew();
}

TEST_F(ProjectUpdateTest, ADirectoryInPlaceOfAFileIsAnotherThing) {
    Write("s/job.inp", kAbaqusDeck);
    Write("s/data", "text\n");
    Write("t", "text\n");
    Make();
    Remove("s/data");
    Remove("t");
    Write("s/data/more.csv", "1\n");
    Write("t/job.inp", kAbaqusDeck);
    Update(true);
    EXPECT_EQ(result.report.removed.files, 2U);
    CountNew();
    ExpectLikeNew();
}

TEST_F(ProjectUpdateTest, MetadataOfTheDirectoryFollowItAndOthersStay) {
    WriteStudies();
    Make();
    CAEObject& study = Find("Model /root/a");
    study.setMetadataValue(L"Reviewer", L"Ada");
    study.setMetadataType(L"Reviewer", L"Text");
    study.setLinkDBKey(L"LINK");
    Write("a/README.md", "# Second\n");
    Update();
    OuString value;
    study.getMetadataValue(L"Description", value);
    EXPECT_EQ(value, OuString(L"Second"));
    study.getMetadataValue(L"Reviewer", value);
    EXPECT_EQ(value, OuString(L"Ada"));
    EXPECT_EQ(study.getLinkDBKey(), OuString(L"LINK"));
    Write("a/big.txt", std::string(1000, 'x'));
    Update();
    study.getMetadataValue(L"Files", value);
    EXPECT_EQ(value, OuString(L"6"));
    // A description may be a user's; that the last deck is gone is certain.
    Remove("a/README.md");
    Remove("c");
    Remove("a/job.inp");
    Update(true);
    project->getMetadataValue(L"Solver", value);
    EXPECT_EQ(value, OuString(L""));
    ExpectNothingChanges();
}

TEST_F(ProjectUpdateTest, WhatADeckSaysIsKeptInStep) {
    const auto entry = [&](const wchar_t* name) {
        CAEObject* iteration = nullptr;
        korvane::VisitTree(*project, [&](CAEObject& object, int) {
            iteration = object.getType() == CAE_ITERATION ? &object : iteration;
        });
        OuString value(L"(none)");
        iteration->getMetadataValue(name, value);
        return std::string(value.GetAnsiBuffer());
    };
    Write("a/job.inp", "** Units: N, mm, s\n*NODE\n1,0\n*MATERIAL,NAME=Old\n*STEP\n*INCLUDE,INPUT=a.msh\n");
    Write("a/a.msh", "*NODE\n2,0\n*ELEMENT,TYPE=B31\n1,1,2\n");
    Make();
    EXPECT_EQ(entry(L"Nodes") + entry(L"Elements") + entry(L"Materials") + entry(L"Steps"), "21Old1");
    ExpectNothingChanges();
    // The mesh is not the deck, but counts for it.
    Write("a/a.msh", "*NODE\n2,0\n3,0\n*ELEMENT,TYPE=B31\n1,1,2\n");
    Update();
    EXPECT_EQ(entry(L"Nodes"), "3");
    Remove("a/a.msh");
    Write("a/job.inp", "*NODE\n1,0\n*STEP\n*INCLUDE,INPUT=a.msh\n");
    Update();
    EXPECT_EQ(entry(L"Nodes"), "") << "an old count would be wrong";
    EXPECT_EQ(entry(L"Elements"), "");
    EXPECT_EQ(entry(L"Materials"), "");
    EXPECT_EQ(entry(L"Units"), "N, mm, s") << "units may be a user's";
    ExpectNothingChanges();
}

TEST_F(ProjectUpdateTest, WhatUsersSayIsKeptInStep) {
    Write("a/job.inp", kAbaqusDeck);
    Make();
    Write("a/korvane.toml",
          "name = \"Arm\"\nmetadata.Mass = { value = 2.4, unit = \"kg\" }\niteration.job.name = \"Load\"\n");
    Update();
    EXPECT_TRUE(result.report.missing.IsZero());
    EXPECT_TRUE(result.report.added.IsZero()) << "the file is not a file of the study";
    EXPECT_NE(TreeOf(*project).find("Arm Model"), std::string::npos) << TreeOf(*project);
    EXPECT_NE(TreeOf(*project).find("Mass: 2.4 kg"), std::string::npos);
    EXPECT_NE(TreeOf(*project).find("Load Iteration"), std::string::npos);
    ExpectNothingChanges();
    Write("a/korvane.toml", "name = \"Leg\"\nmetadata.Mass = 3\n");
    Update();
    EXPECT_NE(TreeOf(*project).find("Leg Model"), std::string::npos);
    EXPECT_EQ(TreeOf(*project).find("kg"), std::string::npos) << "the unit is gone";
    EXPECT_NE(TreeOf(*project).find("Load Iteration"), std::string::npos) << "a name stays";
    ExpectNothingChanges();
    Remove("a/korvane.toml");
    ExpectNothingChanges();
}

TEST_F(ProjectUpdateTest, WhatIsLeftOutIsNeitherMissingNorNew) {
    Write("plan.csv");
    Write("a/job.inp", kAbaqusDeck);
    Write("a/job.frd");
    Write("b/job.inp", kAbaqusDeck);
    Write("group/c/job.inp", kAbaqusDeck);
    Write("group/notes.txt");
    Make();
    const std::string tree = TreeOf(*project);
    selection.excluded = {"*.frd", "b"};
    Update(true);
    EXPECT_TRUE(result.report.missing.IsZero());
    EXPECT_TRUE(result.report.removed.IsZero());
    EXPECT_EQ(PlacesOf(*project), before);
    // A study that is chosen changes; everything else is as it was, whatever happened to it.
    selection = {};
    Update();
    EXPECT_EQ(TreeOf(*project), tree);
    selection.studies = {"a"};
    Write("a/new.txt");
    Remove("b");
    Remove("group/notes.txt");
    Write("group/c/new.txt");
    const std::string said = Update(true);
    EXPECT_EQ(result.report.added.files, 1U) << said;
    EXPECT_TRUE(result.report.missing.IsZero()) << said;
    EXPECT_TRUE(result.report.removed.IsZero()) << said;
    EXPECT_NE(TreeOf(*project).find("b Model"), std::string::npos);
    OuString value;
    project->getMetadataValue(L"Files", value);
    EXPECT_EQ(value, OuString(L"6")) << "of the project nobody counted the files";
    Remove("a/job.frd");
    Update(true);
    EXPECT_EQ(result.report.removed.files, 1U);
    selection = {};
    Update(true);
    EXPECT_EQ(TreeOf(*project).find("b Model"), std::string::npos);
    EXPECT_EQ(result.report.removed.files, 3U) << "with job.frd, which only saving takes off the list";
}

TEST_F(ProjectUpdateTest, ADescriptionThatTheDirectoryLostStays) {
    WriteStudies();
    Make();
    Remove("a/README.md");
    Update();
    OuString value;
    Find("Model /root/a").getMetadataValue(L"Description", value);
    EXPECT_EQ(value, OuString(L"First"));
    ExpectNothingChanges();
}

TEST_F(ProjectUpdateTest, ReplacedMeshesAndGeometryTakeTheirRoles) {
    WriteStudies();
    Make();
    CAEObject& part = Find("Part /root/a/arm");
    const int oldMesh = korvane::GetFileRoles(part).activeMesh;
    const int oldGeometry = korvane::GetFileRoles(part).cadFile;
    Rename("a/arm.msh", "a/arm.unv");
    Rename("a/arm.step", "a/arm.iges");
    Update();
    korvane::FileRoles roles = korvane::GetFileRoles(part);
    EXPECT_EQ(PlaceOf(*project->getFile(roles.activeMesh)), FilePlace("a/arm.unv"));
    EXPECT_EQ(PlaceOf(*project->getFile(roles.cadFile)), FilePlace("a/arm.iges"));
    // The old ones are there, in the roles that several files can have.
    EXPECT_EQ(roles.files.size(), 5U);
    EXPECT_EQ(roles.meshes.size(), 2U);
    EXPECT_TRUE(std::ranges::count(roles.meshes, oldMesh) == 1 &&
                std::ranges::count(roles.files, oldGeometry) == 1);
    ExpectNothingChanges();
    Update(true);
    roles = korvane::GetFileRoles(part);
    EXPECT_EQ(roles.files.size(), 3U);
    EXPECT_EQ(roles.meshes.size(), 1U);
    ExpectLikeNew();
    CountNew();
}

TEST_F(ProjectUpdateTest, PartsAndIterationsGoWithTheirFilesWhateverTheirNames) {
    WriteStudies();
    Make();
    const std::string part = before.at("Part /root/a/arm");
    const std::string iteration = before.at("Iteration /root/a/Iterations/job");
    // Each now needs its extension to be told from the other; the mesh joins the new part.
    Write("a/arm.iges", "x");
    Write("a/job.dyn", kLsDynaDeck);
    Write("a/job.k", kLsDynaDeck);
    Update();
    const Places after = PlacesOf(*project);
    EXPECT_EQ(after.at("Part /root/a/arm.step"), part);
    EXPECT_EQ(after.at("Iteration /root/a/Iterations/job.inp"), iteration);
    ExpectLikeNew();
    ExpectNothingChanges();
}

TEST_F(ProjectUpdateTest, NamesThatUsersGaveStay) {
    WriteStudies();
    Make();
    CAEObject& study = Find("Model /root/a");
    CAEObject& part = Find("Part /root/a/arm");
    study.setName(L"Bracket under load");
    part.setName(L"Arm, left");
    EXPECT_EQ(Update(),
              "korvane-json: P: nothing has changed in the directory. The project file is as it was\n");
    Write("a/more.txt", "x");
    Update();
    EXPECT_EQ(NameOf(study), OuString(L"Bracket under load"));
    EXPECT_EQ(NameOf(part), OuString(L"Arm, left"));
    EXPECT_EQ(result.report.added.objects, 0U);
    EXPECT_EQ(result.report.missing.objects, 0U);
}

TEST_F(ProjectUpdateTest, TheStudyOfTheRootIsNotTheOneBelowOfTheSameName) {
    Write("root/job.inp", kAbaqusDeck);
    Make();
    const std::string below = before.at("Model /root/root");
    Write("job.inp", kAbaqusDeck);
    Write("more.txt", "x");
    Update();
    ExpectLikeNew();
    EXPECT_EQ(std::to_string(project->getCAEObject(2)->getID()) + " K-2", below);
    const std::vector<CAEObject*> children = ChildrenOf(*project);
    EXPECT_EQ(children.back()->getDBKey(), OuString(L"K-2"));
    EXPECT_EQ(result.report.missing.objects, 0U);
    ExpectNothingChanges();
}

TEST_F(ProjectUpdateTest, DatesAndTypesOfFilesFollowAndDatesOfObjectsStay) {
    WriteStudies();
    Make();
    const OuString date = DateOf(Find("Iteration /root/a/Iterations/job"));
    std::filesystem::last_write_time(
        folder / "root/a/job.inp",
        std::filesystem::last_write_time(folder / "root/a/job.inp") - std::chrono::hours(48));
    EXPECT_EQ(Update(),
              "korvane-json: P: 0 objects and 0 files added, 0 objects and 1 file changed, 0 objects and 0 "
              "files missing\n"
              "korvane-json: P: changed (1): 'a/job.inp' (File #12)\n");
    EXPECT_EQ(DateOf(Find("Iteration /root/a/Iterations/job")), date);
    EXPECT_NE(DateOf(Find(FilePlace("a/job.inp"))), date);
    ExpectNothingChanges();
}

TEST_F(ProjectUpdateTest, WhatDidNotComeFromTheDirectoryIsNeverMissing) {
    WriteStudies();
    Make();
    CAEObject& study = Find("Model /root/c");
    CAEObject& folderOfUser = *korvane::CreateObject(*project, CAE_ASSEMBLY_FOLDER, L"of a server");
    CAEObject& part = *korvane::CreateObject(study, CAE_PART, L"of a server");
    // Imports expect files in the project's directory, and do not know who created them.
    CAEFile& file = *korvane::CreateFile(*project, ToOuString(folder / "root/of a server.step"), CAE_FILE_CAD,
                                         CAE_FORMAT_UNKNOWN);
    korvane::SetCreatedUserName(file, L"");
    dynamic_cast<CAEPart&>(part).setCADFile(file.getID());
    EXPECT_EQ(Update(true),
              "korvane-json: P: nothing has changed in the directory. The project file is as it was\n");
    Remove("c");
    EXPECT_EQ(Update(true),
              "korvane-json: P: 0 objects and 0 files added, 1 object and 0 files changed, 3 objects and 2 "
              "files removed, 1 object and 0 files missing\n"
              "korvane-json: P: missing, but not removed, because something else in the project has it (1): "
              "'c' (Model #13)\n"
              "korvane-json: P: removed (1): 'c/Iterations' (IterationFolder #15)\n"
              "korvane-json: P: changed (1): 'root' (Project #1)\n");
    EXPECT_EQ(part.getParent(), &study);
    EXPECT_EQ(korvane::GetFileRoles(part).cadFile, file.getID());
    EXPECT_EQ(folderOfUser.getParent(), &*project);
}

TEST_F(ProjectUpdateTest, OfTwoWithTheSameNameTheOneOfTheDirectoryIsMeant) {
    Write("x/y/job.inp", kAbaqusDeck);
    Make();
    korvane::CreateObject(*project, CAE_ASSEMBLY_FOLDER, L"x");
    Update(true);
    EXPECT_FALSE(result.report.isChanged);
    EXPECT_EQ(Find("Model /root/x/y").getParent(), project->getCAEObject(2));
}

TEST_F(ProjectUpdateTest, AnObjectOfTheSameKindAndPathBecomesThatOfTheDirectory) {
    Make();
    CAEObject& study = *korvane::CreateObject(*project, CAE_MODEL, L"x");
    study.setDBKey(L"PLANNED");
    Write("x/job.inp", kAbaqusDeck);
    Update();
    EXPECT_EQ(result.report.added.objects, 3U);
    EXPECT_EQ(ChildrenOf(*project).size(), 1U);
    EXPECT_EQ(ChildrenOf(*project).front()->getDBKey(), OuString(L"PLANNED"));
}

TEST_F(ProjectUpdateTest, ObjectsThatStandTheOtherWayRoundGetTheirPlaces) {
    Write("x/job.inp", kAbaqusDeck);
    Write("x/y/job.inp", kAbaqusDeck);
    Make();
    // The study y holds the study x, as no directory can.
    CAEObject& x = Find("Model /root/x");
    CAEObject& y = Find("Model /root/x/y");
    CAEObject* moving = &y;
    x.detachChild(moving, false);
    project->addChild(&y);
    moving = &x;
    project->detachChild(moving, false);
    y.addChild(&x);
    Update(true);
    EXPECT_EQ(PlacesOf(*project), before);
    EXPECT_EQ(result.report.changed.objects, 2U);
    ExpectNothingChanges();
}

TEST_F(ProjectUpdateTest, LetterCaseCountsWhereFilesAreToldApartByIt) {
    WriteStudies();
    Make();
    Rename("a", "b");
    Rename("b", "A");
    Update();
#if defined(_WIN32)
    EXPECT_EQ(result.report.added.objects + result.report.missing.objects, 0U);
    EXPECT_EQ(result.report.added.files + result.report.missing.files, 0U);
#else
    EXPECT_EQ(result.report.added.objects, result.report.missing.objects);
    EXPECT_EQ(result.report.added.files, 5U);
#endif
}

TEST_F(ProjectUpdateTest, WhatAViewItemOrAnotherObjectHasIsNotRemoved) {
    WriteStudies();
    Make();
    CAEObject& view = *korvane::CreateObject(*project, CAE_LOADCASE_VIEW, L"view");
    auto& item = dynamic_cast<CAEViewItem&>(*korvane::CreateObject(view, CAE_VIEW_ITEM, L"item"));
    item.setReferencedCAEObject(Find("Model /root/a").getID());
    auto& plan = dynamic_cast<CAEFile&>(Find(FilePlace("docs/plan.pdf")));
    view.attachCustomFile(plan.getID(), nullptr);
    Remove("a");
    Remove("docs");
    Update(true);
    EXPECT_EQ(project->getCAEObject(korvane::GetReferencedObject(item)), &Find("Model /root/a"));
    EXPECT_EQ(korvane::GetFileRoles(view).files, std::vector<int>{plan.getID()});
    EXPECT_FALSE(result.removedFiles.contains(plan.getID()));
    EXPECT_EQ(result.report.missing.objects, 1U);
    EXPECT_EQ(result.report.missing.files, 1U);
}

TEST_F(ProjectUpdateTest, FilesThatAnImportCreatedAreFoundByTheirNames) {
    WriteStudies();
    Make();
    // As a document gives them back: without paths below the directory, and without creators.
    for (CAEFile* const file : korvane::GetProjectFiles(*project)) {
        file->setFullPathName(ToOuString(folder / "root" / path(NameOf(*file).GetAnsiBuffer())));
        korvane::SetCreatedUserName(*file, L"");
    }
    auto& license = dynamic_cast<CAEFile&>(*project->getCAEObject(2));
    license.setFullPathName(L"");
    Update(true);
    EXPECT_EQ(result.report.added.objects + result.report.added.files, 0U);
    EXPECT_EQ(result.report.missing.objects + result.report.removed.files, 0U);
    EXPECT_EQ(PlacesOf(*project), before);
    ExpectLikeNew();
    ExpectNothingChanges();
}

TEST_F(ProjectUpdateTest, ADirectoryThatMovedIsTheSame) {
    WriteStudies();
    Make();
    std::filesystem::rename(folder / "root", folder / "moved");
    read = ReadDirectory(folder / "moved", std::nullopt, kept.console).project;
    result = UpdateProject(*project, *read, false);
    result.report.Say("P", false, kept.console);
    EXPECT_EQ(kept.said,
              "korvane-json: P: 0 objects and 0 files added, 0 objects and 0 files changed, 0 objects and 0 "
              "files missing\n"
              "korvane-json: P: the directory of the project is now '" +
                  ToUtf8(folder / "moved") + "'\n");
    EXPECT_EQ(DirectoryOf(*project), ToOuString(folder / "moved"));
    EXPECT_EQ(PathOf(*project->getFile(2)), ToOuString((folder / "moved/LICENSE").make_preferred()));
    EXPECT_EQ(NameOf(*project), OuString(L"root"));
    EXPECT_EQ(PlacesOf(*project).size(), before.size());
}

TEST_F(ProjectUpdateTest, ProjectsInTheProjectAreLeftAlone) {
    WriteStudies();
    Make();
    auto& inner = dynamic_cast<CAEProject&>(*korvane::CreateObject(*project, CAE_PROJECT, L"inner"));
    korvane::CreateObject(inner, CAE_MODEL, L"a");
    korvane::CreateFile(inner, ToOuString(folder / "root/gone.inp"), CAE_FILE_DECK, CAE_FORMAT_ASCII);
    EXPECT_EQ(Update(true),
              "korvane-json: P: nothing has changed in the directory. The project file is as it was\n");
}

#if !defined(_WIN32)

TEST_F(ProjectUpdateTest, WhatCannotBeReadNowIsNotMissing) {
    WriteStudies();
    Make();
    const Places places = PlacesOf(*project);
    const std::string tree = TreeOf(*project);
    ASSERT_EQ(::chmod((folder / "root/a").c_str(), 0), 0);
    ASSERT_EQ(::chmod((folder / "root/c/job.inp").c_str(), 0), 0);
    std::string said;
    {
        const WithoutPrivileges privileges;
        said = Update(true);
    }
    ::chmod((folder / "root/a").c_str(), 0700);
    EXPECT_EQ(said,
              "korvane-json: P: nothing has changed in the directory. The project file is as it was\n"
              "korvane-json: P: cannot be read now, so it stays as it was (6): 'a/README.md' (File #4); "
              "'a/arm.step' (File #6); 'a/arm.msh' (File #7); 'a/arm.png' (File #8); 'a/job.inp' (File #12); "
              "'c/job.inp' (File #18)\n");
    EXPECT_NE(readingSaid.find("root/a' cannot be read and is left out"), std::string::npos) << readingSaid;
    EXPECT_EQ(PlacesOf(*project), places);
    ::chmod((folder / "root/c/job.inp").c_str(), 0600);
    EXPECT_EQ(TreeOf(*project), tree);
    ExpectNothingChanges();
}

TEST_F(ProjectUpdateTest, ADescriptionThatCannotBeReadNowStays) {
    WriteStudies();
    Write("a/notes.txt", "Other words\n");
    Make();
    Remove("a/README.md");
    std::filesystem::create_symlink("gone", folder / "root/a/README.md");
    Update(true);
    EXPECT_FALSE(result.report.isChanged);
    OuString value;
    Find("Model /root/a").getMetadataValue(L"Description", value);
    EXPECT_EQ(value, OuString(L"First"));
}

TEST_F(ProjectUpdateTest, ALinkThatLeadsNowhereIsNotMissingAndNorIsWhatWasBelow) {
    WriteStudies();
    Write("c/more.inp", kAbaqusDeck);
    Make();
    Remove("a");
    std::filesystem::create_symlink("gone", folder / "root/a");
    Remove("c/job.inp");
    std::filesystem::create_symlink("gone", folder / "root/c/job.inp");
    Write("c/new.txt", "x");
    Update(true);
    EXPECT_EQ(result.report.removed.objects + result.report.removed.files, 0U);
    EXPECT_EQ(result.report.missing.objects + result.report.missing.files, 0U);
    EXPECT_EQ(CountNew(), 1U);
    EXPECT_EQ(PlacesOf(*project).size(), before.size() + 1);
}

TEST_F(ProjectUpdateTest, WhatAnUnreadableDeckIncludesStaysAnInclude) {
    Write("s/job.inp", "*INCLUDE, INPUT=load.inp\n*STEP\n*STATIC\n*END STEP\n");
    Write("s/load.inp", kAbaqusDeck);
    Make();
    Remove("s/job.inp");
    ASSERT_EQ(::mkfifo((folder / "root/s/job.inp").c_str(), 0600), 0);
    Update(true);
    EXPECT_FALSE(result.report.isChanged);
    EXPECT_EQ(PlacesOf(*project), before);
}

#endif

/// A project of many studies, as a reading makes them.
std::unique_ptr<CAEProject> MakeLarge(int studies, bool hasAll) {
    auto project = korvane::CreateProject(L"P", L"/p");
    for (int study = 0; study < studies; ++study) {
        if (!hasAll && study % 2 == 0) {
            continue;
        }
        const std::string name = "s" + std::to_string(1'000'000 + study);
        CAEObject& model = *korvane::CreateObject(*project, CAE_MODEL, OuString(name.c_str(), 0));
        CAEObject& folder = *korvane::CreateObject(model, CAE_ITERATION_FOLDER, L"Iterations");
        CAEObject& iteration = *korvane::CreateObject(folder, CAE_ITERATION, L"job");
        auto& run =
            dynamic_cast<CAERunAssembly&>(*korvane::CreateObject(iteration, CAE_ITERATION_MODEL, L"job.inp"));
        CAEFile& deck = *korvane::CreateFile(*project, OuString(("/p/" + name + "/job.inp").c_str(), 0),
                                             CAE_FILE_DECK, CAE_FORMAT_ASCII);
        deck.SetFileDownloadFlag(true);
        run.setFERepresentationFile(deck.getID());
    }
    return project;
}

TEST(LargeProjectUpdate, AddsAndRemovesManyObjects) {
    constexpr int kStudies = kIsSanitized ? 5000 : 50'000;
    const auto project = MakeLarge(kStudies, false);
    const auto all = MakeLarge(kStudies, true);
    ProjectUpdate update = UpdateProject(*project, *all, true);
    EXPECT_EQ(update.report.added.objects, 4U * kStudies / 2);
    EXPECT_EQ(update.report.added.files, 1U * kStudies / 2);
    EXPECT_EQ(update.report.missing.objects + update.report.removed.objects, 0U);
    EXPECT_EQ(NameOf(*ChildrenOf(*project)[1]), OuString(L"s1000001"));
    const auto half = MakeLarge(kStudies, false);
    update = UpdateProject(*project, *half, true);
    EXPECT_EQ(update.report.removed.objects, 4U * kStudies / 2);
    EXPECT_EQ(update.removedFiles.size(), 1U * kStudies / 2);
    EXPECT_EQ(ChildrenOf(*project).size(), 1U * kStudies / 2);
}

TEST(LargeProjectUpdate, NeedsNoStackForObjectsBelowEachOther) {
    constexpr int kDepth = kIsSanitized ? 20'000 : 100'000;
    const auto project = korvane::CreateProject(L"P", L"/p");
    CAEObject* above = &*project;
    for (int depth = 0; depth < kDepth; ++depth) {
        above = korvane::CreateObject(*above, CAE_MODEL, L"n");
    }
    CAEFile& deck = *korvane::CreateFile(*project, L"/p/gone.inp", CAE_FILE_DECK, CAE_FORMAT_ASCII);
    above->attachCustomFile(deck.getID(), nullptr);
    const auto read = MakeLarge(1, true);
    const ProjectUpdate update = UpdateProject(*project, *read, true);
    EXPECT_EQ(update.report.removed.objects, static_cast<std::size_t>(kDepth));
    EXPECT_EQ(ChildrenOf(*project).size(), 1U);
}

}  // namespace
}  // namespace host
