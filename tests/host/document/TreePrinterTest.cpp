#include <EmbeddedModel.h>
#include <gtest/gtest.h>

#include "host/document/TreePrinter.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

class TreePrinterTest : public testing::Test {
protected:
    std::string Print(const TreeStyle& style = {false, false}, const TreeContent& content = {}) const {
        return PrintTree(*project, style, content);
    }

    std::unique_ptr<CAEProject> project = korvane::CreateProject(L"Demo", L"/nowhere");
};

TEST_F(TreePrinterTest, DrawsTheTreeWithBoxesWhereTheOutputAllowsIt) {
    CAEObject& study = *korvane::CreateObject(*project, CAE_MODEL, L"Study");
    korvane::CreateObject(study, CAE_PART, L"One");
    korvane::CreateObject(study, CAE_PART, L"Two");
    korvane::CreateObject(*project, CAE_TAG, L"Last");
    EXPECT_EQ(Print({true, false}),
              "Demo       Project  #1\n"
              "├─ Study   Model    #2\n"
              "│  ├─ One  Part     #3\n"
              "│  └─ Two  Part     #4\n"
              "└─ Last    Tag      #5\n"
              "\n"
              "1 study, 2 parts, 1 tag, 0 files (0 B)\n");
}

TEST_F(TreePrinterTest, ShowsKeysAndWhatViewItemsShow) {
    CAEObject& assembly = *korvane::CreateObject(*project, CAE_SUBASSEMBLY, L"Car");
    assembly.setDBKey(L"ITEM-1");
    auto& item =
        dynamic_cast<CAEViewItem&>(*korvane::CreateObject(*project, CAE_VIEW_ITEM, L"View of the car"));
    item.setReferencedCAEObject(assembly.getID());
    EXPECT_EQ(Print(),
              "Demo                Project      #1\n"
              "|- Car              SubAssembly  #2  key ITEM-1\n"
              "`- View of the car  ViewItem     #3  -> #2\n"
              "\n"
              "1 sub-assembly, 0 files (0 B)\n");
}

TEST_F(TreePrinterTest, SaysWhichFilesAreMissingOrHaveNoPath) {
    CAEObject& part = *korvane::CreateObject(*project, CAE_PART, L"Arm");
    part.attachCustomFile(
        korvane::CreateFile(*project, L"/nowhere/gone.txt", CAE_FILE_REPORT, CAE_FORMAT_ASCII)->getID(),
        nullptr);
    part.attachCustomFile(korvane::CreateFile(*project, L"", CAE_FILE_OTHER, CAE_FORMAT_UNKNOWN)->getID(),
                          nullptr);
    EXPECT_EQ(Print(),
              "Demo            Project      #1\n"
              "`- Arm          Part         #2\n"
              "   |- gone.txt  custom file  #3  Report  ASCII    missing\n"
              "   `-           custom file  #4  Other   Unknown        -\n"
              "\n"
              "1 part, 2 files (0 B)\n");
}

TEST_F(TreePrinterTest, ShowsMetadataOnLinesThatFitAndShortensLongValues) {
    project->setMetadataValue(L"Mass", L"1.5");
    korvane::SetMetadataUnit(*project, L"Mass", L"kg");
    project->setMetadataValue(L"Text", std::wstring(1000, L'x').c_str());
    project->setMetadataValue(L"Line", L"a\nb");
    EXPECT_EQ(Print(),
              "Demo  Project  #1\n"
              "   Mass: 1.5 kg\n"
              "   Text: " +
                  std::string(240, 'x') +
                  "...\n"
                  "   Line: a\\nb\n"
                  "\n"
                  "0 files (0 B)\n");
}

TEST_F(TreePrinterTest, ShowsSizesInOneManner) {
    project->setMetadataValue(L"Size", L"12345");
    korvane::SetMetadataUnit(*project, L"Size", L"B");
    // An entry of a document has its unit as its type.
    project->setMetadataValue(L"Results", L"2000000");
    project->setMetadataType(L"Results", L"B");
    project->setMetadataValue(L"Cells", L"12345");
    EXPECT_EQ(Print(),
              "Demo  Project  #1\n"
              "   Size: 12 kB; Results: 2.0 MB; Cells: 12345\n"
              "\n"
              "0 files (0 B)\n");
}

TEST_F(TreePrinterTest, ShowsOnlySoManyLevels) {
    CAEObject& study = *korvane::CreateObject(*project, CAE_MODEL, L"Study");
    study.attachCustomFile(
        korvane::CreateFile(*project, L"/nowhere/Study/a.txt", CAE_FILE_REPORT, CAE_FORMAT_ASCII)->getID(),
        nullptr);
    korvane::CreateObject(*korvane::CreateObject(study, CAE_PART, L"One"), CAE_TAG, L"Tag");
    const std::string totals = "\n1 study, 1 part, 1 tag, 1 file (0 B)\n";
    EXPECT_EQ(Print({false, false}, {.depth = 0}), "Demo  Project  #1  1 object below\n" + totals);
    EXPECT_EQ(Print({false, false}, {.depth = 1}),
              "Demo      Project  #1\n"
              "`- Study  Model    #2  1 object below\n" +
                  totals);
    EXPECT_EQ(Print({false, false}, {.depth = 2}),
              "Demo         Project      #1\n"
              "`- Study     Model        #2\n"
              "   |- a.txt  custom file  #3  Report  ASCII    missing\n"
              "   `- One    Part         #4  1 object below\n" +
                  totals);
}

TEST_F(TreePrinterTest, ShowsOnlyTheFilesThatAreAskedFor) {
    const auto file = [&](const OuString& path, _tagFileType type) {
        return korvane::CreateFile(*project, path, type, CAE_FORMAT_ASCII)->getID();
    };
    CAEObject& study = *korvane::CreateObject(*project, CAE_MODEL, L"Study");
    study.attachCustomFile(file(L"/nowhere/Study/a.txt", CAE_FILE_REPORT), nullptr);
    dynamic_cast<CAEPart&>(*korvane::CreateObject(study, CAE_PART, L"Arm"))
        .setCADFile(file(L"/nowhere/Study/arm.stp", CAE_FILE_CAD));
    const std::string totals = "\n1 study, 1 part, 2 files (0 B)\n";
    EXPECT_EQ(Print({false, false}, {.files = FilesShown::WithRoles}),
              "Demo              Project   #1\n"
              "`- Study          Model     #2\n"
              "   `- Arm         Part      #4\n"
              "      `- arm.stp  CAD file  #5  CAD  ASCII    missing\n" +
                  totals);
    EXPECT_EQ(Print({false, false}, {.files = FilesShown::None}),
              "Demo       Project  #1\n"
              "`- Study   Model    #2\n"
              "   `- Arm  Part     #4\n" +
                  totals);
}

TEST_F(TreePrinterTest, TellsFilesOfOneNameApartAndListsAFileOnce) {
    CAEObject& study = *korvane::CreateObject(*project, CAE_MODEL, L"Study");
    CAEObject& part = *korvane::CreateObject(study, CAE_PART, L"Arm");
    for (const wchar_t* const path : {L"/nowhere/Study/a.png", L"/nowhere/Study/refs/a.png"}) {
        const int file = korvane::CreateFile(*project, path, CAE_FILE_PICTURE, CAE_FORMAT_BINARY)->getID();
        study.attachCustomFile(file, nullptr);
        part.attachCustomFile(file, nullptr);
    }
    EXPECT_EQ(Print(),
              "Demo                 Project      #1\n"
              "`- Study             Model        #2\n"
              "   |- a.png          custom file  #4  Picture  Binary   missing\n"
              "   |- refs/a.png     custom file  #5  Picture  Binary   missing\n"
              "   `- Arm            Part         #3\n"
              "      |- a.png       custom file  #4  listed above\n"
              "      `- refs/a.png  custom file  #5  listed above\n"
              "\n"
              "1 study, 1 part, 2 files (0 B)\n");
}

TEST_F(TreePrinterTest, EscapesNamesThatWouldDisturbATerminal) {
    korvane::CreateObject(*project, CAE_PART, L"a\x1B[2Jb");
    EXPECT_NE(Print().find("`- a\\x1B[2Jb  Part"), std::string::npos);
}

TEST_F(TreePrinterTest, AlignsColumnsBehindWideCharacters) {
    korvane::CreateObject(*project, CAE_PART, L"\u4E2D\u6587");
    korvane::CreateObject(*project, CAE_PART, L"abcd");
    EXPECT_EQ(Print({true, false}),
              "Demo     Project  #1\n"
              "├─ \u4E2D\u6587  Part     #2\n"
              "└─ abcd  Part     #3\n"
              "\n"
              "2 parts, 0 files (0 B)\n");
}

TEST_F(TreePrinterTest, ColoursOnlyWhenAskedTo) {
    korvane::CreateObject(*project, CAE_PART, L"Arm");
    EXPECT_EQ(Print().find('\x1B'), std::string::npos);
    EXPECT_NE(Print({true, true}).find("\x1B[1mArm\x1B[0m"), std::string::npos);
}

TEST_F(TreePrinterTest, PrintsADeepTreeInTimeAndSpaceInProportion) {
    CAEObject* object = project.get();
    for (int level = 0; level < 100000; ++level) {
        object = korvane::CreateObject(*object, CAE_ASSEMBLY_FOLDER, L"d");
    }
    const std::string text = Print();
    EXPECT_LT(text.size(), 20000000U);
    EXPECT_NE(text.find("(99999) `- d"), std::string::npos);
    EXPECT_NE(text.find("\n100000 assembly folders, 0 files (0 B)\n"), std::string::npos);
}

}  // namespace
}  // namespace host
