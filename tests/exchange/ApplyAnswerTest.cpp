#include <korvaneexchange/ApplyAnswer.h>
#include <korvanejson/CaeRest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "ImportSupport.h"
#include "support/LongRun.h"
#include "support/SmallStack.h"

// What an answer of a server does and what its report says of it.

namespace {

using korvane::exchange::AnswerOptions;
using korvane::exchange::AnswerReport;
using korvane::exchange::Progress;
using korvane::exchange::Reason;

class ApplyAnswerTest : public testing::Test {
protected:
    ApplyAnswerTest() {
        project_.Add(CAE_PART, L"frame");
        project_.AddFile(project_.Add(CAE_PART, L"door"), L"a.inp", CAE_FILE_DECK);
    }

    static AnswerReport ApplyTo(CAEObject& object, const std::string& text,
                                const AnswerOptions& options = {}) {
        const JSONNode answer = libjson::parse(text.c_str());
        const json_string before = answer.write();
        AnswerReport report = korvane::exchange::ApplyAnswer(answer, object, options);
        EXPECT_EQ(answer.write(), before);
        return report;
    }

    /// After a dry run that says the same and changes nothing.
    AnswerReport Apply(const std::string& text) {
        AnswerReport said;
        EXPECT_EQ(ChangesBy([&] { said = ApplyTo(*project_, text, {.dryRun = true}); }), "");
        AnswerReport done = ApplyTo(*project_, text);
        EXPECT_EQ(Whole(said), Whole(done));
        EXPECT_EQ(said.counts, done.counts);
        EXPECT_EQ(said.keysSet, done.keysSet);
        EXPECT_EQ(said.keysKept, done.keysKept);
        EXPECT_EQ(said.hasName, done.hasName);
        EXPECT_EQ(said.hasFitted, done.hasFitted);
        EXPECT_EQ(said.whyUseless, done.whyUseless);
        return done;
    }

    std::string WhyUseless(const std::string& text) {
        AnswerReport report;
        EXPECT_EQ(ChangesBy([&] { report = Apply(text); }), "") << text;
        EXPECT_FALSE(report.hasFitted);
        EXPECT_FALSE(report.hasName);
        EXPECT_EQ(report.keysSet + report.keysKept, 0U);
        return report.whyUseless;
    }

    TestProject project_;
};

}  // namespace

TEST_F(ApplyAnswerTest, SetsKeysAndTheDisplayName) {
    const AnswerReport report =
        Apply(R"({"id":"1","name":"Answered","dbkey":"P","children":[{"id":"2","dbkey":"K2"},)"
              R"({"id":3,"dbkey":3,"files":{"a":{"id":"4","dbkey":"F4"}}}]})");
    EXPECT_EQ(Outline(*project_), "#1 Project P\n  #2 frame K2\n  #3 door 3 [#4 a.inp F4]\n");
    EXPECT_EQ(korvane::GetDisplayName(*project_), L"Answered");
    EXPECT_TRUE(report.hasFitted);
    EXPECT_TRUE(report.hasName);
    EXPECT_EQ(report.whyUseless, "");
    EXPECT_EQ(report.keysSet, 4U);
    EXPECT_EQ(report.keysKept, 0U);
    EXPECT_EQ(Listed(report),
              " changed #1\n/children/0 changed #2\n/children/1 changed #3\n"
              "/children/1/files/a changed #4\n");
    EXPECT_EQ(report.entries[1].subject, "the key of 'frame' (id 2)");
    EXPECT_EQ(report.entries[1].sentence, "the key of 'frame' (id 2): '' becomes 'K2'");
}

TEST_F(ApplyAnswerTest, KeepsKeysThatAreThere) {
    Apply(R"([{"id":"2","dbkey":"K2"},{"id":"3","dbkey":"K3"}])");
    const AnswerReport report = Apply(R"([{"id":"2","dbkey":"K2"},{"id":"3","dbkey":"other"}])");
    EXPECT_EQ(report.keysKept, 1U);
    EXPECT_EQ(report.keysSet, 1U);
    EXPECT_EQ(Listed(report), "/1 changed #3\n");
    EXPECT_FALSE(report.hasName);
}

TEST_F(ApplyAnswerTest, ANameIsAProjectsOnly) {
    EXPECT_FALSE(ApplyTo(*project_->getCAEObject(2), R"({"id":"2","dbkey":"K","name":"n"})").hasName);
    EXPECT_FALSE(Apply(R"([{"id":"2","dbkey":"K","name":"n"}])").hasName);
    EXPECT_EQ(korvane::GetDisplayName(*project_), L"Project");
}

TEST_F(ApplyAnswerTest, NoSuchObject) {
    const AnswerReport report =
        Apply(R"({"id":"2","dbkey":"K2","children":[{"id":"99","name":"x","dbkey":"K99"}]})");
    EXPECT_EQ(
        Whole(report),
        " changed #2 the key of 'frame' (id 2): the key of 'frame' (id 2): '' becomes 'K2'\n"
        "/children/0 no-such-object #0 '99' with the key 'K99': no object has the identifier '99' with the "
        "key 'K99'\n");
}

TEST_F(ApplyAnswerTest, NoIdentifierAndNoKey) {
    const AnswerReport report = Apply(R"([{"id":"2","dbkey":"K2"},{"dbkey":"K"},{"id":"3"},{"id":"77"},{}])");
    EXPECT_EQ(Whole(report),
              "/0 changed #2 the key of 'frame' (id 2): the key of 'frame' (id 2): '' becomes 'K2'\n"
              "/1 no-identifier #0 'K': the key 'K' is not set, because there is no \"id\"\n"
              "/2 no-key #3 '' (id '3'): '' (id '3') has no \"dbkey\", so no key is set\n"
              "/3 no-key #0 '' (id '77'): '' (id '77') has no \"dbkey\", so no key is set\n");
}

TEST_F(ApplyAnswerTest, NullKey) {
    project_->getCAEObject(3)->setDBKey(L"K3");
    const AnswerReport report =
        Apply(R"([{"id":"2","dbkey":"K2"},{"id":"3","dbkey":null},{"dbkey":null,"id":"4","dbkey":"F4"}])");
    EXPECT_EQ(Listed(report), "/0 changed #2\n/1 null-key #3\n/1 no-key #3\n/2 null-key #0\n/2 changed #4\n");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 frame K2\n  #3 door K3 [#4 a.inp F4]\n");
}

TEST_F(ApplyAnswerTest, LaterKey) {
    const AnswerReport report =
        Apply(R"([{"id":"2","dbkey":"A"},{"id":"2","dbkey":"B"},{"id":"2","dbkey":"A"}])");
    EXPECT_EQ(
        Whole(report),
        "/0 changed #2 the key of 'frame' (id 2): the key of 'frame' (id 2): '' becomes 'A'\n"
        "/1 later-key #2 '' (id '2') with the key 'B': '' (id '2') with the key 'B' is left out, because "
        "an earlier node with the identifier has another key\n");
    EXPECT_EQ(report.keysSet, 1U);
}

TEST_F(ApplyAnswerTest, OtherTextsForOneIdentifier) {
    const AnswerReport report = Apply(R"([{"id":"2","dbkey":"A"},{"id":"02","dbkey":"B"}])");
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 frame A\n  #3 door [#4 a.inp]\n");
    EXPECT_EQ(
        Whole(report),
        "/0 changed #2 the key of 'frame' (id 2): the key of 'frame' (id 2): '' becomes 'A'\n"
        "/1 later-key #2 '' (id '02') with the key 'B': '' (id '02') with the key 'B' is left out, because "
        "a node with another text for the identifier has another key\n");
    EXPECT_EQ(report.keysSet, 1U);
}

TEST_F(ApplyAnswerTest, NoNumber) {
    const AnswerReport report = Apply(R"({"id":"2abc","dbkey":"K"})");
    EXPECT_EQ(Whole(report),
              " no-number #2 '2abc' as 2: the identifier '2abc' is not a number, and is read as 2\n"
              " changed #2 the key of 'frame' (id 2): the key of 'frame' (id 2): '' becomes 'K'\n");
}

TEST_F(ApplyAnswerTest, KeyRemoved) {
    project_->getCAEObject(2)->setDBKey(L"K2");
    const AnswerReport report = Apply(R"([{"id":"2","dbkey":""},{"id":"3","dbkey":""}])");
    EXPECT_EQ(Whole(report),
              "/0 key-removed #2 '2': the key of the object '2' is removed\n"
              "/0 changed #2 the key of 'frame' (id 2): the key of 'frame' (id 2): 'K2' becomes "
              "''\n");
    EXPECT_EQ(report.keysSet, 1U);
    EXPECT_EQ(report.keysKept, 1U);
}

TEST_F(ApplyAnswerTest, WrongKindAndRepeatedMember) {
    const AnswerReport report =
        Apply(R"([{"id":"2","dbkey":"K"},7,{"children":["x"],"children":[{"id":"3","dbkey":"lost"}]}])");
    EXPECT_EQ(
        Whole(report),
        "/0 changed #2 the key of 'frame' (id 2): the key of 'frame' (id 2): '' becomes 'K'\n"
        "/1 not-an-object #0 an element that is not an object: an element of the answer is ignored, because "
        "it is not an object\n"
        "/2 repeated-member #0 'children' of '': 'children' of '' occurs again; the first one counts\n"
        "/2/children/0 not-an-object #0 an element that is not an object: an element of the answer is "
        "ignored, because it is not an object\n");
}

TEST_F(ApplyAnswerTest, SaysWhyAnAnswerIsUseless) {
    EXPECT_EQ(WhyUseless("7"), "an answer is an object or an array of objects");
    EXPECT_EQ(WhyUseless("null"), "an answer is an object or an array of objects");
    EXPECT_EQ(WhyUseless("{}"), "it is an empty object and has no keys");
    EXPECT_EQ(WhyUseless("[]"), "it is an empty array and has no keys");
    EXPECT_EQ(WhyUseless(R"({"error":"no\nway"})"), R"(it reports an error: 'no\nway')");
    EXPECT_EQ(WhyUseless(R"({"name":"n","errors":[1]})"), "it reports an error");
    EXPECT_EQ(WhyUseless(R"({"id":"1","type":"SIMULATION","name":"n"})"),
              "it is a document and not the server's answer to one: it has no keys");
    EXPECT_EQ(WhyUseless(R"({"id":"1","dbkey":null})"),
              R"(it has no keys: no node in it has both "id" and "dbkey")");
    EXPECT_EQ(WhyUseless(R"([{"dbkey":"x"},7])"),
              R"(it has no keys: no node in it has both "id" and "dbkey")");
    EXPECT_EQ(WhyUseless(R"({"id":"99","dbkey":"K","name":"n"})"),
              "the project has no object with its identifier");
    EXPECT_EQ(WhyUseless(R"([{"id":"99","dbkey":"K"},{"id":"98","dbkey":"K"}])"),
              "the project has no object with one of its 2 identifiers");
}

TEST_F(ApplyAnswerTest, AnObjectWithoutAProjectGetsNothing) {
    OuString* const noPath = nullptr;
    CAEFile file(noPath, CAE_FILE_DECK, CAE_FORMAT_ASCII, false);
    EXPECT_FALSE(ApplyTo(file, R"({"id":"0","dbkey":"K"})").hasFitted);
    EXPECT_TRUE(file.getDBKey().IsEmpty());
}

TEST_F(ApplyAnswerTest, StopsBetweenObjects) {
    std::string text = "[";
    for (int count = 0; count < 1000; ++count) {
        const std::string id = std::to_string(project_.Add(CAE_TAG, L"t").getID());
        text += R"({"id":")" + id + R"(","dbkey":"K)" + id + R"("},)";
    }
    text.back() = ']';
    std::vector<Progress> calls;
    const auto stopAfter = [&](std::size_t count) {
        calls.clear();
        return [&calls, count](const Progress& progress) {
            calls.push_back(progress);
            return calls.size() < count;
        };
    };
    const AnswerReport report = ApplyTo(*project_, text, {.progress = stopAfter(3)});
    EXPECT_TRUE(report.isStopped);
    EXPECT_GT(report.keysSet, 100U);
    EXPECT_LT(report.keysSet, 1000U);
    EXPECT_EQ(report.Count(Reason::kChanged), report.keysSet);
    std::size_t keys = 0;
    korvane::VisitTree(*project_,
                       [&](CAEObject& object, int) { keys += object.getDBKey().IsEmpty() ? 0 : 1; });
    EXPECT_EQ(keys, report.keysSet);
    const AnswerReport rest = ApplyTo(*project_, text, {.progress = stopAfter(1000)});
    EXPECT_FALSE(rest.isStopped);
    EXPECT_EQ(rest.keysKept, report.keysSet);
    EXPECT_EQ(rest.keysSet, 1000U - report.keysSet);
    EXPECT_EQ(calls.back().total, 1000U);
    EXPECT_THROW(ApplyTo(*project_, text,
                         {.progress = [](const Progress&) -> bool { throw std::out_of_range("enough"); }}),
                 std::out_of_range);
}

TEST_F(ApplyAnswerTest, WhatTheObjectModelThrowsComesThrough) {
    const korvane::OddAnswer bad("CAEObject::setDBKey(#3, \"K3\")", {.throws = true});
    EXPECT_THROW(ApplyTo(*project_, R"([{"id":"2","dbkey":"K2"},{"id":"3","dbkey":"K3"}])"), std::bad_alloc);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 frame K2\n  #3 door [#4 a.inp]\n");
}

TEST_F(ApplyAnswerTest, DepthNeedsNoStack) {
    const int depth = DeepLevels();
    std::string text;
    for (int level = 0; level < depth; ++level) {
        text += R"({"id":"2","dbkey":"K2","children":[)";
    }
    text += R"({"id":"3"})";
    for (int level = 0; level < depth; ++level) {
        text += "]}";
    }
    OnSmallStack([&] {
        const AnswerReport report = ApplyTo(*project_, text);
        EXPECT_EQ(report.keysSet, 1U);
        EXPECT_EQ(report.Count(Reason::kNoKey), 1U);
    });
}

TEST_F(ApplyAnswerTest, HundredThousandObjects) {
    std::string text = "[";
    for (int count = 0; count < 100'000; ++count) {
        const std::string id = std::to_string(project_.Add(CAE_TAG, L"t").getID());
        text += R"({"id":")" + id + R"(","dbkey":"K)" + id + R"("},)";
    }
    text.back() = ']';
    EXPECT_EQ(ApplyTo(*project_, text).keysSet, 100'000U);
    EXPECT_EQ(ApplyTo(*project_, text).keysKept, 100'000U);
}
