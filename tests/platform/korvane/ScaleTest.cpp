#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <functional>
#include <limits>

#include "Ask.h"

namespace {

/// The processor time of the fastest of several runs, in seconds: whatever else the machine does only ever
/// adds some.
double TimeOf(const std::function<void()>& work, int runs) {
    double fastest = std::numeric_limits<double>::max();
    for (int run = 0; run < runs; ++run) {
        const std::clock_t start = std::clock();
        work();
        fastest = std::min(fastest, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return fastest;
}

/// Expects sixteen times the work to take in the order of sixteen times as long (some more, as the memory
/// gets slower with its amount). With a search through all that is there in each step it would take 256 times
/// as long.
void ExpectInProportion(const std::function<void(int)>& work) {
    constexpr int kFew = 10000;
    constexpr int kTimes = 16;
    constexpr double kMost = 8 * kTimes;
    const double few = TimeOf([&] { work(kFew); }, 5);
    const double many = TimeOf([&] { work(kFew * kTimes); }, 2);
    std::printf("%f\n", many/few); EXPECT_LT(many, few * kMost) << few << " s and " << many << " s";
}

OuString KeyOf(int number) {
    return OuString(("ITEM-" + std::to_string(number)).c_str(), 0);
}

TEST(Scale, OfSiblingsKeepsDetachingAndAddingCheap) {
    ExpectInProportion([](int count) {
        const auto project = korvane::CreateProject(L"Wide", L"/studies");
        for (int i = 0; i < count; ++i) {
            korvane::CreateObject(*project, CAE_PART, L"");
        }
        const std::vector<CAEObject*> parts = ChildrenOf(*project);
        ASSERT_EQ(parts.size(), static_cast<std::size_t>(count));
        for (CAEObject* const part : parts) {
            ASSERT_EQ(Detach(*project, *part), 0);
            ASSERT_EQ(project->addChild(part), 0);
        }
        EXPECT_EQ(ChildrenOf(*project), parts);
        for (std::size_t i = parts.size(); i > 0; --i) {
            ASSERT_EQ(Detach(*project, *parts[i - 1], true), 0);
        }
    });
}

TEST(Scale, OfViewItemsKeepsFindingTheirMastersCheap) {
    ExpectInProportion([](int count) {
        const auto project = korvane::CreateProject(L"Wide", L"/studies");
        for (int i = 0; i < count; ++i) {
            CAEObject* const assembly = korvane::CreateObject(*project, CAE_SUBASSEMBLY, L"");
            assembly->setDBKey(KeyOf(i));
            int id = 0;
            ASSERT_EQ(getMasterAssemblyCAEIDByITEMID(project.get(), KeyOf(i / 2), id), 0);
            ASSERT_EQ(id, i / 2 + 2);
            ASSERT_NE(getMasterAssemblyCAEIDByITEMID(project.get(), KeyOf(i + 1), id), 0);
        }
    });
}

TEST(Scale, OfAssembliesWithOneKeyKeepsFindingTheFirstCheap) {
    ExpectInProportion([](int count) {
        const auto project = korvane::CreateProject(L"Wide", L"/studies");
        for (int i = 0; i < count; ++i) {
            korvane::CreateObject(*project, CAE_SUBASSEMBLY, L"")->setDBKey(L"ITEM");
            int id = 0;
            ASSERT_EQ(getMasterAssemblyCAEIDByITEMID(project.get(), L"ITEM", id), 0);
            ASSERT_EQ(id, 2);
        }
    });
}

TEST(Scale, OfFilesKeepsAttachingCheap) {
    ExpectInProportion([](int count) {
        const auto project = korvane::CreateProject(L"Wide", L"/studies");
        auto& part = dynamic_cast<CAEPart&>(*korvane::CreateObject(*project, CAE_PART, L""));
        for (int i = 0; i < count; ++i) {
            CAEFile* const file = korvane::CreateFile(*project, L"/a.dat", CAE_FILE_MESH, CAE_FORMAT_ASCII);
            ASSERT_EQ(part.attachNewMeshOrMeshingRequest(file->getID()), 0);
            ASSERT_EQ(part.setActiveMesh(file->getID()), 0);
        }
        EXPECT_EQ(FileIdsOf(part).size(), static_cast<std::size_t>(count));
        EXPECT_EQ(korvane::GetProjectFiles(*project).size(), static_cast<std::size_t>(count));
    });
}

TEST(Scale, OfMetadataKeepsEntriesCheap) {
    ExpectInProportion([](int count) {
        const auto project = korvane::CreateProject(L"Wide", L"/studies");
        for (int i = 0; i < count; ++i) {
            ASSERT_EQ(project->setMetadataType(KeyOf(i), L"text"), 0);
            ASSERT_EQ(project->setMetadataValue(KeyOf(i), L"value"), 0);
        }
        EXPECT_EQ(MetadataValueOf(*project, L"item-777"), "value");
    });
}

TEST(Scale, OfTheDepthKeepsGetProjectCheap) {
    ExpectInProportion([](int count) {
        const auto project = korvane::CreateProject(L"Deep", L"/studies");
        CAEObject* object = project.get();
        for (int i = 0; i < count; ++i) {
            object = korvane::CreateObject(*object, CAE_MODEL, L"");
            ASSERT_EQ(object->getProject(), project.get());
            ASSERT_EQ(project->getCAEObject(i / 2 + 1)->getProject(), project.get());
        }
    });
}

}  // namespace
