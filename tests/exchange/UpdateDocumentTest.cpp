#include <korvanejson/JsonSerializer.h>

#include <new>
#include <string>

#include "ImportSupport.h"

// What an update does, sentence by sentence of its contract. Each goes through a dry run before and a second
// update behind (ExchangeImportTest::Update).

using UpdateDocumentTest = ExchangeImportTest;

namespace {

std::string KeyOf(const CAEObject& object) {
    return korvane::exchange::ToUtf8(object.getDBKey());
}

std::string OwnDocument(CAEObject& object) {
    return JsonSerializer(&object).GetJson().write().c_str();
}

}  // namespace

TEST_F(UpdateDocumentTest, BecomesTheObjectWithTheKey) {
    CAEObject& part = project_.Add(CAE_PART, L"bracket");
    part.setDBKey(L"K-1");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","dbkey":"K-1","name":"clamp"}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 clamp K-1\n");
    EXPECT_EQ(ListedChanges(report), "/children/0/name changed #2\n");
    EXPECT_EQ(report.objectsMatched, 2U);
    EXPECT_EQ(report.objectsAdded, 0U);
    EXPECT_EQ(report.keys, 1U);
}

TEST_F(UpdateDocumentTest, BecomesTheFirstOfItsKindAndName) {
    project_.Add(CAE_TAG, L"bracket");
    project_.Add(CAE_PART, L"bracket");
    project_.Add(CAE_PART, L"bracket");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"bracket","dbkey":"K-1"}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 bracket\n  #3 bracket K-1\n  #4 bracket\n");
    EXPECT_EQ(ListedChanges(report), "/children/0/dbkey changed #3\n");
    EXPECT_EQ(report.objectsMatched, 2U);
}

TEST_F(UpdateDocumentTest, EqualSiblingsAreTakenInTheirOrder) {
    for (int count = 0; count < 3; ++count) {
        project_.Add(CAE_MODEL, L"m");
    }
    Update(R"({"type":"SIMULATION","children":[{"type":"CAEMODEL","name":"m","dbkey":"A"},)"
           R"({"type":"CAEMODEL","name":"m","dbkey":"B"},{"type":"CAEMODEL","name":"m","dbkey":"C"},)"
           R"({"type":"CAEMODEL","name":"m","dbkey":"D"}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 m A\n  #3 m B\n  #4 m C\n  #5 m D\n");
}

TEST_F(UpdateDocumentTest, LeavesAnObjectToTheElementThatNamesItByKey) {
    project_.Add(CAE_PART, L"bracket").setDBKey(L"K-1");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"bracket"},)"
               R"({"type":"CAEPART","name":"bracket","dbkey":"K-1"}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 bracket K-1\n  #3 bracket\n");
    EXPECT_EQ(report.objectsAdded, 1U);
}

TEST_F(UpdateDocumentTest, DoesNotTakeAnObjectWithAnotherKey) {
    project_.Add(CAE_PART, L"bracket").setDBKey(L"K-1");
    Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"bracket","dbkey":"K-2"}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 bracket K-1\n  #3 bracket K-2\n");
}

TEST_F(UpdateDocumentTest, AnElementWithoutAKeyTakesAnObjectThatHasOne) {
    project_.Add(CAE_PART, L"bracket").setDBKey(L"K-1");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"bracket"}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 bracket K-1\n");
    EXPECT_EQ(report.objectsAdded, 0U);
}

TEST_F(UpdateDocumentTest, MakesWhatIsMissing) {
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEASSEMBLYFOLDER","name":"f","children":[)"
               R"({"type":"CAEPART","name":"p","files":[{"name":"a.inp","fileType":"Deck"}]}]}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 f\n    #3 p [#4 a.inp]\n");
    EXPECT_EQ(
        ListedChanges(report),
        "/children/0 added #2\n/children/0/children/0 added #3\n/children/0/children/0/files/0 added #4\n");
    EXPECT_EQ(report.objectsAdded, 2U);
    EXPECT_EQ(report.filesAdded, 1U);
    EXPECT_EQ(report.filesAttached, 1U);
}

TEST_F(UpdateDocumentTest, NamesAreMatchedInTheirOwnParentOnly) {
    CAEObject& first = project_.Add(CAE_MODEL, L"a");
    project_.Add(first, CAE_PART, L"p");
    project_.Add(CAE_MODEL, L"b");
    Update(R"({"type":"SIMULATION","children":[{"type":"CAEMODEL","name":"b","children":[)"
           R"({"type":"CAEPART","name":"p"}]}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 a\n    #3 p\n  #4 b\n    #5 p\n");
}

TEST_F(UpdateDocumentTest, MovesAnObjectThatHangsElsewhere) {
    CAEObject& first = project_.Add(CAE_MODEL, L"a");
    CAEObject& part = project_.Add(first, CAE_PART, L"p");
    part.setDBKey(L"K-1");
    project_.Add(part, CAE_TAG, L"below");
    project_.Add(CAE_MODEL, L"b");
    const ImportReport report = Update(R"({"type":"SIMULATION","children":[{"type":"CAEMODEL","name":"b",)"
                                       R"("children":[{"type":"CAEPART","name":"p","dbkey":"K-1"}]}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 a\n  #5 b\n    #3 p K-1\n      #4 below\n");
    EXPECT_EQ(ListedChanges(report), "/children/0/children/0 moved #3\n");
    EXPECT_EQ(report.objectsMoved, 1U);
    EXPECT_EQ(project_->getCAEObject(3), &part);
}

TEST_F(UpdateDocumentTest, MovesIntoANewObject) {
    project_.Add(CAE_PART, L"p").setDBKey(L"K-1");
    const ImportReport report = Update(R"({"type":"SIMULATION","children":[{"type":"CAEMODEL","name":"new",)"
                                       R"("children":[{"type":"CAEPART","name":"p","dbkey":"K-1"}]}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #3 new\n    #2 p K-1\n");
    EXPECT_EQ(report.objectsMoved, 1U);
    EXPECT_EQ(report.objectsAdded, 1U);
}

TEST_F(UpdateDocumentTest, AnObjectThatCannotMoveStays) {
    CAEObject& first = project_.Add(CAE_MODEL, L"a");
    project_.Add(first, CAE_PART, L"p").setDBKey(L"K-1");
    project_.Add(CAE_MODEL, L"b");
    const std::string text = R"({"type":"SIMULATION","children":[{"type":"CAEMODEL","name":"b","children":[)"
                             R"({"type":"CAEPART","name":"p","dbkey":"K-1"}]}]})";
    const std::string before = Outline(*project_);
    {
        const korvane::OddAnswer bad("CAEObject::addChild(#4, #3)", {.throws = true});
        EXPECT_THROW(Import(text, {.match = Match::kByKey}), std::bad_alloc);
        EXPECT_EQ(bad.TimesGiven(), 1);
    }
    EXPECT_EQ(Outline(*project_), before);
    EXPECT_EQ(project_->getCAEObject(3)->getParent(), &first);
    Update(text);
}

TEST_F(UpdateDocumentTest, AnObjectThatIsNotTakenElsewhereStaysAndIsAConflict) {
    CAEObject& first = project_.Add(CAE_MODEL, L"a");
    project_.Add(first, CAE_PART, L"p").setDBKey(L"K-1");
    project_.Add(CAE_MODEL, L"b");
    const std::string before = Outline(*project_);
    const korvane::OddAnswer refusal("CAEObject::addChild(#4, #3)", {.status = 1});
    const ImportReport report =
        Import(R"({"type":"SIMULATION","children":[{"type":"CAEMODEL","name":"b","children":[)"
               R"({"type":"CAEPART","name":"p","dbkey":"K-1"}]}]})",
               {.match = Match::kByKey});
    EXPECT_EQ(refusal.TimesGiven(), 1);
    EXPECT_EQ(report.Count(Reason::kConflict), 1U);
    EXPECT_EQ(report.objectsMoved, 0U);
    EXPECT_EQ(Outline(*project_), before);
}

TEST_F(UpdateDocumentTest, AnObjectThatHangsNowhereMovesFromThere) {
    project_.Add(project_.Add(CAE_MODEL, L"a"), CAE_PART, L"p").setDBKey(L"K-1");
    project_.Add(CAE_MODEL, L"b");
    const korvane::OddAnswer orphan("CAEObject::getParent(#3)", {.object = nullptr},
                                    korvane::OddAnswer::kAlways);
    const ImportReport report =
        Import(R"({"type":"SIMULATION","children":[{"type":"CAEMODEL","name":"b","children":[)"
               R"({"type":"CAEPART","name":"p","dbkey":"K-1"}]}]})",
               {.match = Match::kByKey, .dryRun = true});
    EXPECT_NE(Whole(report).find(" moves from nowhere to "), std::string::npos) << Whole(report);
}

TEST_F(UpdateDocumentTest, MovesAreNested) {
    CAEObject& outer = project_.Add(CAE_MODEL, L"outer");
    outer.setDBKey(L"A");
    CAEObject& inner = project_.Add(outer, CAE_MODEL, L"inner");
    inner.setDBKey(L"B");
    project_.Add(inner, CAE_PART, L"part").setDBKey(L"C");
    project_.Add(CAE_MODEL, L"target").setDBKey(L"T");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEMODEL","dbkey":"T","children":[)"
               R"({"type":"CAEMODEL","dbkey":"A"},{"type":"CAEMODEL","dbkey":"B","children":[]},)"
               R"({"type":"CAEPART","dbkey":"C"}]}]})");
    EXPECT_EQ(Outline(*project_),
              "#1 Project\n  #5 target T\n    #2 outer A\n    #3 inner B\n    #4 part C\n");
    EXPECT_EQ(report.objectsMoved, 3U);
}

TEST_F(UpdateDocumentTest, ExchangingParentAndChildIsAConflict) {
    CAEObject& outer = project_.Add(CAE_MODEL, L"outer");
    outer.setDBKey(L"A");
    project_.Add(outer, CAE_MODEL, L"inner").setDBKey(L"B");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEMODEL","dbkey":"B","children":[)"
               R"({"type":"CAEMODEL","dbkey":"A"}]}]})");
    // The inner one moves up before its children are met, so that the outer one may move below it.
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #3 inner B\n    #2 outer A\n");
    EXPECT_EQ(report.Count(Reason::kConflict), 0U);
    EXPECT_EQ(report.objectsMoved, 2U);
}

TEST_F(UpdateDocumentTest, AKeyOfAnObjectAboveIsAConflict) {
    CAEObject& outer = project_.Add(CAE_MODEL, L"outer");
    outer.setDBKey(L"A");
    project_.Add(outer, CAE_MODEL, L"inner");
    // Named by its place, the outer one is above the element that has its key.
    const std::string text =
        R"({"type":"CAEMODEL","children":[{"type":"CAEMODEL","name":"x","dbkey":"A","children":[)"
        R"({"type":"CAEPART","name":"lost"}]}]})";
    const ImportReport report = Update(text, *project_->getCAEObject(2));
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 outer A\n    #3 inner\n");
    EXPECT_EQ(Listed(report), "/children/0 conflict #2\n/children kept #3\n");
}

TEST_F(UpdateDocumentTest, AKeyTwiceInTheDocumentIsAConflict) {
    project_.Add(CAE_PART, L"p").setDBKey(L"K-1");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"a","dbkey":"K-1"},)"
               R"({"type":"CAEPART","name":"b","dbkey":"K-1"},{"type":"CAETAG","name":"c"}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p K-1\n  #3 c\n");
    EXPECT_EQ(report.Count(Reason::kConflict), 2U);
    EXPECT_EQ(Listed(report, [](auto reason) { return reason == Reason::kConflict; }),
              "/children/0 conflict #2\n/children/1 conflict #2\n");
}

TEST_F(UpdateDocumentTest, AKeyTwiceInTheDocumentAndNotInTheTreeIsAConflict) {
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"a","dbkey":"K-1"},)"
               R"({"type":"CAEPART","name":"b","dbkey":"K-1"}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n");
    EXPECT_EQ(report.Count(Reason::kConflict), 2U);
}

TEST_F(UpdateDocumentTest, AKeyTwiceInTheTreeIsAConflict) {
    project_.Add(CAE_PART, L"p").setDBKey(L"K-1");
    project_.Add(CAE_PART, L"q").setDBKey(L"K-1");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p","dbkey":"K-1","children":[)"
               R"({"type":"CAETAG","name":"lost"}]}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p K-1\n  #3 q K-1\n");
    EXPECT_EQ(report.Count(Reason::kConflict), 1U);
}

TEST_F(UpdateDocumentTest, AKeyOfAnotherKindIsAConflict) {
    project_.Add(CAE_TAG, L"t").setDBKey(L"K-1");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p","dbkey":"K-1"}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 t K-1\n");
    EXPECT_EQ(Listed(report, [](auto reason) { return reason == Reason::kConflict; }),
              "/children/0 conflict #2\n");
}

TEST_F(UpdateDocumentTest, TheKeyOfAFileIsNoObjects) {
    CAEFile& file = project_.AddFile(*project_, L"a.inp", CAE_FILE_DECK);
    file.setDBKey(L"K-1");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p","dbkey":"K-1"}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project [#2 a.inp K-1]\n");
    EXPECT_EQ(report.Count(Reason::kConflict), 1U);
}

TEST_F(UpdateDocumentTest, TheKeyOfAnObjectIsNoFiles) {
    project_.Add(CAE_PART, L"p").setDBKey(L"K-1");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","files":[{"name":"a.inp","fileType":"Deck","dbkey":"K-1"}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p K-1\n");
    EXPECT_EQ(Listed(report, [](auto reason) { return reason == Reason::kConflict; }),
              "/files/0 conflict #2\n");
}

TEST_F(UpdateDocumentTest, ConflictsAreNotRemoved) {
    project_.Add(CAE_PART, L"p").setDBKey(L"K-1");
    project_.Add(CAE_PART, L"q").setDBKey(L"K-1");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p","dbkey":"K-1"}]})",
               {.remove = true});
    EXPECT_EQ(report.Count(Reason::kConflict), 1U);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p K-1\n  #3 q K-1\n");
}

TEST_F(UpdateDocumentTest, WhatHasAFileInConflictIsNotRemoved) {
    CAEObject& gone = project_.Add(CAE_MODEL, L"gone");
    project_.AddFile(project_.Add(gone, CAE_PART, L"inner"), L"a.inp", CAE_FILE_DECK).setDBKey(L"F-1");
    project_.Add(CAE_PART, L"p");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p","files":[)"
               R"({"name":"a.inp","fileType":"Deck","dbkey":"F-1"},)"
               R"({"name":"b.inp","fileType":"Deck","dbkey":"F-1"}]}]})",
               {.remove = true});
    EXPECT_EQ(report.objectsRemoved, 0U);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 gone\n    #3 inner [#4 a.inp F-1]\n  #5 p\n");
}

TEST_F(UpdateDocumentTest, WithAndWithoutKeysTheFirstIsTaken) {
    project_.Add(CAE_PART, L"x").setDBKey(L"K-1");
    project_.Add(CAE_PART, L"x");
    project_.Add(CAE_TAG, L"y");
    project_.Add(CAE_TAG, L"y").setDBKey(L"K-2");
    const ImportReport report = Update(
        R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"x","dbkey":""},)"
        R"({"type":"CAEPART","name":"x"},{"type":"CAETAG","name":"y"},{"type":"CAETAG","name":"y"}]})");
    EXPECT_EQ(report.objectsAdded, 0U);
    EXPECT_EQ(report.objectsMatched, 5U);
}

TEST_F(UpdateDocumentTest, AViewItemKeepsTheLinkThatTheDocumentDoesNotName) {
    CAEObject& item = project_.Add(CAE_VIEW_ITEM, L"v");
    item.setLinkDBKey(L"ITEM");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEVIEWITEM","name":"v"}]})");
    // The document asks for nothing to be shown.
    EXPECT_EQ(report.Count(Reason::kNoMasterAssembly), 0U);
    EXPECT_EQ(report.viewItems, 1U);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 v ->ITEM\n");
}

TEST_F(UpdateDocumentTest, KeepsWhatTheDocumentLacks) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    SetMetadata(part, L"Mass", L"3");
    project_.AddFile(part, L"a.inp", CAE_FILE_DECK);
    project_.Add(part, CAE_TAG, L"below");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p","children":[],)"
               R"("metaData":{},"files":[]}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p {Mass=3} [#3 a.inp]\n    #4 below\n");
    EXPECT_EQ(report.Count(Reason::kKept), 3U);
    EXPECT_FALSE(report.HasChanged());
}

TEST_F(UpdateDocumentTest, RemovesObjectsWhenAsked) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    SetMetadata(part, L"Mass", L"3");
    project_.AddFile(part, L"a.inp", CAE_FILE_DECK);
    project_.Add(part, CAE_TAG, L"below");
    project_.Add(project_.Add(CAE_MODEL, L"gone"), CAE_PART, L"with it");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p","children":[],)"
               R"("metaData":{},"files":[]}]})",
               {.remove = true});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p {Mass=3} [#3 a.inp]\n");
    EXPECT_EQ(report.Count(Reason::kKept), 2U);
    EXPECT_EQ(report.Count(Reason::kRemoved), 2U);
    EXPECT_EQ(report.objectsRemoved, 3U);
    EXPECT_EQ(project_->getCAEObject(4), nullptr);
    EXPECT_EQ(project_->getCAEObject(5), nullptr);
    EXPECT_EQ(project_->getCAEObject(6), nullptr);
}

TEST_F(UpdateDocumentTest, RemovesNothingWhereThereAreNoChildrenInTheDocument) {
    project_.Add(project_.Add(CAE_PART, L"p"), CAE_TAG, L"below");
    Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p"}]})", {.remove = true});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p\n    #3 below\n");
    Update(R"({"type":"SIMULATION"})", {.remove = true});
    Update(R"({"type":"SIMULATION","children":"none"})", {.remove = true});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p\n    #3 below\n");
}

TEST_F(UpdateDocumentTest, DoesNotRemoveWhatMovesOutOfTheRemoved) {
    CAEObject& gone = project_.Add(CAE_MODEL, L"gone");
    CAEObject& deeper = project_.Add(gone, CAE_MODEL, L"deeper");
    project_.Add(deeper, CAE_PART, L"p").setDBKey(L"K-1");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEMODEL","name":"new","children":[)"
               R"({"type":"CAEPART","name":"p","dbkey":"K-1"}]}]})",
               {.remove = true});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #5 new\n    #4 p K-1\n");
    EXPECT_EQ(report.objectsMoved, 1U);
}

TEST_F(UpdateDocumentTest, ChildrenTwiceAreRemovedOnlyWhereNeitherHasThem) {
    project_.Add(CAE_PART, L"a");
    project_.Add(CAE_PART, L"b");
    project_.Add(CAE_PART, L"c");
    Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"a"}],)"
           R"("children":[{"type":"CAEPART","name":"b"}]})",
           {.remove = true});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 a\n  #3 b\n");
}

TEST_F(UpdateDocumentTest, BringsHeadersInLine) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    part.setDBKey(L"K-1");
    const std::string text = R"({"type":"SIMULATION","name":"Shown","dbkey":"P-1","displayName":"Called",)"
                             R"("createdDate":"then","children":[{"type":"CAEPART","dbkey":"K-1",)"
                             R"("name":"q","createdDate":"now"}]})";
    const ImportReport report = Update(text, {.sameRoot = true});
    EXPECT_EQ(Outline(*project_), "#1 Called P-1\n  #2 q K-1\n");
    OuString date;
    part.getCreatedDate(date);
    EXPECT_EQ(date, L"now");
    project_->getCreatedDate(date);
    EXPECT_EQ(date, L"then");
    EXPECT_EQ(ListedChanges(report),
              "/dbkey changed #1\n/displayName changed #1\n/createdDate changed #1\n"
              "/children/0/name changed #2\n/children/0/createdDate changed #2\n");
}

TEST_F(UpdateDocumentTest, BringsMetadataInLine) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    SetMetadata(part, L"Mass", L"3", L"kg", L"kg");
    SetMetadata(part, L"Other", L"x");
    const ImportReport report =
        Update(R"({"type":"CAEPART","metaData":{"Mass":{"value":"4","metaDataType":"kg"},)"
               R"("New":{"value":"1","metaDataType":"mm"}}})",
               part);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p {Mass=4 kg} {Other=x} {New=1}\n");
    OuString type;
    part.getMetadataType(L"New", type);
    EXPECT_EQ(type, L"mm");
    EXPECT_EQ(Listed(report, [](auto reason) { return IsChange(reason) || reason == Reason::kKept; }),
              "/metaData/Mass changed #2\n/metaData/New changed #2\n/metaData kept #2\n");
}

TEST_F(UpdateDocumentTest, TheUnitOfAnEntryInItsOwnDocumentChangesNoType) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    SetMetadata(part, L"Mass", L"3", L"kg", L"number");
    const ImportReport report = Update(OwnDocument(*project_));
    OuString type;
    part.getMetadataType(L"Mass", type);
    EXPECT_EQ(type, L"number");
    EXPECT_EQ(ListedChanges(report), "");
}

TEST_F(UpdateDocumentTest, AnotherTypeOfAnEntryIsSet) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    SetMetadata(part, L"Mass", L"3", L"kg", L"number");
    const ImportReport report =
        Update(R"({"type":"CAEPART","metaData":{"Mass":{"value":"3","metaDataType":"text"}}})", part);
    OuString type;
    part.getMetadataType(L"Mass", type);
    EXPECT_EQ(type, L"text");
    EXPECT_EQ(ListedChanges(report), "/metaData/Mass/metaDataType changed #2\n");
}

TEST_F(UpdateDocumentTest, FilesAreMatchedByKey) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    project_.AddFile(part, L"a.inp", CAE_FILE_DECK).setDBKey(L"F-1");
    const ImportReport report =
        Update(R"({"type":"CAEPART","files":[{"name":"b.inp","fileType":"Deck","dbkey":"F-1"}]})", part);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p [#3 b.inp F-1]\n");
    OuString path;
    project_->getFile(3)->getFullPathName(path);
    EXPECT_EQ(path, L"/studies/b.inp");
    EXPECT_EQ(report.filesMatched, 1U);
    EXPECT_EQ(report.filesAdded, 0U);
    EXPECT_EQ(ListedChanges(report), "/files/0/name changed #3\n");
}

TEST_F(UpdateDocumentTest, FilesAreMatchedByNameAndType) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    project_.AddFile(part, L"a.inp", CAE_FILE_MESH);
    project_.AddFile(part, L"a.inp", CAE_FILE_DECK);
    const ImportReport report =
        Update(R"({"type":"CAEPART","files":[{"name":"a.inp","fileType":"Deck","dbkey":"F-1"},)"
               R"({"name":"a.inp","fileType":"Report"}]})",
               part);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p [#3 a.inp] [#4 a.inp F-1] [#5 a.inp]\n");
    EXPECT_EQ(report.filesMatched, 1U);
    EXPECT_EQ(report.filesAdded, 1U);
    EXPECT_EQ(report.Count(Reason::kKept), 1U);
}

TEST_F(UpdateDocumentTest, EqualFilesAreTakenInTheirOrder) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    project_.AddFile(part, L"a.inp", CAE_FILE_DECK);
    project_.AddFile(part, L"a.inp", CAE_FILE_DECK);
    Update(R"({"type":"CAEPART","files":[{"name":"a.inp","fileType":"Deck","dbkey":"F-1"},)"
           R"({"name":"a.inp","fileType":"Deck","dbkey":"F-2"},)"
           R"({"name":"a.inp","fileType":"Deck","dbkey":"F-3"}]})",
           part);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p [#3 a.inp F-1] [#4 a.inp F-2] [#5 a.inp F-3]\n");
}

TEST_F(UpdateDocumentTest, AFileThatIsAttachedElsewhereIsAttachedHereToo) {
    CAEObject& first = project_.Add(CAE_PART, L"p");
    project_.AddFile(first, L"a.inp", CAE_FILE_DECK).setDBKey(L"F-1");
    project_.Add(CAE_PART, L"q");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"q","files":[)"
               R"({"name":"a.inp","fileType":"Deck","dbkey":"F-1"}]}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p [#3 a.inp F-1]\n  #4 q [#3 a.inp F-1]\n");
    EXPECT_EQ(report.filesMatched, 1U);
    EXPECT_EQ(report.filesAdded, 0U);
    EXPECT_TRUE(report.HasChanged());
}

TEST_F(UpdateDocumentTest, AKeyTwiceAmongFilesOfOneObjectIsAConflict) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    const ImportReport report =
        Update(R"({"type":"CAEPART","files":[{"name":"a.inp","fileType":"Deck","dbkey":"F-1"},)"
               R"({"name":"b.inp","fileType":"Deck","dbkey":"F-1"}]})",
               part);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p\n");
    EXPECT_EQ(report.Count(Reason::kConflict), 2U);
}

TEST_F(UpdateDocumentTest, AFileOfOneObjectMayStandInAnotherToo) {
    // An export writes such a file in both records.
    CAEObject& first = project_.Add(CAE_PART, L"p");
    CAEFile& file = project_.AddFile(first, L"a.inp", CAE_FILE_DECK);
    file.setDBKey(L"F-1");
    AttachFile(project_.Add(CAE_PART, L"q"), file.getID(), CAE_FILE_DECK);
    const ImportReport report = Update(OwnDocument(*project_));
    EXPECT_EQ(report.Count(Reason::kConflict), 0U) << Whole(report);
    EXPECT_FALSE(report.HasChanged());
}

TEST_F(UpdateDocumentTest, AFileWithoutAKeyMayStandInTwoObjects) {
    CAEFile& file = project_.AddFile(project_.Add(CAE_PART, L"p"), L"a.inp", CAE_FILE_DECK);
    AttachFile(project_.Add(CAE_PART, L"q"), file.getID(), CAE_FILE_DECK);
    const ImportReport own = Update(OwnDocument(*project_));
    EXPECT_FALSE(own.HasChanged()) << Whole(own);
    EXPECT_EQ(own.filesMatched, 2U);
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p","files":[)"
               R"({"name":"a.inp","fileType":"Deck","fileFormat":"ASCII"}]},{"type":"CAEPART","name":"q",)"
               R"("files":[{"name":"a.inp","fileType":"Deck","fileFormat":"Binary"}]}]})");
    EXPECT_EQ(Listed(report), "/children/1/files/0 conflict #3\n");
}

TEST_F(UpdateDocumentTest, FileMembersAreBroughtInLine) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    CAEFile& file = project_.AddFile(part, L"a.inp", CAE_FILE_DECK);
    file.setDBKey(L"F-1");
    const ImportReport report =
        Update(R"({"type":"CAEPART","files":[{"name":"a.inp","fileType":"Report","fileFormat":"Binary",)"
               R"("locationType":"Vault","createdDate":"then","dbkey":"F-1",)"
               R"("metaData":{"Pages":{"value":"3","metaDataType":""}}}]})",
               part);
    EXPECT_EQ(file.getFileType(), CAE_FILE_REPORT);
    EXPECT_EQ(file.getFileFormat(), CAE_FORMAT_BINARY);
    EXPECT_EQ(file.m_locationType, L"Vault");
    EXPECT_EQ(ListedChanges(report),
              "/files/0/createdDate changed #3\n/files/0/metaData/Pages changed #3\n"
              "/files/0/fileType changed #3\n/files/0/locationType changed #3\n"
              "/files/0/fileFormat changed #3\n/files/0 changed #3\n");
}

TEST_F(UpdateDocumentTest, AFileThatShowsNowhereIsNotMadeAgainAndAgain) {
    CAEObject& model = project_.Add(CAE_MODEL, L"m");
    const ImportReport report =
        Update(R"({"type":"CAEMODEL","files":[{"name":"a.msh","fileType":"Mesh"}]})", model);
    EXPECT_EQ(Listed(report), "/files/0 no-role #0\n");
    EXPECT_EQ(korvane::GetProjectFiles(*project_).size(), 0U);
}

TEST_F(UpdateDocumentTest, FileFlagsAreSetOnNewFilesOnly) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    const std::string text =
        R"({"type":"CAEPART","files":[{"name":"a.inp","fileType":"Deck","isFileDownloaded":"true",)"
        R"("isInCoordinateGlobalFrame":"true"}]})";
    Import(text, part, {.match = Match::kByKey});
    EXPECT_TRUE(korvane::IsDownloaded(*project_->getFile(3)));
    EXPECT_TRUE(korvane::IsInGlobalFrame(*project_->getFile(3)));
    const ImportReport second = Import(text, part, {.match = Match::kByKey});
    EXPECT_EQ(second.Count(Reason::kNotComparable), 2U);
    EXPECT_FALSE(second.HasChanged());
}

TEST_F(UpdateDocumentTest, AViewItemIsKnownByItsOwnKey) {
    CAEObject& assembly = project_.Add(CAE_SUBASSEMBLY, L"a");
    assembly.setDBKey(L"ITEM");
    CAEObject& item = project_.Add(CAE_VIEW_ITEM, L"v");
    item.setDBKey(L"OWN");
    item.setLinkDBKey(L"ITEM");
    const ImportReport report = Update(OwnDocument(*project_));
    EXPECT_FALSE(report.HasChanged()) << Whole(report);
    EXPECT_EQ(report.objectsMatched, 3U);
    EXPECT_EQ(KeyOf(item), "OWN");
}

TEST_F(UpdateDocumentTest, AViewItemIsTakenOnceByItsOwnKey) {
    project_.Add(CAE_VIEW_ITEM, L"v").setDBKey(L"OWN");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEVIEWITEM","name":"v","dbkey":"OWN"},)"
               R"({"type":"CAEVIEWITEM","name":"w","dbkey":"OWN"}]})");
    EXPECT_EQ(report.objectsMatched, 2U);
    EXPECT_EQ(report.objectsAdded, 1U);
}

TEST_F(UpdateDocumentTest, AViewItemIsKnownByItsLinkKey) {
    project_.Add(CAE_SUBASSEMBLY, L"a").setDBKey(L"ITEM");
    const std::string text = R"({"type":"SIMULATION","children":[{"type":"CAEVIEWITEM","name":"v",)"
                             R"("dbkey":"ITEM"},{"type":"CAEVIEWITEM","name":"w","dbkey":"ITEM"}]})";
    const ImportReport report = Update(text);
    EXPECT_EQ(Outline(*project_),
              "#1 Project\n  #2 a ITEM\n  #3 v ->ITEM shows #2\n  #4 w ->ITEM shows #2\n");
    EXPECT_EQ(report.viewItems, 2U);
    EXPECT_EQ(report.viewItemsLinked, 2U);
    EXPECT_EQ(report.Count(Reason::kConflict), 0U);
}

TEST_F(UpdateDocumentTest, AViewItemIsLinkedWhenItsAssemblyComes) {
    const std::string item = R"({"type":"CAEVIEWITEM","name":"v","dbkey":"ITEM"})";
    const ImportReport first = Update(R"({"type":"SIMULATION","children":[)" + item + "]}");
    EXPECT_EQ(first.Count(Reason::kNoMasterAssembly), 1U);
    Import(R"({"type":"SIMULATION","children":[{"type":"CAESUBASSEMBLY","name":"a","dbkey":"ITEM"},)" + item +
               "]}",
           {.match = Match::kByKey});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 v ->ITEM shows #3\n  #3 a ITEM\n");
}

TEST_F(UpdateDocumentTest, InnerProjects) {
    CAEObject& inner = project_.Add(CAE_PROJECT, L"inner");
    inner.setDBKey(L"P-2");
    project_.Add(inner, CAE_PART, L"p");
    static_cast<CAEProject&>(inner).setAdditionalType(L"CAEPROJECT");
    const ImportReport own = Update(OwnDocument(*project_));
    EXPECT_FALSE(own.HasChanged()) << Whole(own);
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPROJECT","dbkey":"P-2","name":"Shown",)"
               R"("children":[{"type":"CAEPART","name":"p","dbkey":"K-1"}]}]})");
    EXPECT_EQ(report.objectsAdded, 0U);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 inner P-2\n    #3 p K-1\n");
    // What a project shows as its name cannot be read back.
    EXPECT_EQ(korvane::GetDisplayName(static_cast<CAEProject&>(inner)), L"");
    EXPECT_EQ(Listed(report, [](auto reason) { return reason == Reason::kNotComparable; }),
              "/children/0/name not-comparable #2\n");
}

TEST_F(UpdateDocumentTest, ASessionObjectIsARootOnly) {
    CAEObject& session = project_.Add(CAE_SESSION_OBJECT, L"s");
    project_.Add(session, CAE_PART, L"p");
    const ImportReport own = Update(OwnDocument(session), session);
    EXPECT_FALSE(own.HasChanged()) << Whole(own);
    EXPECT_EQ(own.objectsMatched, 2U);
    const ImportReport report = Update(
        R"({"type":"SIMULATION","children":[{"type":"CAESESSIONOBJECT","name":"s"}]})", {.remove = true});
    EXPECT_EQ(report.Count(Reason::kUnknownType), 1U);
    // No document has it among its children, so that it lacks says nothing.
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 s\n    #3 p\n");
}

TEST_F(UpdateDocumentTest, TheOrderOfWhatIsThereStays) {
    for (const wchar_t* const name : {L"a", L"b", L"c"}) {
        project_.Add(CAE_PART, name).setDBKey(name);
    }
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"c","dbkey":"c"},)"
               R"({"type":"CAEPART","name":"a","dbkey":"a"},{"type":"CAEPART","name":"new"},)"
               R"({"type":"CAEPART","name":"b","dbkey":"b"}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 a a\n  #3 b b\n  #4 c c\n  #5 new\n");
    EXPECT_EQ(ListedChanges(report), "/children/2 added #5\n");
}

TEST_F(UpdateDocumentTest, AnEmptyKeyRemovesTheKey) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    part.setDBKey(L"K-1");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p","dbkey":""}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p\n");
    EXPECT_EQ(ListedChanges(report), "/children/0/dbkey changed #2\n");
}

TEST_F(UpdateDocumentTest, ANullKeyIsNoKey) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    part.setDBKey(L"K-1");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p","dbkey":null}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p K-1\n");
    EXPECT_EQ(Listed(report), "/children/0/dbkey null-key #2\n");
}

TEST_F(UpdateDocumentTest, ARootWithAnotherKeyThanItsTargetIsAConflict) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    part.setDBKey(L"K-1");
    const ImportReport report = Update(R"({"type":"CAEPART","name":"q","dbkey":"K-2"})", part);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p K-1\n");
    EXPECT_EQ(Listed(report), " conflict #2\n");
    EXPECT_FALSE(report.hasRoot);
    EXPECT_EQ(report.root, 0);
}

TEST_F(UpdateDocumentTest, ARootWithTheKeyOfAnotherObjectIsAConflict) {
    project_.Add(CAE_PART, L"p").setDBKey(L"K-1");
    const ImportReport report =
        Update(R"({"type":"CAEPART","name":"q","dbkey":"K-1"})", project_.Add(CAE_PART, L"q"));
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p K-1\n  #3 q\n");
    EXPECT_EQ(Listed(report), " conflict #3\n");
}

TEST_F(UpdateDocumentTest, FilesOfOtherTypesThanTheirRecordsSayAreOthers) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    project_.AddFile(part, L"a.inp", CAE_FILE_DECK);
    const ImportReport report = Update(R"({"type":"CAEPART","files":[{"name":"a.inp"}]})", part);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p [#3 a.inp] [#4 a.inp]\n");
    EXPECT_EQ(report.filesAdded, 1U);
}

TEST_F(UpdateDocumentTest, AFileIsNotAttachedWhereItHasNoRole) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    project_.AddFile(part, L"a.msh", CAE_FILE_MESH).setDBKey(L"F-1");
    project_.Add(CAE_MODEL, L"m");
    for (const char* const type : {R"(,"fileType":"Mesh")", ""}) {
        const ImportReport report = Update(R"({"type":"SIMULATION","children":[{"type":"CAEMODEL",)"
                                           R"("name":"m","files":[{"name":"a.msh","dbkey":"F-1")" +
                                           std::string(type) + "}]}]}");
        EXPECT_EQ(Listed(report), "/children/0/files/0 no-role #0\n/children kept #2\n");
    }
}

TEST_F(UpdateDocumentTest, AFileInAFolderOrElsewhereIsFoundAgain) {
    const std::string text = R"({"type":"SIMULATION","files":[{"name":"sub/a.inp"},{"name":"../a.inp"},)"
                             R"({"name":"sub/b.inp","dbkey":"F-1"}]})";
    const ImportReport report = Update(text, {.allowStrayFiles = true});
    EXPECT_EQ(report.filesAdded, 3U);
    EXPECT_EQ(Outline(*project_), "#1 Project [#2 sub/a.inp] [#3 ../a.inp] [#4 sub/b.inp F-1]\n");
    OuString path;
    project_->getFile(3)->getFullPathName(path);
    EXPECT_EQ(path, L"/studies/../a.inp");
}

TEST_F(UpdateDocumentTest, ANewFileOfTwoObjectsIsOneFile) {
    const std::string record =
        R"({"name":"a.inp","fileType":"Deck","dbkey":"F-1","isFileDownloaded":"true"})";
    const std::string text = R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p","files":[)" +
                             record + "," + record + R"(]},{"type":"CAEPART","name":"q","files":[)" + record +
                             "]}]}";
    ImportReport said = Import(text, {.match = Match::kByKey, .dryRun = true});
    ImportReport done = Import(text, {.match = Match::kByKey});
    EXPECT_EQ(Unnumbered(Whole(said)), Unnumbered(Whole(done)));
    EXPECT_EQ(Numbers(said), Numbers(done));
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p [#3 a.inp F-1]\n  #4 q [#3 a.inp F-1]\n");
    EXPECT_EQ(done.filesAdded, 1U);
    EXPECT_EQ(done.filesMatched, 2U);
    EXPECT_EQ(ChangesBy([&] { done = Import(text, {.match = Match::kByKey}); }), "");
    EXPECT_FALSE(done.HasChanged());
}

TEST_F(UpdateDocumentTest, RecordsOfOneFileThatDifferAreAConflict) {
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p","files":[)"
               R"({"name":"a.inp","dbkey":"F-1"}]},{"type":"CAEPART","name":"q","files":[)"
               R"({"name":"b.inp","dbkey":"F-1"}]}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p\n  #3 q\n");
    EXPECT_EQ(report.Count(Reason::kConflict), 2U);
}

TEST_F(UpdateDocumentTest, AKeyOfAnObjectAndAFileInTheDocumentIsAConflict) {
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p","dbkey":"K"}],)"
               R"("files":[{"name":"a.inp","dbkey":"K"}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n");
    EXPECT_EQ(report.Count(Reason::kConflict), 2U);
}

TEST_F(UpdateDocumentTest, AProjectIsKnownByTheTypeThatAnExportWrites) {
    CAEObject& inner = project_.Add(CAE_PROJECT, L"inner");
    static_cast<CAEProject&>(inner).setAdditionalType(L"Crash");
    project_.Add(inner, CAE_PART, L"p");
    const std::string own = OwnDocument(*project_);
    ImportReport report = Update(own, {.remove = true});
    EXPECT_FALSE(report.HasChanged()) << Whole(report);
    EXPECT_EQ(report.objectsMatched, 3U);
    inner.setDBKey(L"P-2");
    report = Update(OwnDocument(*project_), {.remove = true});
    EXPECT_FALSE(report.HasChanged()) << Whole(report);
    EXPECT_EQ(report.objectsMatched, 3U);
}

TEST_F(UpdateDocumentTest, WhatIsLeftOutIsNotMissing) {
    project_.Add(CAE_PART, L"a").setDBKey(L"A");
    project_.Add(CAE_PART, L"b").setDBKey(L"B");
    const ImportReport report = Update(R"({"type":"SIMULATION","children":[{"name":"a","dbkey":"A"},)"
                                       R"({"type":"CAECAR","name":"b","dbkey":"B"}]})",
                                       {.remove = true});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 a A\n  #3 b B\n");
    EXPECT_EQ(report.Count(Reason::kRemoved), 0U);
}

TEST_F(UpdateDocumentTest, AProjectWithoutATypeStays) {
    project_.Add(project_.Add(CAE_PROJECT, L"inner"), CAE_PART, L"p");
    project_.Add(CAE_PROJECT, L"inner");
    const ImportReport report = Update(OwnDocument(*project_), {.remove = true});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 inner\n    #3 p\n  #4 inner\n");
    EXPECT_EQ(report.Count(Reason::kNoType), 2U);
    EXPECT_FALSE(report.HasChanged());
}

TEST_F(UpdateDocumentTest, ObjectsWithKeysInConflictStay) {
    project_.Add(CAE_PART, L"a").setDBKey(L"K");
    project_.Add(CAE_PART, L"b").setDBKey(L"K");
    const ImportReport report = Update(OwnDocument(*project_), {.remove = true});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 a K\n  #3 b K\n");
    EXPECT_EQ(report.Count(Reason::kConflict), 2U);
}

TEST_F(UpdateDocumentTest, WhatIsInConflictIsNotSaidToBeMissing) {
    CAEObject& folder = project_.Add(CAE_ASSEMBLY_FOLDER, L"folder");
    project_.Add(folder, CAE_PART, L"p1").setDBKey(L"K");
    project_.Add(CAE_PART, L"p2").setDBKey(L"K");
    project_.AddFile(*project_, L"a.inp", CAE_FILE_DECK).setDBKey(L"F");
    project_.Add(CAE_TAG, L"missing");
    const std::string text =
        R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p1","dbkey":"K"},)"
        R"({"type":"CAETAG","name":"t","dbkey":"F"}],"files":[{"name":"a.inp","dbkey":"F"}]})";
    for (const bool removes : {false, true}) {
        const ImportReport report = Update(text, {.remove = removes});
        // The folder is missing, and stays because of what lies below it.
        EXPECT_EQ(Listed(report), std::string("/children/0 conflict #0\n/children/1 conflict #0\n"
                                              "/files/0 conflict #5\n/children kept #2\n/children ") +
                                      (removes ? "removed" : "kept") + " #6\n");
    }
    EXPECT_EQ(Outline(*project_), "#1 Project [#5 a.inp F]\n  #2 folder\n    #3 p1 K\n  #4 p2 K\n");
}

TEST_F(UpdateDocumentTest, SaysValuesWithTheirUnits) {
    SetMetadata(project_.Add(CAE_PART, L"p"), L"Mass", L"3", L"kg");
    const auto said = [&](const std::string& records) {
        const ImportReport report =
            Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"p","metaData":{)" + records +
                   "}}]}");
        std::string sentences;
        for (const auto& entry : report.entries) {
            sentences += entry.reason == Reason::kChanged ? entry.sentence + "\n" : "";
        }
        return sentences;
    };
    EXPECT_EQ(said(R"("Mass":{"value":"4","metaDataType":"g"},"Name":{"value":"x","metaDataType":""},)"
                   R"("Width":{"value":"2","metaDataType":"mm"})"),
              "the metadata entry 'Mass' of 'p' (id 2): '3 kg' becomes '4 g'\n"
              "the metadata entry 'Name' of 'p' (id 2): '' becomes 'x'\n"
              "the metadata entry 'Width' of 'p' (id 2): '' becomes '2 mm'\n");
}

TEST_F(UpdateDocumentTest, NamelessViewItemsAreMatchedByTheNameOfTheirExport) {
    project_.Add(CAE_VIEW_ITEM, L"");
    const ImportReport report = Update(OwnDocument(*project_));
    EXPECT_FALSE(report.HasChanged()) << Whole(report);
}

TEST_F(UpdateDocumentTest, WhatADocumentCannotSayIsNotLost) {
    // Lone surrogates are written as the bytes that they stand for, and a text ends at its NUL character.
    CAEObject& part = project_.Add(CAE_PART, OuString(L"\xDCC3\xDCBC"));
    SetMetadata(part, L"Mass", OuString(L"\xDCC3\xDCBC"), OuString(L"\xDCC3\xDCBC"));
    part.setDBKey(OuString(L"\xDCC3\xDCBC"));
    const std::string text = OwnDocument(*project_);
    const ImportReport report = Update(text, {.remove = true});
    EXPECT_FALSE(report.HasChanged()) << Whole(report) << text;
}

TEST_F(UpdateDocumentTest, AFileOfAnUnnamedTypeIsTheOneOfItsRecord) {
    CAEObject& part = project_.Add(CAE_PART, L"p");
    project_.AddFile(part, L"a.inp", static_cast<_tagFileType>(99));
    const ImportReport report = Update(OwnDocument(*project_));
    EXPECT_FALSE(report.HasChanged()) << Whole(report);
    EXPECT_EQ(project_->getFile(3)->getFileType(), static_cast<_tagFileType>(99));
}

TEST_F(UpdateDocumentTest, CountsEveryRemovedObject) {
    CAEObject& gone = project_.Add(CAE_MODEL, L"gone");
    CAEObject& below = project_.Add(gone, CAE_PART, L"p");
    project_.Add(gone, CAE_FILE, L"a.inp");
    project_.Add(below, CAE_TAG, L"moves").setDBKey(L"T");
    const ImportReport report =
        Update(R"({"type":"SIMULATION","children":[{"type":"CAETAG","dbkey":"T"}]})", {.remove = true});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #5 moves T\n");
    EXPECT_EQ(report.objectsRemoved, 2U);
}

TEST_F(UpdateDocumentTest, WhatAConflictLiesBelowStaysUnlessItMoves) {
    CAEObject& gone = project_.Add(CAE_MODEL, L"gone");
    CAEObject& moves = project_.Add(gone, CAE_MODEL, L"moves");
    moves.setDBKey(L"M");
    project_.Add(moves, CAE_PART, L"twice").setDBKey(L"K");
    project_.Add(project_.Add(CAE_MODEL, L"stays"), CAE_PART, L"twice").setDBKey(L"K");
    Update(R"({"type":"SIMULATION","children":[{"type":"CAEMODEL","dbkey":"M"},)"
           R"({"type":"CAEPART","dbkey":"K"}]})",
           {.remove = true});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #5 stays\n    #6 twice K\n  #3 moves M\n    #4 twice K\n");
}

TEST_F(UpdateDocumentTest, AViewItemThatShowsNothingIsReportedEveryTime) {
    const std::string text = R"({"type":"SIMULATION","children":[{"type":"CAEVIEWITEM","name":"v",)"
                             R"("dbkey":"ITEM"},{"type":"CAEVIEWITEM","name":"w"}]})";
    EXPECT_EQ(Update(text).Count(Reason::kNoMasterAssembly), 2U);
    const ImportReport report = Update(text);
    EXPECT_EQ(Listed(report), "/children/0 no-master-assembly #2\n");
    EXPECT_EQ(report.viewItems, 2U);
    EXPECT_EQ(report.viewItemsLinked, 0U);
}

TEST_F(UpdateDocumentTest, KeysOfObjectsOutsideTheTargetAreNotTaken) {
    // "An object below the target": another one with the key is a conflict of place.
    CAEObject& first = project_.Add(CAE_MODEL, L"a");
    project_.Add(CAE_PART, L"p").setDBKey(L"K-1");
    const ImportReport report =
        Update(R"({"type":"CAEMODEL","children":[{"type":"CAEPART","name":"p","dbkey":"K-1"}]})", first);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 a\n  #3 p K-1\n");
    EXPECT_EQ(report.Count(Reason::kConflict), 1U);
}

TEST_F(UpdateDocumentTest, AnObjectThatGetsTheKeyOfAnotherLaterIsNotTakenTwice) {
    // The first element takes the key that the second has in the tree: by name it would be matched.
    project_.Add(CAE_PART, L"a").setDBKey(L"1");
    project_.Add(CAE_PART, L"b").setDBKey(L"2");
    Update(R"({"type":"SIMULATION","children":[{"type":"CAEPART","name":"a","dbkey":"2"},)"
           R"({"type":"CAEPART","name":"b","dbkey":"1"}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 b 1\n  #3 a 2\n");
}

TEST_F(UpdateDocumentTest, NamelessObjectsAreMatchedByTheNameOfTheirExport) {
    project_.Add(CAE_PART, L"");
    const ImportReport report = Update(OwnDocument(*project_));
    EXPECT_FALSE(report.HasChanged()) << Whole(report);
    EXPECT_EQ(report.objectsMatched, 2U);
}
