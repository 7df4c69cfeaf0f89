#include <gtest/gtest.h>

#include "Ask.h"
#include "support/ModelBuilders.h"

namespace {

template <typename Owner>
int AttachMesh(Owner& owner, int fileId) {
    if constexpr (std::is_same_v<Owner, CAEPart>) {
        return owner.attachNewMeshOrMeshingRequest(fileId);
    } else {
        return owner.attachNewRepresentationOrMeshingReq(fileId);
    }
}

/// Parts and sub-assemblies have the same roles.
template <typename Owner>
class FileRolesOf : public testing::Test {
protected:
    TestProject project_;
    Owner& owner_ = dynamic_cast<Owner&>(
        project_.Add(std::is_same_v<Owner, CAEPart> ? CAE_PART : CAE_SUBASSEMBLY, L"Owner"));
};

using Owners = testing::Types<CAEPart, CAESubAssembly>;
TYPED_TEST_SUITE(FileRolesOf, Owners);

TYPED_TEST(FileRolesOf, AreKeptApart) {
    TypeParam& owner = this->owner_;
    EXPECT_EQ(owner.setCADFile(11), 0);
    EXPECT_EQ(owner.setGraphicFile(12), 0);
    EXPECT_EQ(AttachMesh(owner, 13), 0);
    EXPECT_EQ(owner.setActiveMesh(13), 0);
    EXPECT_EQ(owner.attachCustomFile(14, nullptr), 0);
    const korvane::FileRoles roles = korvane::GetFileRoles(owner);
    EXPECT_EQ(roles.cadFile, 11);
    EXPECT_EQ(roles.graphicFile, 12);
    EXPECT_EQ(roles.activeMesh, 13);
    EXPECT_EQ(roles.feRepresentation, 0);
    EXPECT_EQ(roles.meshes, std::vector<int>{13});
    EXPECT_EQ(roles.customFiles, std::vector<int>{14});
    EXPECT_EQ(FileIdsOf(owner), (std::vector<int>{11, 12, 13, 14}));
}

TYPED_TEST(FileRolesOf, ReplacedByALaterOneStayInTheList) {
    TypeParam& owner = this->owner_;
    owner.setCADFile(11);
    owner.setGraphicFile(12);
    owner.setCADFile(13);
    owner.setGraphicFile(14);
    EXPECT_EQ(korvane::GetFileRoles(owner).cadFile, 13);
    EXPECT_EQ(korvane::GetFileRoles(owner).graphicFile, 14);
    EXPECT_EQ(FileIdsOf(owner), (std::vector<int>{11, 12, 13, 14}));
}

TYPED_TEST(FileRolesOf, ListAnIdentifierOnceInTheOrderOfItsFirstAttachment) {
    TypeParam& owner = this->owner_;
    owner.attachCustomFile(15, nullptr);
    AttachMesh(owner, 11);
    owner.setCADFile(15);
    AttachMesh(owner, 15);
    AttachMesh(owner, 11);
    owner.setGraphicFile(11);
    EXPECT_EQ(FileIdsOf(owner), (std::vector<int>{15, 11}));
    EXPECT_EQ(korvane::GetFileRoles(owner).meshes, (std::vector<int>{15, 11}));
    EXPECT_EQ(korvane::GetFileRoles(owner).customFiles, std::vector<int>{15});
}

TYPED_TEST(FileRolesOf, MakeOnlyAMeshTheActiveOne) {
    TypeParam& owner = this->owner_;
    EXPECT_NE(owner.setActiveMesh(11), 0);
    owner.attachCustomFile(11, nullptr);
    owner.setCADFile(12);
    EXPECT_NE(owner.setActiveMesh(11), 0);
    EXPECT_NE(owner.setActiveMesh(12), 0);
    EXPECT_NE(owner.setActiveMesh(0), 0);
    EXPECT_EQ(korvane::GetFileRoles(owner).activeMesh, 0);
    AttachMesh(owner, 13);
    AttachMesh(owner, 14);
    EXPECT_EQ(owner.setActiveMesh(13), 0);
    EXPECT_NE(owner.setActiveMesh(15), 0);
    EXPECT_EQ(korvane::GetFileRoles(owner).activeMesh, 13);
}

TYPED_TEST(FileRolesOf, TakeOnlyPositiveIdentifiersAndLookNoneUp) {
    TypeParam& owner = this->owner_;
    for (const int nonsense : {0, -1}) {
        EXPECT_NE(owner.setCADFile(nonsense), 0);
        EXPECT_NE(owner.setGraphicFile(nonsense), 0);
        EXPECT_NE(AttachMesh(owner, nonsense), 0);
        EXPECT_NE(owner.attachCustomFile(nonsense, nullptr), 0);
    }
    EXPECT_TRUE(FileIdsOf(owner).empty());
    EXPECT_EQ(owner.setCADFile(999999), 0);
    EXPECT_EQ(FileIdsOf(owner), std::vector<int>{999999});
}

TEST(FileRoles, OfARunAssemblyKeepEveryRepresentation) {
    TestProject project;
    auto& run = dynamic_cast<CAERunAssembly&>(project.Add(CAE_ITERATION_MODEL, L"Run"));
    EXPECT_EQ(run.setFERepresentationFile(5), 0);
    EXPECT_EQ(run.setFERepresentationFile(4), 0);
    EXPECT_EQ(run.attachCustomFile(4, nullptr), 0);
    EXPECT_NE(run.setFERepresentationFile(0), 0);
    EXPECT_EQ(FileIdsOf(run), (std::vector<int>{5, 4}));
    EXPECT_EQ(korvane::GetFileRoles(run).feRepresentation, 4);
    EXPECT_EQ(korvane::GetFileRoles(run).customFiles, std::vector<int>{4});
    EXPECT_TRUE(korvane::GetFileRoles(run).meshes.empty());
}

TEST(FileRoles, OfCustomFilesTakeAnyProjectOfTheTree) {
    TestProject project;
    TestProject otherProject;
    CAEObject& model = project.Add(CAE_MODEL, L"Model");
    auto& inner = dynamic_cast<CAEProject&>(project.Add(CAE_PROJECT, L"Inner"));
    EXPECT_EQ(model.attachCustomFile(5, &*project), 0);
    EXPECT_EQ(model.attachCustomFile(6, &inner), 0);
    EXPECT_NE(model.attachCustomFile(7, &*otherProject), 0);
    EXPECT_EQ(FileIdsOf(model), (std::vector<int>{5, 6}));
}

TEST(FileRoles, OfThousandsOfFilesKeepOrderAndUniqueness) {
    TestProject project;
    auto& part = dynamic_cast<CAEPart&>(project.Add(CAE_PART, L"Door"));
    std::vector<int> expected;
    for (int round = 0; round < 2; ++round) {
        for (int id = 3000; id > 0; --id) {
            EXPECT_EQ(
                round == 0 ? part.attachCustomFile(id, nullptr) : part.attachNewMeshOrMeshingRequest(id), 0);
            if (round == 0) {
                expected.push_back(id);
            }
        }
    }
    EXPECT_EQ(FileIdsOf(part), expected);
    EXPECT_EQ(part.setActiveMesh(1), 0);
    EXPECT_NE(part.setActiveMesh(3001), 0);
    EXPECT_EQ(korvane::GetFileRoles(part).meshes, expected);
}

}  // namespace
