#include <korvaneexchange/ApplyAnswer.h>

#include <string>

#include "ImportSupport.h"

// Answers whose keys do not fit the project, as those to another export.

namespace {

using korvane::exchange::AnswerReport;
using korvane::exchange::KeyChoice;
using korvane::exchange::Reason;

class AnswerConflicts : public testing::Test {
protected:
    AnswerConflicts() {
        CAEObject& study = project_.Add(CAE_MODEL, L"study");
        CAEObject& part = project_.Add(study, CAE_PART, L"arm");
        project_.AddFile(part, L"a.inp", CAE_FILE_DECK);
        project_.Add(study, CAE_PART, L"bolt");
    }

    /// After a dry run that says the same and changes nothing.
    AnswerReport Apply(const std::string& text, KeyChoice keys = KeyChoice::kWithoutConflict) {
        const JSONNode answer = libjson::parse(text.c_str());
        AnswerReport said;
        EXPECT_EQ(ChangesBy([&] {
                      said =
                          korvane::exchange::ApplyAnswer(answer, *project_, {.dryRun = true, .keys = keys});
                  }),
                  "");
        AnswerReport done = korvane::exchange::ApplyAnswer(answer, *project_, {.keys = keys});
        EXPECT_EQ(Whole(said), Whole(done));
        EXPECT_EQ(said.keysSet, done.keysSet);
        EXPECT_EQ(said.keysKept, done.keysKept);
        EXPECT_EQ(said.hasName, done.hasName);
        return done;
    }
    void SetKey(int id, const wchar_t* key) { project_->getCAEObject(id)->setDBKey(key); }

    TestProject project_;
};

constexpr const char* kOwnAnswer =
    R"({"id":"1","dbkey":"P","children":[{"id":"2","dbkey":"S","children":[{"id":"3","dbkey":"A","files":[)"
    R"({"id":"4","dbkey":"F"}]},{"id":"5","dbkey":"B"}]}]})";
constexpr const char* kWithAllKeys = "#1 Project P\n  #2 study S\n    #3 arm A [#4 a.inp F]\n    #5 bolt B\n";

}  // namespace

TEST_F(AnswerConflicts, TheProjectsOwnAnswerHasNone) {
    for (const KeyChoice keys : {KeyChoice::kWithoutConflict, KeyChoice::kReplacing}) {
        const AnswerReport report = Apply(kOwnAnswer, keys);
        EXPECT_EQ(report.Conflicts(), 0U);
        EXPECT_EQ(report.keysSet + report.keysKept, 5U);
        EXPECT_EQ(Outline(*project_), kWithAllKeys);
    }
}

TEST_F(AnswerConflicts, NodesWithoutAPlaceHaveNone) {
    // A flat answer, and one in which nodes are below one without an identifier.
    EXPECT_EQ(Apply(R"([{"id":"5","dbkey":"B"},{"id":"4","dbkey":"F"},{"id":"2","dbkey":"S"}])").Conflicts(),
              0U);
    EXPECT_EQ(
        Apply(R"({"id":"1","dbkey":"P","children":[{"children":[{"id":"3","dbkey":"A"}]}]})").Conflicts(),
        0U);
    EXPECT_EQ(Outline(*project_), kWithAllKeys);
}

TEST_F(AnswerConflicts, AFileThatIsAttachedTwiceIsInBothPlaces) {
    project_->getCAEObject(5)->attachCustomFile(4, nullptr);
    const AnswerReport report = Apply(R"({"id":"2","children":[{"id":"3","files":[{"id":"4","dbkey":"F"}]},)"
                                      R"({"id":"5","files":[{"id":"4","dbkey":"F"}]}]})");
    EXPECT_EQ(report.Conflicts(), 0U);
    EXPECT_EQ(report.keysSet, 1U);
}

TEST_F(AnswerConflicts, AnotherKeyStays) {
    SetKey(2, L"S");
    SetKey(3, L"A");
    const AnswerReport report =
        Apply(R"([{"id":"2","dbkey":"S"},{"id":"3","dbkey":"X"},{"id":"5","dbkey":"B"}])");
    EXPECT_EQ(Whole(report),
              "/1 other-key #3 the key of 'arm' (id 3): the key of 'arm' (id 3): 'A' stays, and 'X' is not "
              "set\n"
              "/2 changed #5 the key of 'bolt' (id 5): the key of 'bolt' (id 5): '' becomes 'B'\n");
    EXPECT_EQ(report.keysKept, 1U);
    EXPECT_EQ(report.keysSet, 1U);
    // Nor is it taken away.
    EXPECT_EQ(Listed(Apply(R"([{"id":"3","dbkey":""}])")), "/0 other-key #3\n");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 study S\n    #3 arm A [#4 a.inp]\n    #5 bolt B\n");
}

TEST_F(AnswerConflicts, AnotherKeyIsReplacedIfThatIsWanted) {
    SetKey(2, L"S");
    SetKey(3, L"A");
    EXPECT_EQ(Listed(Apply(R"([{"id":"2","dbkey":"T"},{"id":"3","dbkey":""}])", KeyChoice::kReplacing)),
              "/0 changed #2\n/1 key-removed #3\n/1 changed #3\n");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 study T\n    #3 arm [#4 a.inp]\n    #5 bolt\n");
}

TEST_F(AnswerConflicts, AKeyIsThatOfOneObject) {
    SetKey(4, L"F");
    const AnswerReport report =
        Apply(R"([{"id":"2","dbkey":"F"},{"id":"3","dbkey":"N"},{"id":"5","dbkey":"N"}])");
    EXPECT_EQ(
        Whole(report),
        "/0 key-in-use #2 the key of 'study' (id 2): the key of 'study' (id 2): 'F' is not set, because "
        "it is the key of 'a.inp' (id 4)\n"
        "/1 key-in-use #3 the key of 'arm' (id 3): the key of 'arm' (id 3): 'N' is not set, because it "
        "is the key of 'bolt' (id 5)\n"
        "/2 changed #5 the key of 'bolt' (id 5): the key of 'bolt' (id 5): '' becomes 'N'\n");
}

TEST_F(AnswerConflicts, FilesThatHaveOneKeyKeepIt) {
    project_.AddFile(*project_->getCAEObject(5), L"copy.inp", CAE_FILE_DECK);
    SetKey(4, L"F");
    SetKey(6, L"F");
    const AnswerReport report = Apply(R"([{"id":"4","dbkey":"F"},{"id":"6","dbkey":"F"}])");
    EXPECT_EQ(report.Conflicts(), 0U);
    EXPECT_EQ(report.keysKept, 2U);
}

TEST_F(AnswerConflicts, ReplacedKeysCanChangePlacesAndNoneComesTwice) {
    SetKey(2, L"X");
    SetKey(3, L"Y");
    EXPECT_EQ(Apply(R"([{"id":"2","dbkey":"Y"},{"id":"3","dbkey":"X"}])", KeyChoice::kReplacing).Conflicts(),
              0U);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 study Y\n    #3 arm X [#4 a.inp]\n    #5 bolt\n");
    // The bolt keeps its key, so the arm keeps its own, so the study cannot have that.
    SetKey(5, L"Z");
    const std::string chain = R"([{"id":"2","dbkey":"X"},{"id":"3","dbkey":"Z"}])";
    EXPECT_EQ(Listed(Apply(chain, KeyChoice::kReplacing)), "/0 key-in-use #2\n/1 key-in-use #3\n");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 study Y\n    #3 arm X [#4 a.inp]\n    #5 bolt Z\n");
}

TEST_F(AnswerConflicts, ANodeInAnotherPlaceIsLeftOutWithAllBelowIt) {
    const AnswerReport report =
        Apply(R"({"id":"1","dbkey":"P","name":"n","children":[{"id":"3","dbkey":"A","files":[)"
              R"({"id":"4","dbkey":"F"},7]},{"id":"2","dbkey":"S"}]})",
              KeyChoice::kReplacing);
    EXPECT_EQ(
        Whole(report),
        " changed #1 the key of 'Project' (id 1): the key of 'Project' (id 1): '' becomes 'P'\n"
        "/children/0 other-parent #3 'arm' (id 3): 'arm' (id 3) is left out with everything below it, "
        "because "
        "the answer has it below 'Project' (id 1), and the project does not\n"
        "/children/1 changed #2 the key of 'study' (id 2): the key of 'study' (id 2): '' becomes 'S'\n");
    EXPECT_EQ(Outline(*project_), "#1 Project P\n  #2 study S\n    #3 arm [#4 a.inp]\n    #5 bolt\n");
    // The name is likely to be that of another project.
    EXPECT_FALSE(report.hasName);
    EXPECT_EQ(korvane::GetDisplayName(*project_), L"Project");
}

TEST_F(AnswerConflicts, SectionsSayWhatIsAFile) {
    EXPECT_EQ(Listed(Apply(R"({"id":"2","files":[{"id":"3","dbkey":"A"}]})")),
              " no-key #2\n/files/0 other-parent #3\n");
    EXPECT_EQ(Listed(Apply(R"({"id":"3","children":[{"id":"4","dbkey":"F"}]})")),
              " no-key #3\n/children/0 other-parent #4\n");
    EXPECT_EQ(Listed(Apply(R"({"id":"5","files":[{"id":"4","dbkey":"F"}]})")),
              " no-key #5\n/files/0 other-parent #4\n");
}

TEST_F(AnswerConflicts, NothingIsBelowAnIdentifierOfNoObject) {
    EXPECT_EQ(
        Whole(
            Apply(R"([{"id":"99","dbkey":"X","children":[{"id":"3","dbkey":"A"}]},{"id":"2","dbkey":"S"}])")),
        "/0 no-such-object #0 '99' with the key 'X': no object has the identifier '99' with the key 'X'\n"
        "/0/children/0 other-parent #3 'arm' (id 3): 'arm' (id 3) is left out with everything below it, "
        "because the answer has it below '' (id '99'), and the project does not\n"
        "/1 changed #2 the key of 'study' (id 2): the key of 'study' (id 2): '' becomes 'S'\n");
}

TEST_F(AnswerConflicts, AnObjectThatIsInAnotherPlaceOnceGetsNoKeyAtAll) {
    EXPECT_EQ(
        Whole(Apply(R"([{"id":"2","children":[{"id":"3","dbkey":"A"}]},)"
                    R"({"id":"1","children":[{"id":"3","dbkey":"A"}]},{"id":"5","dbkey":"B"}])")),
        "/0 no-key #2 '' (id '2'): '' (id '2') has no \"dbkey\", so no key is set\n"
        "/0/children/0 other-parent #3 'arm' (id 3): the key of 'arm' (id 3): 'A' is not set, because "
        "the answer has the object in other places, too\n"
        "/1 no-key #1 '' (id '1'): '' (id '1') has no \"dbkey\", so no key is set\n"
        "/1/children/0 other-parent #3 'arm' (id 3): 'arm' (id 3) is left out with everything below it, "
        "because the answer has it below 'Project' (id 1), and the project does not\n"
        "/2 changed #5 the key of 'bolt' (id 5): the key of 'bolt' (id 5): '' becomes 'B'\n");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 study\n    #3 arm [#4 a.inp]\n    #5 bolt B\n");
}

TEST_F(AnswerConflicts, WhatIsNoNodeOfTheAnswerIsInNoPlace) {
    const AnswerReport report = Apply(R"({"id":"2","dbkey":"S","more":{"id":"3","children":[{"id":"5"}]},)"
                                      R"("children":[{"id":"5","dbkey":"B"}]})");
    EXPECT_EQ(report.Conflicts(), 0U);
    EXPECT_EQ(report.keysSet, 2U);
}

TEST_F(AnswerConflicts, TheLastTextOfAnIdentifierDecides) {
    SetKey(2, L"S");
    EXPECT_EQ(Listed(Apply(R"([{"id":"2","dbkey":"S"},{"id":"02","dbkey":"T"}])")), "/1 later-key #2\n");
    EXPECT_EQ(Listed(Apply(R"([{"id":"2","dbkey":"T"},{"id":"02","dbkey":"S"}])")),
              "/0 other-key #2\n/1 later-key #2\n");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 study S\n    #3 arm [#4 a.inp]\n    #5 bolt\n");
}

TEST_F(AnswerConflicts, AKeyOfAnObjectAboveTheProjectIsInUse) {
    CAEObject& inner = project_.Add(CAE_PROJECT, L"inner");
    project_.Add(inner, CAE_PART, L"p");
    SetKey(2, L"S");
    const JSONNode answer = libjson::parse(R"([{"id":"7","dbkey":"S"},{"id":"6","dbkey":"P"}])");
    const AnswerReport report = korvane::exchange::ApplyAnswer(answer, dynamic_cast<CAEProject&>(inner),
                                                               {.keys = KeyChoice::kWithoutConflict});
    EXPECT_EQ(report.Conflicts(), 1U) << Whole(report);
    EXPECT_EQ(Outline(*project_),
              "#1 Project\n  #2 study S\n    #3 arm [#4 a.inp]\n    #5 bolt\n  #6 inner P\n    #7 p\n");
}

TEST_F(AnswerConflicts, WithoutTheOptionAllKeysAreSet) {
    SetKey(5, L"B");
    const AnswerReport report =
        Apply(R"({"id":"3","dbkey":"B","children":[{"id":"5","dbkey":"S"},{"id":"2","dbkey":"S"}]})",
              KeyChoice::kAll);
    EXPECT_EQ(report.Conflicts(), 0U);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 study S\n    #3 arm B [#4 a.inp]\n    #5 bolt S\n");
}
