#include <gtest/gtest.h>

#include "Ask.h"
#include "support/ModelBuilders.h"

namespace {

using Visits = std::vector<std::pair<int, int>>;

Visits VisitsOf(CAEObject& object) {
    Visits visits;
    korvane::VisitTree(object,
                       [&](CAEObject& visited, int depth) { visits.emplace_back(visited.getID(), depth); });
    return visits;
}

TEST(VisitTree, GoesFromParentsToChildrenInTheirOrder) {
    TestProject project;
    CAEObject& left = project.Add(CAE_MODEL, L"Left");
    CAEObject& right = project.Add(CAE_MODEL, L"Right");
    CAEObject& leftChild = project.Add(left, CAE_PART, L"");
    project.Add(leftChild, CAE_TAG, L"");
    project.Add(left, CAE_PART, L"");
    project.Add(right, CAE_PART, L"");
    project.AddFile(left, L"a.dat", CAE_FILE_DECK);
    EXPECT_EQ(VisitsOf(*project), (Visits{{1, 0}, {2, 1}, {4, 2}, {5, 3}, {6, 2}, {3, 1}, {7, 2}}));
    EXPECT_EQ(VisitsOf(left), (Visits{{2, 0}, {4, 1}, {5, 2}, {6, 1}}));
    EXPECT_EQ(VisitsOf(right), (Visits{{3, 0}, {7, 1}}));
    EXPECT_EQ(VisitsOf(leftChild), (Visits{{4, 0}, {5, 1}}));
}

TEST(CreateObject, ReturnsTheObjectUnderItsName) {
    TestProject project;
    CAEObject* const part = korvane::CreateObject(*project, CAE_PART, L"Door");
    ASSERT_NE(part, nullptr);
    EXPECT_EQ(NameOf(*part), "Door");
    EXPECT_EQ(part->getParent(), &*project);
    EXPECT_EQ(project->getCAEObject(part->getID()), part);
}

TEST(CreateObject, ReturnsNullWhereItFails) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"Model");
    EXPECT_EQ(korvane::CreateObject(model, CAE_UNKNOWN_OBJECT, L"Door"), nullptr);
    Detach(*project, model);
    EXPECT_EQ(korvane::CreateObject(model, CAE_PART, L"Door"), nullptr);
    CAEFile file(nullptr, CAE_FILE_DECK, CAE_FORMAT_ASCII, false);
    EXPECT_EQ(korvane::CreateObject(file, CAE_PART, L"Door"), nullptr);
    EXPECT_TRUE(ChildrenOf(model).empty());
}

TEST(Projects, AreIndependentOfEachOther) {
    const auto first = korvane::CreateProject(L"First", L"/a");
    const auto second = korvane::CreateProject(L"Second", L"/b");
    EXPECT_EQ(korvane::CreateObject(*first, CAE_PART, L"")->getID(), 2);
    EXPECT_EQ(korvane::CreateObject(*second, CAE_PART, L"")->getID(), 2);
    EXPECT_NE(first->getCAEObject(2), second->getCAEObject(2));
    EXPECT_EQ(first->getCAEObject(2)->getProject(), first.get());
}

}  // namespace
