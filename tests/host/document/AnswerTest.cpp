#include <EmbeddedModel.h>
#include <gtest/gtest.h>

#include "host/HostSupport.h"
#include "host/document/DocumentImport.h"
#include "host/document/ReportText.h"
#include "support/ModelBuilders.h"
#include "support/SmallStack.h"

namespace host {
namespace {

class AnswerReportTest : public testing::Test {
protected:
    void SetUp() override {
        CAEObject& part = project.Add(CAE_PART, L"Arm");
        project.AddFile(part, L"arm.msh", CAE_FILE_MESH);
    }
    /// Applies the answer and gives what is said of it.
    std::string Apply(const std::string& text) {
        const AnswerReport report = ApplyAnswer(Parse(text), *project, kept.console);
        EXPECT_TRUE(report.hasFitted) << text;
        kept.said.clear();
        SayAnswer(report, "p", kept.console);
        return kept.said;
    }
    std::string KeyOf(int id) const { return project->getCAEObject(id)->getDBKey().GetAnsiBuffer(); }

    TestProject project;
    KeptConsole kept;
};

TEST_F(AnswerReportTest, SaysHowManyKeysAreNew) {
    const std::string answer =
        R"({"id":"1","dbkey":"P","children":[{"id":"2","dbkey":"A","files":[{"id":"3","dbkey":"F"}]}]})";
    EXPECT_EQ(Apply(answer), "korvane-json: p: 3 keys set, 0 unchanged\n");
    EXPECT_EQ(KeyOf(1) + KeyOf(2) + KeyOf(3), "PAF");
    EXPECT_EQ(Apply(answer), "korvane-json: p: 0 keys set, 3 unchanged\n");
    EXPECT_EQ(Apply(R"([{"id":2,"dbkey":"B"},{"id":3,"dbkey":"F"}])"),
              "korvane-json: p: 1 key set, 1 unchanged\n");
}

TEST_F(AnswerReportTest, SaysThatTheDisplayNameCameAlong) {
    EXPECT_EQ(Apply(R"({"name":"N","id":"2","dbkey":"A"})"),
              "korvane-json: p: 1 key set, 0 unchanged, and the display name taken from the answer\n");
    EXPECT_EQ(std::string(korvane::GetDisplayName(*project).GetAnsiBuffer()), "N");
}

TEST_F(AnswerReportTest, SaysWhatWasNotApplied) {
    EXPECT_EQ(
        Apply(R"([{"id":"99","dbkey":"X"},{"id":"2"},{"dbkey":"Y"},7,{"id":"3","dbkey":"F"}])"),
        "korvane-json: p: 1 key set, 0 unchanged\n"
        "korvane-json: p: key not set, because no object has the identifier (1): '99' with the key "
        "'X'\n"
        "korvane-json: p: key not set, because there is no \"dbkey\" (1): '' (id '2')\n"
        "korvane-json: p: key not set, because there is no \"id\" (1): 'Y'\n"
        "korvane-json: p: ignored, because it is not an object (1): an element that is not an object\n");
}

TEST_F(AnswerReportTest, TheFirstKeyOfAnIdentifierCounts) {
    EXPECT_EQ(Apply(R"([{"id":"2","dbkey":"A"},{"id":"2","dbkey":"B"},{"id":"2","dbkey":"A"}])"),
              "korvane-json: p: 1 key set, 0 unchanged\n"
              "korvane-json: p: key not set, because an earlier node with the identifier has another key "
              "(1): '' (id "
              "'2') with the key 'B'\n");
    EXPECT_EQ(KeyOf(2), "A");
}

TEST_F(AnswerReportTest, NullAndEmptyKeysAreSaid) {
    Apply(R"([{"id":"2","dbkey":"A"},{"id":"3","dbkey":"B"}])");
    EXPECT_EQ(Apply(R"([{"id":"2","dbkey":null},{"id":"3","dbkey":""}])"),
              "korvane-json: p: 1 key set, 0 unchanged\n"
              "korvane-json: p: \"dbkey\" ignored, because it is null (1): '' (id '2')\n"
              "korvane-json: p: key not set, because there is no \"dbkey\" (1): '' (id '2')\n"
              "korvane-json: p: key removed, because \"dbkey\" is empty (1): '3'\n");
    EXPECT_EQ(KeyOf(2), "A");
    EXPECT_EQ(KeyOf(3), "");
}

TEST_F(AnswerReportTest, IdentifiersThatAreNoPlainNumbersAreSaid) {
    EXPECT_EQ(
        Apply(R"([{"id":"2x","dbkey":"A"},{"id":"99999999999","dbkey":"B"}])"),
        "korvane-json: p: 1 key set, 0 unchanged\n"
        "korvane-json: p: identifier that is not a number, read as the number that it begins with (1): '2x' "
        "as 2\n"
        "korvane-json: p: key not set, because no object has the identifier (1): '99999999999' with the "
        "key 'B'\n");
}

TEST_F(AnswerReportTest, WhatFitsNothingChangesNothing) {
    const std::pair<const char*, const char*> answers[] = {
        {"{}", "it is an empty object and has no keys"},
        {"[]", "it is an empty array and has no keys"},
        {R"({"error":"the disk is full","name":"N"})", "it reports an error: 'the disk is full'"},
        {R"({"errors":[{"id":"2"}]})", "it reports an error"},
        {R"({"id":"1","name":"N","type":"SIMULATION","children":[{"id":"2","type":"CAEPART"}]})",
         "it is a document and not the server's answer to one: it has no keys"},
        {R"({"name":"N"})", R"(it has no keys: no node in it has both "id" and "dbkey")"},
        {R"([{"id":"2","dbkey":null}])", R"(it has no keys: no node in it has both "id" and "dbkey")"},
        {R"([7,"x"])", R"(it has no keys: no node in it has both "id" and "dbkey")"},
        {R"({"id":"99","dbkey":"X","name":"N"})", "the project has no object with its identifier"},
        {R"([{"id":"99","dbkey":"X"},{"id":"98","dbkey":"Y"}])",
         "the project has no object with one of its 2 identifiers"},
    };
    for (const auto& [text, reason] : answers) {
        const AnswerReport report = ApplyAnswer(Parse(text), *project, kept.console);
        EXPECT_FALSE(report.hasFitted) << text;
        kept.said.clear();
        SayUseless(report, "a.json", kept.console);
        EXPECT_EQ(kept.said, std::string("korvane-json: cannot use 'a.json': ") + reason +
                                 ". Give the answer to a document of this project. Nothing was changed\n");
    }
    EXPECT_EQ(std::string(korvane::GetDisplayName(*project).GetAnsiBuffer()), "Project");
    EXPECT_EQ(KeyOf(1) + KeyOf(2) + KeyOf(3), "");
}

TEST_F(AnswerReportTest, RefusesWhatIsNoAnswer) {
    const AnswerReport report = ApplyAnswer(Parse("7"), *project, kept.console);
    EXPECT_FALSE(report.hasFitted);
    kept.said.clear();
    SayUseless(report, "-", kept.console);
    EXPECT_EQ(
        kept.said,
        "korvane-json: cannot use the standard input: an answer is an object or an array of objects. Give "
        "the answer to a document of this project. Nothing was changed\n");
}

TEST_F(AnswerReportTest, NeedsNoStackForNesting) {
    constexpr int kDepth = 100000;
    std::string text = R"({"id":"1","dbkey":"P")";
    for (int depth = 0; depth < kDepth; ++depth) {
        text += R"(,"children":[{"id":"2","dbkey":"A")";
    }
    for (int depth = 0; depth < kDepth; ++depth) {
        text += "}]";
    }
    std::string said;
    OnSmallStack([&] { said = Apply(text + "}"); });
    EXPECT_EQ(said, "korvane-json: p: 2 keys set, 0 unchanged\n");
}

}  // namespace
}  // namespace host
