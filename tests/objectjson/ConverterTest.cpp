#include <gtest/gtest.h>

#include "ConverterSupport.h"
#include "objectjson/CAEFileJson.h"
#include "support/ModelBuilders.h"
#include "support/ObjectText.h"

namespace {

JSONNode Document(const char* text) {
    return libjson::parse(text);
}

}  // namespace

TEST(Converter, WithoutObjectHasAnEmptyUnnamedObjectNode) {
    CAEObjectJson converter(nullptr);
    const JSONNode node = converter.GetJsonNode();
    EXPECT_EQ(node.type(), JSON_NODE);
    EXPECT_TRUE(node.name().empty());
    EXPECT_EQ(TextOfNode(node), "{}");
}

TEST(Converter, WithoutObjectEveryOperationAloneWritesNothing) {
    CAEObjectJson converter(nullptr);
    converter.Export();
    EXPECT_EQ(TextOfNode(converter.GetJsonNode()), "{}");
    EXPECT_EQ(TextOfSection(converter.ExportMetadata()), R"({"metaData":{}})");
    EXPECT_EQ(TextOfSection(converter.ExportChildren()), R"({"children":[]})");
    EXPECT_EQ(TextOfSection(converter.ExportFiles()), R"({"files":[]})");
    CAEFileJson file(nullptr);
    file.Export();
    EXPECT_EQ(TextOfNode(file.GetJsonNode()), "{}");
}

TEST(Converter, NodeIsSharedWithTheCaller) {
    TestProject project;
    CAEObjectJson converter(&*project);
    const JSONNode first = converter.GetJsonNode();
    const std::string text = TextOfNode(first);
    // The second run appends to a node of the converter's own and leaves the one handed out alone.
    const JSONNode second = converter.GetJsonNode();
    EXPECT_EQ(TextOfNode(first), text);
    EXPECT_EQ(TextOfNode(second), text.substr(0, text.size() - 1) + "," + text.substr(1));
}

TEST(Converter, NodeThatIsHandedOutIsNoCopy) {
    const JSONNode node = libjson::parse(R"({"name":"frame"})");
    CAEObjectJson converter(node, nullptr);
    const JSONNode handedOut = converter.GetJsonNode();
    EXPECT_EQ(&handedOut.at(0), &node.at(0));
}

TEST(Converter, SecondExportAppendsEverythingASecondTime) {
    TestProject project;
    project.Add(CAE_PART, L"frame");
    CAEObjectJson once(&*project);
    once.Export();
    CAEObjectJson twice(&*project);
    twice.Export();
    twice.Export();
    const std::string text = once.GetJsonText().GetAnsiBuffer();
    EXPECT_EQ(twice.GetJsonText().GetAnsiBuffer(), text.substr(0, text.size() - 1) + "," + text.substr(1));
}

TEST(Converter, TextIsTheNodeAsItStandsAndRunsNoExport) {
    TestProject project;
    CAEObjectJson converter(&*project);
    EXPECT_STREQ(converter.GetJsonText().GetAnsiBuffer(), "{}");
    converter.Export();
    EXPECT_EQ(converter.GetJsonText().GetAnsiBuffer(),
              ObjectNodeText({.id = "1", .name = "Project", .type = "SIMULATION"}));
}

TEST(Converter, OverACallersNodeLeavesThatNodeUnchanged) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    const JSONNode node = Document(R"({"type":"CAEPART","own":"1"})");
    CAEObjectJson converter(node, &part);
    const JSONNode exported = converter.GetJsonNode();
    EXPECT_EQ(TextOfNode(node), R"({"type":"CAEPART","own":"1"})");
    EXPECT_EQ(TextOfNode(exported),
              R"({"type":"CAEPART","own":"1",)" +
                  ObjectNodeText({.id = "2", .name = "frame", .type = "CAEPART"}).substr(1));
}

TEST(Converter, OverANodeGivesAProjectTheNodesTypeAsAdditionalType) {
    TestProject project;
    const CAEObjectJson converter(Document(R"({"Type":"other","type":"Crash","type":"second"})"), &*project);
    EXPECT_STREQ(project->getAdditionalType().GetBuffer(), L"Crash");
}

TEST(Converter, OverANodeWithoutTypeEmptiesAProjectsAdditionalType) {
    TestProject project;
    const CAEObjectJson converter(Document(R"({"name":"x"})"), &*project);
    EXPECT_TRUE(project->getAdditionalType().IsEmpty());
}

TEST(Converter, OverANodeChangesNothingElse) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    const std::string before = Exported(*project);
    const CAEObjectJson converter(Document(R"({"type":"CAEMODEL","name":"other","dbkey":"K"})"), &part);
    const CAEObjectJson without(Document(R"({"type":"CAEMODEL"})"), nullptr);
    EXPECT_EQ(Exported(*project), before);
}

TEST(Converter, LeavesObjectAndProjectAliveWhenDestroyed) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    { const CAEObjectJson converter(Document(R"({"type":"CAEPART"})"), &part); }
    EXPECT_EQ(project->getCAEObject(part.getID()), &part);
}

TEST(Converter, StringNodeIsNamedAfterItsKey) {
    const JSONNode node = CAEObjectJson::MakeStringNode(L"k\u00E9y", L"v\u00E4l\"ue");
    EXPECT_EQ(node.type(), JSON_STRING);
    EXPECT_EQ(std::string(node.name().c_str()), "k\xC3\xA9y");
    EXPECT_EQ(std::string(node.as_string().c_str()), "v\xC3\xA4l\"ue");
    const JSONNode empty = CAEObjectJson::MakeStringNode(L"", L"");
    EXPECT_EQ(empty.type(), JSON_STRING);
    EXPECT_TRUE(empty.name().empty());
    EXPECT_TRUE(empty.as_string().empty());
}

TEST(Converter, TypeFieldIsTheFirstMemberOfThatNameAsText) {
    const std::pair<const char*, const wchar_t*> cases[] = {
        {R"({"type":"CAEPART"})", L"CAEPART"},
        {R"({"a":1,"type":"first","type":"second"})", L"first"},
        {R"({"Type":"x","TYPE":"y"," type":"z"})", L""},
        {R"({})", L""},
        {R"({"type":""})", L""},
        {R"({"type":42})", L"42"},
        {R"({"type":true})", L"true"},
        {R"({"type":{"type":"x"}})", L""},
        {R"({"type":["x"]})", L""},
        {R"({"type":"a\u0000b"})", L"a"},
        {R"(["type"])", L""},
        {R"("type")", L""},
        {R"(17)", L""},
        {R"(null)", L""},
    };
    for (const auto& [text, type] : cases) {
        EXPECT_STREQ(CAEObjectJson::ReadTypeField(Document(text)).GetBuffer(), type) << text;
    }
}
