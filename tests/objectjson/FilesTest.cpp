#include <gtest/gtest.h>

#include "ConverterSupport.h"
#include "support/ModelBuilders.h"
#include "support/ObjectText.h"

namespace {

std::string FilesText(CAEObject& object) {
    return TextOfSection(CAEObjectJson(&object).ExportFiles());
}

std::string Record(int id, const char* name, const char* type) {
    return ObjectNodeText(
        {.id = std::to_string(id), .name = name, .type = "CAEFILE", .tail = RecordTail(type, "ASCII")});
}

}  // namespace

TEST(Files, ObjectWithoutFilesHasAnEmptyArray) {
    TestProject project;
    EXPECT_EQ(FilesText(project.Add(CAE_PART, L"frame")), R"({"files":[]})");
}

TEST(Files, RecordsStandInTheOrderOfTheObjectsList) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    project.AddFile(part, L"frame.step", CAE_FILE_CAD);
    project.AddFile(part, L"zz.txt", CAE_FILE_REPORT);
    project.AddFile(part, L"frame.msh", CAE_FILE_MESH);
    project.AddFile(part, L"frame.png", CAE_FILE_GRAPHIC);
    EXPECT_EQ(FilesText(part), R"({"files":[)" + Record(3, "frame.step", "CAD") + "," +
                                   Record(4, "zz.txt", "Report") + "," + Record(5, "frame.msh", "Mesh") +
                                   "," + Record(6, "frame.png", "Graphic") + "]}");
}

TEST(Files, IdentifiersThatTheProjectDoesNotKnowAreSkipped) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    part.attachCustomFile(4711, nullptr);
    project.AddFile(part, L"a.txt", CAE_FILE_REPORT);
    part.attachCustomFile(4712, nullptr);
    project.AddFile(part, L"b.txt", CAE_FILE_REPORT);
    EXPECT_EQ(FilesText(part),
              R"({"files":[)" + Record(3, "a.txt", "Report") + "," + Record(4, "b.txt", "Report") + "]}");
}

TEST(Files, IdentifierOfAnObjectThatIsNoFileIsSkipped) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    part.attachCustomFile(part.getID(), nullptr);
    EXPECT_EQ(FilesText(part), R"({"files":[]})");
}

TEST(Files, ObjectWithoutProjectHasAnEmptyArray) {
    CAEFile file(nullptr, CAE_FILE_DECK, CAE_FORMAT_ASCII, false);
    file.attachCustomFile(3, nullptr);
    ASSERT_EQ(file.getProject(), nullptr);
    EXPECT_EQ(FilesText(file), R"({"files":[]})");
}

TEST(Files, FilesOfFilesAreRecordsWithinTheRecord) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    CAEFile& deck = project.AddFile(part, L"deck.inp", CAE_FILE_DECK);
    project.AddFile(deck, L"include.inp", CAE_FILE_INCLUDE);
    EXPECT_EQ(FilesText(part), R"({"files":[)" +
                                   ObjectNodeText({.id = "3",
                                                   .name = "deck.inp",
                                                   .type = "CAEFILE",
                                                   .files = Record(4, "include.inp", "Include"),
                                                   .tail = RecordTail("Deck", "ASCII")}) +
                                   "]}");
}

TEST(Files, FileAttachedToTwoObjectsIsARecordOfBoth) {
    TestProject project;
    CAEObject& first = project.Add(CAE_PART, L"first");
    CAEObject& second = project.Add(CAE_PART, L"second");
    CAEFile& file = project.AddFile(first, L"shared.txt", CAE_FILE_REPORT);
    second.attachCustomFile(file.getID(), nullptr);
    EXPECT_EQ(FilesText(first), R"({"files":[)" + Record(4, "shared.txt", "Report") + "]}");
    EXPECT_EQ(FilesText(first), FilesText(second));
}

TEST(Files, RunAssemblyCarriesItsRepresentations) {
    TestProject project;
    CAEObject& run = project.Add(CAE_ITERATION_MODEL, L"run");
    project.AddFile(run, L"deck 1.inp", CAE_FILE_DECK);
    project.AddFile(run, L"deck 2.inp", CAE_FILE_DECK);
    EXPECT_EQ(FilesText(run), R"({"files":[)" + Record(3, "deck 1.inp", "Deck") + "," +
                                  Record(4, "deck 2.inp", "Deck") + "]}");
}

TEST(Files, ObjectsOfANestedProjectFindTheirFiles) {
    TestProject project;
    CAEObject& nested = project.Add(CAE_PROJECT, L"nested");
    CAEObject& part = project.Add(nested, CAE_PART, L"frame");
    project.AddFile(part, L"a.txt", CAE_FILE_REPORT);
    EXPECT_EQ(FilesText(part), R"({"files":[)" + Record(4, "a.txt", "Report") + "]}");
}
