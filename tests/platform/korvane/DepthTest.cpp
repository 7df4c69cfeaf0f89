#include <gtest/gtest.h>

#include "Ask.h"
#include "support/ModelBuilders.h"
#include "support/SmallStack.h"

namespace {

constexpr int kDepth = 1000000;
constexpr int kProjects = 100000;
constexpr int kVersions = 100000;

int DepthBelow(CAEObject& object) {
    int deepest = 0;
    korvane::VisitTree(object, [&](CAEObject&, int depth) { deepest = depth; });
    return deepest;
}

/// A chain of objects below the parent, the first of which is returned.
CAEObject& AddChain(CAEProject& project, int parentId, _tagCAEObjectType type, int length) {
    int first = 0;
    int id = parentId;
    for (int i = 0; i < length; ++i) {
        EXPECT_EQ(createCAEObject(&project, id, type, id), 0);
        first = i == 0 ? id : first;
    }
    return *project.getCAEObject(first);
}

TEST(Depth, OfAMillionLevelsNeedsNoStack) {
    OnSmallStack([] {
        auto project = korvane::CreateProject(L"Deep", L"/studies");
        CAEObject& top = AddChain(*project, 1, CAE_MODEL, kDepth);
        EXPECT_EQ(DepthBelow(*project), kDepth);
        const int lastId = kDepth + 1;
        EXPECT_EQ(project->getCAEObject(lastId)->getProject(), project.get());

        ASSERT_EQ(top.createNewVersion(1, 0, true, false), 0);
        CAEObject& version = *VersionOf(top, 1, 0);
        EXPECT_EQ(DepthBelow(version), kDepth - 1);

        ASSERT_EQ(Detach(*project, top), 0);
        EXPECT_EQ(project->getCAEObject(lastId), nullptr);
        ASSERT_EQ(project->addChild(&version), 0);
        EXPECT_NE(project->getCAEObject(lastId), nullptr);
        ASSERT_EQ(Detach(*project, version), 0);
        ASSERT_EQ(project->addChild(&top), 0);

        project->getCAEObject(lastId)->setName(L"Changed");
        ASSERT_EQ(overwriteCurrentVersionWithVersion(project.get(), top.getID(), 1, 0), 0);
        EXPECT_EQ(NameOf(*project->getCAEObject(lastId)), "");
        EXPECT_EQ(DepthBelow(*project), kDepth);

        ASSERT_EQ(Detach(*project, top, true), 0);
        EXPECT_EQ(project->getCAEObject(lastId), nullptr);
        EXPECT_EQ(DepthBelow(*project), 0);
    });
}

TEST(Depth, OfAMillionLevelsIsDestroyedWithTheProject) {
    OnSmallStack([] {
        auto project = korvane::CreateProject(L"Deep", L"/studies");
        AddChain(*project, 1, CAE_MODEL, kDepth);
        project.reset();
    });
}

TEST(Depth, OfProjectsWithinProjectsNeedsNoStack) {
    OnSmallStack([] {
        auto project = korvane::CreateProject(L"Deep", L"/studies");
        CAEObject& top = AddChain(*project, 1, CAE_PROJECT, kProjects);
        CAEObject* const last = project->getCAEObject(kProjects + 1);
        EXPECT_EQ(last->getProject(), last);
        EXPECT_EQ(Detach(*project, top), 0);
        EXPECT_EQ(project->addChild(&top), 0);
        EXPECT_EQ(project->getCAEObject(kProjects + 1), last);
    });
}

TEST(Depth, OfVersionsOfVersionsNeedsNoStack) {
    OnSmallStack([] {
        auto project = korvane::CreateProject(L"Deep", L"/studies");
        CAEObject* object = korvane::CreateObject(*project, CAE_PART, L"Door");
        for (int i = 0; i < kVersions; ++i) {
            ASSERT_EQ(object->createNewVersion(1, 0, true, false), 0);
            object = VersionOf(*object, 1, 0);
        }
        EXPECT_EQ(project->createNewVersion(1, 0, true, false), 0);
        object = ChildrenOf(*VersionOf(*project, 1, 0))[0];
        int copied = 0;
        while (CAEObject* const version = VersionOf(*object, 1, 0)) {
            object = version;
            ++copied;
        }
        EXPECT_EQ(copied, kVersions);
    });
}

}  // namespace
