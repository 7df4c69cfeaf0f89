#include <gtest/gtest.h>

#include "Ask.h"
#include "support/ModelBuilders.h"

namespace {

TEST(Children, AreAppendedToTheListInTheirOrder) {
    TestProject project;
    CAEObject& first = project.Add(CAE_PART, L"First");
    CAEObject& second = project.Add(CAE_MODEL, L"Second");
    OuList list;
    list.AddTail(static_cast<void*>(&*project));
    project->getChildrenList(list);
    ASSERT_EQ(list.GetCount(), 3U);
    OuListPosition* position = list.GetHeadPosition();
    EXPECT_EQ(list.GetNext(position), static_cast<CAEProject*>(&*project));
    EXPECT_EQ(list.GetNext(position), &first);
    EXPECT_EQ(list.GetNext(position), &second);
}

TEST(DetachChild, TakesTheWholeSubtreeOutOfTheProject) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"Model");
    CAEObject& part = project.Add(model, CAE_PART, L"Door");
    CAEObject& tag = project.Add(part, CAE_TAG, L"Tag");
    CAEObject* pointer = &model;
    EXPECT_EQ(project->detachChild(pointer, false), 0);
    EXPECT_EQ(pointer, nullptr);
    EXPECT_TRUE(ChildrenOf(*project).empty());
    for (const CAEObject* const object : {&model, &part, &tag}) {
        EXPECT_EQ(project->getCAEObject(object->getID()), nullptr);
        EXPECT_EQ(object->getProject(), nullptr);
    }
    EXPECT_EQ(model.getParent(), nullptr);
    EXPECT_EQ(part.getParent(), &model);
    EXPECT_EQ(ChildrenOf(model), std::vector<CAEObject*>{&part});
    EXPECT_EQ(NameOf(tag), "Tag");
}

TEST(AddChild, PutsTheWholeSubtreeBackBehindTheOthers) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"Model");
    CAEObject& part = project.Add(model, CAE_PART, L"Door");
    CAEObject& other = project.Add(CAE_MODEL, L"Other");
    Detach(*project, model);
    EXPECT_EQ(project->addChild(&model), 0);
    EXPECT_EQ(ChildrenOf(*project), (std::vector<CAEObject*>{&other, &model}));
    EXPECT_EQ(model.getParent(), &*project);
    for (CAEObject* const object : {&model, &part}) {
        EXPECT_EQ(project->getCAEObject(object->getID()), object);
        EXPECT_EQ(object->getProject(), &*project);
    }
}

TEST(AddChild, HangsObjectsElsewhere) {
    TestProject project;
    CAEObject& left = project.Add(CAE_MODEL, L"Left");
    CAEObject& right = project.Add(CAE_MODEL, L"Right");
    CAEObject& part = project.Add(left, CAE_PART, L"Door");
    Detach(left, part);
    EXPECT_EQ(right.addChild(&part), 0);
    EXPECT_TRUE(ChildrenOf(left).empty());
    EXPECT_EQ(ChildrenOf(right), std::vector<CAEObject*>{&part});
}

TEST(AddChild, BelowADetachedObjectKeepsItOutOfTheProject) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"Model");
    CAEObject& part = project.Add(CAE_PART, L"Door");
    Detach(*project, model);
    Detach(*project, part);
    EXPECT_EQ(model.addChild(&part), 0);
    EXPECT_EQ(part.getParent(), &model);
    EXPECT_EQ(part.getProject(), nullptr);
    EXPECT_EQ(project->getCAEObject(part.getID()), nullptr);
    EXPECT_EQ(project->addChild(&model), 0);
    EXPECT_EQ(part.getProject(), &*project);
    EXPECT_EQ(project->getCAEObject(part.getID()), &part);
}

TEST(AddChild, FailsWithNothingChanged) {
    TestProject project;
    TestProject otherProject;
    CAEObject& model = project.Add(CAE_MODEL, L"Model");
    CAEObject& part = project.Add(model, CAE_PART, L"Door");
    CAEObject& tag = project.Add(part, CAE_TAG, L"Tag");
    CAEObject& foreign = otherProject.Add(CAE_PART, L"Foreign");
    Detach(*otherProject, foreign);
    CAEFile loose(nullptr, CAE_FILE_DECK, CAE_FORMAT_ASCII, false);
    CAEFile& file = project.AddFile(part, L"door.stp", CAE_FILE_CAD);
    EXPECT_NE(model.addChild(nullptr), 0);
    EXPECT_NE(model.addChild(&part), 0);
    EXPECT_NE(tag.addChild(&*project), 0);
    EXPECT_NE(tag.addChild(&tag), 0);
    EXPECT_NE(model.addChild(&foreign), 0);
    EXPECT_NE(model.addChild(&loose), 0);
    EXPECT_NE(model.addChild(&file), 0);
    EXPECT_NE(loose.addChild(&foreign), 0);
    EXPECT_EQ(ChildrenOf(model), std::vector<CAEObject*>{&part});
    EXPECT_EQ(file.getParent(), nullptr);
    EXPECT_EQ(foreign.getParent(), nullptr);
}

TEST(AddChild, FailsForWhatIsAbove) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"Model");
    CAEObject& part = project.Add(model, CAE_PART, L"Door");
    CAEObject& tag = project.Add(part, CAE_TAG, L"Tag");
    Detach(*project, model);
    EXPECT_NE(tag.addChild(&model), 0);
    EXPECT_NE(model.addChild(&model), 0);
    EXPECT_NE(model.addChild(&part), 0);
    EXPECT_TRUE(ChildrenOf(tag).empty());
    EXPECT_EQ(project->addChild(&model), 0);
}

TEST(AddChild, FailsForTheRootBelowADetachedObject) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"Model");
    Detach(*project, model);
    EXPECT_NE(model.addChild(&*project), 0);
    EXPECT_EQ(project->getParent(), nullptr);
    EXPECT_TRUE(ChildrenOf(model).empty());
}

TEST(DetachChild, FailsForAnythingButAChild) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"Model");
    CAEObject& part = project.Add(model, CAE_PART, L"Door");
    CAEObject* pointer = &part;
    EXPECT_NE(project->detachChild(pointer, true), 0);
    EXPECT_EQ(pointer, &part);
    pointer = nullptr;
    EXPECT_NE(project->detachChild(pointer, false), 0);
    pointer = &*project;
    EXPECT_NE(model.detachChild(pointer, true), 0);
    EXPECT_EQ(pointer, &*project);
    pointer = &project.AddFile(part, L"door.stp", CAE_FILE_CAD);
    EXPECT_NE(project->detachChild(pointer, true), 0);
    EXPECT_NE(pointer, nullptr);
    EXPECT_EQ(ChildrenOf(model), std::vector<CAEObject*>{&part});
}

TEST(DetachChild, DestroysWhatItIsToldTo) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"Model");
    const int partId = project.Add(model, CAE_PART, L"Door").getID();
    const int modelId = model.getID();
    CAEObject& other = project.Add(CAE_MODEL, L"Other");
    EXPECT_EQ(Detach(*project, model, true), 0);
    EXPECT_EQ(project->getCAEObject(modelId), nullptr);
    EXPECT_EQ(project->getCAEObject(partId), nullptr);
    EXPECT_EQ(ChildrenOf(*project), std::vector<CAEObject*>{&other});
}

TEST(DetachChild, WorksAtEveryPlaceAmongTheSiblings) {
    TestProject project;
    std::vector<CAEObject*> parts;
    parts.reserve(5);
    for (int i = 0; i < 5; ++i) {
        parts.push_back(&project.Add(CAE_PART, L""));
    }
    Detach(*project, *parts[2]);
    EXPECT_EQ(ChildIdsOf(*project), (std::vector<int>{2, 3, 5, 6}));
    Detach(*project, *parts[0]);
    EXPECT_EQ(ChildIdsOf(*project), (std::vector<int>{3, 5, 6}));
    Detach(*project, *parts[4]);
    EXPECT_EQ(ChildIdsOf(*project), (std::vector<int>{3, 5}));
    project->addChild(parts[0]);
    EXPECT_EQ(ChildIdsOf(*project), (std::vector<int>{3, 5, 2}));
}

TEST(Objects, KeepKeysNameAndDates) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Door");
    part.setName(L"Front door");
    EXPECT_EQ(part.setDBKey(L"K1"), 0);
    EXPECT_EQ(part.setLinkDBKey(L"L1"), 0);
    part.setCreatedDate(L"yesterday");
    korvane::SetCreatedUserName(part, L"somebody");
    EXPECT_EQ(NameOf(part), "Front door");
    EXPECT_EQ(TextOf(part.getDBKey()), "K1");
    EXPECT_EQ(TextOf(part.getLinkDBKey()), "L1");
    EXPECT_EQ(CreatedDateOf(part), "yesterday");
    EXPECT_EQ(CreatedUserNameOf(part), "somebody");
}

TEST(Objects, ShowTheReferencedObjectOfAViewItem) {
    TestProject project;
    auto& item = dynamic_cast<CAEViewItem&>(project.Add(CAE_VIEW_ITEM, L"Item"));
    EXPECT_EQ(korvane::GetReferencedObject(item), 0);
    EXPECT_EQ(item.setReferencedCAEObject(17), 0);
    EXPECT_EQ(korvane::GetReferencedObject(item), 17);
    EXPECT_NE(item.setReferencedCAEObject(-1), 0);
    EXPECT_EQ(korvane::GetReferencedObject(item), 17);
    EXPECT_EQ(item.setReferencedCAEObject(0), 0);
    EXPECT_EQ(korvane::GetReferencedObject(item), 0);
}

}  // namespace
