#include <gtest/gtest.h>
#include <korvanejson/JsonSerializer.h>

#include <memory>
#include <string>
#include <type_traits>

#include "support/Documents.h"
#include "support/ModelBuilders.h"
#include "support/ObjectText.h"

namespace {

std::string Text(JsonSerializer& serializer) {
    return serializer.GetJsonString().GetAnsiBuffer();
}

std::string Document(CAEObject& object) {
    JsonSerializer serializer(&object);
    std::string text = Text(serializer);
    SaveDocument(text);
    return text;
}

std::string TextOf(const JSONNode& node) {
    return node.write().c_str();
}

/// A project with a study whose one iteration has an iteration model.
struct Study {
    TestProject project;
    CAEObject& study = project.Add(CAE_MODEL, L"bracket");
    CAEObject& folder = project.Add(study, CAE_ITERATION_FOLDER, L"Iterations");
    CAEObject& iteration = project.Add(folder, CAE_ITERATION, L"run");
    CAEObject& model = project.Add(iteration, CAE_ITERATION_MODEL, L"model");

    std::string Expected(bool withModel) const {
        const std::string modelText =
            ObjectNodeText({.id = "5", .name = "model", .type = "CAEITERATIONMODEL"});
        const std::string iterationText = ObjectNodeText({.id = "4",
                                                          .name = "run",
                                                          .type = "CAEITERATION",
                                                          .studyTypeName = "bracket",
                                                          .children = withModel ? modelText : ""});
        return ObjectNodeText(
            {.id = "2",
             .name = "bracket",
             .type = "CAEMODEL",
             .children = ObjectNodeText(
                 {.id = "3", .name = "Iterations", .type = "CAEITERATIONFOLDER", .children = iterationText}),
             .tail = kRootTail});
    }
};

}  // namespace

TEST(JsonSerializer, DocumentOfNoObjectHoldsNothingButTheSubType) {
    JsonSerializer serializer(nullptr);
    const JSONNode node = serializer.GetJson();
    EXPECT_EQ(node.type(), JSON_NODE);
    ASSERT_EQ(node.size(), 1U);
    EXPECT_EQ(node.begin()->type(), JSON_STRING);
    EXPECT_EQ(TextOf(node), R"({"subType":"SDM"})");
    EXPECT_EQ(Text(serializer), R"({"subType":"SDM"})");
}

TEST(JsonSerializer, SubTypeStandsLastInTheRootAndNowhereElse) {
    Study study;
    EXPECT_EQ(Document(study.study), study.Expected(true));
}

TEST(JsonSerializer, FileAsRootIsAnObjectNodeAndNoRecord) {
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"mesh.dat", CAE_FILE_MESH);
    EXPECT_EQ(Document(file),
              ObjectNodeText({.id = "2", .name = "mesh.dat", .type = "CAEFILE", .tail = kRootTail}));
}

TEST(JsonSerializer, ModeNarrowsTheDocument) {
    Study study;
    JsonSerializer serializer(&study.study);
    serializer.SetExportMode(L"STUDY");
    EXPECT_EQ(Text(serializer), study.Expected(false));
    serializer.SetExportMode(L"");
    EXPECT_EQ(Text(serializer), study.Expected(true));
}

TEST(JsonSerializer, ModeThatDiffersInLetterCaseIsAnotherMode) {
    Study study;
    JsonSerializer serializer(&study.study);
    serializer.SetExportMode(L"STUDY");
    EXPECT_EQ(Text(serializer), study.Expected(false));
    serializer.SetExportMode(L"study");
    EXPECT_EQ(Text(serializer), study.Expected(true));
}

TEST(JsonSerializer, ModeTakesEffectWithTheNextDocument) {
    Study study;
    JsonSerializer serializer(&study.study);
    const JSONNode before = serializer.GetJson();
    serializer.SetExportMode(L"STUDY");
    EXPECT_EQ(TextOf(before), study.Expected(true));
    EXPECT_EQ(TextOf(serializer.GetJson()), study.Expected(false));
}

TEST(JsonSerializer, CopyKeepsTheModeItWasCopiedWith) {
    Study study;
    JsonSerializer original(&study.study);
    original.SetExportMode(L"STUDY");
    JsonSerializer copy(original);
    EXPECT_EQ(Text(copy), study.Expected(false));
    copy.SetExportMode(L"");
    EXPECT_EQ(Text(copy), study.Expected(true));
    EXPECT_EQ(Text(original), study.Expected(false));
}

TEST(JsonSerializer, AssignmentTakesObjectAndMode) {
    Study study;
    JsonSerializer original(&study.study);
    original.SetExportMode(L"STUDY");
    JsonSerializer assigned(nullptr);
    JsonSerializer& result = (assigned = original);
    EXPECT_EQ(&result, &assigned);
    original.SetExportMode(L"");
    EXPECT_EQ(Text(assigned), study.Expected(false));
    JsonSerializer& self = assigned;
    assigned = self;
    EXPECT_EQ(Text(assigned), study.Expected(false));
}

TEST(JsonSerializer, SerializersWithOtherModesDoNotDisturbEachOther) {
    Study study;
    JsonSerializer narrowed(&study.study);
    narrowed.SetExportMode(L"STUDY");
    JsonSerializer whole(&study.study);
    for (int turn = 0; turn < 3; ++turn) {
        EXPECT_EQ(Text(narrowed), study.Expected(false));
        EXPECT_EQ(Text(whole), study.Expected(true));
    }
}

TEST(JsonSerializer, EveryCallBuildsTheDocumentAnew) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    JsonSerializer serializer(&part);
    JSONNode first = serializer.GetJson();
    first.push_back(JSONNode("own", "member"));
    part.setName(L"door");
    EXPECT_EQ(Text(serializer),
              ObjectNodeText({.id = "2", .name = "door", .type = "CAEPART", .tail = kRootTail}));
    EXPECT_EQ(
        TextOf(first),
        ObjectNodeText(
            {.id = "2", .name = "frame", .type = "CAEPART", .tail = R"(,"subType":"SDM","own":"member")"}));
}

TEST(JsonSerializer, DocumentOutlivesTheProject) {
    JSONNode node;
    {
        TestProject project;
        node = JsonSerializer(&project.Add(CAE_PART, L"frame")).GetJson();
    }
    EXPECT_EQ(TextOf(node),
              ObjectNodeText({.id = "2", .name = "frame", .type = "CAEPART", .tail = kRootTail}));
}

TEST(JsonSerializer, LongDocumentIsWrittenWhole) {
    TestProject project;
    CAEObject& folder = project.Add(CAE_ASSEMBLY_FOLDER, L"all");
    std::string children;
    for (int part = 0; part < 1000; ++part) {
        const std::string name = "part " + std::to_string(part);
        project.Add(folder, CAE_PART, OuString(name.c_str(), 0));
        children += (part == 0 ? "" : ",") +
                    ObjectNodeText({.id = std::to_string(part + 3), .name = name, .type = "CAEPART"});
    }
    EXPECT_EQ(Document(folder), ObjectNodeText({.id = "2",
                                                .name = "all",
                                                .type = "CAEASSEMBLYFOLDER",
                                                .children = children,
                                                .tail = kRootTail}));
}

TEST(JsonSerializer, IsDestroyedThroughItsBase) {
    static_assert(std::has_virtual_destructor_v<JsonSerializer>);
    static_assert(std::is_polymorphic_v<JsonSerializer>);
    struct Derived : JsonSerializer {
        explicit Derived(bool& gone) : JsonSerializer(nullptr), gone_(gone) {}
        ~Derived() override { gone_ = true; }
        bool& gone_;
    };
    bool gone = false;
    std::unique_ptr<JsonSerializer> serializer = std::make_unique<Derived>(gone);
    serializer.reset();
    EXPECT_TRUE(gone);
}
