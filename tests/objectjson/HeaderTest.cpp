#include <gtest/gtest.h>

#include "ConverterSupport.h"
#include "support/ModelBuilders.h"
#include "support/ObjectText.h"
#include "support/TextUnits.h"

TEST(Header, MembersStandInTheOrderOfTheFormat) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    part.setDBKey(L"DB-17");
    EXPECT_EQ(Exported(part),
              R"({"id":"2","name":"frame","createdDate":"2026-03-01T09:30:00Z","createdBy":"engineer",)"
              R"("type":"CAEPART","dbkey":"DB-17","metaData":{},"children":[],"files":[]})");
}

TEST(Header, IdentifierIsADecimalStringWhateverItsValue) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    for (const auto& [id, text] : {std::pair(0, "0"),
                                   {-15, "-15"},
                                   {42, "42"},
                                   {2147483647, "2147483647"},
                                   {-2147483647 - 1, "-2147483648"}}) {
        part.setID(id);
        const JSONNode node = CAEObjectJson(&part).GetJsonNode();
        EXPECT_EQ(node.begin()->type(), JSON_STRING);
        EXPECT_EQ(MemberText(node, "id"), text);
    }
}

TEST(Header, NamelessObjectIsCalledModel) {
    TestProject project;
    for (const _tagCAEObjectType type : {CAE_PART, CAE_MODEL, CAE_VIEW_ITEM, CAE_TAG}) {
        EXPECT_EQ(MemberText(CAEObjectJson(&project.Add(type, L"")).GetJsonNode(), "name"), "model");
    }
    project->setName(L"");
    EXPECT_EQ(MemberText(CAEObjectJson(&*project).GetJsonNode(), "name"), "model");
}

TEST(Header, FileGoesByTheLastComponentOfItsPathAndNotByItsOwnName) {
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"mesh.dat", CAE_FILE_DECK);
    file.setName(L"another name");
    const std::pair<const wchar_t*, const char*> paths[] = {{L"D:/proj/sub/mesh.dat", "mesh.dat"},
                                                            {L"D:\\proj\\mesh.dat", "mesh.dat"},
                                                            {L"mesh.dat", "mesh.dat"},
                                                            {L"D:/proj/", ""},
                                                            {L"", ""}};
    for (const auto& [path, name] : paths) {
        file.setFullPathName(path);
        EXPECT_EQ(MemberText(CAEObjectJson(&file).GetJsonNode(), "name"), name);
    }
}

TEST(Header, IterationCarriesTheNameOfItsStudy) {
    TestProject project;
    CAEObject& study = project.Add(CAE_MODEL, L"front crash");
    CAEObject& folder = project.Add(study, CAE_ITERATION_FOLDER, L"Iterations");
    CAEObject& iteration = project.Add(folder, CAE_ITERATION, L"run 1");
    EXPECT_EQ(
        Exported(iteration),
        ObjectNodeText({.id = "4", .name = "run 1", .type = "CAEITERATION", .studyTypeName = "front crash"}));
}

TEST(Header, OnlyIterationsCarryAStudyTypeName) {
    TestProject project;
    CAEObject& study = project.Add(CAE_MODEL, L"front crash");
    CAEObject& folder = project.Add(study, CAE_ITERATION_FOLDER, L"Iterations");
    for (const _tagCAEObjectType type :
         {CAE_PART, CAE_ITERATION_FOLDER, CAE_ITERATION_MODEL, CAE_LOADCASE_VIEW}) {
        EXPECT_EQ(MemberText(CAEObjectJson(&project.Add(folder, type, L"x")).GetJsonNode(), "studyTypeName"),
                  "(no such member)");
    }
}

TEST(Header, StudyTypeNameIsWrittenAlsoWhenItIsEmpty) {
    TestProject project;
    CAEObject& folder = project.Add(project.Add(CAE_MODEL, L""), CAE_ITERATION_FOLDER, L"Iterations");
    CAEObject& iteration = project.Add(folder, CAE_ITERATION, L"run 1");
    EXPECT_EQ(MemberText(CAEObjectJson(&iteration).GetJsonNode(), "studyTypeName"), "");
}

TEST(Header, IterationWithoutGrandparentIsOfTheGenericStudy) {
    TestProject project;
    CAEObject& iteration = project.Add(CAE_ITERATION, L"run 1");
    EXPECT_EQ(MemberText(CAEObjectJson(&iteration).GetJsonNode(), "studyTypeName"), "Generic");
}

TEST(Header, IterationWithoutParentIsOfTheGenericStudy) {
    TestProject project;
    CAEObject* iteration = &project.Add(CAE_ITERATION, L"run 1");
    CAEObject* handed = iteration;
    project->detachChild(handed, false);
    EXPECT_EQ(MemberText(CAEObjectJson(iteration).GetJsonNode(), "studyTypeName"), "Generic");
}

TEST(Header, DateAndCreatorAreWrittenAsTheObjectModelGivesThem) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    part.setCreatedDate(L"1st of March");
    korvane::SetCreatedUserName(part, L"");
    const JSONNode node = CAEObjectJson(&part).GetJsonNode();
    EXPECT_EQ(MemberText(node, "createdDate"), "1st of March");
    EXPECT_EQ(MemberText(node, "createdBy"), "");
    part.setCreatedDate(L"");
    EXPECT_EQ(MemberText(CAEObjectJson(&part).GetJsonNode(), "createdDate"), "");
}

TEST(Header, ProjectGoesByItsUpperCasedAdditionalType) {
    TestProject project;
    project->setAdditionalType(L"crash");
    EXPECT_EQ(MemberText(CAEObjectJson(&*project).GetJsonNode(), "type"), "CRASH");
    project->setAdditionalType(L"Stra\u00DFe \u00E9t\u00E9");
    EXPECT_EQ(MemberText(CAEObjectJson(&*project).GetJsonNode(), "type"),
              OuString(L"STRA\u00DFE \u00C9T\u00C9").GetAnsiBuffer());
    project->setAdditionalType(L"");
    EXPECT_EQ(MemberText(CAEObjectJson(&*project).GetJsonNode(), "type"), "");
}

TEST(Header, TypeIsUpperCased) {
    TestProject project;
    EXPECT_STREQ(CAEObject::getTypeName(CAE_SUBASSEMBLY), "SubAssembly");
    EXPECT_EQ(MemberText(CAEObjectJson(&project.Add(CAE_SUBASSEMBLY, L"x")).GetJsonNode(), "type"),
              "CAESUBASSEMBLY");
}

TEST(Header, ObjectWithoutDatabaseKeyHasNoSuchMember) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    EXPECT_EQ(Exported(part), ObjectNodeText({.id = "2", .name = "frame", .type = "CAEPART"}));
}

TEST(Header, ViewItemWritesItsOwnKeyAndNeitherLinkNorReference) {
    TestProject project;
    auto& item = dynamic_cast<CAEViewItem&>(project.Add(CAE_VIEW_ITEM, L"item"));
    item.setDBKey(L"OWN");
    item.setLinkDBKey(L"LINK");
    item.setReferencedCAEObject(1);
    EXPECT_EQ(Exported(item),
              ObjectNodeText({.id = "2", .name = "item", .type = "CAEVIEWITEM", .databaseKey = "OWN"}));
}

TEST(Header, TextsBeyondAsciiTravelInTheAnsiCodePage) {
    const UnitsFor bytes(libjson::text_units::bytes);
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Tr\u00E4ger \u4E2D");
    // The test programs' code page is UTF-8, and with these units the document escapes its bytes one by one.
    EXPECT_EQ(MemberText(CAEObjectJson(&part).GetJsonNode(), "name"), "Tr\xC3\xA4ger \xE4\xB8\xAD");
    EXPECT_NE(Exported(part).find(R"("name":"Tr\u00C3\u00A4ger \u00E4\u00B8\u00AD")"), std::string::npos);
}

TEST(Header, QuotesSlashesAndControlCharactersAreEscaped) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"a\"b/c\\d\te\nf\x01g\x7F");
    EXPECT_NE(Exported(part).find(R"("name":"a\"b\/c\\d\te\nf\u0001g\u007F")"), std::string::npos);
}
