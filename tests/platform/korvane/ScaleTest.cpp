#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Ask.h"

namespace {

/// As many of everything as a large project has. If each step searched everything, a test would take billions
/// of steps and exceed its time limit.
constexpr int kCount = 100'000;

OuString KeyOf(int number) {
    return OuString(("ITEM-" + std::to_string(number)).c_str(), 0);
}

TEST(Scale, OfSiblingsKeepsDetachingAndAddingCheap) {
    const auto project = korvane::CreateProject(L"Wide", L"/studies");
    for (int i = 0; i < kCount; ++i) {
        korvane::CreateObject(*project, CAE_PART, L"");
    }
    const std::vector<CAEObject*> parts = ChildrenOf(*project);
    ASSERT_EQ(parts.size(), static_cast<std::size_t>(kCount));
    for (CAEObject* const part : parts) {
        ASSERT_EQ(Detach(*project, *part), 0);
        ASSERT_EQ(project->addChild(part), 0);
    }
    EXPECT_EQ(ChildrenOf(*project), parts);
    for (std::size_t i = parts.size(); i > 0; --i) {
        ASSERT_EQ(Detach(*project, *parts[i - 1], true), 0);
    }
}

TEST(Scale, OfViewItemsKeepsFindingTheirMastersCheap) {
    const auto project = korvane::CreateProject(L"Wide", L"/studies");
    for (int i = 0; i < kCount; ++i) {
        CAEObject* const assembly = korvane::CreateObject(*project, CAE_SUBASSEMBLY, L"");
        assembly->setDBKey(KeyOf(i));
        int id = 0;
        ASSERT_EQ(getMasterAssemblyCAEIDByITEMID(project.get(), KeyOf(i / 2), id), 0);
        ASSERT_EQ(id, i / 2 + 2);
        ASSERT_NE(getMasterAssemblyCAEIDByITEMID(project.get(), KeyOf(i + 1), id), 0);
    }
}

TEST(Scale, OfAssembliesWithOneKeyKeepsFindingTheFirstCheap) {
    const auto project = korvane::CreateProject(L"Wide", L"/studies");
    for (int i = 0; i < kCount; ++i) {
        korvane::CreateObject(*project, CAE_SUBASSEMBLY, L"")->setDBKey(L"ITEM");
        int id = 0;
        ASSERT_EQ(getMasterAssemblyCAEIDByITEMID(project.get(), L"ITEM", id), 0);
        ASSERT_EQ(id, 2);
    }
}

TEST(Scale, OfFilesKeepsAttachingCheap) {
    const auto project = korvane::CreateProject(L"Wide", L"/studies");
    auto& part = dynamic_cast<CAEPart&>(*korvane::CreateObject(*project, CAE_PART, L""));
    for (int i = 0; i < kCount; ++i) {
        CAEFile* const file = korvane::CreateFile(*project, L"/a.dat", CAE_FILE_MESH, CAE_FORMAT_ASCII);
        ASSERT_EQ(part.attachNewMeshOrMeshingRequest(file->getID()), 0);
        ASSERT_EQ(part.setActiveMesh(file->getID()), 0);
    }
    EXPECT_EQ(FileIdsOf(part).size(), static_cast<std::size_t>(kCount));
    EXPECT_EQ(korvane::GetProjectFiles(*project).size(), static_cast<std::size_t>(kCount));
}

TEST(Scale, OfMetadataKeepsEntriesCheap) {
    const auto project = korvane::CreateProject(L"Wide", L"/studies");
    for (int i = 0; i < kCount; ++i) {
        ASSERT_EQ(project->setMetadataType(KeyOf(i), L"text"), 0);
        ASSERT_EQ(project->setMetadataValue(KeyOf(i), L"value"), 0);
    }
    EXPECT_EQ(MetadataValueOf(*project, L"item-777"), "value");
}

TEST(Scale, OfTheDepthKeepsGetProjectCheap) {
    const auto project = korvane::CreateProject(L"Deep", L"/studies");
    CAEObject* object = project.get();
    for (int i = 0; i < kCount; ++i) {
        object = korvane::CreateObject(*object, CAE_MODEL, L"");
        ASSERT_EQ(object->getProject(), project.get());
        ASSERT_EQ(project->getCAEObject(i / 2 + 1)->getProject(), project.get());
    }
}

}  // namespace
