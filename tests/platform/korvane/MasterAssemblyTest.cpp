#include <gtest/gtest.h>

#include "Ask.h"
#include "support/ModelBuilders.h"

namespace {

/// The identifier that is found for the key; 0 when there is none.
int MasterOf(CAEProject& project, const OuString& key) {
    int id = 0;
    const int status = getMasterAssemblyCAEIDByITEMID(&project, key, id);
    EXPECT_EQ(status == 0, id != 0);
    return id;
}

TEST(MasterAssembly, IsTheAssemblyWithTheKey) {
    TestProject project;
    project.Add(CAE_PART, L"Part").setDBKey(L"K");
    project.Add(CAE_MODEL, L"Model").setDBKey(L"K");
    CAEObject& assembly = project.Add(CAE_SUBASSEMBLY, L"Assembly");
    CAEObject& run = project.Add(CAE_ITERATION_MODEL, L"Run");
    EXPECT_EQ(MasterOf(*project, L"K"), 0);
    run.setDBKey(L"R");
    assembly.setDBKey(L"K");
    EXPECT_EQ(MasterOf(*project, L"K"), assembly.getID());
    EXPECT_EQ(MasterOf(*project, L"R"), run.getID());
    EXPECT_EQ(MasterOf(*project, L"k"), 0);
}

TEST(MasterAssembly, IsTheOneWithTheLeastIdentifier) {
    TestProject project;
    CAEObject& first = project.Add(CAE_ITERATION_MODEL, L"First");
    CAEObject& second = project.Add(CAE_SUBASSEMBLY, L"Second");
    second.setDBKey(L"K");
    EXPECT_EQ(MasterOf(*project, L"K"), second.getID());
    first.setDBKey(L"K");
    EXPECT_EQ(MasterOf(*project, L"K"), first.getID());
    first.setDBKey(L"Other");
    EXPECT_EQ(MasterOf(*project, L"K"), second.getID());
    EXPECT_EQ(MasterOf(*project, L"Other"), first.getID());
    first.setDBKey(L"");
    EXPECT_EQ(MasterOf(*project, L"Other"), 0);
}

TEST(MasterAssembly, IsNotFoundByAnEmptyKeyOrALinkKey) {
    TestProject project;
    CAEObject& assembly = project.Add(CAE_SUBASSEMBLY, L"Assembly");
    assembly.setLinkDBKey(L"K");
    EXPECT_EQ(MasterOf(*project, L""), 0);
    EXPECT_EQ(MasterOf(*project, L"K"), 0);
}

TEST(MasterAssembly, LeavesTheIdentifierAloneWhereThereIsNone) {
    TestProject project;
    int id = 33;
    EXPECT_NE(getMasterAssemblyCAEIDByITEMID(&*project, L"K", id), 0);
    EXPECT_NE(getMasterAssemblyCAEIDByITEMID(nullptr, L"K", id), 0);
    EXPECT_EQ(id, 33);
}

TEST(MasterAssembly, FollowsWhatHangsInTheTree) {
    TestProject project;
    auto& inner = dynamic_cast<CAEProject&>(project.Add(CAE_PROJECT, L"Inner"));
    CAEObject& assembly = project.Add(inner, CAE_SUBASSEMBLY, L"Assembly");
    assembly.setDBKey(L"K");
    EXPECT_EQ(MasterOf(*project, L"K"), assembly.getID());
    EXPECT_EQ(MasterOf(inner, L"K"), assembly.getID());
    Detach(*project, inner);
    EXPECT_EQ(MasterOf(*project, L"K"), 0);
    assembly.setDBKey(L"L");
    project->addChild(&inner);
    EXPECT_EQ(MasterOf(*project, L"K"), 0);
    EXPECT_EQ(MasterOf(*project, L"L"), assembly.getID());
    Detach(*project, inner, true);
    EXPECT_EQ(MasterOf(*project, L"L"), 0);
}

TEST(MasterAssembly, IsFoundUnderTheIdentifierThatTheProjectKnows) {
    TestProject project;
    CAEObject& assembly = project.Add(CAE_SUBASSEMBLY, L"Assembly");
    assembly.setDBKey(L"K");
    assembly.setID(99);
    EXPECT_EQ(MasterOf(*project, L"K"), 2);
    korvane::Renumber(assembly, 40);
    EXPECT_EQ(MasterOf(*project, L"K"), 40);
}

}  // namespace
