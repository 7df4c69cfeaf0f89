#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ConverterSupport.h"
#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"

namespace {

void ImportChildrenText(const std::string& children, CAEObject& object) {
    ImportText(R"({"type":"X","children":)" + children + "}", object);
}

/// Identifier and name of every object under the given one, those below each of them in brackets.
std::string Outline(const CAEObject& object) {
    std::string outline;
    for (const CAEObject* child : ChildrenOf(object)) {
        const std::string below = Outline(*child);
        outline += (outline.empty() ? "" : " ") + std::to_string(child->getID()) + ":" + NameOf(*child) +
                   (below.empty() ? "" : "(" + below + ")");
    }
    return outline;
}

}  // namespace

TEST(ImportChildren, EveryReadNameCreatesItsKind) {
    const std::pair<const char*, _tagCAEObjectType> kinds[] = {
        {"CAEPART", CAE_PART},
        {"CAESUBASSEMBLY", CAE_SUBASSEMBLY},
        {"CAEFILE", CAE_FILE},
        {"CAEPROJECT", CAE_PROJECT},
        {"CAEPROGRAM", CAE_PROJECT},
        {"CAEMODEL", CAE_MODEL},
        {"CAEITERATION", CAE_ITERATION},
        {"CAEITERATIONFOLDER", CAE_ITERATION_FOLDER},
        {"CAEITERATIONMODEL", CAE_ITERATION_MODEL},
        {"CAEASSEMBLYFOLDER", CAE_ASSEMBLY_FOLDER},
        {"CAELOADCASEVIEWFOLDER", CAE_LOADCASE_VIEW_FOLDER},
        {"CAELOADCASEVIEW", CAE_LOADCASE_VIEW},
        {"CAEVIEWITEM", CAE_VIEW_ITEM},
        {"CAETAG", CAE_TAG}};
    for (const auto& [name, kind] : kinds) {
        TestProject project;
        ImportChildrenText(std::string(R"([{"type":")") + name + R"("}])", *project);
        const auto children = ChildrenOf(*project);
        ASSERT_EQ(children.size(), 1U) << name;
        EXPECT_EQ(children[0]->getType(), kind) << name;
        EXPECT_EQ(children[0]->getID(), 2) << name;
        EXPECT_EQ(project->getCAEObject(2), children[0]) << name;
    }
}

TEST(ImportChildren, ElementsWithoutATypeAreSkippedWithAllUnderThem) {
    TestProject project;
    ImportChildrenText(R"([{"type":"CAETAG","name":"first"},)"
                       R"({"name":"x","children":[{"type":"CAETAG","name":"below"}],"files":[{"name":"f"}]},)"
                       R"({"type":"","name":"y","children":[{"type":"CAETAG","name":"below"}]},)"
                       R"({"type":{"type":"CAETAG"}},{"Type":"CAETAG"},)"
                       R"("CAETAG",17,true,null,["CAETAG"],[{"type":"CAETAG"}],{},)"
                       R"({"type":"CAETAG","name":"last"}])",
                       *project);
    EXPECT_EQ(Outline(*project), "2:first 3:last");
    EXPECT_TRUE(korvane::GetProjectFiles(*project).empty());
}

TEST(ImportChildren, ElementsOfAKindThatCannotBeCreatedAreSkippedWithAllUnderThem) {
    TestProject project;
    ImportChildrenText(R"([{"type":"CAESOMETHING","name":"x","children":[{"type":"CAETAG"}]},)"
                       R"({"type":"caetag"},{"type":"CAETAG "},{"type":"TAG"},{"type":"SIMULATION"},)"
                       R"({"type":41},{"type":true},{"type":null},{"type":"CAETAG","name":"last"}])",
                       *project);
    EXPECT_EQ(Outline(*project), "2:last");
}

TEST(ImportChildren, CreationThatFailsSkipsTheElement) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"model");
    // The project knows no object by the identifier that the parent gives.
    model.setID(4711);
    ImportChildrenText(R"([{"type":"CAETAG","children":[{"type":"CAETAG"}],"files":[{}]},{"type":"CAETAG"}])",
                       model);
    EXPECT_TRUE(ChildrenOf(model).empty());
    EXPECT_TRUE(korvane::GetProjectFiles(*project).empty());
}

TEST(ImportChildren, IdentifiersOfTheDocumentAreNotUsed) {
    TestProject project;
    project.Add(CAE_PART, L"frame");
    ImportChildrenText(R"([{"id":"2","type":"CAETAG","name":"a"},{"id":"77","type":"CAETAG","name":"b"},)"
                       R"({"type":"CAETAG","id":3,"name":"c"}])",
                       *project);
    EXPECT_EQ(Outline(*project), "2:frame 3:a 4:b 5:c");
    EXPECT_EQ(project->getCAEObject(77), nullptr);
}

TEST(ImportChildren, WholeSubtreeIsImportedBeforeTheNextSiblingIsCreated) {
    TestProject project;
    ImportChildrenText(
        R"([{"type":"CAEMODEL","name":"a","children":[{"type":"CAEPART","name":"b","children":[{"type":)"
        R"("CAETAG","name":"c"}]},{"type":"CAEPART","name":"d"}]},{"type":"CAEMODEL","name":"e","children":)"
        R"([{"type":"CAETAG","name":"f"}]}])",
        *project);
    EXPECT_EQ(Outline(*project), "2:a(3:b(4:c) 5:d) 6:e(7:f)");
}

TEST(ImportChildren, FilesTakeTheirIdentifiersWhereTheyStand) {
    TestProject project;
    ImportChildrenText(R"([{"type":"CAEMODEL","files":[{"name":"x"}],"children":[{"type":"CAEPART",)"
                       R"("children":[],"files":[{"name":"y"}]}]},{"type":"CAETAG"}])",
                       *project);
    EXPECT_EQ(Outline(*project), "2:(4:) 6:");
    EXPECT_EQ(FileIdsOf(*project->getCAEObject(2)), (std::vector<int>{3}));
    EXPECT_EQ(FileIdsOf(*project->getCAEObject(4)), (std::vector<int>{5}));
}

TEST(ImportChildren, ObjectIsTheArrayOfItsMembersWithoutTheirNames) {
    TestProject project;
    ImportChildrenText(R"({"type":{"type":"CAETAG","name":"a"},"x":{"type":"CAETAG"},"":"text",)"
                       R"("name":{"type":"CAETAG","name":"c"}})",
                       *project);
    EXPECT_EQ(Outline(*project), "2:a 3: 4:c");
}

TEST(ImportChildren, AnyOtherValueImportsNothing) {
    for (const char* value : {R"("CAETAG")", "1", "true", "null", "[]", "{}", R"("")"}) {
        TestProject project;
        ImportChildrenText(value, *project);
        EXPECT_TRUE(ChildrenOf(*project).empty()) << value;
    }
}

TEST(ImportChildren, NewOnesHangBehindThoseThatAreThere) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"model");
    project.Add(model, CAE_PART, L"old");
    ImportChildrenText(R"([{"type":"CAEPART","name":"old"},{"type":"CAEPART","name":"new"}])", model);
    EXPECT_EQ(Outline(*project), "2:model(3:old 4:old 5:new)");
}

TEST(ImportChildren, MembersOfTheElementAreImportedOntoTheChild) {
    TestProject project;
    korvane::SetCreation(*project, L"now", L"me");
    ImportChildrenText(R"([{"id":"9","name":"a","createdDate":"then","createdBy":"you","type":"CAEPART",)"
                       R"("dbkey":"K","metaData":{"Mass":{"value":"3","metaDataType":"kg"}}},)"
                       R"({"type":"CAEPART"}])",
                       *project);
    const auto children = ChildrenOf(*project);
    ASSERT_EQ(children.size(), 2U);
    EXPECT_EQ(NameOf(*children[0]), "a");
    EXPECT_EQ(CreatedDateOf(*children[0]), "then");
    EXPECT_EQ(CreatedUserNameOf(*children[0]), "me");
    EXPECT_EQ(TextOf(children[0]->getDBKey()), "K");
    EXPECT_EQ(MetadataValueOf(*children[0], L"Mass"), "3");
    EXPECT_EQ(CreatedDateOf(*children[1]), "now");
    EXPECT_EQ(NameOf(*children[1]), "");
    EXPECT_EQ(TextOf(children[1]->getDBKey()), "");
}

TEST(ImportChildren, ProjectTakesItsTypeAsAdditionalTypeAndOwnsWhatIsUnderIt) {
    TestProject project;
    ImportChildrenText(R"([{"type":"CAEPROGRAM","name":"shown","displayName":"called","children":)"
                       R"([{"type":"CAEMODEL","name":"m","children":[{"type":"CAETAG","name":"t"}]}]}])",
                       *project);
    EXPECT_EQ(Outline(*project), "2:called(3:m(4:t))");
    auto* nested = dynamic_cast<CAEProject*>(project->getCAEObject(2));
    ASSERT_NE(nested, nullptr);
    EXPECT_EQ(TextOf(nested->getAdditionalType()), "CAEPROGRAM");
    EXPECT_EQ(TextOf(korvane::GetDisplayName(*nested)), "shown");
    EXPECT_EQ(project->getCAEObject(3)->getProject(), nested);
    EXPECT_EQ(project->getCAEObject(4)->getProject(), nested);
    EXPECT_EQ(TextOf(project->getAdditionalType()), "X");
}

TEST(ImportChildren, FileTakesChildrenLikeAnyObjectOnceItHasAProject) {
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"a", CAE_FILE_DECK);
    ImportChildrenText(R"([{"type":"CAETAG","name":"t"}])", file);
    ASSERT_EQ(ChildrenOf(file).size(), 1U);
    EXPECT_EQ(ChildrenOf(file)[0]->getID(), 3);
}

TEST(ImportChildren, AloneCreatesTheElementsBelowTheConvertersObject) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"model");
    CAEObjectJson converter(libjson::parse("{}"), &model);
    converter.ImportChildren(
        libjson::parse(R"([{"type":"CAEPART","name":"a","children":[{"type":"CAETAG","name":"b"}]},)"
                       R"({"type":"CAETAG","name":"c"}])"));
    EXPECT_EQ(Outline(*project), "2:model(3:a(4:b) 5:c)");
}

TEST(ImportChildren, WithoutProjectNothingIsCreated) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"model");
    const JSONNode children = libjson::parse(R"([{"type":"CAETAG"}])");
    // A converter for export has no project.
    CAEObjectJson(&model).ImportChildren(children);
    EXPECT_TRUE(ChildrenOf(model).empty());
    ASSERT_EQ(Detach(*project, model), 0);
    CAEObjectJson(libjson::parse("{}"), &model).ImportChildren(children);
    EXPECT_TRUE(ChildrenOf(model).empty());
}
