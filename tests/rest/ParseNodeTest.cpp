#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>

#include <map>
#include <string>
#include <utility>

using namespace std::string_literals;

namespace {

using Keys = std::map<std::string, std::string>;

Keys Flattened(const std::string& text, Keys keys = {}) {
    const JSONNode node = libjson::parse(text.c_str());
    caerest::json::util::ParseNode(node, keys);
    return keys;
}

}  // namespace

TEST(ParseNode, NodeAndItsChildrenGiveTheirEntries) {
    EXPECT_EQ(Flattened(R"({"id":5,"dbkey":"K5","children":[{"id":6,"dbkey":"K6"}]})"),
              (Keys{{"5", "K5"}, {"6", "K6"}}));
    EXPECT_EQ(Flattened(R"({"children":[{"children":[{"id":"7","dbkey":"K7"}],"id":"6","dbkey":"K6"},)"
                        R"({"id":"8","dbkey":"K8"}],"dbkey":"K5","id":"5"})"),
              (Keys{{"5", "K5"}, {"6", "K6"}, {"7", "K7"}, {"8", "K8"}}));
}

TEST(ParseNode, FilesGiveTheirEntries) {
    EXPECT_EQ(Flattened(R"({"files":[{"id":9,"dbkey":"F9","files":[{"id":10,"dbkey":"F10"}],)"
                        R"("children":[{"id":11,"dbkey":"K11"}]}]})"),
              (Keys{{"9", "F9"}, {"10", "F10"}, {"11", "K11"}}));
}

TEST(ParseNode, EntryOfTheNodeComesBeforeThoseUnderIt) {
    EXPECT_EQ(Flattened(R"({"children":[{"id":"7","dbkey":"B"}],"files":[{"id":"7","dbkey":"C"}],)"
                        R"("id":"7","dbkey":"A"})"),
              (Keys{{"7", "A"}}));
}

TEST(ParseNode, WholeSubtreesOfTheChildrenComeBeforeTheFiles) {
    // Wherever the sections are in the text.
    for (const char* text :
         {R"({"files":[{"id":"7","dbkey":"file"}],"children":[{"children":[{"id":"7","dbkey":"deep"}]}]})",
          R"({"children":[{"children":[{"id":"7","dbkey":"deep"}]}],"files":[{"id":"7","dbkey":"file"}]})",
          R"({"files":[{"id":"7","dbkey":"file"}],"children":[{"files":[{"id":"7","dbkey":"deep"}]}]})"}) {
        EXPECT_EQ(Flattened(text), (Keys{{"7", "deep"}})) << text;
    }
}

TEST(ParseNode, SubtreeOfAnEarlierElementComesBeforeTheNextElement) {
    for (
        const char* text :
        {R"({"children":[{"children":[{"id":"7","dbkey":"first"}]},{"id":"7","dbkey":"second"}]})",
         R"({"children":[{"files":[{"id":"7","dbkey":"first"}]},{"id":"7","dbkey":"second"}]})",
         R"({"files":[{"children":[{"id":"7","dbkey":"first"}]},{"id":"7","dbkey":"second"}]})",
         R"({"files":[{"files":[{"id":"7","dbkey":"first"}]},{"id":"7","dbkey":"second"}]})",
         R"({"children":[{"id":"7","dbkey":"first"},{"id":"7","dbkey":"second"},{"id":"7","dbkey":"third"}]})"}) {
        EXPECT_EQ(Flattened(text), (Keys{{"7", "first"}})) << text;
    }
}

TEST(ParseNode, EntriesThatTheMapHasAreKept) {
    EXPECT_EQ(Flattened(R"({"id":"7","dbkey":"A","children":[{"id":"8","dbkey":"B"}]})",
                        {{"7", "Z"}, {"1", "Y"}, {"x", ""}}),
              (Keys{{"7", "Z"}, {"1", "Y"}, {"8", "B"}, {"x", ""}}));
    EXPECT_EQ(Flattened(R"({"id":"7","dbkey":"A"})", {{"7", ""}}), (Keys{{"7", ""}}));
}

TEST(ParseNode, NodeWithoutIdentifierIsAWrapper) {
    EXPECT_EQ(Flattened(R"({"children":[{"id":1,"dbkey":"K1"}]})"), (Keys{{"1", "K1"}}));
    EXPECT_EQ(Flattened(R"({"dbkey":"K","children":[{"id":1,"dbkey":"K1"}],"files":[{"dbkey":"F"}]})"),
              (Keys{{"1", "K1"}}));
}

TEST(ParseNode, NodeWithoutKeyAddsNoEntryAndIsWalkedAllTheSame) {
    EXPECT_EQ(Flattened(R"({"id":"1","children":[{"id":"2","dbkey":"K2"}],"files":[{"id":"3","dbkey":"F3"},)"
                        R"({"id":"4"}]})"),
              (Keys{{"2", "K2"}, {"3", "F3"}}));
    // So a later node of the same identifier that has one gives it.
    EXPECT_EQ(Flattened(R"({"id":"1","children":[{"id":"1","dbkey":"K1"}]})"), (Keys{{"1", "K1"}}));
}

TEST(ParseNode, NamesAreMatchedExactly) {
    EXPECT_EQ(Flattened(R"({"ID":"1","dbkey":"A"})"), Keys{});
    EXPECT_EQ(Flattened(R"({"Id":"1","dbkey":"A"})"), Keys{});
    EXPECT_EQ(Flattened(R"({"id":"1","dbKey":"A"})"), Keys{});
    EXPECT_EQ(Flattened(R"({"id":"1","DBKEY":"A","id ":"2"})"), Keys{});
    EXPECT_EQ(Flattened(R"({"id\u0000":"1","dbkey":"A"})"), Keys{});
    EXPECT_EQ(Flattened(R"({"Children":[{"id":"1","dbkey":"A"}],"FILES":[{"id":"2","dbkey":"B"}],)"
                        R"("versions":[{"id":"3","dbkey":"C"}],"child":{"id":"4","dbkey":"D"}})"),
              Keys{});
}

TEST(ParseNode, FirstMemberOfANameCounts) {
    EXPECT_EQ(Flattened(R"({"id":"1","dbkey":"A","id":"2","dbkey":"B"})"), (Keys{{"1", "A"}}));
    EXPECT_EQ(Flattened(R"({"children":[{"id":"1","dbkey":"A"}],"children":[{"id":"2","dbkey":"B"}],)"
                        R"("files":[],"files":[{"id":"3","dbkey":"C"}]})"),
              (Keys{{"1", "A"}}));
    EXPECT_EQ(Flattened(R"({"children":"none","children":[{"id":"2","dbkey":"B"}]})"), Keys{});
}

TEST(ParseNode, TextsAreTakenAsTheyStand) {
    EXPECT_EQ(
        Flattened(R"({"id":"007","dbkey":"A","children":[{"id":"7","dbkey":"B"},{"id":" 7","dbkey":"C"},)"
                  R"({"id":7.0,"dbkey":1.50e2},{"id":true,"dbkey":false},{"id":null,"dbkey":null},)"
                  R"({"id":"abc","dbkey":""}]})"),
        (Keys{{"007", "A"},
              {"7", "B"},
              {" 7", "C"},
              {"7.0", "1.50e2"},
              {"true", "false"},
              {"null", "null"},
              {"abc", ""}}));
    EXPECT_EQ(Flattened(R"({"id":{"x":1},"dbkey":["y"]})"), (Keys{{"", ""}}));
}

TEST(ParseNode, TextsEndAtTheirFirstNul) {
    EXPECT_EQ(Flattened(R"({"id":"7\u00005","dbkey":"K\u0000rest","children":[{"id":"\u0000","dbkey":"E"},)"
                        R"({"id":"7","dbkey":"second"}]})"),
              (Keys{{"7", "K"}, {"", "E"}}));
}

TEST(ParseNode, ObjectsAsSectionsAreTheArraysOfTheirMembers) {
    EXPECT_EQ(Flattened(R"({"children":{"id":{"id":"1","dbkey":"A"},"x":{"id":"2","dbkey":"B"}},)"
                        R"("files":{"y":{"id":"3","dbkey":"C"},"id":"4","dbkey":"D"}})"),
              (Keys{{"1", "A"}, {"2", "B"}, {"3", "C"}}));
}

TEST(ParseNode, SectionsOfAnyOtherKindAreEmpty) {
    for (const char* value : {R"("text")", "1", "true", "null", "[]", "{}"}) {
        std::string text = R"({"id":"1","dbkey":"A","children":)";
        text.append(value).append(R"(,"files":)").append(value).append("}");
        EXPECT_EQ(Flattened(text), (Keys{{"1", "A"}})) << text;
    }
}

TEST(ParseNode, NodeThatIsNoObjectAddsNothing) {
    for (const char* text : {R"([{"id":"1","dbkey":"A"}])", R"("id")", "1", "true", "null", "[]", "{}"}) {
        EXPECT_EQ(Flattened(text), Keys{}) << text;
    }
    EXPECT_EQ(Flattened(R"({"children":["id",1,null,[{"id":"1","dbkey":"A"}],{"id":"2","dbkey":"B"}]})"),
              (Keys{{"2", "B"}}));
}

TEST(ParseNode, ElementsOfAnArrayAreNoMembersAlsoWhereTheyBearNames) {
    JSONNode array(JSON_ARRAY);
    array.push_back(JSONNode("id", "1"));
    array.push_back(JSONNode("dbkey", "A"));
    JSONNode children = libjson::parse(R"([{"id":"2","dbkey":"B"}])");
    children.set_name("children");
    array.push_back(children);
    Keys keys;
    caerest::json::util::ParseNode(array, keys);
    EXPECT_EQ(keys, Keys{});
}

TEST(ParseNode, LeavesTheNodeUnchanged) {
    const char* text =
        R"({"id":"1","dbkey":"A","children":{"x":{"id":"2","dbkey":"B"}},"files":[{"id":"3"}]})";
    const JSONNode node = libjson::parse(text);
    Keys keys;
    caerest::json::util::ParseNode(node, keys);
    EXPECT_EQ(node.write(), text);
    EXPECT_EQ(node.find("children")->type(), JSON_NODE);
}

TEST(ParseNode, AddsToTheSameMapCallAfterCall) {
    EXPECT_EQ(Flattened(R"({"id":"2","dbkey":"C"})",
                        Flattened(R"({"id":"1","dbkey":"B"})", Flattened(R"({"id":"1","dbkey":"A"})"))),
              (Keys{{"1", "A"}, {"2", "C"}}));
}
