#include <gtest/gtest.h>

#include "ConverterSupport.h"
#include "objectjson/ExportMode.h"
#include "support/ModelBuilders.h"
#include "support/ObjectText.h"

namespace {

/// Puts the module's export mode back to what it is after loading.
class Children : public testing::Test {
protected:
    ~Children() override { ModuleExportMode() = OuString(); }
};

std::string ChildrenText(CAEObject& object) {
    return TextOfSection(CAEObjectJson(&object).ExportChildren());
}

/// The names in a children section, level by level: "a(b,c(d))".
std::string Names(const JSONNode& array) {
    std::string names;
    for (const JSONNode& node : array) {
        names += (names.empty() ? "" : ",") + MemberText(node, "name");
        if (const auto below = node.find("children"); !below->empty()) {
            names += "(" + Names(*below) + ")";
        }
    }
    return names;
}

std::string ChildrenNames(CAEObject& object) {
    const JSONNode array = CAEObjectJson(&object).ExportChildren();
    return Names(array);
}

/// A file object that is one of the children.
CAEFile& AddFileChild(TestProject& project, CAEObject& parent, const wchar_t* name) {
    auto& file = dynamic_cast<CAEFile&>(project.Add(parent, CAE_FILE, name));
    file.setFullPathName(name);
    return file;
}

}  // namespace

TEST_F(Children, ObjectWithoutChildrenHasAnEmptyArray) {
    TestProject project;
    EXPECT_EQ(ChildrenText(*project), R"({"children":[]})");
}

TEST_F(Children, StandInTheOrderOfTheObjectModelWithTheirSubtrees) {
    TestProject project;
    CAEObject& zebra = project.Add(CAE_MODEL, L"zebra");
    project.Add(CAE_MODEL, L"ape");
    project.Add(zebra, CAE_PART, L"z2");
    project.Add(zebra, CAE_PART, L"z1");
    EXPECT_EQ(
        ChildrenText(*project),
        R"({"children":[)" +
            ObjectNodeText({.id = "2",
                            .name = "zebra",
                            .type = "CAEMODEL",
                            .children = ObjectNodeText({.id = "4", .name = "z2", .type = "CAEPART"}) + "," +
                                        ObjectNodeText({.id = "5", .name = "z1", .type = "CAEPART"})}) +
            "," + ObjectNodeText({.id = "3", .name = "ape", .type = "CAEMODEL"}) + "]}");
}

TEST_F(Children, FiveLevelsAreFiveNestedArrays) {
    TestProject project;
    CAEObject* object = &*project;
    std::string expected;
    for (const wchar_t* name : {L"a", L"b", L"c", L"d", L"e"}) {
        object = &project.Add(*object, CAE_ASSEMBLY_FOLDER, name);
    }
    EXPECT_EQ(ChildrenNames(*project), "a(b(c(d(e))))");
    std::string text;
    for (int id = 6; id >= 2; --id) {
        text = ObjectNodeText({.id = std::to_string(id),
                               .name = std::string(1, static_cast<char>('a' + id - 2)),
                               .type = "CAEASSEMBLYFOLDER",
                               .children = text});
    }
    EXPECT_EQ(ChildrenText(*project), R"({"children":[)" + text + "]}");
}

TEST_F(Children, ModeProjectLetsOnlyFilesThroughAtEveryLevel) {
    TestProject project;
    CAEObject& study = project.Add(CAE_MODEL, L"study 1");
    project.Add(CAE_MODEL, L"study 2");
    AddFileChild(project, study, L"hidden.txt");
    CAEFile& notes = AddFileChild(project, *project, L"notes.txt");
    AddFileChild(project, notes, L"below.txt");
    project.Add(notes, CAE_PART, L"not shown");
    ModuleExportMode() = L"PROJECT";
    EXPECT_EQ(ChildrenNames(*project), "notes.txt(below.txt)");
}

TEST_F(Children, ModeStudyLeavesOutIterationModelsWithTheirDescendants) {
    TestProject project;
    CAEObject& iteration = project.Add(CAE_ITERATION, L"run");
    project.Add(iteration, CAE_PART, L"before");
    CAEObject& model = project.Add(iteration, CAE_ITERATION_MODEL, L"model of the run");
    project.Add(model, CAE_PART, L"below the model");
    project.Add(iteration, CAE_TAG, L"between");
    project.Add(iteration, CAE_ITERATION_MODEL, L"second model");
    project.Add(iteration, CAE_PART, L"behind");
    ModuleExportMode() = L"STUDY";
    EXPECT_EQ(ChildrenNames(*project), "run(before,between,behind)");
}

TEST_F(Children, EveryOtherModeLetsAllThrough) {
    TestProject project;
    project.Add(CAE_ITERATION_MODEL, L"model of a run");
    project.Add(CAE_MODEL, L"study");
    AddFileChild(project, *project, L"notes.txt");
    for (const wchar_t* mode :
         {L"", L"study", L"Project", L"STUDY ", L" PROJECT", L"PROJECTS", L"ANYTHING"}) {
        ModuleExportMode() = mode;
        EXPECT_EQ(ChildrenNames(*project), "model of a run,study,notes.txt");
    }
}

TEST_F(Children, Kind26IsNeverExportedInAnyMode) {
    TestProject project;
    CAEObject& session = project.Add(CAE_SESSION_OBJECT, L"session");
    ASSERT_EQ(session.getType(), 26);
    AddFileChild(project, session, L"below.txt");
    project.Add(CAE_PART, L"part");
    AddFileChild(project, *project, L"notes.txt");
    EXPECT_EQ(ChildrenNames(*project), "part,notes.txt");
    ModuleExportMode() = L"STUDY";
    EXPECT_EQ(ChildrenNames(*project), "part,notes.txt");
    ModuleExportMode() = L"PROJECT";
    EXPECT_EQ(ChildrenNames(*project), "notes.txt");
}

TEST_F(Children, Kind26IsExportedAsARoot) {
    TestProject project;
    EXPECT_EQ(MemberText(CAEObjectJson(&project.Add(CAE_SESSION_OBJECT, L"session")).GetJsonNode(), "name"),
              "session");
}

TEST_F(Children, FileAmongTheChildrenIsAnObjectNodeAndNoRecord) {
    TestProject project;
    CAEFile& notes = AddFileChild(project, *project, L"notes.txt");
    project.AddFile(notes, L"appendix.txt", CAE_FILE_REPORT);
    AddFileChild(project, notes, L"below.txt");
    EXPECT_EQ(
        ChildrenText(*project),
        R"({"children":[)" +
            ObjectNodeText({.id = "2",
                            .name = "notes.txt",
                            .type = "CAEFILE",
                            .children = ObjectNodeText({.id = "4", .name = "below.txt", .type = "CAEFILE"}),
                            .files = ObjectNodeText({.id = "3",
                                                     .name = "appendix.txt",
                                                     .type = "CAEFILE",
                                                     .tail = RecordTail("Report", "ASCII")})}) +
            "]}");
}

TEST_F(Children, PredicateFollowsTheMode) {
    TestProject project;
    CAEObject& model = project.Add(CAE_ITERATION_MODEL, L"m");
    CAEObject& part = project.Add(CAE_PART, L"p");
    CAEObject& session = project.Add(CAE_SESSION_OBJECT, L"s");
    CAEFile& file = AddFileChild(project, *project, L"f");
    const CAEObjectJson converter(&*project);
    EXPECT_TRUE(converter.IsChildExported(&model));
    EXPECT_TRUE(converter.IsChildExported(&part));
    EXPECT_TRUE(converter.IsChildExported(&session));
    EXPECT_TRUE(converter.IsChildExported(nullptr));
    ModuleExportMode() = L"STUDY";
    EXPECT_FALSE(converter.IsChildExported(&model));
    EXPECT_TRUE(converter.IsChildExported(&part));
    EXPECT_TRUE(converter.IsChildExported(&session));
    EXPECT_TRUE(converter.IsChildExported(nullptr));
    ModuleExportMode() = L"PROJECT";
    EXPECT_FALSE(converter.IsChildExported(&model));
    EXPECT_FALSE(converter.IsChildExported(&part));
    EXPECT_FALSE(converter.IsChildExported(&session));
    EXPECT_TRUE(converter.IsChildExported(&file));
    EXPECT_FALSE(converter.IsChildExported(nullptr));
}
