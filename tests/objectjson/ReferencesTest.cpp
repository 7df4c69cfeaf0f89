#include <gtest/gtest.h>

#include <string>

#include "ConverterSupport.h"
#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"

namespace {

void ImportListedChildren(const std::string& children, CAEObject& object) {
    ImportText(R"({"type":"X","children":[)" + children + "]}", object);
}

/// The first view item under the object.
CAEViewItem& ViewItemUnder(CAEObject& object) {
    CAEViewItem* found = nullptr;
    korvane::VisitTree(object, [&](CAEObject& visited, int) {
        auto* item = dynamic_cast<CAEViewItem*>(&visited);
        found = found == nullptr ? item : found;
    });
    EXPECT_NE(found, nullptr);
    return *found;
}

int ReferenceAfter(const std::string& children) {
    TestProject project;
    ImportListedChildren(children, *project);
    return korvane::GetReferencedObject(ViewItemUnder(*project));
}

}  // namespace

TEST(References, ViewItemShowsTheMasterAssemblyThatItsKeyNames) {
    for (const _tagCAEObjectType kind : {CAE_SUBASSEMBLY, CAE_ITERATION_MODEL}) {
        TestProject project;
        CAEObject& master = project.Add(kind, L"master");
        ASSERT_TRUE(korvane::Renumber(master, 17));
        master.setDBKey(L"ITEM-1");
        CAEObject& view = project.Add(CAE_LOADCASE_VIEW, L"view");
        ImportListedChildren(R"({"type":"CAEVIEWITEM","dbkey":"ITEM-1"})", view);
        const CAEViewItem& item = ViewItemUnder(*project);
        EXPECT_EQ(TextOf(item.getLinkDBKey()), "ITEM-1");
        EXPECT_EQ(korvane::GetReferencedObject(item), 17);
        EXPECT_EQ(TextOf(item.getDBKey()), "");
    }
}

TEST(References, ViewItemOfAnItemWithoutMasterAssemblyShowsNothing) {
    TestProject project;
    project.Add(CAE_SUBASSEMBLY, L"other").setDBKey(L"ITEM-2");
    project.Add(CAE_PART, L"no assembly").setDBKey(L"ITEM-1");
    ImportListedChildren(R"({"type":"CAEVIEWITEM","dbkey":"ITEM-1"})", *project);
    const CAEViewItem& item = ViewItemUnder(*project);
    EXPECT_EQ(TextOf(item.getLinkDBKey()), "ITEM-1");
    EXPECT_EQ(korvane::GetReferencedObject(item), 0);
    EXPECT_EQ(TextOf(item.getDBKey()), "");
}

TEST(References, ViewItemWithoutKeyShowsNothing) {
    TestProject project;
    project.Add(CAE_SUBASSEMBLY, L"without key");
    ImportListedChildren(R"({"type":"CAEVIEWITEM"})", *project);
    EXPECT_EQ(TextOf(ViewItemUnder(*project).getLinkDBKey()), "");
    EXPECT_EQ(korvane::GetReferencedObject(ViewItemUnder(*project)), 0);
}

TEST(References, MasterAssemblyMustHaveComeBefore) {
    const std::string item = R"({"type":"CAEVIEWITEM","dbkey":"M"})";
    const std::string master = R"({"type":"CAESUBASSEMBLY","dbkey":"M"})";
    EXPECT_EQ(ReferenceAfter(master + "," + item), 2);
    EXPECT_EQ(ReferenceAfter(item + "," + master), 0);
    // Deep in the subtree of an earlier sibling, and at the side of an object above.
    EXPECT_EQ(ReferenceAfter(R"({"type":"CAEMODEL","children":[{"type":"CAEASSEMBLYFOLDER","children":[)" +
                             master + "]}]}," + item),
              4);
    EXPECT_EQ(ReferenceAfter(master + R"(,{"type":"CAELOADCASEVIEW","children":[)" + item + "]}"), 2);
    EXPECT_EQ(ReferenceAfter(R"({"type":"CAELOADCASEVIEW","children":[)" + item + "]}," + master), 0);
}

TEST(References, AssemblyUnderTheViewItemItselfCameBeforeItIsResolved) {
    EXPECT_EQ(ReferenceAfter(
                  R"({"type":"CAEVIEWITEM","dbkey":"M","children":[{"type":"CAESUBASSEMBLY","dbkey":"M"}]})"),
              3);
    EXPECT_EQ(ReferenceAfter(
                  R"({"children":[{"type":"CAESUBASSEMBLY","dbkey":"M"}],"dbkey":"M","type":"CAEVIEWITEM"})"),
              3);
}

TEST(References, AssemblyAboveTheViewItemIsFoundWhereItHasItsKeyByThen) {
    const std::string children = R"("children":[{"type":"CAEVIEWITEM","dbkey":"M"}])";
    EXPECT_EQ(ReferenceAfter(R"({"type":"CAESUBASSEMBLY","dbkey":"M",)" + children + "}"), 2);
    EXPECT_EQ(ReferenceAfter(R"({"type":"CAESUBASSEMBLY",)" + children + R"(,"dbkey":"M"})"), 0);
}

TEST(References, LastKeyOfTheElementCounts) {
    EXPECT_EQ(ReferenceAfter(R"({"type":"CAESUBASSEMBLY","dbkey":"A"},{"type":"CAESUBASSEMBLY","dbkey":"B"},)"
                             R"({"type":"CAEVIEWITEM","dbkey":"A","dbkey":"B"})"),
              3);
    EXPECT_EQ(ReferenceAfter(R"({"type":"CAESUBASSEMBLY","dbkey":"7"},{"type":"CAEVIEWITEM","dbkey":7})"), 2);
}

TEST(References, ViewItemThatIsTheTargetGetsItsLinkAndNoReference) {
    TestProject project;
    project.Add(CAE_SUBASSEMBLY, L"master").setDBKey(L"ITEM-1");
    auto& item = dynamic_cast<CAEViewItem&>(project.Add(CAE_VIEW_ITEM, L"item"));
    ImportText(R"({"type":"CAEVIEWITEM","dbkey":"ITEM-1"})", item);
    EXPECT_EQ(TextOf(item.getLinkDBKey()), "ITEM-1");
    EXPECT_EQ(korvane::GetReferencedObject(item), 0);
}

TEST(References, PartGetsItsOwnKeyAndNoLink) {
    TestProject project;
    project.Add(CAE_SUBASSEMBLY, L"master").setDBKey(L"ITEM-1");
    ImportListedChildren(R"({"type":"CAEPART","dbkey":"ITEM-1"})", *project);
    const CAEObject& part = *ChildrenOf(*project)[1];
    EXPECT_EQ(TextOf(part.getDBKey()), "ITEM-1");
    EXPECT_EQ(TextOf(part.getLinkDBKey()), "");
}

TEST(References, ExportedViewItemDoesNotCarryItsReference) {
    TestProject project;
    CAEObject& master = project.Add(CAE_SUBASSEMBLY, L"master");
    master.setDBKey(L"ITEM-1");
    auto& item = dynamic_cast<CAEViewItem&>(project.Add(CAE_VIEW_ITEM, L"item"));
    item.setDBKey(L"V-9");
    item.setLinkDBKey(L"ITEM-1");
    item.setReferencedCAEObject(master.getID());

    TestProject rebuilt;
    ImportText(Exported(*project), *rebuilt);
    const CAEViewItem& again = ViewItemUnder(*rebuilt);
    EXPECT_EQ(TextOf(again.getLinkDBKey()), "V-9");
    EXPECT_EQ(TextOf(again.getDBKey()), "");
    EXPECT_EQ(korvane::GetReferencedObject(again), 0);

    // The reference comes along where the caller puts the item's key in place of the view item's own.
    item.setDBKey(item.getLinkDBKey());
    TestProject linked;
    ImportText(Exported(*project), *linked);
    EXPECT_EQ(korvane::GetReferencedObject(ViewItemUnder(*linked)), 2);
}

TEST(References, AloneResolvesTheLinkThatTheViewItemHas) {
    TestProject project;
    CAEObject& master = project.Add(CAE_SUBASSEMBLY, L"master");
    master.setDBKey(L"M");
    auto& item = dynamic_cast<CAEViewItem&>(project.Add(CAE_VIEW_ITEM, L"item"));
    item.setLinkDBKey(L"M");
    CAEObjectJson converter(libjson::parse("{}"), &*project);
    converter.ResolveViewItemReference(&item);
    EXPECT_EQ(korvane::GetReferencedObject(item), master.getID());
    // A key that names no assembly leaves the reference that is there.
    item.setLinkDBKey(L"none");
    converter.ResolveViewItemReference(&item);
    EXPECT_EQ(korvane::GetReferencedObject(item), master.getID());
}

TEST(References, AloneLeavesOutWhatIsNoViewItem) {
    TestProject project;
    project.Add(CAE_SUBASSEMBLY, L"master").setDBKey(L"M");
    CAEObject& part = project.Add(CAE_PART, L"frame");
    part.setLinkDBKey(L"M");
    const std::string before = Exported(*project);
    CAEObjectJson converter(libjson::parse("{}"), &part);
    converter.ResolveViewItemReference(&part);
    converter.ResolveViewItemReference(nullptr);
    EXPECT_EQ(Exported(*project), before);
}

TEST(References, AloneResolvesNothingWithoutProject) {
    TestProject project;
    project.Add(CAE_SUBASSEMBLY, L"master").setDBKey(L"M");
    auto& item = dynamic_cast<CAEViewItem&>(project.Add(CAE_VIEW_ITEM, L"item"));
    item.setLinkDBKey(L"M");
    // A converter for export has no project.
    CAEObjectJson(&*project).ResolveViewItemReference(&item);
    EXPECT_EQ(korvane::GetReferencedObject(item), 0);
}
