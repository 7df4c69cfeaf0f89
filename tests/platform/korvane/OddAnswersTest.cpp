#include <EmbeddedOddAnswers.h>
#include <EmbeddedRecording.h>
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <thread>

#include "Ask.h"
#include "support/ModelBuilders.h"

namespace {

using korvane::OddAnswer;
using Notes = std::vector<std::string>;

/// A part with an entry, under a project: 2 below 1. The part's file is 3.
struct Model {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Door");
    CAEFile& file = project.AddFile(part, L"door.cad", CAE_FILE_CAD);

    Model() { SetMetadata(part, L"Mass", L"12", L"kg", L"number"); }
};

TEST(OddAnswers, AnObjectSaysThatItIsOfAnotherKindThanItsClass) {
    Model m;
    {
        const OddAnswer odd("CAEObject::getType(#2)", {.type = CAE_PROJECT}, OddAnswer::kAlways);
        EXPECT_EQ(m.part.getType(), CAE_PROJECT);
        EXPECT_EQ(m.part.getType(), CAE_PROJECT);
        EXPECT_EQ(m.file.getType(), CAE_FILE);
        EXPECT_EQ(odd.TimesGiven(), 2);
    }
    EXPECT_EQ(m.part.getType(), CAE_PART);
}

TEST(OddAnswers, ANewIdentifierMeansNoObject) {
    Model m;
    int id = 0;
    ASSERT_EQ(createCAEObject(&*m.project, 1, CAE_TAG, id), 0);
    const OddAnswer odd("CAEProject::getCAEObject", {.object = nullptr});
    EXPECT_EQ(m.project->getCAEObject(id), nullptr);
    EXPECT_NE(m.project->getCAEObject(id), nullptr);
}

TEST(OddAnswers, AnIdentifierMeansAnotherObject) {
    Model m;
    const OddAnswer object("CAEProject::getCAEObject(#1, 2)", {.object = &m.file});
    EXPECT_EQ(m.project->getCAEObject(2), &m.file);
    const OddAnswer file("CAEProject::getFile", {.object = &m.file});
    EXPECT_EQ(m.project->getFile(2), &m.file);
    const OddAnswer noFile("CAEProject::getFile", {.object = &m.part});
    EXPECT_EQ(m.project->getFile(3), nullptr);
}

TEST(OddAnswers, AnObjectHasNoParentAndNoProject) {
    Model m;
    TestProject other;
    const OddAnswer orphan("CAEObject::getParent", {.object = nullptr});
    EXPECT_EQ(m.part.getParent(), nullptr);
    const OddAnswer homeless("CAEObject::getProject", {.object = nullptr});
    EXPECT_EQ(m.part.getProject(), nullptr);
    const OddAnswer elsewhere("CAEObject::getProject", {.object = &*other});
    EXPECT_EQ(m.part.getProject(), &*other);
    const OddAnswer noProject("CAEObject::getProject", {.object = &m.file});
    EXPECT_EQ(m.part.getProject(), nullptr);
}

TEST(OddAnswers, MetadataLookUpsFailAndLeaveTheTextAlone) {
    Model m;
    OuString text(L"as it was");
    const OddAnswer type("CAEObject::getMetadataType", {.status = 1});
    EXPECT_EQ(m.part.getMetadataType(L"Mass", text), 1);
    const OddAnswer unit("CAEObject::getMetadataUnitString", {.status = -1});
    EXPECT_EQ(m.part.getMetadataUnitString(L"Mass", text), -1);
    const OddAnswer value("CAEObject::getMetadataValue(#2, \"Mass\")", {.status = 7});
    EXPECT_EQ(m.part.getMetadataValue(L"Mass", text), 7);
    EXPECT_EQ(TextOf(text), "as it was");
    EXPECT_EQ(MetadataValueOf(m.part, L"Mass"), "12");
}

TEST(OddAnswers, CreatingFailsOrWritesNoIdentifierOrBoth) {
    Model m;
    int id = 77;
    const OddAnswer failure("createCAEObject", {.status = 1});
    EXPECT_EQ(createCAEObject(&*m.project, 1, CAE_TAG, id), 1);
    EXPECT_EQ(id, 77);
    const OddAnswer noIdentifier("createCAEObject", {.status = 0});
    EXPECT_EQ(createCAEObject(&*m.project, 1, CAE_TAG, id), 0);
    EXPECT_EQ(id, 77);
    const OddAnswer both("createCAEObject", {.status = 1, .identifier = 2});
    EXPECT_EQ(createCAEObject(&*m.project, 1, CAE_TAG, id), 1);
    EXPECT_EQ(id, 2);
    EXPECT_EQ(ChildIdsOf(*m.project), std::vector<int>{2});
}

TEST(OddAnswers, AnItemHasAMasterAssemblyThatIsNone) {
    Model m;
    int id = 0;
    const OddAnswer both("getMasterAssemblyCAEIDByITEMID", {.status = 1, .identifier = 3});
    EXPECT_EQ(getMasterAssemblyCAEIDByITEMID(&*m.project, L"K", id), 1);
    EXPECT_EQ(id, 3);
    const OddAnswer neither("getMasterAssemblyCAEIDByITEMID", {.status = 0});
    EXPECT_EQ(getMasterAssemblyCAEIDByITEMID(&*m.project, L"K", id), 0);
    EXPECT_EQ(id, 3);
}

TEST(OddAnswers, NamesOfKindsAreNull) {
    const OddAnswer kind("CAEObject::getTypeName", {.text = nullptr});
    EXPECT_EQ(CAEObject::getTypeName(CAE_PART), nullptr);
    const OddAnswer fileKind("CAEGetFileTypeName(1)", {.text = nullptr});
    EXPECT_STREQ(CAEGetFileTypeName(2), "Mesh");
    EXPECT_EQ(CAEGetFileTypeName(1), nullptr);
    const OddAnswer otherName("CAEObject::getTypeName(0)", {.text = "Gadget"});
    EXPECT_STREQ(CAEObject::getTypeName(CAE_PART), "Gadget");
}

TEST(OddAnswers, AListOfChildrenHasNullEntries) {
    Model m;
    const OddAnswer odd("CAEObject::getChildrenList(#1)", {.children = {nullptr, &m.part, nullptr}});
    EXPECT_EQ(ChildrenOf(*m.project), (std::vector<CAEObject*>{nullptr, &m.part, nullptr}));
    EXPECT_EQ(ChildrenOf(*m.project), std::vector<CAEObject*>{&m.part});
}

TEST(OddAnswers, AVersionComesWithAStatusOrIsNullWithoutOne) {
    Model m;
    const CAEObject* version = &m.file;
    const OddAnswer null("CAEObject::getPointerToVersion", {.object = nullptr});
    EXPECT_EQ(m.part.getPointerToVersion(1, 0, version), 0);
    EXPECT_EQ(version, nullptr);
    const OddAnswer both("CAEObject::getPointerToVersion", {.status = 1, .object = &m.part});
    EXPECT_EQ(m.part.getPointerToVersion(1, 0, version), 1);
    EXPECT_EQ(version, &m.part);
}

TEST(OddAnswers, AVersionIsNotMade) {
    Model m;
    const OddAnswer odd("CAEObject::createNewVersion", {.status = 1});
    EXPECT_EQ(m.part.createNewVersion(0, 0, true, false), 1);
    EXPECT_EQ(VersionsOf(m.part), Numbers{});
}

TEST(OddAnswers, AChildIsNotTaken) {
    Model m;
    CAEObject* child = &m.part;
    CAEObject* const parent = child->getParent();
    ASSERT_EQ(parent->detachChild(child, false), 0);
    {
        const OddAnswer odd("CAEObject::addChild", {.status = 1});
        EXPECT_EQ(parent->addChild(&m.part), 1);
        EXPECT_EQ(m.part.getParent(), nullptr);
    }
    EXPECT_EQ(parent->addChild(&m.part), 0);
}

TEST(OddAnswers, EveryOperationCanThrowAndThenDoesNothing) {
    Model m;
    const OddAnswer odd("CAEObject::setName(#2, \"x\")", {.throws = true});
    m.part.setName(L"y");
    EXPECT_THROW(m.part.setName(L"x"), std::bad_alloc);
    EXPECT_EQ(NameOf(m.part), "y");
    EXPECT_NO_THROW(m.part.setName(L"x"));
    EXPECT_EQ(NameOf(m.part), "x");
}

TEST(OddAnswers, AreGivenAfterSomeCallsThatDoTheirWork) {
    Model m;
    const OddAnswer third("CAEObject::getType(#2)", {.type = CAE_TAG, .after = 2});
    const OddAnswer fromThen("CAEObject::getType(#3)", {.type = CAE_MODEL, .after = 1}, OddAnswer::kAlways);
    EXPECT_EQ(m.part.getType(), CAE_PART);
    EXPECT_EQ(m.file.getType(), CAE_FILE);
    EXPECT_EQ(m.part.getType(), CAE_PART);
    EXPECT_EQ(m.part.getType(), CAE_TAG);
    EXPECT_EQ(m.part.getType(), CAE_PART);
    EXPECT_EQ(m.file.getType(), CAE_MODEL);
    EXPECT_EQ(m.file.getType(), CAE_MODEL);
    EXPECT_EQ(third.TimesGiven(), 1);
    EXPECT_EQ(fromThen.TimesGiven(), 2);
}

TEST(OddAnswers, AnyOperationThrowsWhenItsTurnComes) {
    Model m;
    const OddAnswer third("", {.throws = true, .after = 2});
    m.part.setName(L"x");
    EXPECT_EQ(m.part.getID(), 2);
    EXPECT_THROW(m.part.setDBKey(L"K"), std::bad_alloc);
    EXPECT_EQ(TextOf(m.part.getDBKey()), "");
    EXPECT_EQ(NameOf(m.part), "x");
    EXPECT_EQ(third.TimesGiven(), 1);
}

TEST(OddAnswers, AnOperationThrowsWhatItIsToldTo) {
    Model m;
    const OddAnswer second(
        "",
        {.throws = true, .exception = std::make_exception_ptr(std::runtime_error("refused")), .after = 1});
    m.part.setName(L"x");
    EXPECT_EQ(second.TimesLeftOut(), 1);
    try {
        m.part.setName(L"y");
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "refused");
    }
    EXPECT_EQ(NameOf(m.part), "x");
    EXPECT_EQ(second.TimesLeftOut(), 1);
}

TEST(OddAnswers, AreGivenInTheOrderInWhichTheyWereMade) {
    Model m;
    const OddAnswer first("CAEObject::getType", {.type = CAE_TAG});
    const OddAnswer second("CAEObject::getType(#2)", {.type = CAE_MODEL});
    const OddAnswer ever("CAEObject::getType", {.type = CAE_PROJECT}, OddAnswer::kAlways);
    EXPECT_EQ(m.part.getType(), CAE_TAG);
    EXPECT_EQ(m.file.getType(), CAE_PROJECT);
    EXPECT_EQ(m.part.getType(), CAE_MODEL);
    EXPECT_EQ(m.part.getType(), CAE_PROJECT);
    EXPECT_EQ(first.TimesGiven(), 1);
    EXPECT_EQ(second.TimesGiven(), 1);
    EXPECT_EQ(ever.TimesGiven(), 2);
}

TEST(OddAnswers, FitTheOperationAndNoOtherOfALikeName) {
    Model m;
    const OddAnswer odd("CAEObject::getType", {.type = CAE_TAG}, OddAnswer::kAlways);
    EXPECT_STREQ(CAEObject::getTypeName(CAE_PART), "Part");
    const OddAnswer other("CAEObject::getType(#22)", {.type = CAE_TAG}, OddAnswer::kAlways);
    EXPECT_EQ(odd.TimesGiven() + other.TimesGiven(), 0);
}

TEST(OddAnswers, AreRecordedLikeOthers) {
    Model m;
    const OddAnswer odd("CAEObject::getType", {.type = CAE_TAG});
    const OddAnswer failure("CAEObject::setName", {.throws = true});
    korvane::StartRecording();
    EXPECT_EQ(m.part.getType(), CAE_TAG);
    EXPECT_THROW(m.part.setName(L"x"), std::bad_alloc);
    EXPECT_EQ(korvane::TakeRecording(), (Notes{"CAEObject::getType(#2)", "CAEObject::setName(#2, \"x\")"}));
}

TEST(OddAnswers, StartNoRecording) {
    Model m;
    const OddAnswer odd("CAEObject::getType", {.type = CAE_TAG});
    m.part.setName(L"x");
    EXPECT_EQ(korvane::TakeRecording(), Notes{});
}

TEST(OddAnswers, BelongToTheThreadThatMadeThem) {
    Model m;
    const OddAnswer odd("CAEObject::getType", {.type = CAE_TAG}, OddAnswer::kAlways);
    int elsewhere = -1;
    std::thread([&] { elsewhere = m.part.getType(); }).join();
    EXPECT_EQ(elsewhere, CAE_PART);
    EXPECT_EQ(m.part.getType(), CAE_TAG);
}

TEST(OddAnswers, AreRefusedForAnOperationThatHasNone) {
    for (const char* call :
         {"CAEObject::getTyp", "CAEObject::setName", "getType", "", "CAEObject::getType ("}) {
        EXPECT_THROW(OddAnswer(call, {.status = 1}), std::invalid_argument) << call;
    }
    Model m;
    EXPECT_EQ(m.part.getType(), CAE_PART);
}

}  // namespace
