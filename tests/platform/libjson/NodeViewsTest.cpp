#include <gtest/gtest.h>
#include <node_views.h>

#include <string>
#include <utility>

#include "Texts.h"

namespace {

void ExpectViewsOf(const JSONNode& node) {
    EXPECT_EQ(libjson::name_view(node), NameOf(node));
    EXPECT_EQ(libjson::text_view(node), ValueOf(node));
    for (const JSONNode& child : node) {
        ExpectViewsOf(child);
    }
}

TEST(NodeViews, AreTheTextsThatNameAndAsStringReturn) {
    const std::string longText(1000, 'x');
    const JSONNode document = Parse(
        R"({"a": "text", "": "", "number": -1.50e2, "yes": true, "none": null, "list": [{}, "element"],)"
        R"( "nul": "before\u0000after", "sixteen": "0123456789abcdef", ")" +
        longText + "\": \"" + longText + longText + "\"}");
    ExpectViewsOf(document);
    EXPECT_EQ(libjson::text_view(document.at(0)), "text");
    EXPECT_EQ(libjson::text_view(document.at(6)), std::string_view("before\0after", 12));
    EXPECT_EQ(libjson::name_view(document.at(8)), longText);
}

TEST(NodeViews, AreEmptyForNodesWithoutNameAndText) {
    for (const JSONNode& node :
         {JSONNode(), JSONNode(JSON_NODE), JSONNode(JSON_ARRAY), JSONNode(JSON_STRING)}) {
        EXPECT_EQ(libjson::name_view(node), "");
        EXPECT_EQ(libjson::text_view(node), "");
    }
}

TEST(NodeViews, StayWhileACopyOfTheNodeChanges) {
    const JSONNode node(Text("name"), "value");
    const std::string_view name = libjson::name_view(node);
    const std::string_view text = libjson::text_view(node);
    JSONNode copy = node;
    copy.set_name(Text("other"));
    EXPECT_EQ(name, "name");
    EXPECT_EQ(text, "value");
    EXPECT_EQ(libjson::name_view(copy), "other");
    EXPECT_EQ(libjson::text_view(copy), "value");
}

}  // namespace
