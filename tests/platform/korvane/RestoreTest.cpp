#include <EmbeddedRestore.h>
#include <gtest/gtest.h>

#include <limits>

#include "Ask.h"
#include "support/ModelBuilders.h"

namespace {

TEST(RestoreObject, TakesTheIdentifierAndNoneFromTheSequence) {
    TestProject project;
    CAEObject* const part = korvane::RestoreObject(*project, CAE_PART, L"Door", 40);
    ASSERT_NE(part, nullptr);
    EXPECT_EQ(NameOf(*part), "Door");
    EXPECT_EQ(part->getParent(), &*project);
    EXPECT_EQ(project->getCAEObject(40), part);
    EXPECT_NE(dynamic_cast<CAEPart*>(part), nullptr);
    EXPECT_EQ(project.Add(CAE_TAG, L"").getID(), 2);
}

TEST(RestoreObject, FailsForIdentifiersThatAreTakenOrNotPositiveAndForKindsThatAreNone) {
    TestProject project;
    EXPECT_EQ(korvane::RestoreObject(*project, CAE_PART, L"", 1), nullptr);
    EXPECT_EQ(korvane::RestoreObject(*project, CAE_PART, L"", 0), nullptr);
    EXPECT_EQ(korvane::RestoreObject(*project, CAE_PART, L"", -4), nullptr);
    EXPECT_EQ(korvane::RestoreObject(*project, CAE_UNKNOWN_OBJECT, L"", 2), nullptr);
    EXPECT_TRUE(ChildrenOf(*project).empty());
    EXPECT_EQ(project.Add(CAE_TAG, L"").getID(), 2);
}

TEST(RestoreObject, MakesProjectsInProjects) {
    TestProject project;
    auto* const inner = dynamic_cast<CAEProject*>(korvane::RestoreObject(*project, CAE_PROJECT, L"Inner", 7));
    ASSERT_NE(inner, nullptr);
    EXPECT_EQ(DirectoryOf(*inner), "/studies");
    EXPECT_EQ(korvane::RestoreObject(*inner, CAE_PART, L"", 9)->getProject(), inner);
}

TEST(RestoreFile, BelongsToTheProjectAsAnAddedFileDoes) {
    TestProject project;
    CAEFile* const file = korvane::RestoreFile(*project, L"a.dat", 5);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(NameOf(*file), "a.dat");
    EXPECT_EQ(project->getFile(5), file);
    EXPECT_EQ(file->getProject(), &*project);
    EXPECT_EQ(file->getParent(), nullptr);
    EXPECT_EQ(korvane::GetProjectFiles(*project), std::vector<CAEFile*>{file});
    EXPECT_EQ(korvane::RestoreFile(*project, L"", 5), nullptr);
    EXPECT_EQ(korvane::RestoreFile(*project, L"", 0), nullptr);
}

TEST(SetFileRoles, GivesBackWhatGetFileRolesGave) {
    TestProject project;
    auto& part = dynamic_cast<CAEPart&>(project.Add(CAE_PART, L"Door"));
    // 10 has lost its role to 12, 11 is a mesh and a custom file, 13 the active mesh.
    part.setCADFile(10);
    part.attachNewMeshOrMeshingRequest(11);
    part.attachCustomFile(11, nullptr);
    part.setCADFile(12);
    part.attachNewMeshOrMeshingRequest(13);
    part.setActiveMesh(13);
    part.setGraphicFile(14);
    const korvane::FileRoles roles = korvane::GetFileRoles(part);
    EXPECT_EQ(roles.files, (std::vector<int>{10, 11, 12, 13, 14}));

    auto& other = dynamic_cast<CAEPart&>(project.Add(CAE_PART, L"Other"));
    other.setCADFile(99);
    korvane::SetFileRoles(other, roles);
    const korvane::FileRoles restored = korvane::GetFileRoles(other);
    EXPECT_EQ(restored.files, roles.files);
    EXPECT_EQ(restored.cadFile, 12);
    EXPECT_EQ(restored.graphicFile, 14);
    EXPECT_EQ(restored.activeMesh, 13);
    EXPECT_EQ(restored.feRepresentation, 0);
    EXPECT_EQ(restored.meshes, (std::vector<int>{11, 13}));
    EXPECT_EQ(restored.customFiles, std::vector<int>{11});
    EXPECT_EQ(FileIdsOf(other), (std::vector<int>{10, 11, 12, 13, 14}));
}

TEST(SetFileRoles, LeavesOutWhatIsNotAmongTheFiles) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Door");
    korvane::FileRoles roles;
    roles.files = {10, -1, 0};
    roles.cadFile = 11;
    roles.activeMesh = 10;
    roles.meshes = {12};
    roles.customFiles = {10, 13};
    korvane::SetFileRoles(part, roles);
    const korvane::FileRoles restored = korvane::GetFileRoles(part);
    EXPECT_EQ(restored.files, std::vector<int>{10});
    EXPECT_EQ(restored.cadFile, 0);
    EXPECT_EQ(restored.activeMesh, 0);
    EXPECT_TRUE(restored.meshes.empty());
    EXPECT_EQ(restored.customFiles, std::vector<int>{10});
}

TEST(SetNextIdentifier, LetsTheSequenceGoOnAndNeverBack) {
    TestProject project;
    EXPECT_EQ(korvane::GetNextIdentifier(*project), 2);
    korvane::SetNextIdentifier(*project, 30);
    EXPECT_EQ(korvane::GetNextIdentifier(*project), 30);
    EXPECT_EQ(project.Add(CAE_PART, L"").getID(), 30);
    korvane::SetNextIdentifier(*project, 5);
    EXPECT_EQ(project.Add(CAE_PART, L"").getID(), 31);
}

TEST(SetNextIdentifier, PassesOverIdentifiersThatAreTaken) {
    TestProject project;
    korvane::RestoreObject(*project, CAE_PART, L"", 10);
    korvane::RestoreObject(*project, CAE_PART, L"", 12);
    korvane::SetNextIdentifier(*project, 11);
    EXPECT_EQ(project.Add(CAE_PART, L"").getID(), 11);
    EXPECT_EQ(project.Add(CAE_PART, L"").getID(), 13);
    // An identifier below the next one of the sequence is free again, but not given out.
    EXPECT_NE(korvane::RestoreObject(*project, CAE_PART, L"", 3), nullptr);
    EXPECT_EQ(project.Add(CAE_PART, L"").getID(), 14);
    korvane::SetNextIdentifier(*project, std::numeric_limits<int>::max());
    EXPECT_EQ(korvane::CreateObject(*project, CAE_PART, L""), nullptr);
}

}  // namespace
