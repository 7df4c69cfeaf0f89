#include <gtest/gtest.h>

#include <limits>
#include <set>

#include "Ask.h"
#include "support/ModelBuilders.h"

namespace {

constexpr int kFarOut = std::numeric_limits<int>::max();

TEST(Identifiers, FindObjectsFilesAndTheProjectItself) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Door");
    const CAEFile& file = project.AddFile(part, L"door.stp", CAE_FILE_CAD);
    EXPECT_EQ(project->getCAEObject(1), &*project);
    EXPECT_EQ(project->getCAEObject(2), &part);
    EXPECT_EQ(project->getCAEObject(3), &file);
    EXPECT_EQ(project->getFile(3), &file);
    EXPECT_EQ(project->getFile(1), nullptr);
    EXPECT_EQ(project->getFile(2), nullptr);
    for (const int unknown : {0, -1, 4, 65, 1000, kFarOut, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(project->getCAEObject(unknown), nullptr) << unknown;
        EXPECT_EQ(project->getFile(unknown), nullptr) << unknown;
    }
}

TEST(Identifiers, OfFilesAndObjectsComeFromOneSequence) {
    TestProject project;
    EXPECT_EQ(project.Add(CAE_PART, L"Door").getID(), 2);
    CAEFile file(nullptr, CAE_FILE_UNKNOWN, CAE_FORMAT_UNKNOWN, false);
    EXPECT_EQ(project->assignID(&file), 3);
    EXPECT_EQ(file.getID(), 3);
    EXPECT_EQ(project.Add(CAE_PART, L"Hood").getID(), 4);
    EXPECT_EQ(project->getCAEObject(3), nullptr);
    EXPECT_EQ(project->assignID(nullptr), 0);
    EXPECT_EQ(project.Add(CAE_PART, L"Roof").getID(), 5);
}

TEST(Identifiers, SetOnAnObjectChangeOnlyTheObject) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Door");
    part.setID(-15);
    EXPECT_EQ(part.getID(), -15);
    EXPECT_EQ(project->getCAEObject(2), &part);
    EXPECT_EQ(project->getCAEObject(-15), nullptr);
    part.setID(50);
    EXPECT_EQ(project->getCAEObject(2), &part);
    EXPECT_EQ(project->getCAEObject(50), nullptr);
}

TEST(Identifiers, CountFromWhenAnObjectCameIntoTheTree) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Door");
    part.setID(50);
    EXPECT_EQ(Detach(*project, part), 0);
    EXPECT_EQ(project->getCAEObject(2), nullptr);
    EXPECT_EQ(project->addChild(&part), 0);
    EXPECT_EQ(project->getCAEObject(50), &part);
    EXPECT_EQ(project->getCAEObject(2), nullptr);
}

TEST(Identifiers, ThatAreTakenStayWithTheObjectThatHasThem) {
    TestProject project;
    CAEObject& first = project.Add(CAE_PART, L"First");
    CAEObject& second = project.Add(CAE_PART, L"Second");
    CAEObject& below = project.Add(second, CAE_TAG, L"Below");
    EXPECT_EQ(Detach(*project, second), 0);
    second.setID(first.getID());
    EXPECT_EQ(project->addChild(&second), 0);
    EXPECT_EQ(project->getCAEObject(first.getID()), &first);
    EXPECT_EQ(second.getProject(), &*project);
    EXPECT_EQ(project->getCAEObject(below.getID()), &below);
    // When the newcomer leaves, the other object keeps the identifier.
    EXPECT_EQ(Detach(*project, second), 0);
    EXPECT_EQ(project->getCAEObject(first.getID()), &first);
}

TEST(Identifiers, ThatAreNotPositiveAreNotFound) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Door");
    Detach(*project, part);
    part.setID(0);
    EXPECT_EQ(project->addChild(&part), 0);
    EXPECT_EQ(ChildrenOf(*project), std::vector<CAEObject*>{&part});
    EXPECT_EQ(project->getCAEObject(0), nullptr);
    EXPECT_EQ(project->getCAEObject(2), nullptr);
}

TEST(Identifiers, GivenOutAreNeverInUse) {
    TestProject project;
    std::set<int> used{1};
    for (const int chosen : {3, 5, 6, 64, 65, 200, kFarOut}) {
        auto file = std::make_unique<CAEFile>(nullptr, CAE_FILE_DECK, CAE_FORMAT_ASCII, false);
        file->setID(chosen);
        EXPECT_EQ(project->addFile(file.get()), 0);
        EXPECT_EQ(project->getFile(chosen), file.release());
        used.insert(chosen);
    }
    for (int i = 0; i < 300; ++i) {
        EXPECT_TRUE(used.insert(project.Add(CAE_PART, L"").getID()).second);
    }
    EXPECT_EQ(used.size(), 308U);
    for (const int id : used) {
        ASSERT_NE(project->getCAEObject(id), nullptr) << id;
        EXPECT_EQ(project->getCAEObject(id)->getID(), id);
    }
}

TEST(Identifiers, GivenOutAreNotThoseOfDetachedObjects) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Door");
    EXPECT_TRUE(korvane::Renumber(part, 4));
    Detach(*project, part);
    EXPECT_EQ(project.Add(CAE_PART, L"").getID(), 3);
    EXPECT_EQ(project.Add(CAE_PART, L"").getID(), 5);
    EXPECT_EQ(project->addChild(&part), 0);
    EXPECT_EQ(project->getCAEObject(4), &part);
}

TEST(Identifiers, FarOutAndNearAreFoundAlike) {
    TestProject project;
    std::vector<CAEObject*> parts;
    for (int i = 0; i < 200; ++i) {
        parts.push_back(&project.Add(CAE_PART, L""));
        EXPECT_TRUE(korvane::Renumber(*parts.back(), 1000 + i * 7));
    }
    for (int i = 0; i < 2000; ++i) {
        project.Add(CAE_TAG, L"");
    }
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(project->getCAEObject(1000 + i * 7), parts[static_cast<std::size_t>(i)]);
    }
    for (CAEObject* const part : parts) {
        EXPECT_EQ(Detach(*project, *part, true), 0);
    }
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(project->getCAEObject(1000 + i * 7), nullptr);
    }
}

TEST(Renumber, LetsTheProjectFindTheObjectUnderItsNewIdentifier) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Door");
    EXPECT_TRUE(korvane::Renumber(part, 12));
    EXPECT_EQ(part.getID(), 12);
    EXPECT_EQ(project->getCAEObject(12), &part);
    EXPECT_EQ(project->getCAEObject(2), nullptr);
    EXPECT_TRUE(korvane::Renumber(part, 12));
    part.setID(2);
    EXPECT_TRUE(korvane::Renumber(part, 12));
    EXPECT_EQ(part.getID(), 12);
}

TEST(Renumber, FailsWithNothingChanged) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Door");
    EXPECT_FALSE(korvane::Renumber(part, 1));
    EXPECT_FALSE(korvane::Renumber(part, 0));
    EXPECT_FALSE(korvane::Renumber(part, -3));
    EXPECT_EQ(part.getID(), 2);
    EXPECT_EQ(project->getCAEObject(2), &part);
    Detach(*project, part);
    EXPECT_FALSE(korvane::Renumber(part, 9));
    EXPECT_EQ(part.getID(), 2);
}

}  // namespace
