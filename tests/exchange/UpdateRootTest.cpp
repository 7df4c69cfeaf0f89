#include <string>

#include "ImportSupport.h"

// Which roots an update refuses, because the document may be of another object.

namespace {

using korvane::exchange::Place;

class UpdateRootTest : public ExchangeImportTest {
protected:
    void SetUp() override {
        project_.Add(CAE_PART, L"p").setDBKey(L"K-1");
        project_.Add(CAE_TAG, L"t");
    }
    /// The update, of which nothing is done.
    std::string Refused(const std::string& text, const ImportOptions& options = {}) {
        const std::string before = Outline(*project_);
        const ImportReport report = Update(text, options);
        EXPECT_EQ(Outline(*project_), before);
        EXPECT_FALSE(report.hasRoot);
        EXPECT_EQ(report.root, 0);
        EXPECT_EQ(report.membersTaken, 0U);
        return Whole(report);
    }
};

std::string Root(const std::string& members) {
    return R"({"type":"SIMULATION",)" + members + R"("metaData":{}})";
}

const std::string kOther =
    " other-root #1 'other': the document of 'other' is of another project than 'Project' (id 1): it has "
    "another name, and not the key of this project\n";
const std::string kNothingKnown = ": nothing below it is known there, so that all objects would be removed\n";

}  // namespace

TEST_F(UpdateRootTest, OfAnotherNameIsRefused) {
    EXPECT_EQ(Refused(Root(R"("name":"other","children":[],)")), kOther);
    EXPECT_EQ(Refused(Root(R"("name":"other","children":[],)"), {.remove = true}), kOther);
    EXPECT_EQ(
        Refused(Root(R"("name":"other","displayName":"x","children":[{"type":"CAEPART","dbkey":"K-1"}],)"),
                {.place = Place::kByKind}),
        kOther);
    // A key that the project lacks says nothing of the project.
    EXPECT_EQ(Refused(Root(R"("name":"other","dbkey":"P-2",)")), kOther);
    project_->setDBKey(L"P-1");
    EXPECT_EQ(Refused(Root(R"("name":"other","dbkey":null,)")).find(kOther), 0U);
    EXPECT_EQ(Refused(Root(R"("name":"other","dbkey":"",)")), kOther);
}

TEST_F(UpdateRootTest, OfTheKeyOfAnotherObjectIsRefused) {
    const std::string left = " conflict #1 'Project': 'Project' is left out with everything below it: ";
    EXPECT_EQ(Refused(Root(R"("name":"Project","dbkey":"K-1",)")),
              left + "the key 'K-1' belongs to another object, 'p' (id 2)\n");
    project_.Add(CAE_PART, L"q").setDBKey(L"K-1");
    EXPECT_EQ(Refused(Root(R"("name":"Project","dbkey":"K-1",)")),
              left + "the key 'K-1' belongs to several objects\n");
    project_->setDBKey(L"P-1");
    EXPECT_EQ(Refused(Root(R"("name":"Project","dbkey":"P-2",)")),
              left + "the target of the import has another key, 'P-1'\n");
}

TEST_F(UpdateRootTest, OfTheSameKeyOrNameOrNoNameIsTaken) {
    EXPECT_TRUE(Update(Root(R"("name":"Project",)")).hasRoot);
    EXPECT_TRUE(Update(Root("")).hasRoot);
    EXPECT_TRUE(Update(Root(R"("name":"",)")).hasRoot);
    EXPECT_TRUE(Update(Root(R"("name":"whatever","displayName":"Project",)")).hasRoot);
    project_->setDBKey(L"P-1");
    EXPECT_TRUE(Update(Root(R"("name":"other","dbkey":"P-1",)")).hasRoot);
    EXPECT_TRUE(Update(Root(R"("name":"other","dbkey":"P-1","children":[],)"), {.remove = true}).hasRoot);
    EXPECT_EQ(Outline(*project_), "#1 Project P-1\n");
}

TEST_F(UpdateRootTest, OfAnotherNameIsTakenWhereTheCallerSaysSo) {
    EXPECT_TRUE(Update(Root(R"("name":"other",)"), {.sameRoot = true}).hasRoot);
    EXPECT_TRUE(Update(Root(R"("name":"other","children":[],)"), {.remove = true, .sameRoot = true}).hasRoot);
    EXPECT_EQ(Outline(*project_), "#1 Project\n");
}

TEST_F(UpdateRootTest, OfANamelessProjectIsTaken) {
    project_->setName(L"");
    EXPECT_TRUE(Update(Root(R"("displayName":"first",)")).hasRoot);
    EXPECT_EQ(
        Refused(Root(R"("displayName":"second",)")),
        " other-root #1 '': the document of '' is of another project than 'first' (id 1): it has another "
        "name, and not the key of this project\n");
}

TEST_F(UpdateRootTest, OnAnObjectThatTheCallerChoseMayHaveAnyName) {
    EXPECT_TRUE(Update(R"({"type":"CAEPART","name":"q"})", *project_->getCAEObject(2)).hasRoot);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 q K-1\n  #3 t\n");
}

TEST_F(UpdateRootTest, NothingIsEmptiedOnADocumentOfWhichNothingIsKnown) {
    for (const std::string children :
         {"[]", "{}", R"([{"type":"CAEPART","name":"q"},{"type":"CAETAG","name":"p"},7])",
          R"([{"type":"CAEPART","name":"p","dbkey":"K-2"},{"type":"CAEVIEWITEM","name":"t","dbkey":"I"}])"}) {
        const std::string text = Root(R"("name":"Project","children":)" + children + ",");
        EXPECT_EQ(
            Refused(text, {.remove = true}),
            " other-root #1 'Project': the document of 'Project' may be of another object than 'Project' "
            "(id 1)" +
                kNothingKnown);
        EXPECT_TRUE(Import(text, {.match = Match::kByKey, .dryRun = true}).hasRoot);
    }
    // The same for a root that becomes a child, by its name.
    CAEObject& study = project_.Add(CAE_MODEL, L"s");
    project_.Add(study, CAE_PART, L"below");
    EXPECT_EQ(
        Refused(R"({"type":"CAEMODEL","name":"s","children":[{"type":"CAETAG"}]})",
                {.place = Place::kByKind, .remove = true}),
        " other-root #4 's': the document of 's' may be of another object than 's' (id 4)" + kNothingKnown);
    study.setDBKey(L"S");
    EXPECT_TRUE(Update(R"({"type":"CAEMODEL","name":"s","dbkey":"S","children":[]})",
                       {.place = Place::kByKind, .remove = true})
                    .hasRoot);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p K-1\n  #3 t\n  #4 s S\n");
    // Where there is nothing, nothing can be lost.
    EXPECT_TRUE(Update(R"({"type":"CAETAG","name":"t","children":[{"type":"CAEPART","name":"new"}]})",
                       {.place = Place::kByKind, .remove = true})
                    .hasRoot);
}

TEST_F(UpdateRootTest, WhatIsKnownBelowTheRootLetsTheRestBeRemoved) {
    project_.AddFile(*project_, L"a.inp", CAE_FILE_DECK).setDBKey(L"F-1");
    CAEObject& item = project_.Add(CAE_VIEW_ITEM, L"v");
    item.setLinkDBKey(L"ITEM");
    for (const char* const members :
         {R"("children":[{"type":"CAETAG","name":"t"}],)",
          R"("children":[{"type":"CAEPART","dbkey":"K-1"}],)",
          R"("children":[{"type":"CAEMODEL","children":[{"type":"CAEPART","dbkey":"K-1"}]}],)",
          R"("children":[{"type":"CAEVIEWITEM","name":"v","dbkey":"ITEM"}],)",
          R"("children":[],"files":[{"name":"a.inp","dbkey":"F-1"}],)", ""}) {
        const ImportReport report =
            Import(Root(members), {.match = Match::kByKey, .remove = true, .dryRun = true});
        EXPECT_TRUE(report.hasRoot) << members;
        EXPECT_EQ(report.objectsRemoved > 1, std::string_view(members) != "") << members << Whole(report);
    }
}
