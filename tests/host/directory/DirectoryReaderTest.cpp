#include <EmbeddedModel.h>
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>

#include "host/HostSupport.h"
#include "host/directory/DirectoryReader.h"
#include "host/document/TreePrinter.h"
#include "host/system/FileSystem.h"
#include "host/system/Text.h"
#include "support/LongRun.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

std::string MetadataOf(const CAEObject& object, const wchar_t* name) {
    OuString value(L"(none)");
    object.getMetadataValue(name, value);
    return value.GetAnsiBuffer();
}

std::string NarrowNameOf(const CAEObject& object) {
    OuString name;
    object.getName(name);
    return name.GetAnsiBuffer();
}

class DirectoryReaderTest : public testing::Test {
protected:
    void SetUp() override { folder.MakeDirectory("root"); }

    CAEProject& Read() {
        reading = ReadDirectory(folder / "root", std::nullopt, kept.console, nullptr, selection);
        EXPECT_NE(reading.project, nullptr) << reading.error.message();
        return *reading.project;
    }
    /// The tree of the project: every object, role, type and piece of metadata in one text.
    std::string Tree() { return PrintTree(Read(), {false, false}); }
    void Write(std::string_view name, std::string_view content = "x") {
        folder.Write("root/" + std::string(name), content);
    }
    /// The first object of a kind with the name.
    CAEObject& Find(_tagCAEObjectType type, std::string_view name) {
        CAEObject* found = nullptr;
        korvane::VisitTree(*reading.project, [&](CAEObject& object, int) {
            if (found == nullptr && object.getType() == type && NarrowNameOf(object) == name) {
                found = &object;
            }
        });
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }

    Selection selection;
    TemporaryDirectory folder;
    KeptConsole kept;
    DirectoryReading reading;
};

TEST_F(DirectoryReaderTest, TheRootIsTheProject) {
    CAEProject& project = Read();
    EXPECT_EQ(NarrowNameOf(project), "root");
    EXPECT_STREQ(korvane::GetDisplayName(project).GetAnsiBuffer(), "root");
    EXPECT_EQ(project.getType(), CAE_PROJECT);
    EXPECT_EQ(project.getID(), 1);
    EXPECT_STREQ(project.getAdditionalType().GetAnsiBuffer(), "Simulation");
    OuString directory;
    project.getDirectory(directory);
    EXPECT_EQ(ToPath(directory), folder / "root");
}

TEST_F(DirectoryReaderTest, AnEmptyRootIsAnEmptyProject) {
    EXPECT_EQ(Tree(),
              "root  Project  #1  Simulation\n"
              "   Files: 0; Size: 0 B; Studies: 0\n"
              "\n"
              "0 files (0 B)\n");
}

TEST_F(DirectoryReaderTest, FilesInTheRootAreFileChildrenOfTheProject) {
    Write("plan.csv", "a;b\n");
    Write("part.step", "ISO-10303-21;");
    EXPECT_EQ(Tree(),
              "root          Project  #1  Simulation\n"
              "|  Files: 2; Size: 17 B; Studies: 0\n"
              "|- part.step  File     #2  CAD    ASCII    13 B\n"
              "`- plan.csv   File     #3  Table  ASCII     4 B\n"
              "\n"
              "2 files (17 B)\n");
}

TEST_F(DirectoryReaderTest, ADirectoryWithDecksIsAStudyWithAnIterationForEach) {
    Write("drop/side.k", kLsDynaDeck);
    Write("drop/front.k", kLsDynaDeck);
    EXPECT_EQ(Tree(),
              "root                    Project            #1  Simulation\n"
              "|  Files: 2; Size: 80 B; Solver: LS-DYNA; Studies: 1\n"
              "`- drop                 Model              #2\n"
              "   |  Files: 2; Size: 80 B; Solver: LS-DYNA\n"
              "   `- Iterations        IterationFolder    #3\n"
              "      |- front          Iteration          #4\n"
              "      |  |  Solver: LS-DYNA\n"
              "      |  `- front.k     IterationModel     #5\n"
              "      |     `- front.k  FE representation  #6  Deck  ASCII    40 B\n"
              "      `- side           Iteration          #7\n"
              "         |  Solver: LS-DYNA\n"
              "         `- side.k      IterationModel     #8\n"
              "            `- side.k   FE representation  #9  Deck  ASCII    40 B\n"
              "\n"
              "1 study, 2 iterations, 2 files (80 B)\n");
}

TEST_F(DirectoryReaderTest, GeometryMeshesAndPicturesMakeParts) {
    Write("study/job.inp", kAbaqusDeck);
    Write("study/arm.step", "ISO");
    Write("study/arm.msh", "$MeshFormat");
    Write("study/ARM.svg", "<svg/>");
    Write("study/hook.msh", "$MeshFormat");
    Write("study/pics/hook.png", "png");
    Write("study/pics/other.png", "png");
    EXPECT_EQ(Tree(),
              "root                    Project            #1   Simulation\n"
              "|  Files: 7; Size: 61 B; Solver: Abaqus/CalculiX; Studies: 1\n"
              "`- study                Model              #2\n"
              "   |  Files: 7; Size: 61 B; Solver: Abaqus/CalculiX\n"
              "   |- pics/other.png    custom file        #3   Picture  ASCII     3 B\n"
              "   |- arm               Part               #4\n"
              "   |  |- arm.step       CAD file           #5   CAD      ASCII     3 B\n"
              "   |  |- arm.msh        active mesh        #6   Mesh     ASCII    11 B\n"
              "   |  `- ARM.svg        graphic file       #9   Graphic  ASCII     6 B\n"
              "   |- hook              Part               #7\n"
              "   |  |- hook.msh       active mesh        #8   Mesh     ASCII    11 B\n"
              "   |  `- pics/hook.png  graphic file       #10  Graphic  ASCII     3 B\n"
              "   `- Iterations        IterationFolder    #11\n"
              "      `- job            Iteration          #12\n"
              "         |  Solver: Abaqus/CalculiX; Steps: 1\n"
              "         `- job.inp     IterationModel     #13\n"
              "            `- job.inp  FE representation  #14  Deck     ASCII    24 B\n"
              "\n"
              "1 study, 1 iteration, 2 parts, 7 files (61 B)\n");
}

TEST_F(DirectoryReaderTest, GeometryOfOneStemMakesAPartEach) {
    Write("study/job.inp", kAbaqusDeck);
    Write("study/arm.step", "ISO");
    Write("study/arm.igs", "IGES");
    Write("study/arm.msh", "m");
    EXPECT_EQ(Tree(),
              "root                    Project            #1   Simulation\n"
              "|  Files: 4; Size: 32 B; Solver: Abaqus/CalculiX; Studies: 1\n"
              "`- study                Model              #2\n"
              "   |  Files: 4; Size: 32 B; Solver: Abaqus/CalculiX\n"
              "   |- arm.igs           Part               #3\n"
              "   |  |- arm.igs        CAD file           #4   CAD   ASCII     4 B\n"
              "   |  `- arm.msh        active mesh        #7   Mesh  ASCII     1 B\n"
              "   |- arm.step          Part               #5\n"
              "   |  `- arm.step       CAD file           #6   CAD   ASCII     3 B\n"
              "   `- Iterations        IterationFolder    #8\n"
              "      `- job            Iteration          #9\n"
              "         |  Solver: Abaqus/CalculiX; Steps: 1\n"
              "         `- job.inp     IterationModel     #10\n"
              "            `- job.inp  FE representation  #11  Deck  ASCII    24 B\n"
              "\n"
              "1 study, 1 iteration, 2 parts, 4 files (32 B)\n");
}

TEST_F(DirectoryReaderTest, SeveralMeshesOfAPartAreAllKeptAndTheLastIsActive) {
    Write("study/job.inp", kAbaqusDeck);
    Write("study/arm.msh", "m");
    Write("study/arm.unv", "u");
    Read();
    const korvane::FileRoles roles = korvane::GetFileRoles(Find(CAE_PART, "arm"));
    ASSERT_EQ(roles.meshes.size(), 2U);
    EXPECT_EQ(roles.activeMesh, roles.meshes.back());
}

TEST_F(DirectoryReaderTest, CustomFilesOfAStudyHaveNoTypeOfParts) {
    Write("study/job.inp", kAbaqusDeck);
    for (const char* const name : {"a.step", "b.msh", "c.png", "d.txt", "e.frd", "f.csv", "g.zip", "h.sta",
                                   "i.sh", "j.xyz", "k.nam"}) {
        Write(std::string("study/") + name);
    }
    Write("cad/a.step");
    Write("cad/b.msh");
    Read();
    for (CAEObject* const object : {&Find(CAE_MODEL, "study"), &Find(CAE_ASSEMBLY_FOLDER, "cad")}) {
        const korvane::FileRoles roles = korvane::GetFileRoles(*object);
        EXPECT_FALSE(roles.customFiles.empty());
        for (const int file : roles.customFiles) {
            EXPECT_GE(reading.project->getFile(file)->getFileType(), CAE_FILE_DECK);
        }
    }
}

TEST_F(DirectoryReaderTest, DirectoriesWithoutDecksUnderAStudyAddTheirFilesToIt) {
    Write("study/job.inp", kAbaqusDeck);
    Write("study/refs/a.png");
    Write("study/refs/more/b.png");
    Write("study/results/job.frd");
    EXPECT_EQ(Tree(),
              "root                    Project            #1  Simulation\n"
              "|  Files: 4; Size: 27 B; Solver: Abaqus/CalculiX; Studies: 1\n"
              "`- study                Model              #2\n"
              "   |  Files: 4; Size: 27 B; Solver: Abaqus/CalculiX\n"
              "   |- refs/a.png        custom file        #3  Picture  ASCII     1 B\n"
              "   |- refs/more/b.png   custom file        #4  Picture  ASCII     1 B\n"
              "   |- results/job.frd   custom file        #5  Result   ASCII     1 B\n"
              "   `- Iterations        IterationFolder    #6\n"
              "      `- job            Iteration          #7\n"
              "         |  Solver: Abaqus/CalculiX; Steps: 1\n"
              "         `- job.inp     IterationModel     #8\n"
              "            `- job.inp  FE representation  #9  Deck     ASCII    24 B\n"
              "\n"
              "1 study, 1 iteration, 4 files (27 B)\n");
}

TEST_F(DirectoryReaderTest, StudiesNest) {
    Write("outer/job.inp", kAbaqusDeck);
    Write("outer/inner/job.inp", kAbaqusDeck);
    Write("outer/inner/docs/x.txt");
    Write("outer/variants/a/job.inp", kAbaqusDeck);
    Write("outer/variants/readme.txt", "Variants");
    Write("outer/variants/docs/y.txt");
    EXPECT_EQ(Tree(),
              "root                          Project            #1   Simulation\n"
              "|  Files: 6; Size: 82 B; Solver: Abaqus/CalculiX; Studies: 3\n"
              "`- outer                      Model              #2\n"
              "   |  Files: 2; Size: 25 B; Solver: Abaqus/CalculiX\n"
              "   |- variants/docs/y.txt     custom file        #3   Report  ASCII     1 B\n"
              "   |- Iterations              IterationFolder    #4\n"
              "   |  `- job                  Iteration          #5\n"
              "   |     |  Solver: Abaqus/CalculiX; Steps: 1\n"
              "   |     `- job.inp           IterationModel     #6\n"
              "   |        `- job.inp        FE representation  #7   Deck    ASCII    24 B\n"
              "   |- inner                   Model              #8\n"
              "   |  |  Files: 2; Size: 25 B; Solver: Abaqus/CalculiX\n"
              "   |  |- docs/x.txt           custom file        #9   Report  ASCII     1 B\n"
              "   |  `- Iterations           IterationFolder    #10\n"
              "   |     `- job               Iteration          #11\n"
              "   |        |  Solver: Abaqus/CalculiX; Steps: 1\n"
              "   |        `- job.inp        IterationModel     #12\n"
              "   |           `- job.inp     FE representation  #13  Deck    ASCII    24 B\n"
              "   `- variants                AssemblyFolder     #14\n"
              "      |- readme.txt           custom file        #15  Report  ASCII     8 B\n"
              "      `- a                    Model              #16\n"
              "         |  Files: 1; Size: 24 B; Solver: Abaqus/CalculiX\n"
              "         `- Iterations        IterationFolder    #17\n"
              "            `- job            Iteration          #18\n"
              "               |  Solver: Abaqus/CalculiX; Steps: 1\n"
              "               `- job.inp     IterationModel     #19\n"
              "                  `- job.inp  FE representation  #20  Deck    ASCII    24 B\n"
              "\n"
              "3 studies, 3 iterations, 1 assembly folder, 6 files (82 B)\n");
}

TEST_F(DirectoryReaderTest, OtherDirectoriesWithFilesAreAssemblyFolders) {
    Write("docs/report.pdf", "%PDF-1.4");
    Write("docs/drawings/a.dxf");
    Write("projects/one/job.inp", kAbaqusDeck);
    folder.MakeDirectory("root/empty/inner");
    EXPECT_EQ(Tree(),
              "root                       Project            #1   Simulation\n"
              "|  Files: 3; Size: 33 B; Solver: Abaqus/CalculiX; Studies: 1\n"
              "|- docs                    AssemblyFolder     #2\n"
              "|  |- report.pdf           custom file        #3   Report  Binary    8 B\n"
              "|  `- drawings             AssemblyFolder     #4\n"
              "|     `- a.dxf             custom file        #5   Other   ASCII     1 B\n"
              "`- projects                AssemblyFolder     #6\n"
              "   `- one                  Model              #7\n"
              "      |  Files: 1; Size: 24 B; Solver: Abaqus/CalculiX\n"
              "      `- Iterations        IterationFolder    #8\n"
              "         `- job            Iteration          #9\n"
              "            |  Solver: Abaqus/CalculiX; Steps: 1\n"
              "            `- job.inp     IterationModel     #10\n"
              "               `- job.inp  FE representation  #11  Deck    ASCII    24 B\n"
              "\n"
              "1 study, 1 iteration, 3 assembly folders, 3 files (33 B)\n");
}

TEST_F(DirectoryReaderTest, ARootWithDecksGetsAStudyOfItsName) {
    Write("job.inp", kAbaqusDeck);
    Write("arm.msh", "m");
    Write("readme.md", "# One study");
    Write("refs/a.png");
    Write("other/job.inp", kAbaqusDeck);
    EXPECT_EQ(Tree(),
              "root                    Project            #1   Simulation\n"
              "|  Description: One study; Files: 5; Size: 61 B; Solver: Abaqus/CalculiX; Studies: 2\n"
              "|- arm.msh              File               #2   Mesh     ASCII     1 B\n"
              "|- job.inp              File               #3   Deck     ASCII    24 B\n"
              "|- readme.md            File               #4   Report   ASCII    11 B\n"
              "|- root                 Model              #5\n"
              "|  |  Description: One study; Files: 4; Size: 37 B; Solver: Abaqus/CalculiX\n"
              "|  |- readme.md         custom file        #4   listed above\n"
              "|  |- refs/a.png        custom file        #6   Picture  ASCII     1 B\n"
              "|  |- arm               Part               #7\n"
              "|  |  `- arm.msh        active mesh        #2   listed above\n"
              "|  `- Iterations        IterationFolder    #8\n"
              "|     `- job            Iteration          #9\n"
              "|        |  Solver: Abaqus/CalculiX; Steps: 1\n"
              "|        `- job.inp     IterationModel     #10\n"
              "|           `- job.inp  FE representation  #3   listed above\n"
              "`- other                Model              #11\n"
              "   |  Files: 1; Size: 24 B; Solver: Abaqus/CalculiX\n"
              "   `- Iterations        IterationFolder    #12\n"
              "      `- job            Iteration          #13\n"
              "         |  Solver: Abaqus/CalculiX; Steps: 1\n"
              "         `- job.inp     IterationModel     #14\n"
              "            `- job.inp  FE representation  #15  Deck     ASCII    24 B\n"
              "\n"
              "2 studies, 2 iterations, 1 part, 5 files (61 B)\n");
}

TEST_F(DirectoryReaderTest, IterationsBearTheStemsOfTheirDecksUnlessTwoAreEqual) {
    Write("study/beam.inp", kAbaqusDeck);
    Write("study/beam.bdf", kNastranDeck);
    Write("study/crash_0000.rad", "#RADIOSS STARTER\n/BEGIN\n");
    Write("study/crash_0001.rad", "/RUN/crash/1/\n");
    Read();
    Find(CAE_ITERATION, "beam.bdf");
    Find(CAE_ITERATION, "beam.inp");
    Find(CAE_ITERATION, "crash");
    Find(CAE_ITERATION_MODEL, "crash_0000.rad");
    EXPECT_EQ(MetadataOf(Find(CAE_MODEL, "study"), L"Solver"), "Abaqus/CalculiX, Nastran, Radioss");
}

TEST_F(DirectoryReaderTest, MetadataTellWhatAStudyIsAbout) {
    Write("study/job.bdf", kNastranDeck);
    Write("study/README.md", "# Bending of a beam\n\ntext\n");
    Write("study/results/job.op2", "12345");
    CAEProject& project = Read();
    const CAEObject& study = Find(CAE_MODEL, "study");
    EXPECT_EQ(MetadataOf(study, L"Description"), "Bending of a beam");
    EXPECT_EQ(MetadataOf(study, L"description"), "Bending of a beam");
    EXPECT_EQ(MetadataOf(study, L"Files"), "3");
    EXPECT_EQ(MetadataOf(study, L"Size"), std::to_string(kNastranDeck.size() + 26 + 5));
    EXPECT_EQ(MetadataOf(study, L"Solver"), "Nastran");
    OuString unit;
    EXPECT_EQ(study.getMetadataUnitString(L"Size", unit), 0);
    EXPECT_STREQ(unit.GetAnsiBuffer(), "B");
    EXPECT_EQ(MetadataOf(project, L"Description"), "(none)");
    EXPECT_EQ(MetadataOf(project, L"Files"), "3");
    EXPECT_EQ(MetadataOf(project, L"Studies"), "1");
    EXPECT_EQ(MetadataOf(project, L"Solver"), "Nastran");
}

TEST_F(DirectoryReaderTest, IterationsHaveWhatTheirDecksSay) {
    Write("study/job.inp",
          "*HEADING\nArm (mm, N, t, s)\n*INCLUDE, INPUT=mesh/arm.msh\n*MATERIAL, NAME=Steel\n"
          "*MATERIAL, NAME=Rubber\n*STEP\n*END STEP\n*STEP\n*END STEP\n");
    Write("study/mesh/arm.msh", "*NODE\n1,0\n2,1\n3,2\n*ELEMENT, TYPE=B31\n1,1,2\n2,2,3\n");
    Write("study/lost.inp", "*INCLUDE, INPUT=mesh/lost.msh\n*MATERIAL, NAME=Steel\n*STEP\n*END STEP\n");
    Read();
    const CAEObject& job = Find(CAE_ITERATION, "job");
    EXPECT_EQ(MetadataOf(job, L"Solver"), "Abaqus/CalculiX");
    EXPECT_EQ(MetadataOf(job, L"Nodes"), "3");
    EXPECT_EQ(MetadataOf(job, L"Elements"), "2");
    EXPECT_EQ(MetadataOf(job, L"Materials"), "Steel, Rubber");
    EXPECT_EQ(MetadataOf(job, L"Steps"), "2");
    EXPECT_EQ(MetadataOf(job, L"Units"), "mm, N, t, s");
    const CAEObject& lost = Find(CAE_ITERATION, "lost");
    EXPECT_EQ(MetadataOf(lost, L"Nodes"), "(none)");
    EXPECT_EQ(MetadataOf(lost, L"Elements"), "(none)");
    EXPECT_EQ(MetadataOf(lost, L"Materials"), "Steel");
    EXPECT_EQ(MetadataOf(lost, L"Units"), "(none)");
    EXPECT_EQ(kept.said, "") << "what is missing for a count is no message";
    ASSERT_EQ(reading.modelGaps.size(), 1U);
    EXPECT_TRUE(
        reading.modelGaps[0].ends_with("lost.inp' has no counts of nodes or elements: lost.inp:1: "
                                       "'mesh/lost.msh' is included, but cannot be "
                                       "read"))
        << reading.modelGaps[0];
}

TEST_F(DirectoryReaderTest, DecksDoNotOpenTheFileThatTheCommandWorksOn) {
    Write("study/job.inp", "*INCLUDE, INPUT=mesh.msh\n*STEP\n*END STEP\n");
    Write("study/mesh.msh", "*NODE\n1,0\n");
    reading = ReadDirectory(folder / "root", folder / "root/study/mesh.msh", kept.console);
    EXPECT_EQ(MetadataOf(Find(CAE_ITERATION, "job"), L"Nodes"), "(none)");
}

TEST_F(DirectoryReaderTest, OnlyChosenStudiesAreRead) {
    Write("plan.csv");
    Write("group/a/job.inp", "*INCLUDE, INPUT=../../group/common.msh\n*STEP\n*END STEP\n");
    Write("group/a/pics/a.png");
    Write("group/b/job.inp", kAbaqusDeck);
    Write("group/common.msh", "*NODE\n1,0\n");
    Write("c/job.inp", kAbaqusDeck);
    selection.studies = {"group/a"};
    EXPECT_EQ(Tree(),
              "root                       Project            #1  Simulation\n"
              "|  Files: 2; Size: 56 B; Solver: Abaqus/CalculiX; Studies: 1\n"
              "`- group                   AssemblyFolder     #2\n"
              "   `- a                    Model              #3\n"
              "      |  Files: 2; Size: 56 B; Solver: Abaqus/CalculiX\n"
              "      |- pics/a.png        custom file        #4  Picture  ASCII     1 B\n"
              "      `- Iterations        IterationFolder    #5\n"
              "         `- job            Iteration          #6\n"
              "            |  Solver: Abaqus/CalculiX; Nodes: 1; Steps: 1\n"
              "            `- job.inp     IterationModel     #7\n"
              "               `- job.inp  FE representation  #8  Deck     ASCII    55 B\n"
              "\n"
              "1 study, 1 iteration, 1 assembly folder, 2 files (56 B)\n");
    selection.studies = {"group", std::string(ToOuString(folder / "root/c").GetAnsiBuffer())};
    Read();
    Find(CAE_MODEL, "a");
    Find(CAE_MODEL, "b");
    Find(CAE_MODEL, "c");
    EXPECT_EQ(MetadataOf(*reading.project, L"Files"), "5") << "the file in the root is left out";
}

TEST_F(DirectoryReaderTest, AStudyInAStudyIsReadWithTheOneAround) {
    Write("outer/job.inp", kAbaqusDeck);
    Write("outer/mesh/a.msh");
    Write("outer/inner/job.inp", kAbaqusDeck);
    Write("outer/other/job.inp", kAbaqusDeck);
    selection.studies = {"outer/inner"};
    Read();
    EXPECT_EQ(MetadataOf(Find(CAE_MODEL, "outer"), L"Files"), "2");
    Find(CAE_MODEL, "inner");
    EXPECT_EQ(MetadataOf(*reading.project, L"Studies"), "2");
}

TEST_F(DirectoryReaderTest, WhatIsNotAStudyCannotBeChosen) {
    Write("a/job.inp", kAbaqusDeck);
    Write("docs/plan.csv");
    folder.MakeDirectory("outside");
    for (const char* const study : {"docs", "none", "../outside", "a/job.inp"}) {
        selection.studies = {study};
        reading = ReadDirectory(folder / "root", std::nullopt, kept.console, nullptr, selection);
        EXPECT_EQ(reading.project, nullptr) << study;
        EXPECT_TRUE(
            reading.refusal.starts_with("'" + std::string(study) + "' is not a directory with decks in "))
            << reading.refusal;
    }
}

TEST_F(DirectoryReaderTest, PatternsLeaveOutFilesAndDirectories) {
    Write("a/job.inp", kAbaqusDeck);
    Write("a/job.frd");
    Write("a/results/x.png");
    Write("b/job.inp", kAbaqusDeck);
    Write("b/job.frd");
    Write("b/.korvaneignore", "!job.frd\n");
    Write(".korvaneignore", "*.frd\nresults/\n");
    Read();
    EXPECT_EQ(MetadataOf(*reading.project, L"Files"), "3") << "the nearest file decides";
    selection.excluded = {"*.frd", "b"};
    Read();
    EXPECT_EQ(MetadataOf(*reading.project, L"Files"), "1");
    EXPECT_EQ(kept.said, "");
}

TEST_F(DirectoryReaderTest, OnlySomeOfManyMaterialsAreNamed) {
    std::string deck = "*STEP\n";
    for (int material = 1; material <= 23; ++material) {
        deck += "*MATERIAL, NAME=M" + std::to_string(material) + "\n";
    }
    Write("study/job.inp", deck);
    Read();
    const std::string materials = MetadataOf(Find(CAE_ITERATION, "job"), L"Materials");
    EXPECT_TRUE(materials.starts_with("M1, M2, ")) << materials;
    EXPECT_TRUE(materials.ends_with(", M20 and 3 more")) << materials;
}

TEST_F(DirectoryReaderTest, UsersDescribeStudiesIterationsAndParts) {
    Write("study/job.inp", kAbaqusDeck);
    Write("study/arm.step");
    Write("study/README.md", "# Found");
    Write("study/korvane.toml",
          "name = \"Bracket\"\ndescription = \"Said\"\n[metadata]\nMass = { value = 2.4, unit = \"kg\" }\n"
          "solver = \"Mine\"\n[iteration.job]\nname = \"Load\"\nmetadata.Steps = 7\n"
          "[part.arm]\ndescription = \"Left\"\n");
    EXPECT_EQ(Tree(),
              "root                    Project            #1  Simulation\n"
              "|  Files: 3; Size: 32 B; Solver: Abaqus/CalculiX; Studies: 1\n"
              "`- Bracket              Model              #2\n"
              "   |  Description: Said; Files: 3; Size: 32 B; Solver: Mine; Mass: 2.4 kg\n"
              "   |- README.md         custom file        #3  Report  ASCII     7 B\n"
              "   |- arm               Part               #4\n"
              "   |  |  Description: Left\n"
              "   |  `- arm.step       CAD file           #5  CAD     ASCII     1 B\n"
              "   `- Iterations        IterationFolder    #6\n"
              "      `- Load           Iteration          #7\n"
              "         |  Solver: Abaqus/CalculiX; Steps: 7\n"
              "         `- job.inp     IterationModel     #8\n"
              "            `- job.inp  FE representation  #9  Deck    ASCII    24 B\n"
              "\n"
              "1 study, 1 iteration, 1 part, 3 files (32 B)\n");
    EXPECT_EQ(kept.said, "");
    EXPECT_EQ(reading.described.problems, 0U);
}

TEST_F(DirectoryReaderTest, DescriptionsAreOfTheProjectOrAFolderWhereThereIsNoStudy) {
    Write("korvane.toml", "name = \"All\"\nmetadata.Lead = \"Ada\"\n");
    Write("docs/korvane.toml", "name = \"no\"\ndescription = \"Plans\"\n");
    Write("docs/plan.csv");
    Write("study/job.inp", kAbaqusDeck);
    Write("study/mesh/korvane.toml", "name = \"no\"\n");
    CAEProject& project = Read();
    EXPECT_EQ(NarrowNameOf(project), "All");
    EXPECT_STREQ(korvane::GetDisplayName(project).GetAnsiBuffer(), "All");
    EXPECT_EQ(MetadataOf(project, L"Lead"), "Ada");
    EXPECT_EQ(MetadataOf(Find(CAE_ASSEMBLY_FOLDER, "docs"), L"Description"), "Plans");
    EXPECT_EQ(reading.described.problems, 2U);
    EXPECT_NE(kept.said.find("only projects, studies, iterations and parts get names"), std::string::npos);
    EXPECT_NE(kept.said.find("its directory is not a study"), std::string::npos);
}

TEST_F(DirectoryReaderTest, ADescriptionInTheRootIsThatOfItsStudy) {
    Write("job.inp", kAbaqusDeck);
    Write("korvane.toml", "name = \"Bracket\"\ndescription = \"Said\"\n[iteration.none]\n[part.none]\n");
    CAEProject& project = Read();
    EXPECT_EQ(NarrowNameOf(project), "root");
    EXPECT_EQ(MetadataOf(project, L"Description"), "Said");
    EXPECT_EQ(MetadataOf(Find(CAE_MODEL, "Bracket"), L"Description"), "Said");
    EXPECT_EQ(reading.described.problems, 2U);
    EXPECT_NE(kept.said.find("line 3, column 12: 'none' is left out: there is no iteration of this name\n"),
              std::string::npos)
        << kept.said;
    EXPECT_NE(kept.said.find("line 4, column 7: 'none' is left out: there is no part of this name\n"),
              std::string::npos);
}

TEST_F(DirectoryReaderTest, TotalsCountEveryFileOnce) {
    Write("job.inp", kAbaqusDeck);
    Write("a/job.bdf", kNastranDeck);
    Write("a/refs/x.png", "123");
    Write("docs/y.txt", "12");
    CAEProject& project = Read();
    EXPECT_EQ(MetadataOf(project, L"Files"), "4");
    EXPECT_EQ(MetadataOf(project, L"Size"), std::to_string(kAbaqusDeck.size() + kNastranDeck.size() + 5));
    EXPECT_EQ(MetadataOf(project, L"Studies"), "2");
    EXPECT_EQ(MetadataOf(project, L"Solver"), "Abaqus/CalculiX, Nastran");
}

TEST_F(DirectoryReaderTest, DatesAreTheLastChangesInUtc) {
    Write("study/job.inp", kAbaqusDeck);
    // 2026-03-01T09:30:00Z
    const std::chrono::sys_seconds time{std::chrono::seconds(1772357400)};
    std::filesystem::last_write_time(folder / "root/study/job.inp", std::chrono::file_clock::from_sys(time));
    Read();
    for (const auto& [type, name] :
         {std::pair(CAE_ITERATION, "job"), std::pair(CAE_ITERATION_MODEL, "job.inp")}) {
        CAEObject& object = Find(type, name);
        OuString date;
        object.getCreatedDate(date);
        EXPECT_STREQ(date.GetAnsiBuffer(), "2026-03-01T09:30:00Z") << name;
    }
    const int deck = korvane::GetFileRoles(Find(CAE_ITERATION_MODEL, "job.inp")).feRepresentation;
    OuString date;
    reading.project->getFile(deck)->getCreatedDate(date);
    EXPECT_STREQ(date.GetAnsiBuffer(), "2026-03-01T09:30:00Z");
}

TEST_F(DirectoryReaderTest, UsersAreTheOwnersOfTheFiles) {
    Write("study/job.inp", kAbaqusDeck);
    Read();
    OuString user;
    Find(CAE_ITERATION, "job").getCreatedUserName(user);
    Entry entry;
    ASSERT_FALSE(InspectTarget(folder / "root/study/job.inp", entry));
    if (entry.owner) {
        EXPECT_EQ(user.GetAnsiBuffer(), OwnerName(*entry.owner));
    }
    EXPECT_FALSE(user.IsEmpty());
}

TEST_F(DirectoryReaderTest, FilesKnowTheirPathsAndLieOnThisMachine) {
    Write("study/job.inp", kAbaqusDeck);
    Write("study/arm.step", "ISO");
    Write("top.txt");
    CAEProject& project = Read();
    const std::vector<CAEFile*> files = korvane::GetProjectFiles(project);
    ASSERT_EQ(files.size(), 2U);
    const CAEFile& top = dynamic_cast<CAEFile&>(Find(CAE_FILE, "top.txt"));
    const std::vector<const CAEFile*> all = {files[0], files[1], &top};
    for (const CAEFile* const file : all) {
        OuString path;
        file->getFullPathName(path);
        EXPECT_TRUE(std::filesystem::is_regular_file(ToPath(path))) << path.GetAnsiBuffer();
        EXPECT_EQ(file->m_fullPathCopy.Compare(path), 0);
        EXPECT_TRUE(korvane::IsDownloaded(*file));
    }
}

TEST_F(DirectoryReaderTest, TwoReadingsGiveTheSameTree) {
    Write("b/job.inp", kAbaqusDeck);
    Write("a/job.inp", kAbaqusDeck);
    Write("a/x.png");
    Write("c.txt");
    const std::string first = Tree();
    EXPECT_EQ(Tree(), first);
}

TEST_F(DirectoryReaderTest, ARootThatIsNoDirectoryGivesNoProject) {
    Write("file.txt");
    EXPECT_EQ(ReadDirectory(folder / "root/file.txt", std::nullopt, kept.console).project, nullptr);
    const DirectoryReading missing = ReadDirectory(folder / "missing", std::nullopt, kept.console);
    EXPECT_EQ(missing.project, nullptr);
    EXPECT_TRUE(missing.error);
}

TEST_F(DirectoryReaderTest, ManyFilesTakeTimeInProportion) {
    // One directory: anything quadratic in its files would take minutes.
    const std::filesystem::path directory = folder.MakeDirectory("root/study");
    Write("study/job.inp", kAbaqusDeck);
#if defined(_WIN32)
    const int files = 2000;
#else
    const int files = IsLongRun() ? 100'000 : 20'000;
#endif
    for (int index = 0; index < files; ++index) {
        const std::ofstream file(directory / ("s" + std::to_string(index) + ".txt"));
    }
    Read();
    EXPECT_EQ(MetadataOf(Find(CAE_MODEL, "study"), L"Files"), std::to_string(files + 1));
}

#if !defined(_WIN32)

TEST_F(DirectoryReaderTest, BytesOfALinkedFileCountWhereItLies) {
    Write("common/mesh.msh", "12345");
    Write("study/job.inp", kAbaqusDeck);
    std::filesystem::create_symlink("../common/mesh.msh", folder / "root/study/all.msh");
    CAEProject& project = Read();
    EXPECT_EQ(MetadataOf(Find(CAE_MODEL, "study"), L"Files"), "2");
    EXPECT_EQ(MetadataOf(Find(CAE_MODEL, "study"), L"Size"), std::to_string(kAbaqusDeck.size()));
    EXPECT_EQ(MetadataOf(project, L"Size"), std::to_string(kAbaqusDeck.size() + 5));
    EXPECT_NE(korvane::GetFileRoles(Find(CAE_PART, "all")).activeMesh, 0);
}

TEST_F(DirectoryReaderTest, ARootGivenByALinkIsTheDirectoryThatItLeadsTo) {
    Write("a.txt");
    std::filesystem::create_directory_symlink("root", folder / "current");
    reading = ReadDirectory(folder / "current", std::nullopt, kept.console);
    ASSERT_NE(reading.project, nullptr);
    EXPECT_EQ(NarrowNameOf(*reading.project), "root");
}

#endif

}  // namespace
}  // namespace host
